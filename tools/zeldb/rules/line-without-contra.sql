-- title: Lines without their other side
-- why: The cash book and the bank book choose lines by the other side; only the summary row of a cash voucher has none.
-- severity: error
-- do: Open the voucher, choose both accounts and save it again.
-- finding: {Lines} lines of {VouStatus} {VouNo} name no other side.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, Lines - Contras as Lines
from #vouchers where Contras < Lines and VouStatus not in ('CP', 'CR')
order by VouStatus, VouNo
