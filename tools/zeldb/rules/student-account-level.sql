-- title: Students whose account is a heading
-- why: Only subsidiary accounts take postings. An application whose student bears a heading's name gets the heading.
-- severity: error
-- do: Rename the heading, and set CusCode of the application to the account made for it with `zeldb sql`.
-- finding: Application {AppID} of "{StuName}" has the account {CusCode}, which is a heading.
-- table: tblMasApp
-- keys: AppID
select m.AppID, m.StuName, m.CusCode
from tblMasApp m inner join Accounts a on a.RowID = m.CusCode
where a.AcStatus <> 'DD'
order by m.AppID
