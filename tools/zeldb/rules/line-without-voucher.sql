-- title: Lines without a voucher
-- why: They are in the books, but no screen opens them. Receipts of applications (AR) and carried credits (CF) alone
--     have no header.
-- severity: error
-- do: Enter the voucher's header from the paper with `zeldb sql`, or delete the lines when the voucher was to go.
-- finding: {Lines} lines of {VouStatus} {VouNo} have no header.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, Lines
from #vouchers v
where VouStatus not in ('AR', 'CF') and not exists (select * from MasJV m where m.VouStatus = v.VouStatus and m.VouNo = v.VouNo)
order by VouStatus, VouNo
