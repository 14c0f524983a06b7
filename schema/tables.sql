-- Accounts: the chart of accounts, three levels.
create table Accounts (
    RowID int identity(1,1) not null primary key,
    ParentID varchar(50) null,
    Dcode smallint null,
    AcNodes varchar(60) null,
    AcName varchar(100) null,
    AcStatus char(2) null,
    OrderStatus int null,
    OpenBal numeric(18,2) null,
    openDate datetime null,
    BStatus char(1) null,
    GST varchar(20) null,
    NTN varchar(20) null,
    ContactPer varchar(60) null,
    Addr varchar(150) null,
    Addr2 varchar(150) null,
    Contact varchar(60) null,
    Fax varchar(60) null,
    Email varchar(60) null,
    WebSite varchar(60) null,
    Location varchar(60) null
)
GO
-- Voucher headers and lines, tied by VouNo and VouStatus.
create table MasJV (
    VouNo int not null,
    VouStatus char(2) not null,
    VouDate datetime null,
    PaidReceive varchar(100) null,
    TotalAmount numeric(18,2) null,
    [Login] varchar(50) null,
    SlipNo varchar(20) null,
    IRStatus varchar(4) null,
    ChecqNo varchar(20) null
)
GO
create table DetJV (
    VouNo int not null,
    VouStatus char(2) not null,
    VouDate datetime null,
    EntryNo smallint null,
    AcCode int null,
    CrAc int null,
    DrAmt numeric(18,2) null,
    CrAmt numeric(18,2) null,
    ChecqNo varchar(20) null,
    Naration varchar(200) null,
    FileNo varchar(10) null,
    BillNo varchar(10) null,
    SessionID int null,
    SubID int null
)
GO
-- Voucher setup: start numbers and accounts are texts, since an empty box is stored as ''.
create table VouSetting (
    VouNo varchar(20) null,
    VouStatus char(2) null,
    AcCode varchar(20) null,
    AcStatus char(2) null,
    Fix char(1) null,
    OthAcCode varchar(20) null,
    ITaxAc varchar(20) null,
    STaxAc varchar(20) null
)
GO
-- The institute.
create table tblSession (
    SessionId int not null,
    SessionName varchar(50) null
)
GO
create table tblCourse (
    CourseId int not null,
    CourseName varchar(50) null,
    Coursedurration varchar(20) null,
    MonthYear varchar(5) null
)
GO
create table tblSubject (
    SubId int not null,
    CourseId int null,
    SubName varchar(50) null,
    TotAmt numeric(18,2) null
)
GO
create table tblMasApp (
    AppID int not null,
    CusCode int null,
    SessionID int null,
    RegNo varchar(30) null,
    StuName varchar(100) null,
    FatherName varchar(100) null,
    NIC varchar(20) null,
    CellNo varchar(30) null,
    Contact varchar(30) null,
    Office varchar(30) null,
    Email varchar(60) null,
    MailAdd varchar(150) null,
    LastQulS varchar(60) null,
    AudCompany varchar(60) null,
    ExamAtt varchar(30) null,
    ModPart varchar(30) null,
    SectionAtoZ char(1) null,
    AppDate datetime null,
    FixDate datetime null,
    RegFee numeric(18,2) null,
    TotAmt numeric(18,2) null,
    CashReceive numeric(18,2) null,
    Nerration varchar(200) null,
    User_Name varchar(50) null
)
GO
create table tblDetApp (
    AppID int not null,
    SubID int null,
    SubAmt numeric(18,2) null,
    Discount numeric(18,2) null,
    NetAmount numeric(18,2) null,
    RecAmount numeric(18,2) null,
    Nerration varchar(50) null,
    InActive char(1) null
)
GO
create table tblMasCarryForw (
    FormID int not null,
    FormDate datetime null,
    AppID int null
)
GO
create table tblDetCarryForw (
    FormID int not null,
    FormDate datetime null,
    AppID int null,
    SubjectID int null,
    SessionID int null,
    PreSessionID int null,
    ForAmt numeric(18,2) null,
    Naration varchar(50) null
)
GO
-- Administration.
create table Company (
    CompCode int identity(1,1) not null primary key,
    Company varchar(100) null,
    comTel varchar(50) null,
    comFax varchar(50) null,
    comAddr varchar(150) null,
    comEmail varchar(60) null,
    comWebSite varchar(60) null,
    comTax varchar(20) null,
    comNTN varchar(20) null,
    comActive char(1) null
)
GO
create table User_Information (
    Row_No int not null,
    User_Code varchar(20) null,
    User_Name varchar(50) null,
    Designation varchar(50) null,
    PassWard varchar(50) null,
    Status char(1) null
)
GO
create table Menus (
    Menus varchar(60) null,
    Active char(1) null
)
GO
create table LctPswd (
    Pswd varchar(50) null
)
GO
create table tbl_Tele_Directory (
    Row_No int not null,
    Code_No varchar(50) null,
    Client_Name varchar(60) null,
    Company varchar(60) null,
    Contact_Per varchar(60) null,
    Tele_No varchar(40) null,
    Mob_No varchar(40) null,
    Fax_NO varchar(40) null,
    Email varchar(60) null,
    WebSite varchar(60) null,
    Location varchar(60) null,
    City varchar(40) null,
    Country varchar(40) null,
    Address varchar(150) null
)
GO
-- Work tables, refilled by a procedure before each report. Of a trial balance: one row an account that has an
-- opening or movements, with its place in the chart; Opening is a debit when positive. HeadOrder, SubOrder and
-- AcOrder put the codes in the order of their numbers, what has no control account last.
create table rptTrialBalance (
    AcCode int null,
    AcNodes varchar(60) null,
    AcName varchar(100) null,
    AcStatus char(2) null,
    AcOrder int null,
    SubNodes varchar(60) null,
    SubName varchar(100) null,
    SubOrder varchar(70) null,
    HeadNodes varchar(60) null,
    HeadName varchar(100) null,
    HeadOrder varchar(60) null,
    Opening numeric(18,2) null,
    OpenDr numeric(18,2) null,
    OpenCr numeric(18,2) null,
    PeriodDr numeric(18,2) null,
    PeriodCr numeric(18,2) null,
    CloseDr numeric(18,2) null,
    CloseCr numeric(18,2) null
)
GO
-- Of a ledger: LineOrder 0 is the one opening row, which always stands; LineOrder 1 are the movements, DayOrder
-- puts those of a day in order. The contra account's name and the numbers of file and bill are the detail ledger's only.
create table rptAcLedger (
    LineOrder smallint null,
    AcCode int null,
    VouDate datetime null,
    DayOrder smallint null,
    VouStatus char(2) null,
    VouNo int null,
    EntryNo smallint null,
    CrAc int null,
    CrAcName varchar(100) null,
    ChecqNo varchar(20) null,
    FileNo varchar(10) null,
    BillNo varchar(10) null,
    Naration varchar(200) null,
    DrAmt numeric(18,2) null,
    CrAmt numeric(18,2) null
)
GO
-- Of the student reports: one row a student and subject; inactive is '1' or NULL.
create table rptStudentDetail (
    AppID int null,
    CusCode int null,
    RegNo varchar(30) null,
    StuName varchar(100) null,
    FatherName varchar(100) null,
    CellNo varchar(30) null,
    SessionID int null,
    SessionName varchar(50) null,
    CourseId int null,
    CourseName varchar(50) null,
    SubID int null,
    SubName varchar(50) null,
    SubAmt numeric(18,2) null,
    Discount numeric(18,2) null,
    NetAmount numeric(18,2) null,
    Received numeric(18,2) null,
    OutStanding numeric(18,2) null,
    inactive char(1) null
)
GO
-- Named by statements and reports that no menu reaches.
create table tblCatagory (
    CataID int null,
    Status varchar(20) null,
    Catagory varchar(20) null
)
GO
create table tblApplication (
    PlotNo varchar(20) null,
    Type varchar(20) null,
    CusCode int null,
    CataID int null,
    RegNo varchar(20) null
)
GO
create table tbl_PurFormMaster (
    GrnDate datetime null
)
GO
create table tbl_Request_Master (
    Req_Date datetime null
)
