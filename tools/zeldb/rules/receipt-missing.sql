-- title: Applications whose cash is not in the ledger
-- why: Money taken with an application is a receipt (AR) of two lines; here there is none. A save that was cut off
--     leaves that, and so does a new application saved after another one was opened and cancelled.
-- severity: error
-- do: Open the application and save it again, which writes the receipt.
-- finding: Application {AppID} has received {CashReceive}, and its account {CusCode} has no receipt.
-- table: tblMasApp
-- keys: AppID
select m.AppID, m.CusCode, m.CashReceive
from (select CusCode, min(AppID) as AppID, sum(isnull(CashReceive, 0)) as CashReceive
        from tblMasApp where CusCode <> 0 group by CusCode) m
where m.CashReceive > 0 and not exists (select * from #vouchers v where v.VouStatus = 'AR' and v.VouNo = m.CusCode)
order by m.AppID
