-- title: Headings with an opening balance
-- why: Only subsidiary accounts hold amounts; the trial balance would show the heading as an account.
-- severity: error
-- do: Move the opening balance to a subsidiary account, and set the heading's to NULL with `zeldb sql`.
-- finding: Heading {RowID} "{AcName}" has the opening balance {OpenBal}.
-- table: Accounts
-- keys: RowID
select RowID, AcName, OpenBal
from Accounts where AcStatus in ('HH', 'HD') and OpenBal <> 0
order by RowID
