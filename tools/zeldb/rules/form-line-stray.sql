-- title: Carried subjects of forms that are gone
-- why: No screen shows them, and the reports count what they carry.
-- severity: error
-- do: Delete the rows of tblDetCarryForw with `zeldb sql` when the form was to go.
-- finding: {Lines} carried subjects are of form {FormID}, which is gone.
-- table: tblDetCarryForw
-- keys: FormID
select FormID, count(*) as Lines
from tblDetCarryForw d
where not exists (select * from tblMasCarryForw m where m.FormID = d.FormID)
group by FormID
order by FormID
