#include "catalog_fixture.h"
#include "tests/support/rows.h"

using namespace zel;
using namespace zel::ado;
using namespace zel::test;

Q_DECLARE_METATYPE(zel::Value)

class tst_recordset : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fieldsRefuse_data() {
        columns<QString, QString, Value, int, QString>("table", "column", "value", "number", "stored");

        const auto row = [](const char *name, const char *table, const char *column, Value value, int number,
                            const char *stored) {
            zel::test::row(name, QString::fromLatin1(table), QString::fromLatin1(column), value, number,
                           QString::fromUtf8(stored));
        };
        row("text of its width", "tblDetCarryForw", "Naration", QString(50, u'x'), 0,
            QByteArray(50, 'x').constData());
        row("text too long", "tblDetCarryForw", "Naration", QString(51, u'x'), 8152, "");
        row("only blanks too long", "DetJV", "FileNo", "1234567890   ", 0, "1234567890");
        row("letters of two bytes count once", "DetJV", "FileNo", "ÑÑÑÑÑÑÑÑÑÑ", 0, "ÑÑÑÑÑÑÑÑÑÑ");
        row("eleven of them are too long", "DetJV", "FileNo", "ÑÑÑÑÑÑÑÑÑÑÑ", 8152, "");
        row("char is as wide as its column", "DetJV", "VouStatus", "B   ", 0, "B ");
        row("number into text", "DetJV", "FileNo", Decimal::fromTenThousandths(125'000), 0, "12.5");
        row("null", "DetJV", "FileNo", Null{}, 0, "~");
        row("whole text", "DetJV", "AcCode", " 12 ", 0, "12");
        row("signed whole text", "DetJV", "AcCode", "+7", 0, "7");
        row("empty text into int", "DetJV", "AcCode", "", 0, "0");
        row("word into int", "DetJV", "AcCode", "abc", 245, "");
        row("fraction text into int", "DetJV", "AcCode", "12.0", 245, "");
        row("fraction into int is cut", "DetJV", "AcCode", Decimal::fromTenThousandths(-129'000), 0, "-12");
        row("largest int", "DetJV", "AcCode", "2147483647", 0, "2147483647");
        row("too large for int", "DetJV", "AcCode", "2147483648", 248, "");
        row("too large for any", "DetJV", "AcCode", "99999999999999999999", 248, "");
        row("too large for smallint", "DetJV", "EntryNo", 32768, 220, "");
        row("amount text", "DetJV", "DrAmt", "1234.50", 0, "1234.5");
        row("amount rounds half away", "DetJV", "DrAmt", "-0.125", 0, "-0.13");
        row("double amount is its shortest text", "DetJV", "DrAmt", 0.1 + 0.2, 0, "0.3");
        row("empty text into numeric", "DetJV", "DrAmt", "", 8114, "");
        row("grouped text into numeric", "DetJV", "DrAmt", "1,234.00", 8114, "");
        row("amount too large", "DetJV", "DrAmt", "99999999999999999", 8115, "");
        row("day first", "DetJV", "VouDate", "05/03/2024", 0, "05/03/2024");
        row("no month thirteen, day first", "DetJV", "VouDate", "31/12/2024", 0, "31/12/2024");
        row("iso", "DetJV", "VouDate", "2024-3-5", 0, "05/03/2024");
        row("month by name", "DetJV", "VouDate", "5 Mar 2024", 0, "05/03/2024");
        row("two digits of the year", "DetJV", "VouDate", "31/12/24", 0, "31/12/2024");
        row("the last tick is behind", "DetJV", "VouDate", "2024-12-31 23:59:59.999", 0, "01/01/2025");
        row("with time", "DetJV", "VouDate", "2024-03-05 14:30", 0, "05/03/2024 14:30:00");
        row("date", "DetJV", "VouDate", QDate(2024, 2, 29), 0, "29/02/2024");
        row("invalid date", "DetJV", "VouDate", QDate(), 242, "");
        row("no such day", "DetJV", "VouDate", "30/02/2024", 242, "");
        row("no such month", "DetJV", "VouDate", "01/13/2024", 242, "");
        row("before all dates", "DetJV", "VouDate", "01/01/1752", 242, "");
        row("no date", "DetJV", "VouDate", "TODAY", 241, "");
        row("empty text into date", "DetJV", "VouDate", "", 241, "");
    }

    void fieldsRefuse() {
        QFETCH(QString, table);
        QFETCH(QString, column);
        QFETCH(Value, value);
        QFETCH(int, number);
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        const Sql everything = Sql::trusted("select * from " + table.toStdString());

        Recordset rs;
        rs.Open(everything, con);
        rs.AddNew();
        for (const char *needed : {"VouNo", "VouStatus", "FormID"})
            if (rs.rows()->columnIndex(QLatin1String(needed)) >= 0)
                rs.Fields(QLatin1String(needed)) = 1;
        QCOMPARE(failure([&] { rs.Fields(column) = value; }), number);
        if (number != 0)
            return;
        rs.Update();
        rs.Close();
        rs.Open(everything, con);
        QCOMPARE(rs.RecordCount(), 1);
        const Value back = rs.Fields(column).value();
        QTEST(back.isNull() ? QStringLiteral("~") : back.text(), "stored");
    }

    void sizes_data() {
        columns<QString, int, int>("column", "definedSize", "precision");
        zel::test::row("int", "vouno", 11, 10);
        zel::test::row("text", "NARATION", 200, 200);
        zel::test::row("char", "VouStatus", 2, 2);
    }

    void sizes() {
        QFETCH(QString, column);
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        Recordset rs;
        rs.Open("select * from DetJV where 0=1", con);
        QTEST(rs.Fields(column).DefinedSize(), "definedSize");
        QTEST(rs.Fields(column).Precision(), "precision");
    }

    void addedAndChangedRows() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        Recordset rs;
        rs.Open("select * from Accounts where 0=1", con);
        QCOMPARE(rs.RecordCount(), 0);
        QVERIFY(rs.atEnd());
        for (const char *name : {"FIRST", "SECOND"}) {
            rs.AddNew();
            rs.Fields("AcName") = name;
            QVERIFY(rs.Fields("RowID").isNull());
            rs.Update();
            QCOMPARE(rs.Fields("ACNAME").text(), QLatin1String(name));
        }
        QCOMPARE(rs.RecordCount(), 2);
        QCOMPARE(rs.Fields("rowid").value(), Value(2));
        rs.Fields("AcName") = "SECOND CHANGED";
        QCOMPARE(shown(con, "select AcName from Accounts"), QStringLiteral("FIRST;SECOND"));
        rs.Update();
        rs.MoveFirst();
        rs.Fields("AcName") = "FIRST CHANGED";
        rs.Update();
        rs.MoveNext();
        QCOMPARE(rs.Fields("AcName").text(), QStringLiteral("SECOND CHANGED"));
        rs.MoveNext();
        QVERIFY(rs.atEnd());
        QCOMPARE(shown(con, "select AcName from Accounts"), QStringLiteral("FIRST CHANGED;SECOND CHANGED"));
    }

    void onlySetColumnsAreWritten() {
        const CatalogFolder folder;
        Connection con;
        Connection other;
        open(con, folder.path());
        open(other, folder.path());
        con.Execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING')");
        Recordset rs;
        rs.Open("select * from tblSession", con);
        other.Execute("update tblSession set SessionId = 9");
        rs.Fields("SessionName") = "AUTUMN";
        rs.Update();
        QCOMPARE(shown(other, "select SessionId,SessionName from tblSession"), QStringLiteral("9|AUTUMN"));
    }

    void heldRowsStayAsTheyWere() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        con.Execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING')");
        Recordset rs;
        rs.Open("select * from tblSession", con);
        const RowsPtr held = rs.rows();
        rs.Fields("SessionName") = "AUTUMN";
        rs.Update();
        rs.AddNew();
        rs.Fields("SessionId") = 2;
        rs.Update();
        rs.Close();
        rs.Open("select * from tblCourse", con);
        QCOMPARE(held->rowCount(), 1);
        QCOMPARE(held->text(0, held->columnIndex("sessionname")), QStringLiteral("SPRING"));
    }

    void rowGone() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        con.Execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING')");
        Recordset rs;
        rs.Open("select * from tblSession", con);
        con.Execute("delete from tblSession");
        rs.Fields("SessionName") = "AUTUMN";
        QCOMPARE(failure([&] { rs.Update(); }), 3021);
        QCOMPARE(shown(con, "select SessionName from tblSession"), QString());
    }

    void states() {
        const CatalogFolder folder;
        Connection con;
        Recordset rs;
        QCOMPARE(failure([&] { rs.Open("select * from tblSession", con); }), 3704);
        open(con, folder.path());
        QCOMPARE(failure([&] { (void)rs.RecordCount(); }), 3704);
        QCOMPARE(failure([&] { rs.Close(); }), 3704);
        rs.Open("select * from tblSession", con);
        QCOMPARE(rs.State(), adStateOpen);
        QCOMPARE(failure([&] { rs.Open("select * from tblSession", con); }), 3705);
        QCOMPARE(failure([&] { rs.Update(); }), 3021);
        QCOMPARE(failure([&] { rs.Fields("SessionName") = "X"; }), 3021);
        QCOMPARE(failure([&] { rs.MoveFirst(); }), 3021);
        QCOMPARE(failure([&] { (void)rs.Fields("NoSuchColumn"); }), 3265);
        rs.AddNew();
        rs.Fields("SessionName") = "NO NUMBER";
        QCOMPARE(failure([&] { rs.Update(); }), 515);
        rs.Close();
        QCOMPARE(rs.State(), adStateClosed);
        rs.Open("select * from Accounts where 0=1", con, adOpenKeyset, adLockReadOnly);
        QCOMPARE(failure([&] { rs.AddNew(); }), 3251);
        rs.Close();
        rs.Open("select * from Accounts where 0=1", con);
        rs.AddNew();
        QCOMPARE(failure([&] { rs.Fields("RowID") = 7; }), 8102);
    }

    void computedRowsCannotBeEdited() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        Recordset rs;
        rs.Open("select isnull(max(SessionId),0)+1 as SessionId from tblSession", con);
        QCOMPARE(rs.RecordCount(), 1);
        QCOMPARE(rs.Fields("SessionId").value(), Value(1));
        QCOMPARE(failure([&] { rs.Fields("SessionId") = 2; }), 3251);
    }

    void identityIsNeverReused() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        for (int round = 1; round <= 3; ++round) {
            Recordset rs;
            rs.Open("select * from Accounts where 0=1", con);
            rs.AddNew();
            rs.Fields("AcName") = "ONLY ONE";
            rs.Update();
            QCOMPARE(rs.Fields("RowID").value(), Value(round));
            con.Execute("delete from Accounts");
        }
    }

    void storedFormsArePlain() {
        const CatalogFolder folder;
        {
            Connection con;
            open(con, folder.path());
            Recordset rs;
            rs.Open("select * from DetJV where 0=1", con);
            rs.AddNew();
            rs.Fields("VouNo") = "7";
            rs.Fields("VouStatus") = "BP";
            rs.Fields("VouDate") = QDate(2024, 3, 5);
            rs.Fields("DrAmt") = "1000.10";
            rs.Fields("CrAmt") = "250.00";
            rs.Fields("FileNo") = "12";
            rs.Update();
        }
        QCOMPARE(plain(folder.file(),
                       "select typeof(VouNo) || ' ' || VouNo || ', ' || typeof(VouDate) || ' ' || VouDate"
                       " || ', ' || typeof(DrAmt) || ' ' || DrAmt || ', ' || typeof(CrAmt) || ' ' || CrAmt"
                       " || ', ' || typeof(FileNo) || ' ' || FileNo from DetJV"),
                 QStringLiteral("integer 7, text 2024-03-05, real 1000.1, integer 250, text 12"));
        QCOMPARE(plain(folder.file(), "select count(*) from DetJV where VouStatus = 'bp' and DrAmt > 1000"),
                 QStringLiteral("1"));
    }

    void largeAmounts_data() {
        columns<QString, bool>("amount", "held");
        zel::test::row("hundredths", "69999999999999.99", true);
        zel::test::row("negative", "-69999999999999.98", true);
        zel::test::row("hundredths beside too much", "99999999999999.01", false);
        zel::test::row("negative, too", "-98765432109876.54", false);
        zel::test::row("whole", "922337203685476", true);
        zel::test::row("whole, too large", "9998765432109876", false);
    }

    /// Whichever way an amount goes into the file, it comes back to the last hundredth, or it is refused.
    void largeAmounts() {
        QFETCH(QString, amount);
        QFETCH(bool, held);
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        const int number = held ? 0 : 8115;
        QCOMPARE(failure([&] {
                     Recordset rs;
                     rs.Open("select * from DetJV", con);
                     rs.AddNew();
                     rs.Fields("VouNo") = 1;
                     rs.Fields("VouStatus") = "BP";
                     rs.Fields("DrAmt") = amount;
                     rs.Update();
                 }),
                 number);
        con.Execute("insert into DetJV (VouNo,VouStatus,DrAmt) values (2,'BP',0)");
        const std::string text = amount.toStdString();
        for (const std::string &written : {text, "'" + text + "'"}) {
            QCOMPARE(failure([&] {
                         con.Execute(Sql::trusted("update DetJV set DrAmt=" + written + " where VouNo=2"));
                     }),
                     number);
            QCOMPARE(shown(con, "select DrAmt from DetJV where VouNo=2"), held ? amount : QString("0"));
        }
        if (held) {
            QCOMPARE(shown(con, "select DrAmt from DetJV where VouNo=1"), amount);
            con.Execute("delete from DetJV where VouNo=1");
            QCOMPARE(shown(con, "select sum(DrAmt) from DetJV"), amount);
        }
    }

    void mostRecords() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        con.Execute("insert into tblSession values (1,'A') insert into tblSession values (2,'B')"
                    " insert into tblSession values (3,'C')");
        Recordset rs;
        const auto opened = [&](qsizetype most, const Sql &statement) {
            rs.MaxRecords = most;
            rs.Open(statement, con);
            const qsizetype count = rs.RecordCount();
            rs.Close();
            return count;
        };
        QCOMPARE(opened(1, "select * from tblSession"), 1);
        QCOMPARE(opened(2, "select * from tblSession"), 2);
        QCOMPARE(opened(4, "select * from tblSession"), 3);
        QCOMPARE(opened(1, "select * from tblSession where 0=1"), 0);
        QCOMPARE(opened(0, "select * from tblSession"), 3);
        // The one row read is a row as any other: it can be edited, and the rest of the table stays as it
        // was.
        rs.MaxRecords = 1;
        rs.Open("select * from tblSession order by SessionId desc", con);
        rs.Fields("SessionName") = "Z";
        rs.Update();
        QCOMPARE(shown(con, "select SessionId,SessionName from tblSession"), QStringLiteral("1|A;2|B;3|Z"));
    }
};

QTEST_GUILESS_MAIN(tst_recordset)
#include "tst_recordset.moc"
