-- title: Several active companies
-- why: Reports print each page once for every one.
-- severity: error
-- do: Open the right one, tick "Active Company" and save, which takes the mark from the others.
-- finding: Company {CompCode} "{Company}" is one of {Active} that are active.
-- table: Company
-- keys: CompCode
select CompCode, Company, (select count(*) from Company where comActive = 'Y') as Active
from Company where comActive = 'Y' and (select count(*) from Company where comActive = 'Y') > 1
order by CompCode
