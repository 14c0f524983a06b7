-- title: Voucher numbers given twice
-- why: Two headers of one number share their lines: saving or deleting the one changes the other. Two clerks who save
--     at one moment can do that, and a fee receipt without lines whose number was given out again.
-- severity: error
-- do: Find out on paper which header is right, remove the other row of MasJV with `zeldb sql`, and enter what is
--     missing anew.
-- finding: {Headers} vouchers bear the number {VouStatus} {VouNo}.
-- table: MasJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, count(*) as Headers
from MasJV group by VouStatus, VouNo having count(*) > 1
order by VouStatus, VouNo
