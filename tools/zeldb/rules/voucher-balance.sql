-- title: Vouchers that don't balance
-- why: Debit and credit of a voucher are equal, or the trial balance is not. A fee receipt or an application's
--     receipt whose save was cut off leaves a debit without its credit.
-- severity: error
-- do: Open the voucher, or the application, complete its lines and save it again.
-- finding: Voucher {VouStatus} {VouNo} does not balance: debit {Debit}, credit {Credit}.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, Debit, Credit
from #vouchers where VouStatus <> 'CF' and Debit <> Credit
order by VouStatus, VouNo
