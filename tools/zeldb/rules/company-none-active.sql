-- title: No active company
-- why: Vouchers, books and trial balances print nothing without one. A save of the company that was cut off leaves
--     that.
-- severity: error
-- do: Open the company, tick "Active Company" and save.
-- finding: Of {Companies} companies none is active.
-- table: Company
-- keys:
select (select count(*) from Company) as Companies
where not exists (select * from Company where comActive = 'Y')
