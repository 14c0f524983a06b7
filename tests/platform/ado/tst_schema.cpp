#include "catalog_fixture.h"
#include "tests/support/facts.h"

using namespace zel;
using namespace zel::ado;
using namespace zel::test;

class tst_schema : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void procedures_data() { rowsFrom<QString, QString, QString>("platform/ado/schema.json"); }

    void procedures() {
        QFETCH(QString, statement);
        QFETCH(QString, query);
        OpenCatalog catalog;
        catalog.con.Execute(Sql::trusted(fileText("platform/ado/institute.sql").toStdString()));
        for (int time = 0; time < 2; ++time) {
            catalog.con.Execute(Sql::trusted(statement.toStdString()));
            QTEST(shown(catalog.con, Sql::trusted(query.toStdString())), "rows");
        }
    }

    void proceduresAreKeptByName() {
        OpenCatalog catalog;
        Connection other;
        open(other, catalog.path());
        QCOMPARE(refusal(catalog.con, "create procedure TRIALBALANCE as select 1 as x"), 2714);
        QCOMPARE(refusal(catalog.con, "exec createstockdetail '2024-01-01','2024-01-31', 1"), 2812);
        catalog.con.Execute(
            "create procedure Passwords @word varchar(20) as select Pswd from LctPswd where Pswd = @word");
        QCOMPARE(shown(other, "exec passwords 'zel'"), "ZEL");
        catalog.con.Execute("drop procedure Passwords");
        QCOMPARE(refusal(other, "exec passwords 'zel'"), 2812);
    }

    void caseBeyondAscii_data() { rowsFrom<QString, QString>("platform/ado/schema.json"); }

    void caseBeyondAscii() {
        QFETCH(QString, condition);
        OpenCatalog catalog;
        int number = 0;
        for (const char *name : {"Muñoz", "MUÑOZ", "München", "mÜNCHEN ", "بہار ۲۰۲۴"}) {
            Recordset rs;
            rs.Open("select * from tblSession where 0=1", catalog.con);
            rs.AddNew();
            rs.Fields("SessionId") = ++number;
            rs.Fields("SessionName") = name;
            rs.Update();
        }
        const QString statement =
            QStringLiteral("select SessionId from tblSession where %1 order by SessionId").arg(condition);
        QTEST(shown(catalog.con, Sql::trusted(statement.toStdString())), "found");
    }

    void orderIgnoresCase() {
        OpenCatalog catalog;
        catalog.con.Execute(
            "insert into tblSession values (1, 'ñb')\ninsert into tblSession values (2, 'ÑA')\n"
            "insert into tblSession values (3, 'b')\ninsert into tblSession values (4, 'A')\n"
            "insert into tblSession values (5, 'ÜA')\ninsert into tblSession values (6, 'üb')");
        QCOMPARE(shown(catalog.con, "select SessionName from tblSession order by SessionName"),
                 "A;b;ÑA;ñb;ÜA;üb");
    }
};

QTEST_GUILESS_MAIN(tst_schema)
#include "tst_schema.moc"
