-- title: Carried subjects and credits of another date than their form
-- why: The credit is in the books on its own date. A changed save that was cut off leaves that.
-- severity: error
-- do: Open the carry forward, see that its date is right and save it again.
-- finding: Carry forward {FormID} is of {FormDate}, a line or a credit of it is not.
-- table: tblMasCarryForw
-- keys: FormID
select FormID, FormDate
from tblMasCarryForw m
where (exists (select * from tblDetCarryForw d where d.FormID = m.FormID and d.FormDate <> m.FormDate)
        or exists (select * from DetJV j where j.VouStatus = 'CF' and j.VouNo = m.FormID and j.VouDate <> m.FormDate))
    and (select count(*) from tblMasCarryForw o where o.FormID = m.FormID) = 1
order by FormID
