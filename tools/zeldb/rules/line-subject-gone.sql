-- title: Lines of subjects that are gone
-- why: The amounts count for no subject of the reports.
-- severity: error
-- do: Enter the subject again with `zeldb sql` under its number, or choose another one on the vouchers.
-- finding: Lines are of subject {SubID}, which is gone.
-- table: DetJV
-- keys: SubID
select g.SubID
from (select distinct SubID from DetJV where SubID is not null) g
where not exists (select * from tblSubject s where s.SubId = g.SubID)
order by g.SubID
