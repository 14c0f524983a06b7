-- Both trial balances leave out an account all of whose amounts are 0, and keep one that is no longer in the
-- chart. An opening balance stands before every period, whatever its date, and is a debit when positive. Each
-- account's lines are summed in the order of an index, a period at a time. A balance is a sum of signed amounts,
-- here and in the ledgers: a sum is exact, the difference of two large sums is not on every engine. The last day of
-- a period is the whole day, whatever time a line bears, as it is in the books.
create procedure TrialBalance @from datetime, @to datetime as
begin
    declare @end datetime
    set @end = convert(datetime, rtrim(year(@to)) + '-' + right('0' + rtrim(month(@to)), 2) + '-' + right('0' + rtrim(day(@to)), 2) + ' 23:59:59.997')
    delete from rptTrialBalance
    insert into rptTrialBalance (AcCode, AcNodes, AcName, AcStatus, AcOrder, SubNodes, SubName, SubOrder,
            HeadNodes, HeadName, HeadOrder, Opening, OpenDr, OpenCr, PeriodDr, PeriodCr, CloseDr, CloseCr)
        select p.AcCode, p.AcNodes, p.AcName, p.AcStatus, p.AcOrder, p.SubNodes, p.SubName,
            right('00000' + rtrim(p.SubOrder), 5) + isnull(p.SubNodes, ''), p.HeadNodes,
            (select AcName from Accounts where RowID = (select min(RowID) from Accounts where AcNodes = p.HeadNodes and AcStatus = 'HH')),
            case when p.HeadNodes is null then 'zz' else right('0000000000' + p.HeadNodes, 10) end,
            0, 0, 0, p.Dr, p.Cr, case when p.Dr > p.Cr then p.Dr - p.Cr else 0 end,
            case when p.Cr > p.Dr then p.Cr - p.Dr else 0 end
        from (
            select n.AcCode, n.Dr, n.Cr, n.AcStatus, n.AcNodes, n.AcOrder, n.AcName, rtrim(n.SubNodes) as SubNodes,
                s.AcName as SubName, isnull(s.Dcode, 0) as SubOrder,
                isnull(rtrim(s.ParentID), left(n.ParentID, charindex('.', n.ParentID + '.') - 1)) as HeadNodes
            from (select m.AcCode, m.Dr, m.Cr, a.AcStatus, rtrim(a.AcNodes) as AcNodes, isnull(a.Dcode, 0) as AcOrder, a.ParentID,
                    case when a.RowID is null then 'Account no. ' + isnull(rtrim(m.AcCode), '') + ' (deleted)'
                        else a.AcName end as AcName,
                    case when a.AcStatus = 'HD' then a.AcNodes else a.ParentID end as SubNodes
                from (
                    select AcCode, isnull(sum(DrAmt), 0) as Dr, isnull(sum(CrAmt), 0) as Cr
                    from DetJV where VouDate >= @from and VouDate <= @end group by AcCode
                ) m left join Accounts a on a.RowID = m.AcCode
                where m.Dr <> 0 or m.Cr <> 0
            ) n left join Accounts s on s.RowID = (select min(RowID) from Accounts where AcStatus = 'HD' and AcNodes = n.SubNodes)
        ) p
end
GO
create procedure TrialBalance3 @from datetime, @to datetime as
begin
    declare @end datetime
    set @end = convert(datetime, rtrim(year(@to)) + '-' + right('0' + rtrim(month(@to)), 2) + '-' + right('0' + rtrim(day(@to)), 2) + ' 23:59:59.997')
    delete from rptTrialBalance
    insert into rptTrialBalance (AcCode, AcNodes, AcName, AcStatus, AcOrder, SubNodes, SubName, SubOrder,
            HeadNodes, HeadName, HeadOrder, Opening, OpenDr, OpenCr, PeriodDr, PeriodCr, CloseDr, CloseCr)
        select p.AcCode, p.AcNodes, p.AcName, p.AcStatus, p.AcOrder, p.SubNodes, p.SubName,
            right('00000' + rtrim(p.SubOrder), 5) + isnull(p.SubNodes, ''), p.HeadNodes,
            (select AcName from Accounts where RowID = (select min(RowID) from Accounts where AcNodes = p.HeadNodes and AcStatus = 'HH')),
            case when p.HeadNodes is null then 'zz' else right('0000000000' + p.HeadNodes, 10) end,
            p.Opening, case when p.Opening > 0 then p.Opening else 0 end,
            case when p.Opening < 0 then 0 - p.Opening else 0 end, p.Dr, p.Cr,
            case when p.Closing > 0 then p.Closing else 0 end, case when p.Closing < 0 then 0 - p.Closing else 0 end
        from (
            select n.AcCode, n.Opening, n.Dr, n.Cr, n.Closing, n.AcStatus, n.AcNodes, n.AcOrder, n.AcName, rtrim(n.SubNodes) as SubNodes,
                s.AcName as SubName, isnull(s.Dcode, 0) as SubOrder,
                isnull(rtrim(s.ParentID), left(n.ParentID, charindex('.', n.ParentID + '.') - 1)) as HeadNodes
            from (select m.AcCode, m.Opening, m.Dr, m.Cr, m.Closing, a.AcStatus, rtrim(a.AcNodes) as AcNodes, isnull(a.Dcode, 0) as AcOrder, a.ParentID,
                    case when a.RowID is null then 'Account no. ' + isnull(rtrim(m.AcCode), '') + ' (deleted)'
                        else a.AcName end as AcName,
                    case when a.AcStatus = 'HD' then a.AcNodes else a.ParentID end as SubNodes
                from (
                    select u.AcCode, sum(case when g.Sign > 0 then u.OpenDr else 0 - u.OpenCr end) as Opening,
                        sum(case when g.Sign > 0 then u.Dr end) as Dr, sum(case when g.Sign > 0 then u.Cr end) as Cr,
                        sum(case when g.Sign > 0 then u.OpenDr + u.Dr else 0 - u.OpenCr - u.Cr end) as Closing
                    from (
                        select AcCode, isnull(sum(DrAmt), 0) as OpenDr, isnull(sum(CrAmt), 0) as OpenCr, 0 as Dr, 0 as Cr
                        from DetJV where VouDate < @from group by AcCode
                        union all select AcCode, 0, 0, isnull(sum(DrAmt), 0), isnull(sum(CrAmt), 0)
                        from DetJV where VouDate >= @from and VouDate <= @end group by AcCode
                        union all select RowID, OpenBal, 0, 0, 0 from Accounts where OpenBal <> 0
                    ) u cross join (select 1 as Sign union all select 0 - 1) g group by u.AcCode
                ) m left join Accounts a on a.RowID = m.AcCode
                where m.Opening <> 0 or m.Dr <> 0 or m.Cr <> 0
            ) n left join Accounts s on s.RowID = (select min(RowID) from Accounts where AcStatus = 'HD' and AcNodes = n.SubNodes)
        ) p
end
GO
-- Both ledgers: a row that sums up a voucher names the account of the voucher's lines; the simple one says -1 where
-- these are several, since the report looks the names up. Of a day receipts come first, journals next, payments
-- last; what a bank or the cash account got is a receipt, whatever its voucher is called, so that no overdraft shows
-- that never was.
create procedure AcLedger @account int, @from datetime, @to datetime as
begin
    declare @end datetime
    set @end = convert(datetime, rtrim(year(@to)) + '-' + right('0' + rtrim(month(@to)), 2) + '-' + right('0' + rtrim(day(@to)), 2) + ' 23:59:59.997')
    delete from rptAcLedger
    insert into rptAcLedger (LineOrder, AcCode, VouDate, Naration, DrAmt, CrAmt)
        select 0, @account, @from, 'OPENING BALANCE',
            isnull((select sum(o.Amount) from (
                select OpenBal as Amount from Accounts where RowID = @account
                union all select isnull(DrAmt, 0) - isnull(CrAmt, 0) from DetJV where AcCode = @account and VouDate < @from
            ) o), 0),
            0
    update rptAcLedger set CrAmt = 0 - DrAmt, DrAmt = 0 where DrAmt < 0
    insert into rptAcLedger (LineOrder, AcCode, VouDate, DayOrder, VouStatus, VouNo, EntryNo, CrAc, ChecqNo, Naration, DrAmt, CrAmt)
        select 1, d.AcCode, d.VouDate, case when d.VouStatus in ('JV', 'AR', 'CF') then 1
                when exists (select * from Accounts where RowID = @account and BStatus = 'B')
                    or exists (select * from VouSetting where VouStatus in ('CP', 'CR') and AcCode = rtrim(@account))
                then case when isnull(d.DrAmt, 0) - isnull(d.CrAmt, 0) > 0 then 0 else 2 end
                when d.VouStatus in ('BP', 'CP') then 2 else 0 end,
            d.VouStatus, d.VouNo, d.EntryNo,
            isnull(d.CrAc, (select case when min(o.AcCode) = max(o.AcCode) then min(o.AcCode) when min(o.AcCode) < max(o.AcCode) then 0 - 1 end
                from DetJV o where o.VouStatus = d.VouStatus and o.VouNo = d.VouNo and o.CrAc = d.AcCode)),
            d.ChecqNo, d.Naration, isnull(d.DrAmt, 0), isnull(d.CrAmt, 0)
        from DetJV d where d.AcCode = @account and d.VouDate >= @from and d.VouDate <= @end
end
GO
-- The opening row names '' as the other account, so that the report knows the detailed form without movements too.
create procedure DetailAcLedger @account int, @day1 int, @month1 int, @year1 int, @day2 int, @month2 int, @year2 int as
begin
    declare @from datetime, @end datetime
    set @from = convert(datetime, rtrim(@year1) + '-' + right('0' + rtrim(@month1), 2) + '-' + right('0' + rtrim(@day1), 2))
    set @end = convert(datetime, rtrim(@year2) + '-' + right('0' + rtrim(@month2), 2) + '-' + right('0' + rtrim(@day2), 2) + ' 23:59:59.997')
    delete from rptAcLedger
    insert into rptAcLedger (LineOrder, AcCode, VouDate, CrAcName, Naration, DrAmt, CrAmt)
        select 0, @account, @from, '', 'OPENING BALANCE',
            isnull((select sum(o.Amount) from (
                select OpenBal as Amount from Accounts where RowID = @account
                union all select isnull(DrAmt, 0) - isnull(CrAmt, 0) from DetJV where AcCode = @account and VouDate < @from
            ) o), 0),
            0
    update rptAcLedger set CrAmt = 0 - DrAmt, DrAmt = 0 where DrAmt < 0
    insert into rptAcLedger (LineOrder, AcCode, VouDate, DayOrder, VouStatus, VouNo, EntryNo, CrAc, CrAcName, ChecqNo, FileNo, BillNo, Naration, DrAmt, CrAmt)
        select 1, d.AcCode, d.VouDate, case when d.VouStatus in ('JV', 'AR', 'CF') then 1
                when exists (select * from Accounts where RowID = @account and BStatus = 'B')
                    or exists (select * from VouSetting where VouStatus in ('CP', 'CR') and AcCode = rtrim(@account))
                then case when isnull(d.DrAmt, 0) - isnull(d.CrAmt, 0) > 0 then 0 else 2 end
                when d.VouStatus in ('BP', 'CP') then 2 else 0 end,
            d.VouStatus, d.VouNo, d.EntryNo,
            isnull(d.CrAc, (select case when min(o.AcCode) = max(o.AcCode) then min(o.AcCode) end
                from DetJV o where o.VouStatus = d.VouStatus and o.VouNo = d.VouNo and o.CrAc = d.AcCode)),
            case when d.CrAc is null
                then (select case when min(o.AcCode) = max(o.AcCode) then min(a.AcName)
                        when min(o.AcCode) < max(o.AcCode) then 'VARIOUS ACCOUNTS' end
                    from DetJV o left join Accounts a on a.RowID = o.AcCode
                    where o.VouStatus = d.VouStatus and o.VouNo = d.VouNo and o.CrAc = d.AcCode)
                else (select AcName from Accounts where RowID = d.CrAc) end,
            d.ChecqNo, d.FileNo, d.BillNo, d.Naration, isnull(d.DrAmt, 0), isnull(d.CrAmt, 0)
        from DetJV d where d.AcCode = @account and d.VouDate >= @from and d.VouDate <= @end
end
GO
-- 0 for course or subject is all of them. What a subject received is what came with the application, by fee
-- receipts and by being carried forward, over all sessions.
create procedure CreatStuWiseDet @session int, @course int, @subject int as
begin
    delete from rptStudentDetail
    insert into rptStudentDetail (AppID, CusCode, RegNo, StuName, FatherName, CellNo, SessionID, SessionName, CourseId, CourseName,
            SubID, SubName, SubAmt, Discount, NetAmount, Received, OutStanding, inactive)
        select p.AppID, p.CusCode, p.RegNo, p.StuName, p.FatherName, p.CellNo, p.SessionID, n.SessionName, p.CourseId, c.CourseName,
            p.SubID, p.SubName, p.SubAmt, p.Discount, p.NetAmount, p.Received, isnull(p.NetAmount - p.Received, 0), p.InActive
        from (select m.AppID, m.CusCode, m.RegNo, m.StuName, m.FatherName, m.CellNo, m.SessionID, s.CourseId, d.SubID, s.SubName,
                d.SubAmt, d.Discount, d.NetAmount, d.InActive,
                isnull(d.RecAmount, 0) + isnull((select sum(CrAmt) from DetJV
                    where AcCode = m.CusCode and SubID = d.SubID and VouStatus in ('FR', 'CF')), 0) as Received
            from tblMasApp m join tblDetApp d on d.AppID = m.AppID left join tblSubject s on s.SubId = d.SubID
            where m.SessionID = @session and (@course = 0 or s.CourseId = @course) and (@subject = 0 or d.SubID = @subject)) p
        left join (select SessionId, min(SessionName) as SessionName from tblSession group by SessionId) n on n.SessionId = p.SessionID
        left join (select CourseId, min(CourseName) as CourseName from tblCourse group by CourseId) c on c.CourseId = p.CourseId
end
