-- An opening balance stands before every period, whatever its date, and is a debit when positive.
create procedure TrialBalance @from datetime, @to datetime as
begin
    delete from rptTrialBalance
    insert into rptTrialBalance (AcCode, Opening, OpenDr, OpenCr, PeriodDr, PeriodCr)
        select AcCode, 0, 0, 0, sum(isnull(DrAmt, 0)), sum(isnull(CrAmt, 0))
        from DetJV where VouDate >= @from and VouDate <= @to group by AcCode
    update rptTrialBalance set
        CloseDr = case when PeriodDr > PeriodCr then PeriodDr - PeriodCr else 0 end,
        CloseCr = case when PeriodCr > PeriodDr then PeriodCr - PeriodDr else 0 end,
        AcName = (select AcName from Accounts where RowID = rptTrialBalance.AcCode),
        AcNodes = (select rtrim(AcNodes) from Accounts where RowID = rptTrialBalance.AcCode),
        AcStatus = (select AcStatus from Accounts where RowID = rptTrialBalance.AcCode),
        SubNodes = (select rtrim(ParentID) from Accounts where RowID = rptTrialBalance.AcCode)
    update rptTrialBalance set
        SubName = (select min(AcName) from Accounts where AcStatus = 'HD' and AcNodes = rptTrialBalance.SubNodes),
        HeadNodes = (select min(rtrim(ParentID)) from Accounts where AcStatus = 'HD' and AcNodes = rptTrialBalance.SubNodes)
    update rptTrialBalance set
        HeadName = (select min(AcName) from Accounts where AcStatus = 'HH' and AcNodes = rptTrialBalance.HeadNodes)
end
GO
create procedure TrialBalance3 @from datetime, @to datetime as
begin
    delete from rptTrialBalance
    insert into rptTrialBalance (AcCode, Opening, PeriodDr, PeriodCr)
        select AcCode,
            sum(case when VouDate < @from then isnull(DrAmt, 0) - isnull(CrAmt, 0) else 0 end),
            sum(case when VouDate >= @from then isnull(DrAmt, 0) else 0 end),
            sum(case when VouDate >= @from then isnull(CrAmt, 0) else 0 end)
        from DetJV where VouDate <= @to or VouDate < @from group by AcCode
    insert into rptTrialBalance (AcCode, Opening, PeriodDr, PeriodCr)
        select RowID, 0, 0, 0 from Accounts a where a.AcStatus = 'DD' and isnull(a.OpenBal, 0) <> 0
            and not exists (select t.AcCode from rptTrialBalance t where t.AcCode = a.RowID)
    update rptTrialBalance set
        Opening = Opening + isnull((select OpenBal from Accounts where RowID = rptTrialBalance.AcCode), 0),
        AcName = (select AcName from Accounts where RowID = rptTrialBalance.AcCode),
        AcNodes = (select rtrim(AcNodes) from Accounts where RowID = rptTrialBalance.AcCode),
        AcStatus = (select AcStatus from Accounts where RowID = rptTrialBalance.AcCode),
        SubNodes = (select rtrim(ParentID) from Accounts where RowID = rptTrialBalance.AcCode)
    delete from rptTrialBalance where Opening = 0 and PeriodDr = 0 and PeriodCr = 0
    update rptTrialBalance set
        OpenDr = case when Opening > 0 then Opening else 0 end,
        OpenCr = case when Opening < 0 then 0 - Opening else 0 end,
        CloseDr = case when Opening + PeriodDr > PeriodCr then Opening + PeriodDr - PeriodCr else 0 end,
        CloseCr = case when PeriodCr > Opening + PeriodDr then PeriodCr - Opening - PeriodDr else 0 end,
        SubName = (select min(AcName) from Accounts where AcStatus = 'HD' and AcNodes = rptTrialBalance.SubNodes),
        HeadNodes = (select min(rtrim(ParentID)) from Accounts where AcStatus = 'HD' and AcNodes = rptTrialBalance.SubNodes)
    update rptTrialBalance set
        HeadName = (select min(AcName) from Accounts where AcStatus = 'HH' and AcNodes = rptTrialBalance.HeadNodes)
end
GO
create procedure AcLedger @account int, @from datetime, @to datetime as
begin
    delete from rptAcLedger
    insert into rptAcLedger (LineOrder, AcCode, VouDate, Naration, DrAmt, CrAmt)
        select 0, @account, @from, 'OPENING BALANCE',
            isnull((select OpenBal from Accounts where RowID = @account), 0)
            + isnull((select sum(isnull(DrAmt, 0) - isnull(CrAmt, 0)) from DetJV where AcCode = @account and VouDate < @from), 0),
            0
    update rptAcLedger set CrAmt = 0 - DrAmt, DrAmt = 0 where DrAmt < 0
    insert into rptAcLedger (LineOrder, AcCode, VouDate, VouStatus, VouNo, EntryNo, Naration, DrAmt, CrAmt)
        select 1, AcCode, VouDate, VouStatus, VouNo, EntryNo, Naration, isnull(DrAmt, 0), isnull(CrAmt, 0)
        from DetJV where AcCode = @account and VouDate >= @from and VouDate <= @to
end
GO
-- The opening row names '' as the other account, so that the report knows the detailed form without movements too.
-- A row that sums up a voucher names the account of the voucher's lines.
create procedure DetailAcLedger @account int, @day1 int, @month1 int, @year1 int, @day2 int, @month2 int, @year2 int as
begin
    declare @from datetime, @to datetime
    set @from = convert(datetime, rtrim(@year1) + '-' + right('0' + rtrim(@month1), 2) + '-' + right('0' + rtrim(@day1), 2))
    set @to = convert(datetime, rtrim(@year2) + '-' + right('0' + rtrim(@month2), 2) + '-' + right('0' + rtrim(@day2), 2))
    delete from rptAcLedger
    insert into rptAcLedger (LineOrder, AcCode, VouDate, CrAcName, Naration, DrAmt, CrAmt)
        select 0, @account, @from, '', 'OPENING BALANCE',
            isnull((select OpenBal from Accounts where RowID = @account), 0)
            + isnull((select sum(isnull(DrAmt, 0) - isnull(CrAmt, 0)) from DetJV where AcCode = @account and VouDate < @from), 0),
            0
    update rptAcLedger set CrAmt = 0 - DrAmt, DrAmt = 0 where DrAmt < 0
    insert into rptAcLedger (LineOrder, AcCode, VouDate, VouStatus, VouNo, EntryNo, CrAc, CrAcName, ChecqNo, FileNo, BillNo, Naration, DrAmt, CrAmt)
        select 1, d.AcCode, d.VouDate, d.VouStatus, d.VouNo, d.EntryNo,
            isnull(d.CrAc, (select case when min(o.AcCode) = max(o.AcCode) then min(o.AcCode) end
                from DetJV o where o.VouStatus = d.VouStatus and o.VouNo = d.VouNo and o.CrAc = d.AcCode)),
            case when d.CrAc is null
                then (select case when min(o.AcCode) = max(o.AcCode) then min(a.AcName)
                        when min(o.AcCode) < max(o.AcCode) then 'VARIOUS ACCOUNTS' end
                    from DetJV o left join Accounts a on a.RowID = o.AcCode
                    where o.VouStatus = d.VouStatus and o.VouNo = d.VouNo and o.CrAc = d.AcCode)
                else (select AcName from Accounts where RowID = d.CrAc) end,
            d.ChecqNo, d.FileNo, d.BillNo, d.Naration, isnull(d.DrAmt, 0), isnull(d.CrAmt, 0)
        from DetJV d where d.AcCode = @account and d.VouDate >= @from and d.VouDate <= @to
end
GO
-- 0 for course or subject is all of them. What a subject received is what came with the application, by fee
-- receipts and by being carried forward, over all sessions.
create procedure CreatStuWiseDet @session int, @course int, @subject int as
begin
    delete from rptStudentDetail
    insert into rptStudentDetail (AppID, CusCode, RegNo, StuName, FatherName, CellNo, SessionID, CourseId, SubID, SubName,
            SubAmt, Discount, NetAmount, Received, inactive)
        select m.AppID, m.CusCode, m.RegNo, m.StuName, m.FatherName, m.CellNo, m.SessionID, s.CourseId, d.SubID, s.SubName,
            d.SubAmt, d.Discount, d.NetAmount,
            isnull(d.RecAmount, 0) + isnull((select sum(CrAmt) from DetJV
                where AcCode = m.CusCode and SubID = d.SubID and VouStatus in ('FR', 'CF')), 0),
            d.InActive
        from tblMasApp m join tblDetApp d on d.AppID = m.AppID left join tblSubject s on s.SubId = d.SubID
        where m.SessionID = @session and (@course = 0 or s.CourseId = @course) and (@subject = 0 or d.SubID = @subject)
    update rptStudentDetail set
        OutStanding = isnull(NetAmount - Received, 0),
        SessionName = (select min(SessionName) from tblSession where SessionId = rptStudentDetail.SessionID),
        CourseName = (select min(CourseName) from tblCourse where CourseId = rptStudentDetail.CourseId)
end
