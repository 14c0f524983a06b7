CREATE TABLE Accounts (RowID int IDENTITY(1,1) NOT NULL PRIMARY KEY, AcNodes varchar(60) NULL, AcName varchar(100) NULL,
    AcStatus char(2) NULL)
CREATE TABLE VouSetting (VouStatus char(2) NULL, AcCode varchar(20) NULL)
CREATE TABLE MasJV (VouNo int NOT NULL, VouStatus char(2) NOT NULL, VouDate datetime NULL, TotalAmount numeric(18,2) NULL)
CREATE TABLE DetJV (VouNo int NOT NULL, VouStatus char(2) NOT NULL, VouDate datetime NULL, EntryNo smallint NULL,
    AcCode int NULL, SubID int NULL, CrAc int NULL, DrAmt numeric(18,2) NULL, CrAmt numeric(18,2) NULL, Naration varchar(200) NULL)
CREATE TABLE tblMasApp (AppID int NOT NULL, StuName varchar(100) NULL)
CREATE INDEX iApplication ON tblMasApp (AppID)
CREATE INDEX iNodes ON Accounts (AcNodes)
CREATE INDEX iMasVoucher ON MasJV (VouStatus, VouNo)
CREATE INDEX iVoucher ON DetJV (VouStatus, VouNo, DrAmt)
CREATE INDEX iAccount ON DetJV (AcCode, VouDate, DrAmt, CrAmt)
CREATE INDEX iContra ON DetJV (CrAc, VouDate)
CREATE INDEX iSubject ON DetJV (AcCode, SubID, VouStatus, CrAmt) WHERE SubID IS NOT NULL
