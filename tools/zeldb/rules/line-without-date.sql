-- title: Lines without a date
-- why: They are in no book and in no balance.
-- severity: error
-- do: Open the voucher, set its date and save it again.
-- finding: {Lines} lines of {VouStatus} {VouNo} have no date.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, Lines - Dated as Lines
from #vouchers where Dated < Lines
order by VouStatus, VouNo
