-- title: Cash vouchers without their one summary row
-- why: The cash side of a cash voucher is one row that names no other account; the cash book and the ledgers tell it
--     by that.
-- severity: error
-- do: Open the voucher and save it again.
-- finding: Voucher {VouStatus} {VouNo} has {Summaries} summary rows.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, sum(case when CrAc is null then 1 else 0 end) as Summaries
from DetJV where VouStatus in ('CP', 'CR')
group by VouStatus, VouNo having sum(case when CrAc is null then 1 else 0 end) <> 1
order by VouStatus, VouNo
