-- title: Lines without an account
-- why: They are in no ledger.
-- severity: error
-- do: Open the voucher, choose the account and save it again.
-- finding: {Lines} lines of {VouStatus} {VouNo} post to no account.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, Lines - Posted as Lines
from #vouchers where Posted < Lines
order by VouStatus, VouNo
