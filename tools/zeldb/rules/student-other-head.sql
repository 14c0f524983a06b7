-- title: Students' accounts under another heading
-- why: Applications make their accounts under the heading of the voucher setup. Another heading is that of an earlier
--     setup, or the account is another one of the same name.
-- severity: note
-- do: See that the account is the student's; correct CusCode of the application with `zeldb sql` if it is not.
-- finding: The account {CusCode} of application {AppID} of "{StuName}" stands under "{ParentID}", not under "{Head}".
-- table: tblMasApp
-- keys: AppID
select m.AppID, m.StuName, m.CusCode, isnull(rtrim(a.ParentID), '') as ParentID, h.Head
from tblMasApp m inner join Accounts a on a.RowID = m.CusCode
    cross join (select min(rtrim(i.AcNodes)) as Head from VouSetting s inner join Accounts i on rtrim(i.RowID) = s.AcCode
        where s.VouStatus = 'IR' and i.AcStatus = 'HD') h
where a.AcStatus = 'DD' and isnull(rtrim(a.ParentID), '') <> h.Head
order by m.AppID
