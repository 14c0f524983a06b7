-- title: Subjects of applications that are gone
-- why: Nobody owes them, and no screen shows them.
-- severity: error
-- do: Delete the rows of tblDetApp with `zeldb sql` when the application was to go.
-- finding: {Lines} subjects are of application {AppID}, which is gone.
-- table: tblDetApp
-- keys: AppID
select AppID, count(*) as Lines
from tblDetApp d
where not exists (select * from tblMasApp m where m.AppID = d.AppID)
group by AppID
order by AppID
