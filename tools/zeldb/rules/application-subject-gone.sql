-- title: Applications with subjects that are gone
-- why: The screen shows a line without a name, and the reports leave it out.
-- severity: error
-- do: Enter the subject again with `zeldb sql` under its number, or choose another one on the applications.
-- finding: {Lines} applications have subject {SubID}, which is gone.
-- table: tblDetApp
-- keys: SubID
select g.SubID, g.Lines
from (select SubID, count(*) as Lines from tblDetApp group by SubID) g
where not exists (select * from tblSubject s where s.SubId = g.SubID)
order by g.SubID
