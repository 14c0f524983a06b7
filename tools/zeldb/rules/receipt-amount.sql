-- title: Receipts of another amount than the application's cash
-- why: The ledger holds another amount than the application says was taken. A save that was cut off leaves that.
-- severity: error
-- do: Open the application and save it again, which writes the receipt anew.
-- finding: Application {AppID} has received {CashReceive}; the receipt of its account {CusCode} is of {Receipt}.
-- table: tblMasApp
-- keys: AppID
select m.AppID, m.CusCode, m.CashReceive, d.Receipt
from (select CusCode, min(AppID) as AppID, sum(isnull(CashReceive, 0)) as CashReceive from tblMasApp where CusCode <> 0 group by CusCode) m
    inner join (select VouNo, sum(isnull(DrAmt, 0)) as Receipt from DetJV where VouStatus = 'AR' group by VouNo) d on d.VouNo = m.CusCode
where m.CashReceive <> d.Receipt
order by m.AppID
