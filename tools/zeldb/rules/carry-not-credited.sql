-- title: Carried amounts that were not credited
-- why: Each amount carried is a credit (CF) on the student's account; here there is none, so that the old session
--     still claims it. A save or a deletion that was cut off leaves that.
-- severity: error
-- do: Open the carry forward and save it again, which writes the credits; or delete it when it was to go.
-- finding: Carry forward {FormID} carries {ForAmt} of subject {SubjectID} into session {SessionID} without a credit.
-- table: tblDetCarryForw
-- keys: FormID SubjectID SessionID
select FormID, SubjectID, SessionID, sum(ForAmt) as ForAmt
from tblDetCarryForw d
where ForAmt > 0 and not exists (select * from DetJV j
    where j.VouStatus = 'CF' and j.VouNo = d.FormID and j.SubID = d.SubjectID and j.SessionID = d.SessionID)
group by FormID, SubjectID, SessionID
order by FormID, SubjectID, SessionID
