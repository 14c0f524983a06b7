-- title: Lines on accounts that are gone
-- why: Trial balances show their amounts as those of a deleted account. What a deleted application leaves on its
--     student's account has a rule of its own (receipt-left-behind).
-- severity: error
-- do: Open the vouchers of the account, choose the right one and save them again.
-- finding: {Lines} lines post to account {AcCode}, which is gone.
-- table: DetJV
-- keys: AcCode
select g.AcCode, (select count(*) from DetJV d where d.AcCode = g.AcCode and (d.VouStatus <> 'AR' or d.VouNo <> d.AcCode)) as Lines
from (select distinct AcCode from DetJV where AcCode is not null) g
where not exists (select * from Accounts a where a.RowID = g.AcCode)
    and exists (select * from DetJV d where d.AcCode = g.AcCode and (d.VouStatus <> 'AR' or d.VouNo <> d.AcCode))
order by g.AcCode
