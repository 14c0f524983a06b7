-- title: Applications without subjects
-- why: The student takes nothing and owes nothing by subject. A save or a deletion that was cut off leaves that; the
--     screen can't open such an application.
-- severity: error
-- do: Enter the lines from the paper with `zeldb sql`, then open the application and save it again; or delete its row
--     when it was to go.
-- finding: Application {AppID} of "{StuName}" has no subjects.
-- table: tblMasApp
-- keys: AppID
select AppID, StuName
from tblMasApp m
where not exists (select * from tblDetApp d where d.AppID = m.AppID)
order by AppID
