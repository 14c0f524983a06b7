-- title: Receipts of another amount than the application's cash
-- why: The ledger holds another amount than the application says was taken. A save that was cut off leaves that.
-- severity: error
-- do: Open the application and save it again, which writes the receipt anew.
-- finding: Application {AppID} has received {CashReceive}; the receipt of its account {CusCode} is of {Debit}.
-- table: tblMasApp
-- keys: AppID
select m.AppID, m.CusCode, m.CashReceive, v.Debit
from (select CusCode, min(AppID) as AppID, sum(isnull(CashReceive, 0)) as CashReceive
        from tblMasApp where CusCode <> 0 group by CusCode) m
    inner join #vouchers v on v.VouNo = m.CusCode and v.VouStatus = 'AR'
where m.CashReceive <> v.Debit
order by m.AppID
