-- title: Lines of another date than their voucher
-- why: The books go by the line's date, the lists by the header's. A fee receipt whose changed save was cut off
--     leaves that.
-- severity: error
-- do: Open the voucher, see that its date is right and save it again.
-- finding: Voucher {VouStatus} {VouNo} is of {VouDate}; {Lines} of its lines are not.
-- table: MasJV
-- keys: VouStatus VouNo
select m.VouStatus, m.VouNo, m.VouDate, count(*) as Lines
from MasJV m inner join DetJV d on d.VouStatus = m.VouStatus and d.VouNo = m.VouNo
where d.VouDate <> m.VouDate
    and (select count(*) from MasJV o where o.VouStatus = m.VouStatus and o.VouNo = m.VouNo) = 1
group by m.VouStatus, m.VouNo, m.VouDate
order by m.VouStatus, m.VouNo
