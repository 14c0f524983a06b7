-- title: Receipts on another account than the student's
-- why: A receipt bears the number of the student's account, and each of its lines names that account on one side.
-- severity: error
-- do: Open the application and save it again, which writes the receipt anew.
-- finding: Receipt {VouNo} has a line that does not name account {VouNo}.
-- table: DetJV
-- keys: VouNo
select distinct VouNo
from DetJV where VouStatus = 'AR' and isnull(AcCode, 0) <> VouNo and isnull(CrAc, 0) <> VouNo
order by VouNo
