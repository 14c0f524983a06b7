-- title: Menu rights that are missing
-- why: What has no row can't be hidden. A save of the rights that was cut off leaves that.
-- severity: error
-- do: Open "Set Menus", tick what is to be shown and save.
-- finding: The menu item "{Menus}" has no row.
-- table: Menus
-- keys: Menus
select k.Menus
from (select 'Application Form' as Menus union all select 'Carry Forward Entry' union all select 'Company'
    union all select 'Telephone Directory' union all select 'Chart Of Accounts' union all select 'Voucher Setup'
    union all select 'Subjects' union all select 'Course' union all select 'Session' union all select 'CASH BOOK'
    union all select 'BANK BOOK' union all select 'SIMPLE LEDGER' union all select 'DETAIL LEDGER'
    union all select 'SUBSIDIARY TRIAL BALANCE SIMPLE' union all select 'CONTROL TRIAL BALANCE'
    union all select 'SUBSIDIARY TRIAL BALANCE (WITH OPENING)' union all select 'SESSION WISE OUTSTANDING'
    union all select 'STOCK SUMMARY REPORT' union all select 'STUDENT FEE DETAIL') k
where not exists (select * from Menus m where m.Menus = k.Menus) and exists (select * from Menus where Active = '1')
order by k.Menus
