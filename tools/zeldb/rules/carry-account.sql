-- title: Credits on another account than the student's
-- why: A carried amount is credited to the account of the form's student.
-- severity: error
-- do: Open the carry forward, choose the student and save it again.
-- finding: Carry forward {VouNo} credits account {AcCode}; its student's is {CusCode}.
-- table: DetJV
-- keys: VouNo AcCode
select distinct j.VouNo, j.AcCode, m.CusCode
from DetJV j inner join tblMasCarryForw f on f.FormID = j.VouNo inner join tblMasApp m on m.AppID = f.AppID
where j.VouStatus = 'CF' and m.CusCode <> 0 and j.AcCode <> m.CusCode
    and (select count(*) from tblMasCarryForw o where o.FormID = f.FormID) = 1
    and (select count(*) from tblMasApp o where o.AppID = m.AppID) = 1
order by j.VouNo, j.AcCode
