-- title: Carry forward numbers given twice
-- why: Two forms of one number share their lines. Two clerks who save at one moment can do that.
-- severity: error
-- do: Find out on paper which row is right, and give the other a free number with `zeldb sql`.
-- finding: {Forms} carry forwards bear the number {FormID}.
-- table: tblMasCarryForw
-- keys: FormID
select FormID, count(*) as Forms
from tblMasCarryForw group by FormID having count(*) > 1
order by FormID
