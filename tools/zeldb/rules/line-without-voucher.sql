-- title: Lines without a voucher
-- why: They are in the books, but no screen opens them. Receipts of applications (AR) and carried credits (CF) alone
--     have no header.
-- severity: error
-- do: Enter the voucher's header from the paper with `zeldb sql`, or delete the lines when the voucher was to go.
-- finding: {Lines} lines of {VouStatus} {VouNo} have no header.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, count(*) as Lines
from (select VouStatus, VouNo from DetJV where VouStatus not in ('AR', 'CF')) d
where not exists (select * from MasJV m where m.VouStatus = d.VouStatus and m.VouNo = d.VouNo)
group by VouStatus, VouNo
order by VouStatus, VouNo
