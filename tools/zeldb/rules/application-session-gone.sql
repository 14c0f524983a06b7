-- title: Applications of sessions that are gone
-- why: The reports of a session leave these students out.
-- severity: error
-- do: Open the application, choose the session and save it again.
-- finding: {Applications} applications are of session {SessionID}, which is gone.
-- table: tblMasApp
-- keys: SessionID
select g.SessionID, g.Applications
from (select SessionID, count(*) as Applications from tblMasApp group by SessionID) g
where not exists (select * from tblSession s where s.SessionId = g.SessionID)
order by g.SessionID
