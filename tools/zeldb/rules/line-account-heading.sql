-- title: Lines on headings
-- why: Only subsidiary accounts take postings; the ledger of a heading can't be chosen.
-- severity: error
-- do: Open the vouchers, choose a subsidiary account and save them again.
-- finding: Lines post to account {AcCode} "{AcName}", which is a heading.
-- table: DetJV
-- keys: AcCode
select a.RowID as AcCode, a.AcName
from Accounts a
where a.AcStatus in ('HH', 'HD') and exists (select * from DetJV d where d.AcCode = a.RowID)
order by a.RowID
