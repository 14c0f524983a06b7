-- title: Account codes that don't follow from their parents
-- why: The tree of accounts, the subtotals of the trial balance and the order of the reports follow the code.
-- severity: error
-- do: Mend the code of the account, and of those below it, so that it is the parent's code, a point and the account's
--     number.
-- finding: Account {RowID} "{AcName}" bears the code "{AcNodes}"; its parent and number make "{Rebuilt}".
-- table: Accounts
-- keys: RowID
select RowID, AcName, AcNodes, Rebuilt
from (select RowID, AcName, isnull(rtrim(AcNodes), '') as AcNodes,
        isnull(rtrim(ParentID), '') + case when AcStatus = 'HH' and Dcode = 0 then '' else '.' + isnull(rtrim(Dcode), '') end as Rebuilt
    from Accounts where AcStatus in ('HH', 'HD', 'DD')) a
where AcNodes <> Rebuilt
order by RowID
