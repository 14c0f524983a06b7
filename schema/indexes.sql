create index ixDetJVVoucher on DetJV (VouStatus, VouNo, DrAmt)
GO
create index ixDetJVAccount on DetJV (AcCode, VouDate, DrAmt, CrAmt)
GO
create index ixDetJVDate on DetJV (VouDate)
GO
create index ixDetJVSubject on DetJV (AcCode, SubID, VouStatus, CrAmt) where SubID is not null
GO
create index ixMasJVVoucher on MasJV (VouStatus, VouNo)
GO
create index ixAccountsNodes on Accounts (AcNodes)
GO
create index ixAccountsParent on Accounts (ParentID, Dcode)
GO
create index ixMasAppKey on tblMasApp (AppID)
GO
create index ixMasAppAccount on tblMasApp (CusCode)
GO
create index ixMasAppSession on tblMasApp (SessionID)
GO
create index ixDetAppSubject on tblDetApp (AppID, SubID)
GO
create index ixSubjectCourse on tblSubject (CourseId)
GO
create index ixDetCarryForm on tblDetCarryForw (FormID)
GO
create index ixDetCarryApplication on tblDetCarryForw (AppID)
GO
create index ixSubjectKey on tblSubject (SubId)
GO
