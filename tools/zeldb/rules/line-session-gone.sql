-- title: Lines of sessions that are gone
-- why: The amounts count for no session of the reports.
-- severity: error
-- do: Enter the session again with `zeldb sql` under its number, or choose another one on the vouchers.
-- finding: Lines are of session {SessionID}, which is gone.
-- table: DetJV
-- keys: SessionID
select g.SessionID
from (select distinct SessionID from DetJV where SessionID is not null) g
where not exists (select * from tblSession s where s.SessionId = g.SessionID)
order by g.SessionID
