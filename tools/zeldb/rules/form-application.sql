-- title: Carried subjects of another application than their form
-- why: A student's balance goes by the line's application, the lists by the form's. A changed save that was cut off
--     leaves that.
-- severity: error
-- do: Open the carry forward, choose the student and save it again.
-- finding: Carry forward {FormID} is of application {AppID}, a line of it is of another one.
-- table: tblMasCarryForw
-- keys: FormID
select FormID, AppID
from tblMasCarryForw m
where exists (select * from tblDetCarryForw d where d.FormID = m.FormID and isnull(d.AppID, 0) <> isnull(m.AppID, 0))
    and (select count(*) from tblMasCarryForw o where o.FormID = m.FormID) = 1
order by FormID
