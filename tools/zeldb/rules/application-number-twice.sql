-- title: Application numbers given twice
-- why: Two applications of one number share their lines. Two clerks who save at one moment can do that.
-- severity: error
-- do: Find out on paper which row is right, and give the other a free number with `zeldb sql`.
-- finding: {Applications} applications bear the number {AppID}.
-- table: tblMasApp
-- keys: AppID
select AppID, count(*) as Applications
from tblMasApp group by AppID having count(*) > 1
order by AppID
