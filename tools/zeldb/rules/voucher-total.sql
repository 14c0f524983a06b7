-- title: Vouchers whose total is not that of their lines
-- why: Lists show the header's total, the books add the lines. A fee receipt whose save was cut off leaves the new
--     total with the lines that were written.
-- severity: error
-- do: Open the voucher, complete its lines from the paper and save it again.
-- finding: Voucher {VouStatus} {VouNo} has the total {TotalAmount}; its lines make {Debit}.
-- table: MasJV
-- keys: VouStatus VouNo
select m.VouStatus, m.VouNo, isnull(m.TotalAmount, 0) as TotalAmount, v.Debit
from MasJV m inner join #vouchers v on v.VouStatus = m.VouStatus and v.VouNo = m.VouNo
where isnull(m.TotalAmount, 0) <> v.Debit
    and (select count(*) from MasJV o where o.VouStatus = m.VouStatus and o.VouNo = m.VouNo) = 1
order by m.VouStatus, m.VouNo
