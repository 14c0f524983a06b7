-- title: Fees dated before every session
-- why: No student of any session had applied by then, so that the date is most likely mistyped.
-- severity: note
-- do: Open the voucher and look at its date.
-- finding: {VouStatus} {VouNo} is of {VouDate}; the first application of all sessions is of {FirstDay}.
-- table: DetJV
-- keys: VouStatus VouNo
select distinct d.VouStatus, d.VouNo, d.VouDate, f.FirstDay
from DetJV d cross join (select min(AppDate) as FirstDay from tblMasApp) f
where d.VouStatus in ('FR', 'CF') and d.VouDate < f.FirstDay
order by d.VouStatus, d.VouNo
