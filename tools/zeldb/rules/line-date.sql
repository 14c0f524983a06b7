-- title: Lines of another date than their voucher
-- why: The books go by the line's date, the lists by the header's. A fee receipt whose changed save was cut off
--     leaves that.
-- severity: error
-- do: Open the voucher, see that its date is right and save it again.
-- finding: Voucher {VouStatus} {VouNo} is of {VouDate}; a line of it is not.
-- table: MasJV
-- keys: VouStatus VouNo
select m.VouStatus, m.VouNo, m.VouDate
from MasJV m inner join #vouchers v on v.VouStatus = m.VouStatus and v.VouNo = m.VouNo
where (v.FirstDay <> m.VouDate or v.LastDay <> m.VouDate)
    and (select count(*) from MasJV o where o.VouStatus = m.VouStatus and o.VouNo = m.VouNo) = 1
order by m.VouStatus, m.VouNo
