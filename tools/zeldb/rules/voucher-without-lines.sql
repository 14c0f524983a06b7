-- title: Vouchers without lines
-- why: The header alone is in no book. A fee receipt whose save or deletion was cut off leaves that, and its number
--     is given out again.
-- severity: error
-- do: Open the voucher, enter its lines from the paper and save it; or delete it when it was to go.
-- finding: Voucher {VouStatus} {VouNo} has a header but no lines.
-- table: MasJV
-- keys: VouStatus VouNo
select VouStatus, VouNo
from MasJV m
where not exists (select * from #vouchers v where v.VouStatus = m.VouStatus and v.VouNo = m.VouNo)
order by VouStatus, VouNo
