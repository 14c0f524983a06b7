CREATE TABLE Accounts (RowID int IDENTITY(1,1) NOT NULL PRIMARY KEY, ParentID varchar(50) NULL, AcName varchar(10) NULL,
    AcStatus char(2) NOT NULL, OpenBal numeric(5,2) NULL, openDate datetime NULL, Dcode smallint NULL)
GO
CREATE TABLE tblSession (SessionId int NOT NULL, SessionName varchar(50) NULL)
GO
CREATE PROCEDURE Two @a int, @b varchar(5) = 'x' AS SELECT a=@a,b=@b
GO
CREATE PROCEDURE Wrong AS
SELECT 1
SELECT nowhere FROM Accounts
GO
CREATE PROCEDURE Endless AS exec Endless
