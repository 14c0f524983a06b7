-- title: Accounts of the voucher setup that can't be used
-- why: The screens would post to an account that is gone or a heading; students' accounts (IR) need a sub-control
--     heading.
-- severity: error
-- do: Open the voucher setup, choose the account again and save it.
-- finding: Row {VouStatus} of the voucher setup names account "{AcCode}" in {Place}, which is gone or of the wrong
--     level.
-- table: VouSetting
-- keys: VouStatus Place
select s.VouStatus, s.Place, s.AcCode
from (select VouStatus, 'AcCode' as Place, rtrim(AcCode) as AcCode,
        case VouStatus when 'IR' then 'HD' else 'DD' end as AcStatus from VouSetting
    union all select VouStatus, 'OthAcCode', rtrim(OthAcCode), 'DD' from VouSetting
    union all select VouStatus, 'ITaxAc', rtrim(ITaxAc), 'DD' from VouSetting
    union all select VouStatus, 'STaxAc', rtrim(STaxAc), 'DD' from VouSetting) s
where s.AcCode <> '' and not exists (select * from Accounts a where rtrim(a.RowID) = s.AcCode and a.AcStatus = s.AcStatus)
order by s.VouStatus, s.Place
