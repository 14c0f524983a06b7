-- title: Accounts without a title
-- why: The finder does not find them, and reports print an empty line.
-- severity: note
-- do: Choose the account in the tree and type its title.
-- finding: Account {RowID} with the code {AcNodes} has no title.
-- table: Accounts
-- keys: RowID
select RowID, rtrim(AcNodes) as AcNodes
from Accounts where isnull(AcName, '') = ''
order by RowID
