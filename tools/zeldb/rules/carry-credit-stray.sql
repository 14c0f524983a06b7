-- title: Credits of subjects that are not carried
-- why: The student's account was credited, and no session claims the amount. A save that was cut off leaves that.
-- severity: error
-- do: Open the carry forward and save it again, which writes the credits anew; delete the rows with `zeldb sql` when
--     the form was to go.
-- finding: Carry forward {VouNo} has a credit of {CrAmt} for subject {SubID} in session {SessionID}, and no such line.
-- table: DetJV
-- keys: VouNo SubID SessionID
select VouNo, SubID, SessionID, sum(CrAmt) as CrAmt
from DetJV j
where VouStatus = 'CF' and not exists (select * from tblDetCarryForw d
    where d.FormID = j.VouNo and d.SubjectID = j.SubID and d.SessionID = j.SessionID)
group by VouNo, SubID, SessionID
order by VouNo, SubID, SessionID
