-- title: Carry forwards of applications that are gone
-- why: What was carried belongs to nobody.
-- severity: error
-- do: Delete the carry forward.
-- finding: Carry forward {FormID} is of application {AppID}, which is gone.
-- table: tblMasCarryForw
-- keys: FormID
select FormID, AppID
from tblMasCarryForw f
where not exists (select * from tblMasApp m where m.AppID = f.AppID)
order by FormID
