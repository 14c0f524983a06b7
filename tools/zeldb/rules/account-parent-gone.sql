-- title: Accounts whose heading is gone
-- why: They stand in no branch of the tree, and trial balances put them under no heading.
-- severity: error
-- do: Make the heading of that code again on the chart of accounts, or move what the account holds to another one and
--     delete it.
-- finding: Account {RowID} "{AcName}" stands under the code "{ParentID}", which no heading bears.
-- table: Accounts
-- keys: RowID
select a.RowID, a.AcName, isnull(rtrim(a.ParentID), '') as ParentID
from Accounts a
where a.AcStatus in ('HD', 'DD')
    and not exists (select * from Accounts p
        where p.AcNodes = a.ParentID and p.AcStatus = case a.AcStatus when 'HD' then 'HH' else 'HD' end)
order by a.RowID
