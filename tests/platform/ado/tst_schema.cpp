#include "catalog_fixture.h"
#include "tests/support/rows.h"

using namespace zel;
using namespace zel::ado;
using namespace zel::test;

namespace {

/// A small institute: cash, a student with two subjects in session 1 (one of them inactive), rent and light.
constexpr char Institute[] = R"(
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus) values ('1', 0, '1', 'ASSETS', 'HH')
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus) values ('1', 1, '1.1', 'CASH AND BANK', 'HD')
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OpenBal, openDate) values ('1.1', 1, '1.1.1', 'CASH', 'DD', 1000.10, '2030-01-01')
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OpenBal) values ('1.1', 2, '1.1.2', 'LOAN', 'DD', -300.25)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus) values ('1.1', 3, '1.1.3', 'RENT', 'DD')
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus) values ('1.1', 4, '1.1.4', 'ALI', 'DD')
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus) values ('1.1', 5, '1.1.5', 'UNUSED', 'DD')
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration) values (1, 'CP', '2024-01-31', 1, 5, 3, 100.05, 0, 'RENT JAN')
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration) values (1, 'CP', '2024-01-31', 2, 3, null, 0, 100.05, 'RENT JAN')
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration, ChecqNo) values (2, 'CP', '2024-02-01', 1, 5, 3, 50, 0, 'RENT FEB', 'C-1')
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration) values (2, 'CP', '2024-02-01', 2, 3, null, 0, 50, 'RENT FEB')
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, SessionID, SubID) values (1, 'FR', '2024-02-29', 1, 3, 6, 700.70, 0, 1, 1)
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, SessionID, SubID) values (1, 'FR', '2024-02-29', 1, 6, 3, 0, 700.70, 1, 1)
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, SessionID, SubID) values (1, 'CF', '2024-03-01', 1, 6, 3, 0, 40, 2, 2)
insert into tblSession values (1, 'SPRING')
insert into tblCourse values (1, 'ACCA', '3', 'Year')
insert into tblSubject values (1, 1, 'AUDIT', 5000)
insert into tblSubject values (2, 1, 'TAX', 60)
insert into tblMasApp (AppID, CusCode, SessionID, StuName) values (1, 6, 1, 'ALI')
insert into tblDetApp (AppID, SubID, SubAmt, Discount, NetAmount, RecAmount, InActive) values (1, 1, 5000, 500, 4500, 1000, null)
insert into tblDetApp (AppID, SubID, SubAmt, NetAmount, InActive) values (1, 2, 60, 60, '1')
)";

constexpr char Balance[] =
    "select AcNodes,AcName,SubName,HeadName,OpenDr,OpenCr,PeriodDr,PeriodCr,CloseDr,CloseCr"
    " from rptTrialBalance order by AcNodes";
constexpr char Ledger[] =
    "select VouDate,VouStatus,VouNo,CrAcName,ChecqNo,Naration,DrAmt,CrAmt from rptAcLedger"
    " order by LineOrder,VouDate,VouStatus,VouNo,EntryNo";
constexpr char Students[] =
    "select StuName,SessionName,CourseName,SubName,NetAmount,Received,OutStanding,inactive"
    " from rptStudentDetail order by SubID";

} // namespace

class tst_schema : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void procedures_data() {
        columns<QString, QString, QString>("statement", "query", "rows");
        const auto row = [](const char *name, const char *statement, const char *query, const char *rows) {
            zel::test::row(name, QString::fromLatin1(statement), QString::fromLatin1(query),
                           QString::fromLatin1(rows));
        };
        row("movements of a period", "exec TrialBalance '2024-02-01','2024-02-29'", Balance,
            "1.1.1|CASH|CASH AND BANK|ASSETS|0|0|700.7|50|650.7|0;"
            "1.1.3|RENT|CASH AND BANK|ASSETS|0|0|50|0|50|0;"
            "1.1.4|ALI|CASH AND BANK|ASSETS|0|0|0|700.7|0|700.7");
        row("movements of a period, with opening", "exec TrialBalance3 '2024-02-01','2024-02-29'", Balance,
            "1.1.1|CASH|CASH AND BANK|ASSETS|900.05|0|700.7|50|1550.75|0;"
            "1.1.2|LOAN|CASH AND BANK|ASSETS|0|300.25|0|0|0|300.25;"
            "1.1.3|RENT|CASH AND BANK|ASSETS|100.05|0|50|0|150.05|0;"
            "1.1.4|ALI|CASH AND BANK|ASSETS|0|0|0|700.7|0|700.7");
        row("to before from: openings alone", "exec TrialBalance3 '2024-02-29','2024-01-01'", Balance,
            "1.1.1|CASH|CASH AND BANK|ASSETS|850.05|0|0|0|850.05|0;"
            "1.1.2|LOAN|CASH AND BANK|ASSETS|0|300.25|0|0|0|300.25;"
            "1.1.3|RENT|CASH AND BANK|ASSETS|150.05|0|0|0|150.05|0");
        row("ledger", "exec AcLedger 3,'2024-02-01','2024-02-29'", Ledger,
            "01/02/2024|~|~|~|~|OPENING BALANCE|900.05|0;"
            "01/02/2024|CP|2|~|~|RENT FEB|0|50;29/02/2024|FR|1|~|~|~|700.7|0");
        row("ledger of a credit opening, nothing moved", "exec AcLedger 4,'2024-02-01','2024-02-29'", Ledger,
            "01/02/2024|~|~|~|~|OPENING BALANCE|0|300.25");
        row("detail ledger", "exec DetailAcLedger 5,1,2,2024,29,2,2024", Ledger,
            "01/02/2024|~|~||~|OPENING BALANCE|100.05|0;01/02/2024|CP|2|CASH|C-1|RENT FEB|50|0");
        row("students of a session", "exec CreatStuWiseDet 1,0,0 ", Students,
            "ALI|SPRING|ACCA|AUDIT|4500|1700.7|2799.3|~;ALI|SPRING|ACCA|TAX|60|40|20|1");
        row("of a subject", "exec CreatStuWiseDet 1, 1, 2", Students, "ALI|SPRING|ACCA|TAX|60|40|20|1");
        row("of another course", "exec CreatStuWiseDet 1, 9, 0", Students, "");
    }

    void procedures() {
        QFETCH(QString, statement);
        QFETCH(QString, query);
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        con.Execute(Institute);
        for (int time = 0; time < 2; ++time) {
            con.Execute(Sql::trusted(statement.toStdString()));
            QTEST(shown(con, Sql::trusted(query.toStdString())), "rows");
        }
    }

    void proceduresAreKeptByName() {
        const CatalogFolder folder;
        Connection con;
        Connection other;
        open(con, folder.path());
        open(other, folder.path());
        QCOMPARE(failure([&] { con.Execute("create procedure TRIALBALANCE as select 1 as x"); }), 2714);
        QCOMPARE(failure([&] { con.Execute("exec createstockdetail '2024-01-01','2024-01-31', 1"); }), 2812);
        con.Execute(
            "create procedure Passwords @word varchar(20) as select Pswd from LctPswd where Pswd = @word");
        QCOMPARE(shown(other, "exec passwords 'zel'"), QStringLiteral("ZEL"));
        con.Execute("drop procedure Passwords");
        QCOMPARE(failure([&] { other.Execute("exec passwords 'zel'"); }), 2812);
    }

    void caseBeyondAscii_data() {
        columns<QString, QString>("condition", "found");
        zel::test::row("equal", "SessionName = 'MUÑOZ'", "1;2");
        zel::test::row("equal, trailing blanks", "SessionName = 'münchen  '", "3;4");
        zel::test::row("accents stay distinct", "SessionName = 'MUNOZ'", "");
        zel::test::row("like", "SessionName like '%ñO%'", "1;2");
        zel::test::row("like, umlaut", "SessionName like 'MÜ%'", "3;4");
        zel::test::row("blanks taken out", "replace(SessionName,' ','') = 'mUñoz'", "1;2");
        zel::test::row("urdu", "SessionName like '%بہار%'", "5");
        zel::test::row("urdu, equal", "SessionName = 'بہار ۲۰۲۴'", "5");
    }

    void caseBeyondAscii() {
        QFETCH(QString, condition);
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        int number = 0;
        for (const char *name : {"Muñoz", "MUÑOZ", "München", "mÜNCHEN ", "بہار ۲۰۲۴"}) {
            Recordset rs;
            rs.Open("select * from tblSession where 0=1", con);
            rs.AddNew();
            rs.Fields("SessionId") = ++number;
            rs.Fields("SessionName") = name;
            rs.Update();
        }
        const QString statement =
            QStringLiteral("select SessionId from tblSession where %1 order by SessionId").arg(condition);
        QTEST(shown(con, Sql::trusted(statement.toStdString())), "found");
    }

    void orderIgnoresCase() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        con.Execute("insert into tblSession values (1, 'ñb')\ninsert into tblSession values (2, 'ÑA')\n"
                    "insert into tblSession values (3, 'b')\ninsert into tblSession values (4, 'A')\n"
                    "insert into tblSession values (5, 'ÜA')\ninsert into tblSession values (6, 'üb')");
        QCOMPARE(shown(con, "select SessionName from tblSession order by SessionName"),
                 QStringLiteral("A;b;ÑA;ñb;ÜA;üb"));
    }
};

QTEST_GUILESS_MAIN(tst_schema)
#include "tst_schema.moc"
