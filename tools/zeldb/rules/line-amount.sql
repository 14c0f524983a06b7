-- title: Lines that are neither a debit nor a credit
-- why: A line has one side, its amount not below 0; no screen writes another.
-- severity: error
-- do: Open the voucher and save it again, after a look at the paper.
-- finding: Line {EntryNo} of {VouStatus} {VouNo} has the debit {DrAmt} and the credit {CrAmt}.
-- table: DetJV
-- keys: VouStatus VouNo EntryNo
select VouStatus, VouNo, EntryNo, DrAmt, CrAmt
from DetJV
where DrAmt < 0 or CrAmt < 0 or (DrAmt <> 0 and CrAmt <> 0) or (DrAmt is null and CrAmt is null)
order by VouStatus, VouNo, EntryNo
