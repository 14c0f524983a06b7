-- title: Applications whose cash is not that of their subjects
-- why: The cash received is posted to the ledger, the lines tell which subjects it was for. A save that was cut off
--     leaves that.
-- severity: error
-- do: Open the application, complete its subjects and save it again.
-- finding: Application {AppID} has received {CashReceive}; its subjects make {Lines}.
-- table: tblMasApp
-- keys: AppID
select m.AppID, isnull(m.CashReceive, 0) as CashReceive, d.Lines
from tblMasApp m inner join (select AppID, sum(isnull(RecAmount, 0)) as Lines from tblDetApp group by AppID) d on d.AppID = m.AppID
where isnull(m.CashReceive, 0) <> d.Lines and (select count(*) from tblMasApp o where o.AppID = m.AppID) = 1
order by m.AppID
