-- title: Applications whose total is not that of their subjects
-- why: The total is what the student's account opens with, the lines are what is owed by subject. A save that was cut
--     off leaves that.
-- severity: error
-- do: Open the application, complete its subjects and save it again.
-- finding: Application {AppID} has the total {TotAmt}; its subjects make {Lines}.
-- table: tblMasApp
-- keys: AppID
select m.AppID, isnull(m.TotAmt, 0) as TotAmt, d.Lines
from tblMasApp m inner join (select AppID, sum(isnull(NetAmount, 0)) as Lines from tblDetApp group by AppID) d on d.AppID = m.AppID
where isnull(m.TotAmt, 0) <> d.Lines and (select count(*) from tblMasApp o where o.AppID = m.AppID) = 1
order by m.AppID
