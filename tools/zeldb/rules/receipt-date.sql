-- title: Receipts of another date than the application
-- why: The receipt is of the application's fix date. A save that was cut off leaves that.
-- severity: error
-- do: Open the application and save it again, which writes the receipt anew.
-- finding: Application {AppID} is fixed on {FixDate}, the receipt of its account {CusCode} is of another day.
-- table: tblMasApp
-- keys: AppID
select m.AppID, m.CusCode, m.FixDate
from tblMasApp m inner join #vouchers v on v.VouNo = m.CusCode and v.VouStatus = 'AR'
where (v.FirstDay <> m.FixDate or v.LastDay <> m.FixDate)
    and (select count(*) from tblMasApp o where o.CusCode = m.CusCode) = 1
order by m.AppID
