-- title: Lines whose other side is gone
-- why: The cash book, the bank book and the detail ledger name the other account; these lines have one that is in no
--     chart and that no line posts to.
-- severity: error
-- do: Open the vouchers, choose the account again and save them.
-- finding: Lines name account {CrAc} as their other side, which is gone.
-- table: DetJV
-- keys: CrAc
select g.CrAc
from (select distinct CrAc from DetJV where CrAc is not null) g
where not exists (select * from Accounts a where a.RowID = g.CrAc)
    and not exists (select * from DetJV d where d.AcCode = g.CrAc)
order by g.CrAc
