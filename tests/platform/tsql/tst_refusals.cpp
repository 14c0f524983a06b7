#include "written_catalog.h"

#include "tests/support/rows.h"
#include <QTest>

using zel::test::columns;
using zel::test::row;

using zel::secret;
using zel::Sql;
using zel::operator""_sql;

namespace {

constexpr const char *Schema = R"(
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
)";

} // namespace

/// What is refused before any engine sees it: the server's number, and the place.

class tst_refusals : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void refused_data() {
        columns<QString, int>("statement", "number");
        // A ^ in the statement marks the place that the refusal must name.
        const auto row = [](int number, const char *statement) {
            zel::test::row(statement, statement, number);
        };
        // Which rows an index holds.
        row(10735, "create index i on Accounts (AcName) where OpenBal ^> 3");
        row(10735, "create index i on Accounts (AcName) where len(AcName) ^is not null");
        row(207, "create index i on Accounts (AcName) where ^nowhere is not null");
        // Words and signs.
        row(102, "selec ^* from Accounts");
        row(102, "select * from Accounts where RowID = ^");
        row(102, "select 1^)");
        row(105, "select * from Accounts where AcName=^'abc");
        row(105, "select * from ^[Accounts");
        row(113, "select 1^/* open");
        row(156, "select * from Accounts where RowID = ^order by RowID");
        row(156, "select 1\n, ^from Accounts");
        row(102, "select 1 as x ^Two 1");
        row(102, "select ^?");
        row(156, "^while 1=1 select 1");
        row(156, "^truncate table Accounts");
        row(156, "select AcStatus union ^order by 1");
        row(243, "create table t (a int, b ^blob)");
        row(243, "select cast('x' as ^datetime2)");
        row(4145, "select * from Accounts where ^RowID");
        row(102, "select (1^=1)");
        // Names.
        row(207, "select * from Accounts where ^nosuch = 1");
        row(207, "select * from tblSession where SessionId =^ABC");
        row(207, "select x=RowID from Accounts where ^x=1");
        row(207, "update Accounts set ^nosuch=1");
        row(208, "select * from ^nosuch");
        row(208, "select * from ^other..Accounts");
        row(208, "delete from ^nosuch");
        row(209, "select ^AcName from Accounts a, Accounts b");
        row(4104, "select ^b.RowID from Accounts a");
        row(4104, "select ^Accounts.RowID from Accounts a");
        row(1013, "select 1 from Accounts a join ^tblSession a on 1=1");
        row(195, "select ^nosuchfn(1)");
        row(137, "select ^@x");
        // Variables and ways.
        row(137, "declare @a int = ^@a");
        row(137, "create procedure P @a int as select ^@b");
        row(134, "declare @x int, ^@X int");
        row(134, "create procedure P @a int as declare ^@a int");
        row(102, "set ^@@rowcount = 1");
        row(141, "declare @a int select @a = 1, ^AcName from Accounts");
        row(199, "declare @a int insert into tblSession (SessionId) select ^@a = 1");
        row(10734, "declare @a int select ^@a = 1 union all select 2");
        row(102, "declare @a int select (select @a ^= 1)");
        row(102, "declare @a int set @a ^+= 1");
        row(178, "^return 5");
        row(111, "select 1 create ^procedure P as select 2");
        row(156, "create procedure P as ^while 1=1 select 1");
        row(156, "if 1=1 select 1 select 2 ^else select 3");
        row(156, "declare @c ^cursor");
        row(156, "declare @t ^table (a int)");
        row(102, "Two 1 ^output");
        row(102, "create procedure P @a int ^output as select 1");
        row(156, "select RowID ^into #t from Accounts");
        row(102, "create table ^##t (a int)");
        row(102, "create procedure ^#P as select 1");
        row(156, "select * from nosuch select ^from Accounts"); // the whole text is read before its meaning
        row(174, "select ^isnull(1)");
        // Queries.
        row(116, "select (^select AcName,AcStatus from Accounts)");
        row(147, "select 1 from Accounts where ^max(RowID) = 1");
        row(8120, "select AcStatus,^AcName from Accounts group by AcStatus");
        row(8120, "select ^AcName,count(*) from Accounts");
        row(108, "select AcName from Accounts order by ^2");
        row(1060, "select top ^9999999999999999999 * from Accounts");
        row(145, "select distinct AcName from Accounts order by ^AcStatus");
        row(205, "select 1 union all ^select 1,2");
        row(205, "select 1,2 union select 3,4 union ^select 1");
        row(104, "select AcName from Accounts union select 'x' order by ^AcStatus");
        row(8120, "select AcStatus,(select count(*) from tblSession where SessionName=^AcName) from Accounts "
                  "group by "
                  "AcStatus");
        row(8120, "select 1 from Accounts group by AcStatus having exists (select 1 where ^AcName='x')");
        row(8124, "select (select ^max(a.AcName) from tblSession) from Accounts a");
        row(130, "select sum((^select 1)) from Accounts");
        // A comma binds weaker than a join.
        row(4104, "select 1 from Accounts a, tblSession b left join Accounts c on ^a.RowID=c.RowID");
        row(207, "select 1 from Accounts a, tblSession b join tblSession c on ^AcName='x'");
        // Values that do not convert.
        row(245, "select * from Accounts where RowID =  ^'abc'");
        row(245, "select case when ^'12.0'=12 then 1 end");
        row(8114, "select * from Accounts where OpenBal = ^'1,000'");
        row(8114, "select * from Accounts where OpenBal = ^''");
        row(241, "select * from Accounts where openDate = ^'abc'");
        row(242, "select * from Accounts where openDate = ^'31/12/2024'");
        row(242, "select * from Accounts where openDate = ^'2024-02-30'");
        row(220, "select cast(^99999 as smallint)");
        row(244, "select cast(^'256' as tinyint)");
        row(220, "select cast(^-1 as tinyint)");
        row(102, "select ^0x1F");
        row(1007, "select ^1.00000000000000000000000000000000000001");
        row(4151, "select ^nullif(null,1)");
        row(168, "update Accounts set OpenBal = ^1e999");
        row(168, "Two ^1.5e-400");
        row(206, "select cast(^openDate as int) from Accounts");
        row(206, "select cast(openDate as date)^+1 from Accounts");
        row(402, "select 1^-openDate from Accounts");
        row(155, "select dateadd(^fortnight,1,openDate) from Accounts");
        row(1023, "select dateadd(^'day',1,openDate) from Accounts");
        row(9810, "select ^dateadd(hour,1,cast(openDate as date)) from Accounts");
        row(8116, "select ^month(null)");
        row(130, "select sum((^select 1)) from Accounts");
        // Changes.
        row(8152, "insert into Accounts (AcStatus,AcName) values ('DD',^'elf letters')");
        row(8152, "update Accounts set AcName=^'elf letters'");
        row(8115, "update Accounts set OpenBal=^1000");
        row(515, "^insert into Accounts (AcName) values ('x')");
        row(515, "update Accounts set AcStatus=^null");
        row(544, "insert into Accounts (^RowID,AcStatus) values (1,'DD')");
        row(8102, "Update Accounts set ^RowID = 50 where rowid = 1");
        row(264, "update Accounts set AcName='a',^AcName='b'");
        row(4104, "update Accounts set ^a.AcName='x'");
        row(8154, "update ^Accounts set AcName='x' from Accounts a, Accounts b");
        row(8154, "delete ^Accounts from Accounts a, Accounts b");
        row(208, "delete ^a from tblSession b");
        row(4418, "delete ^a from (select 1 as x) a");
        row(109, "insert into tblSession (SessionId,SessionName) values ^(1)");
        row(213, "insert into tblSession values ^(1,'a','b')");
        row(2714, "create table ^Accounts (a int)");
        row(3701, "drop table ^nosuch");
        row(2705, "create table t (a int,^A int)");
        row(2749, "create table t (^a varchar(5) identity)");
        row(102, "create table t (a int identity(1,^2))");
        row(102, "create table t (a int identity(^0,1))");
        // Procedures.
        row(2812, "exec ^nosuch 1");
        row(201, "^Two");
        row(8144, "Two 1,'a',^3");
        row(8145, "Two 1,^@c=3");
        row(8114, "Two ^'x'");
        row(102, "Two 1^AB,'x'");
        row(102, "Two A^-B");
        row(102, "Two ^,'x'");
        row(156, "Two ^open,'x'");
        row(201, "exec ^Two");
    }

    void refused() {
        QFETCH(QString, statement);
        QFETCH(int, number);
        const auto place = statement.indexOf(u'^');
        const QString before = statement.first(place);
        statement.remove(place, 1);
        QString description;
        QCOMPARE(m_catalog.refusal(Sql::trusted(statement.toStdString()), &description), number);
        const QString named = QStringLiteral("\nLine %1, column %2:\n")
                                  .arg(before.count(u'\n') + 1)
                                  .arg(place - before.lastIndexOf(u'\n'));
        QVERIFY2(description.contains(named), qPrintable(description));
    }

    /// Of a long line the part around the place is shown, the caret below its first letter.
    void longLines() {
        const Sql filling = "and AcName <> '"_sql + QString(200, QChar(0xD1)) + "' ";
        QString description;
        QCOMPARE(m_catalog.refusal("select * from Accounts where 1 = 1 "_sql + filling + "and nowhere = 1 " +
                                       filling,
                                   &description),
                 207);
        const QStringList lines = description.split(u'\n');
        const QString &shown = lines.at(lines.size() - 2);
        QCOMPARE(shown.mid(lines.last().indexOf(u'^'), 8), QStringLiteral("nowhere "));
        QVERIFY2(shown.size() <= 80, qPrintable(shown));
    }

    /// A failure in a procedure names the place in the procedure's own text.
    void inProcedures() {
        QString description;
        QCOMPARE(m_catalog.refusal("exec Wrong"_sql, &description), 207);
        QVERIFY2(description.contains(QStringLiteral("Line 3, column 8:\nSELECT nowhere")),
                 qPrintable(description));
        QCOMPARE(m_catalog.refusal("exec Endless"_sql), 217);
    }

    void caret() {
        QString description;
        QCOMPARE(m_catalog.refusal("select 1\nselect 'Ñandú', nosuch from Accounts"_sql, &description), 207);
        QCOMPARE(description, "Invalid column name 'nosuch'.\n"
                              "Line 2, column 17:\n"
                              "select 'Ñandú', nosuch from Accounts\n"
                              "                ^");
    }

    void secrets_data() {
        QTest::addColumn<QString>("statement"); // what stands between braces is a secret piece
        QTest::addColumn<QString>("description");
        const auto row = [](const char *statement, const char *description) {
            zel::test::row(statement, QString(statement), QString(description));
        };
        row("select * from Accounts where AcName= '{it's}'",
            "Unclosed quotation mark after the character string '***'.\nLine 1, column 42:\n"
            "select * from Accounts where AcName= '***'\n                                         ^");
        row("select * from Accounts where AcName= '{O'Accounts}'",
            "Unclosed quotation mark after the character string '***'.\nLine 1, column 42:\n"
            "select * from Accounts where AcName= '***'\n                                         ^");
        row("select * from Accounts where RowID= '{abc}'",
            "Conversion failed when converting the varchar value '***' to data type int.\nLine 1, column "
            "37:\n"
            "select * from Accounts where RowID= '***'\n                                    ^");
        row("select * from Accounts where RowID= {pw} or 1=1",
            "Invalid column name '***'.\nLine 1, column 37:\n"
            "select * from Accounts where RowID= *** or 1=1\n                                    ^");
        row("select * from Accounts where AcName= '{pw}' and Accounts.nosuch=1",
            "Invalid column name 'nosuch'.\nLine 1, column 48:\n"
            "select * from Accounts where AcName= '***' and Accounts.nosuch=1\n"
            "                                               ^");
        row("select * from Accounts where AcName= '{nosuch}' and nosuch=1",
            "Invalid column name '***'.\nLine 1, column 48:\n"
            "select * from Accounts where AcName= '***' and nosuch=1\n"
            "                                               ^");
        // Of the procedures that keep logins all arguments are, whoever wrote them.
        row("sp_password order,'new','x'", "Incorrect syntax near the keyword '***'.\nLine 1, column 13:\n"
                                           "sp_password ***,***,***\n            ^");
        row("select 1\nexec SP_AddLogin 'a', 'b' 'c'\nselect * from nosuch",
            "Incorrect syntax near '***'.\nLine 2, column 27:\nexec SP_AddLogin ***, *** ***\n"
            "                          ^");
        row("sp_addlogin 'a', 'b'\nselect * from nosuch",
            "Invalid object name 'nosuch'.\nLine 2, column 15:\nselect * from nosuch\n              ^");
        row("[sp_password] 'it's','new'", "Unclosed quotation mark after the character string '***'.\n"
                                          "Line 1, column 13:\n[sp_password***\n            ^");
    }

    void secrets() {
        QFETCH(QString, statement);
        QFETCH(QString, description);
        Sql text = Sql::trusted(statement.section(u'{', 0, 0).toStdString());
        if (statement.contains(u'{')) {
            text += secret(statement.section(u'{', 1).section(u'}', 0, 0));
            text += Sql::trusted(statement.section(u'}', 1).toStdString());
        }
        QString told;
        QVERIFY(m_catalog.refusal(text, &told) != 0);
        QCOMPARE(told, description);
    }

    void deepExpressions() {
        const std::string nested = "select " + std::string(50'000, '(') + '1' + std::string(50'000, ')');
        QCOMPARE(m_catalog.refusal(Sql::trusted(nested)), 191);
        std::string blocks = "create procedure P as ";
        std::string choices;
        for (int i = 0; i < 50'000; ++i) {
            blocks += "begin ";
            choices += "if 1=1 ";
        }
        QCOMPARE(m_catalog.refusal(Sql::trusted(blocks)), 191);
        QCOMPARE(m_catalog.refusal(Sql::trusted(choices)), 191);
    }

private:
    WrittenCatalog m_catalog{Schema};
};

QTEST_APPLESS_MAIN(tst_refusals)
#include "tst_refusals.moc"
