-- title: Carried subjects that are not on the application
-- why: Only a subject that the application marks inactive is carried; the balance of any other is wrong by the credit.
-- severity: note
-- do: Open the application and mark the subject inactive, or open the carry forward and remove it.
-- finding: Carry forward {FormID} carries subject {SubjectID}, which application {AppID} has not as an inactive one.
-- table: tblDetCarryForw
-- keys: FormID SubjectID
select FormID, SubjectID, AppID
from tblDetCarryForw c
where exists (select * from tblMasApp m where m.AppID = c.AppID)
    and not exists (select * from tblDetApp d where d.AppID = c.AppID and d.SubID = c.SubjectID and d.InActive = '1')
order by FormID, SubjectID
