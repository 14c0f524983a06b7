-- title: Carry forwards without subjects
-- why: Nothing is carried by them. A save or a deletion that was cut off leaves that.
-- severity: error
-- do: Open the carry forward, enter its subjects from the paper and save it again; or delete it.
-- finding: Carry forward {FormID} of application {AppID} has no subjects.
-- table: tblMasCarryForw
-- keys: FormID
select FormID, AppID
from tblMasCarryForw m
where not exists (select * from tblDetCarryForw d where d.FormID = m.FormID)
order by FormID
