-- title: Rows that the voucher setup lacks
-- why: The screen that looks for the row works without number and account. A save of the setup that was cut off
--     leaves that.
-- severity: error
-- do: Open the voucher setup, fill in what is empty and save it.
-- finding: The voucher setup has no row {VouStatus}.
-- table: VouSetting
-- keys: VouStatus
select k.VouStatus
from (select 'CP' as VouStatus union all select 'CR' union all select 'BP' union all select 'BR' union all select 'JV'
    union all select 'SI' union all select 'PO' union all select 'QT' union all select 'DC' union all select 'TI'
    union all select 'GI' union all select 'IR' union all select 'RI') k
where not exists (select * from VouSetting s where s.VouStatus = k.VouStatus)
order by k.VouStatus
