-- title: Receipts of applications that were deleted
-- why: Deleting an application leaves its receipt on purpose, since the cash was taken; the cash account keeps its
--     debit.
-- severity: note
-- do: Nothing, when the money was kept. Was it given back, enter a payment of cash that says so.
-- finding: The receipt {VouNo} of {FirstDay} over {Debit} belongs to no application.
-- table: DetJV
-- keys: VouNo
select VouNo, FirstDay, Debit
from #vouchers v
where VouStatus = 'AR' and not exists (select * from tblMasApp m where m.CusCode = v.VouNo)
order by VouNo
