-- title: Lines that are neither a debit nor a credit
-- why: A line has one side, its amount not below 0; no screen writes another.
-- severity: error
-- do: Open the voucher and save it again, after a look at the paper.
-- finding: Line {EntryNo} of {VouStatus} {VouNo} has the debit {DrAmt} and the credit {CrAmt}.
-- table: DetJV
-- keys: VouStatus VouNo EntryNo
select d.VouStatus, d.VouNo, d.EntryNo, d.DrAmt, d.CrAmt
from #vouchers v inner join DetJV d on d.VouStatus = v.VouStatus and d.VouNo = v.VouNo
where v.Odd > 0 and (d.DrAmt < 0 or d.CrAmt < 0 or (d.DrAmt <> 0 and d.CrAmt <> 0) or (d.DrAmt is null and d.CrAmt is null))
order by d.VouStatus, d.VouNo, d.EntryNo
