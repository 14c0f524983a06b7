-- title: Cash vouchers without their one summary row
-- why: The cash side of a cash voucher is one row that names no other account; the cash book and the ledgers tell it
--     by that.
-- severity: error
-- do: Open the voucher and save it again.
-- finding: Voucher {VouStatus} {VouNo} has {Summaries} summary rows.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, Lines - Contras as Summaries
from #vouchers where VouStatus in ('CP', 'CR') and Lines - Contras <> 1
order by VouStatus, VouNo
