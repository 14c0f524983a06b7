-- title: Subjects taken twice on one application
-- why: The balance of the subject is that of the line which is found first; the other's is not shown.
-- severity: note
-- do: Open the application and remove the one that is wrong.
-- finding: Application {AppID} has subject {SubID} {Lines} times.
-- table: tblDetApp
-- keys: AppID SubID
select AppID, SubID, count(*) as Lines
from tblDetApp group by AppID, SubID having count(*) > 1
order by AppID, SubID
