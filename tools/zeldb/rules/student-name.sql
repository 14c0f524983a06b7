-- title: Students' accounts of another name
-- why: The finder and the ledger show the account's name, lists of students the application's. A save that was cut
--     off leaves that.
-- severity: note
-- do: Open the application and save it again, which gives the account the student's name.
-- finding: The account {CusCode} of application {AppID} is called "{AcName}", the student "{StuName}".
-- table: tblMasApp
-- keys: AppID
select m.AppID, m.CusCode, a.AcName, m.StuName
from tblMasApp m inner join Accounts a on a.RowID = m.CusCode
where a.AcStatus = 'DD' and isnull(a.AcName, '') <> isnull(m.StuName, '')
    and (select count(*) from tblMasApp o where o.CusCode = m.CusCode) = 1
order by m.AppID
