CREATE TABLE T (Id int IDENTITY(1,1) NOT NULL PRIMARY KEY, V varchar(20) NULL, C char(3) NULL, N numeric(18,2) NULL,
    D datetime NULL, I int NULL)
CREATE TABLE U (K int NOT NULL, V varchar(20) NULL, N numeric(18,2) NULL)
CREATE INDEX iDays ON T (I, D)
GO
CREATE PROCEDURE Both @a varchar(3), @n numeric(6,2) = 1.005, @d datetime = '2024-1-2' AS
BEGIN
    DECLARE @sum int, @text varchar(10)
    SET @sum = @n
    SET @text = rtrim(@sum) + '!'
    SELECT a = @a, n = @n, d = @d, s = @sum, t = @text
END
GO
CREATE PROCEDURE Outer1 @x int AS exec Both @x, @n = @x
GO
INSERT INTO T (V,C,N,D,I) VALUES ('Ñandú','ab',0.1,'2024-3-5',1),('ñANDÚ  ','AB ',0.2,'20240305 10:20',2),
    ('Nandu','abc',-1.005,'5 Mar 2024',3),('','',NULL,NULL,NULL),(NULL,NULL,3,'1/2/24',4)
INSERT INTO U (K,V,N) SELECT I,V,N FROM T WHERE I IS NOT NULL
