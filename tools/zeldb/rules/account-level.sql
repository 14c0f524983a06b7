-- title: Accounts of no level
-- why: Only HH, HD and DD are control, sub-control and subsidiary accounts; no screen shows any other.
-- severity: error
-- do: Set the account's AcStatus with `zeldb sql`, or delete its row when nothing posts to it.
-- finding: Account {RowID} "{AcName}" has the level "{AcStatus}".
-- table: Accounts
-- keys: RowID
select RowID, AcName, isnull(rtrim(AcStatus), '') as AcStatus
from Accounts where isnull(AcStatus, '') not in ('HH', 'HD', 'DD')
order by RowID
