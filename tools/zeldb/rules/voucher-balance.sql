-- title: Vouchers that don't balance
-- why: Debit and credit of a voucher are equal, or the trial balance is not. A fee receipt or an application's
--     receipt whose save was cut off leaves a debit without its credit.
-- severity: error
-- do: Open the voucher, or the application, complete its lines and save it again.
-- finding: Voucher {VouStatus} {VouNo} does not balance: debit {Debit}, credit {Credit}.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, sum(isnull(DrAmt, 0)) as Debit, sum(isnull(CrAmt, 0)) as Credit
from DetJV where VouStatus <> 'CF'
group by VouStatus, VouNo having sum(isnull(DrAmt, 0)) <> sum(isnull(CrAmt, 0))
order by VouStatus, VouNo
