-- title: Students whose account is gone
-- why: The application can't be saved any more, and what is owed is in no ledger.
-- severity: error
-- do: Make the account again under the number with `zeldb sql`, or enter the application anew.
-- finding: Application {AppID} of "{StuName}" has the account {CusCode}, which is gone.
-- table: tblMasApp
-- keys: AppID
select m.AppID, m.StuName, m.CusCode
from tblMasApp m
where m.CusCode <> 0 and not exists (select * from Accounts a where a.RowID = m.CusCode)
order by m.AppID
