-- title: Students' accounts without an application
-- why: The trial balance shows a debt that no application stands for. A first save or a deletion that was cut off
--     leaves that.
-- severity: error
-- do: Delete the account on the chart of accounts; enter the application again when it was to be.
-- finding: Account {RowID} "{AcName}" was made for an application and belongs to none.
-- table: Accounts
-- keys: RowID
select a.RowID, a.AcName
from Accounts a
where a.AcStatus = 'DD' and a.openDate is null
    and a.ParentID in (select i.AcNodes from VouSetting s inner join Accounts i on rtrim(i.RowID) = s.AcCode
        where s.VouStatus = 'IR' and i.AcStatus = 'HD')
    and not exists (select * from tblMasApp m where m.CusCode = a.RowID)
order by a.RowID
