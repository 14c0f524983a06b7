-- title: Dates of another century
-- why: A year such as 0204 or 2204 is mistyped, and the voucher is in no period that anybody prints.
-- severity: note
-- do: Open the voucher, set its date and save it again.
-- finding: Voucher {VouStatus} {VouNo} is of {VouDate}.
-- table: MasJV
-- keys: VouStatus VouNo
select VouStatus, VouNo, VouDate
from MasJV where VouDate < '1980-01-01' or VouDate > '2079-12-31'
order by VouStatus, VouNo
