-- title: Vouchers of an unknown kind
-- why: No screen opens them.
-- severity: error
-- do: Find out what the voucher was and set VouStatus on its header and lines with `zeldb sql`.
-- finding: Voucher {VouStatus} {VouNo} is of no kind that has a header.
-- table: MasJV
-- keys: VouStatus VouNo
select VouStatus, VouNo
from MasJV where VouStatus not in ('BP', 'BR', 'CP', 'CR', 'JV', 'FR')
order by VouStatus, VouNo
