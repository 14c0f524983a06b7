-- title: Students' accounts that don't open with what is owed
-- why: The student's debt is the opening balance of the account, and that is the application's total. A save that was
--     cut off leaves that.
-- severity: error
-- do: Open the application and save it again.
-- finding: The account {CusCode} of application {AppID} opens with {OpenBal}; the application's total is {TotAmt}.
-- table: tblMasApp
-- keys: AppID
select m.AppID, m.CusCode, isnull(a.OpenBal, 0) as OpenBal, m.TotAmt
from (select CusCode, min(AppID) as AppID, sum(isnull(TotAmt, 0)) as TotAmt from tblMasApp where CusCode <> 0 group by CusCode) m
    inner join Accounts a on a.RowID = m.CusCode
where a.AcStatus = 'DD' and isnull(a.OpenBal, 0) <> m.TotAmt
order by m.AppID
