-- title: Lines without a date
-- why: They are in no book and in no balance.
-- severity: error
-- do: Open the voucher, set its date and save it again.
-- finding: {Lines} lines of {VouStatus} {VouNo} have no date.
-- table: DetJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, count(*) as Lines
from DetJV where VouDate is null
group by VouStatus, VouNo
order by VouStatus, VouNo
