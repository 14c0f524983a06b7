-- title: Rows that the voucher setup has twice
-- why: Screens read the one that they find first.
-- severity: error
-- do: Open the voucher setup, see that it is right and save it, which writes each row once.
-- finding: The voucher setup has {Rows} rows {VouStatus}.
-- table: VouSetting
-- keys: VouStatus
select VouStatus, count(*) as Rows
from VouSetting group by VouStatus having count(*) > 1
order by VouStatus
