-- title: Entries whose two rows differ
-- why: Of payments, receipts of a bank or of fees and journals each line stands as a debit and its credit; the books
--     name the other side by it.
-- severity: error
-- do: Open the voucher, which shows one of the two rows, compare it with the paper, and save it again.
-- finding: Line {EntryNo} of voucher {VouStatus} {VouNo} has the debit {Debit} and the credit {Credit}.
-- table: DetJV
-- keys: VouStatus VouNo EntryNo
select e.VouStatus, e.VouNo, e.EntryNo, e.Debit, e.Credit
from (select VouStatus, VouNo, EntryNo, sum(isnull(DrAmt, 0)) as Debit, sum(isnull(CrAmt, 0)) as Credit
    from DetJV where VouStatus in ('BP', 'BR', 'JV', 'FR')
    group by VouStatus, VouNo, EntryNo having sum(isnull(DrAmt, 0)) <> sum(isnull(CrAmt, 0))) e
    inner join #vouchers v on v.VouStatus = e.VouStatus and v.VouNo = e.VouNo
where v.Debit = v.Credit
order by e.VouStatus, e.VouNo, e.EntryNo
