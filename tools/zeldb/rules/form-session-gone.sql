-- title: Subjects carried into sessions that are gone
-- why: The reports of no session show what is owed.
-- severity: error
-- do: Open the carry forward, choose the session and save it again.
-- finding: Carry forward {FormID} carries subject {SubjectID} into session {SessionID}, which is gone.
-- table: tblDetCarryForw
-- keys: FormID SubjectID
select FormID, SubjectID, SessionID
from tblDetCarryForw d
where not exists (select * from tblSession s where s.SessionId = d.SessionID)
order by FormID, SubjectID
