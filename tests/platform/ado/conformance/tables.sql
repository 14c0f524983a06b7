CREATE TABLE Accounts (
  RowID int IDENTITY(1,1) NOT NULL PRIMARY KEY,
  ParentID varchar(50) NULL,
  Dcode smallint NULL,
  AcNodes varchar(60) NULL,
  AcName varchar(100) NULL,
  AcStatus char(2) NULL,
  OrderStatus int NULL,
  OpenBal numeric(18,2) NULL,
  openDate datetime NULL,
  BStatus char(1) NULL,
  GST varchar(20) NULL,
  NTN varchar(20) NULL,
  ContactPer varchar(60) NULL,
  Addr varchar(150) NULL,
  Addr2 varchar(150) NULL,
  Contact varchar(60) NULL,
  Fax varchar(60) NULL,
  Email varchar(60) NULL,
  WebSite varchar(60) NULL,
  Location varchar(60) NULL
)
GO
CREATE TABLE MasJV (
  VouNo int NOT NULL,
  VouStatus char(2) NOT NULL,
  VouDate datetime NULL,
  PaidReceive varchar(100) NULL,
  TotalAmount numeric(18,2) NULL,
  [Login] varchar(50) NULL,
  SlipNo varchar(20) NULL,
  IRStatus varchar(4) NULL,
  ChecqNo varchar(20) NULL
)
GO
CREATE TABLE DetJV (
  VouNo int NOT NULL,
  VouStatus char(2) NOT NULL,
  VouDate datetime NULL,
  EntryNo smallint NULL,
  AcCode int NULL,
  CrAc int NULL,
  DrAmt numeric(18,2) NULL,
  CrAmt numeric(18,2) NULL,
  ChecqNo varchar(20) NULL,
  Naration varchar(200) NULL,
  FileNo varchar(10) NULL,
  BillNo varchar(10) NULL,
  SessionID int NULL,
  SubID int NULL
)
GO
CREATE TABLE VouSetting (
  VouNo varchar(20) NULL,
  VouStatus char(2) NULL,
  AcCode varchar(20) NULL,
  AcStatus char(2) NULL,
  Fix char(1) NULL,
  OthAcCode varchar(20) NULL,
  ITaxAc varchar(20) NULL,
  STaxAc varchar(20) NULL
)
GO
CREATE TABLE tblSession (SessionId int NOT NULL, SessionName varchar(50) NULL)
GO
CREATE TABLE tblCourse (CourseId int NOT NULL, CourseName varchar(50) NULL, Coursedurration varchar(20) NULL, MonthYear varchar(5) NULL)
GO
CREATE TABLE tblSubject (SubId int NOT NULL, CourseId int NULL, SubName varchar(50) NULL, TotAmt numeric(18,2) NULL)
GO
CREATE TABLE tblMasApp (
  AppID int NOT NULL,
  CusCode int NULL,
  SessionID int NULL,
  RegNo varchar(30) NULL,
  StuName varchar(100) NULL,
  FatherName varchar(100) NULL,
  NIC varchar(20) NULL,
  CellNo varchar(30) NULL,
  Contact varchar(30) NULL,
  Office varchar(30) NULL,
  Email varchar(60) NULL,
  MailAdd varchar(150) NULL,
  LastQulS varchar(60) NULL,
  AudCompany varchar(60) NULL,
  ExamAtt varchar(30) NULL,
  ModPart varchar(30) NULL,
  SectionAtoZ char(1) NULL,
  AppDate datetime NULL,
  FixDate datetime NULL,
  RegFee numeric(18,2) NULL,
  TotAmt numeric(18,2) NULL,
  CashReceive numeric(18,2) NULL,
  Nerration varchar(200) NULL,
  User_Name varchar(50) NULL
)
GO
CREATE TABLE tblDetApp (
  AppID int NOT NULL,
  SubID int NULL,
  SubAmt numeric(18,2) NULL,
  Discount numeric(18,2) NULL,
  NetAmount numeric(18,2) NULL,
  RecAmount numeric(18,2) NULL,
  Nerration varchar(50) NULL,
  InActive char(1) NULL
)
GO
CREATE TABLE tblMasCarryForw (FormID int NOT NULL, FormDate datetime NULL, AppID int NULL)
GO
CREATE TABLE tblDetCarryForw (
  FormID int NOT NULL, FormDate datetime NULL, AppID int NULL, SubjectID int NULL,
  SessionID int NULL, PreSessionID int NULL, ForAmt numeric(18,2) NULL, Naration varchar(50) NULL
)
GO
CREATE TABLE Company (
  CompCode int IDENTITY(1,1) NOT NULL PRIMARY KEY,
  Company varchar(100) NULL,
  comTel varchar(50) NULL,
  comFax varchar(50) NULL,
  comAddr varchar(150) NULL,
  comEmail varchar(60) NULL,
  comWebSite varchar(60) NULL,
  comTax varchar(20) NULL,
  comNTN varchar(20) NULL,
  comActive char(1) NULL
)
GO
CREATE TABLE User_Information (
  Row_No int NOT NULL, User_Code varchar(20) NULL, User_Name varchar(50) NULL,
  Designation varchar(50) NULL, PassWard varchar(50) NULL, Status char(1) NULL
)
GO
CREATE TABLE Menus (Menus varchar(60) NULL, Active char(1) NULL)
GO
CREATE TABLE LctPswd (Pswd varchar(50) NULL)
GO
CREATE TABLE tbl_Tele_Directory (
  Row_No int NOT NULL, Code_No varchar(50) NULL, Client_Name varchar(60) NULL, Company varchar(60) NULL,
  Contact_Per varchar(60) NULL, Tele_No varchar(40) NULL, Mob_No varchar(40) NULL, Fax_NO varchar(40) NULL,
  Email varchar(60) NULL, WebSite varchar(60) NULL, Location varchar(60) NULL, City varchar(40) NULL,
  Country varchar(40) NULL, Address varchar(150) NULL
)
GO
CREATE TABLE rptStudentDetail (
  AppID int NULL, CusCode int NULL, StuName varchar(100) NULL, SessionID int NULL, CourseId int NULL, SubID int NULL,
  NetAmount numeric(18,2) NULL, Received numeric(18,2) NULL, OutStanding numeric(18,2) NULL, inactive char(1) NULL
)
GO
CREATE TABLE tblCatagory (CataID int NULL, Status varchar(20) NULL, Catagory varchar(20) NULL)
GO
CREATE TABLE tblApplication (PlotNo varchar(20) NULL, Type varchar(20) NULL, CusCode int NULL, CataID int NULL, RegNo varchar(20) NULL)
GO
CREATE TABLE rptTrial (AcCode int NULL, OpenBal numeric(18,2) NULL, Dr numeric(18,2) NULL, Cr numeric(18,2) NULL)
GO
CREATE TABLE rptLedger (VouDate datetime NULL, VouStatus char(2) NULL, VouNo int NULL, EntryNo smallint NULL, AcCode int NULL, CrAc int NULL, DrAmt numeric(18,2) NULL, CrAmt numeric(18,2) NULL, Naration varchar(200) NULL)
GO
CREATE PROCEDURE TrialBalance @from varchar(10), @to varchar(10) AS
BEGIN
  DELETE FROM rptTrial
  INSERT INTO rptTrial (AcCode, OpenBal, Dr, Cr)
    SELECT AcCode, 0, SUM(isnull(DrAmt,0)), SUM(isnull(CrAmt,0)) FROM DetJV WHERE VouDate BETWEEN @from AND @to GROUP BY AcCode
END
GO
CREATE PROCEDURE TrialBalance3 @from varchar(10), @to varchar(10) AS
BEGIN
  DELETE FROM rptTrial
  INSERT INTO rptTrial (AcCode, OpenBal, Dr, Cr)
    SELECT a.RowID,
      isnull(a.OpenBal,0) + isnull((SELECT SUM(isnull(DrAmt,0) - isnull(CrAmt,0)) FROM DetJV WHERE AcCode = a.RowID AND VouDate < @from),0),
      isnull((SELECT SUM(DrAmt) FROM DetJV WHERE AcCode = a.RowID AND VouDate BETWEEN @from AND @to),0),
      isnull((SELECT SUM(CrAmt) FROM DetJV WHERE AcCode = a.RowID AND VouDate BETWEEN @from AND @to),0)
    FROM Accounts a WHERE a.AcStatus = 'DD'
END
GO
CREATE PROCEDURE AcLedger @id int, @from varchar(10), @to varchar(10) AS
BEGIN
  DELETE FROM rptLedger
  INSERT INTO rptLedger SELECT VouDate, VouStatus, VouNo, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration
    FROM DetJV WHERE AcCode = @id AND VouDate BETWEEN @from AND @to
END
GO
CREATE PROCEDURE DetailAcLedger @id int, @d1 int, @m1 int, @y1 int, @d2 int, @m2 int, @y2 int AS
BEGIN
  DECLARE @from datetime, @to datetime
  SET @from = convert(datetime, rtrim(@y1) + '-' + right('0' + rtrim(@m1),2) + '-' + right('0' + rtrim(@d1),2))
  SET @to = convert(datetime, rtrim(@y2) + '-' + right('0' + rtrim(@m2),2) + '-' + right('0' + rtrim(@d2),2))
  DELETE FROM rptLedger
  INSERT INTO rptLedger SELECT VouDate, VouStatus, VouNo, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration
    FROM DetJV WHERE AcCode = @id AND VouDate BETWEEN @from AND @to
END
GO
CREATE PROCEDURE CreatStuWiseDet @session int, @course int, @subject int AS
BEGIN
  DELETE FROM rptStudentDetail
  INSERT INTO rptStudentDetail (AppID, CusCode, StuName, SessionID, CourseId, SubID, NetAmount, Received, OutStanding, inactive)
    SELECT m.AppID, m.CusCode, m.StuName, m.SessionID, s.CourseId, d.SubID, d.NetAmount,
      isnull(d.RecAmount,0) + isnull((SELECT SUM(CrAmt) FROM DetJV WHERE AcCode = m.CusCode AND SubID = d.SubID AND VouStatus IN ('FR','CF')),0),
      d.NetAmount - isnull(d.RecAmount,0) - isnull((SELECT SUM(CrAmt) FROM DetJV WHERE AcCode = m.CusCode AND SubID = d.SubID AND VouStatus IN ('FR','CF')),0),
      d.InActive
    FROM tblMasApp m JOIN tblDetApp d ON d.AppID = m.AppID LEFT JOIN tblSubject s ON s.SubId = d.SubID
    WHERE m.SessionID = @session AND (@course = 0 OR s.CourseId = @course) AND (@subject = 0 OR d.SubID = @subject)
END
GO
