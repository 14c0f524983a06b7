-- title: Credits of another amount than is carried
-- why: The old session is credited with another amount than the new one claims. A changed save that was cut off
--     leaves that.
-- severity: error
-- do: Open the carry forward and save it again, which writes the credits anew.
-- finding: Carry forward {FormID} carries {ForAmt} of subject {SubjectID} into session {SessionID}; the credit is
--     {CrAmt}.
-- table: tblDetCarryForw
-- keys: FormID SubjectID SessionID
select d.FormID, d.SubjectID, d.SessionID, d.ForAmt, j.CrAmt
from (select FormID, SubjectID, SessionID, sum(isnull(ForAmt, 0)) as ForAmt
        from tblDetCarryForw group by FormID, SubjectID, SessionID) d
    inner join (select VouNo, SubID, SessionID, sum(isnull(CrAmt, 0)) as CrAmt
        from DetJV where VouStatus = 'CF' group by VouNo, SubID, SessionID) j
    on j.VouNo = d.FormID and j.SubID = d.SubjectID and j.SessionID = d.SessionID
where d.ForAmt <> j.CrAmt
order by d.FormID, d.SubjectID, d.SessionID
