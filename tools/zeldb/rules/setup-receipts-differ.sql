-- title: Fee receipts set up otherwise than cash receipts
-- why: The voucher setup gives the row of fee receipts (RI) the account, side and mark of the cash receipts (CR) at
--     each save.
-- severity: note
-- do: Open the voucher setup and save it.
-- finding: Row RI has account "{RI}", row CR has "{CR}", or their side or mark differ.
-- table: VouSetting
-- keys:
select isnull(rtrim(r.AcCode), '') as RI, isnull(rtrim(c.AcCode), '') as CR
from VouSetting r cross join VouSetting c
where r.VouStatus = 'RI' and c.VouStatus = 'CR'
    and (isnull(r.AcCode, '') <> isnull(c.AcCode, '') or isnull(r.AcStatus, '') <> isnull(c.AcStatus, '')
        or isnull(r.Fix, '') <> isnull(c.Fix, ''))
