#include "catalog_fixture.h"
#include "tests/support/facts.h"

using namespace zel;
using namespace zel::ado;
using namespace zel::test;

Q_DECLARE_METATYPE(zel::Value)

class tst_recordset : public QObject {
    Q_OBJECT

    static constexpr Options OnDemand = adCmdText | adAsyncFetch;
    static constexpr qsizetype Sessions = 1024;
    static void addSessions(Connection &con) {
        con.Execute("insert into tblSession values (0,'OLD')");
        for (int count = 1; count < Sessions; count *= 2)
            con.Execute("insert into tblSession select SessionId + "_sql + count +
                        ",SessionName from tblSession");
    }

private Q_SLOTS:
    void fieldsRefuse_data() {
        QMetaType::registerConverter<QString, Value>();
        rowsFrom<QString, QString, Value, int, QString>("platform/ado/recordset.json");
        row("number into text", "DetJV", "FileNo", Value(Decimal::fromTenThousandths(125'000)), 0, "12.5");
        row("null", "DetJV", "FileNo", Value(Null{}), 0, "~");
        row("fraction into int is cut", "DetJV", "AcCode", Value(Decimal::fromTenThousandths(-129'000)), 0,
            "-12");
        row("too large for smallint", "DetJV", "EntryNo", Value(32768), 220, "");
        row("double amount is its shortest text", "DetJV", "DrAmt", Value(0.1 + 0.2), 0, "0.3");
        row("date", "DetJV", "VouDate", Value(QDate(2024, 2, 29)), 0, "29/02/2024");
        row("invalid date", "DetJV", "VouDate", Value(QDate()), 242, "");
    }

    void fieldsRefuse() {
        QFETCH(QString, table);
        QFETCH(QString, column);
        QFETCH(Value, value);
        QFETCH(int, number);
        OpenCatalog catalog;
        const Sql everything = Sql::trusted("select * from " + table.toStdString());

        Recordset rs;
        rs.Open(everything, catalog.con);
        rs.AddNew();
        for (const char *needed : {"VouNo", "VouStatus", "FormID"})
            if (rs.rows()->columnIndex(QLatin1String(needed)) >= 0)
                rs.Fields(QLatin1String(needed)) = 1;
        QCOMPARE(failure([&] { rs.Fields(column) = value; }), number);
        if (number != 0)
            return;
        rs.Update();
        rs.Close();
        rs.Open(everything, catalog.con);
        QCOMPARE(rs.RecordCount(), 1);
        const Value back = rs.Fields(column).value();
        QTEST(back.isNull() ? QStringLiteral("~") : back.text(), "stored");
    }

    void sizes_data() {
        columns<QString, int, int>("column", "definedSize", "precision");
        row("int", "vouno", 11, 10);
        row("text", "NARATION", 200, 200);
        row("char", "VouStatus", 2, 2);
    }

    void sizes() {
        QFETCH(QString, column);
        OpenCatalog catalog;
        Recordset rs;
        rs.Open("select * from DetJV where 0=1", catalog.con);
        QTEST(rs.Fields(column).DefinedSize(), "definedSize");
        QTEST(rs.Fields(column).Precision(), "precision");
    }

    void addedAndChangedRows() {
        OpenCatalog catalog;
        Recordset rs;
        rs.Open("select * from Accounts where 0=1", catalog.con);
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
        QCOMPARE(shown(catalog.con, "select AcName from Accounts"), "FIRST;SECOND");
        rs.Update();
        rs.MoveFirst();
        rs.Fields("AcName") = "FIRST CHANGED";
        rs.Update();
        rs.MoveNext();
        QCOMPARE(rs.Fields("AcName").text(), "SECOND CHANGED");
        rs.MoveNext();
        QVERIFY(rs.atEnd());
        QCOMPARE(shown(catalog.con, "select AcName from Accounts"), "FIRST CHANGED;SECOND CHANGED");
    }

    void onlySetColumnsAreWritten() {
        OpenCatalog catalog;
        Connection other;
        open(other, catalog.path());
        catalog.con.Execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING')");
        Recordset rs;
        rs.Open("select * from tblSession", catalog.con);
        other.Execute("update tblSession set SessionId = 9");
        rs.Fields("SessionName") = "AUTUMN";
        rs.Update();
        QCOMPARE(shown(other, "select SessionId,SessionName from tblSession"), "9|AUTUMN");
    }

    void heldRowsStayAsTheyWere() {
        OpenCatalog catalog;
        catalog.con.Execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING')");
        Recordset rs;
        rs.Open("select * from tblSession", catalog.con);
        const RowsPtr held = rs.rows();
        rs.Fields("SessionName") = "AUTUMN";
        rs.Update();
        rs.AddNew();
        rs.Fields("SessionId") = 2;
        rs.Update();
        rs.Close();
        rs.Open("select * from tblCourse", catalog.con);
        QCOMPARE(held->rowCount(), 1);
        QCOMPARE(held->text(0, held->columnIndex("sessionname")), "SPRING");
    }

    void rowGone() {
        OpenCatalog catalog;
        catalog.con.Execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING')");
        Recordset rs;
        rs.Open("select * from tblSession", catalog.con);
        catalog.con.Execute("delete from tblSession");
        rs.Fields("SessionName") = "AUTUMN";
        QCOMPARE(failure([&] { rs.Update(); }), 3021);
        QCOMPARE(shown(catalog.con, "select SessionName from tblSession"), QString());
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
        OpenCatalog catalog;
        Recordset rs;
        rs.Open("select isnull(max(SessionId),0)+1 as SessionId from tblSession", catalog.con);
        QCOMPARE(rs.RecordCount(), 1);
        QCOMPARE(rs.Fields("SessionId").value(), Value(1));
        QCOMPARE(failure([&] { rs.Fields("SessionId") = 2; }), 3251);
    }

    void identityIsNeverReused() {
        OpenCatalog catalog;
        for (int round = 1; round <= 3; ++round) {
            Recordset rs;
            rs.Open("select * from Accounts where 0=1", catalog.con);
            rs.AddNew();
            rs.Fields("AcName") = "ONLY ONE";
            rs.Update();
            QCOMPARE(rs.Fields("RowID").value(), Value(round));
            catalog.con.Execute("delete from Accounts");
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
                 "integer 7, text 2024-03-05, real 1000.1, integer 250, text 12");
        QCOMPARE(plain(folder.file(), "select count(*) from DetJV where VouStatus = 'bp' and DrAmt > 1000"),
                 "1");
    }

    void largeAmounts_data() {
        columns<QString, bool>("amount", "held");
        row("hundredths", "69999999999999.99", true);
        row("negative", "-69999999999999.98", true);
        row("hundredths beside too much", "99999999999999.01", false);
        row("negative, too", "-98765432109876.54", false);
        row("whole", "922337203685476", true);
        row("whole, too large", "9998765432109876", false);
    }

    /// Whichever way an amount goes into the file, it comes back to the last hundredth, or it is refused.
    void largeAmounts() {
        const auto [amount, held] = fetched<QString, bool>();
        OpenCatalog catalog;
        const int number = held ? 0 : 8115;
        QCOMPARE(failure([&] {
                     Recordset rs;
                     rs.Open("select * from DetJV", catalog.con);
                     rs.AddNew();
                     rs.Fields("VouNo") = 1;
                     rs.Fields("VouStatus") = "BP";
                     rs.Fields("DrAmt") = amount;
                     rs.Update();
                 }),
                 number);
        catalog.con.Execute("insert into DetJV (VouNo,VouStatus,DrAmt) values (2,'BP',0)");
        const std::string text = amount.toStdString();
        for (const std::string &written : {text, "'" + text + "'"}) {
            QCOMPARE(
                refusal(catalog.con, Sql::trusted("update DetJV set DrAmt=" + written + " where VouNo=2")),
                number);
            QCOMPARE(shown(catalog.con, "select DrAmt from DetJV where VouNo=2"),
                     held ? amount : QString("0"));
        }
        if (held) {
            QCOMPARE(shown(catalog.con, "select DrAmt from DetJV where VouNo=1"), amount);
            catalog.con.Execute("delete from DetJV where VouNo=1");
            QCOMPARE(shown(catalog.con, "select sum(DrAmt) from DetJV"), amount);
        }
    }

    void mostRecords() {
        OpenCatalog catalog;
        catalog.con.Execute("insert into tblSession values (1,'A') insert into tblSession values (2,'B')"
                            " insert into tblSession values (3,'C')");
        Recordset rs;
        const auto opened = [&](qsizetype most, const Sql &statement) {
            rs.MaxRecords = most;
            rs.Open(statement, catalog.con);
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
        rs.Open("select * from tblSession order by SessionId desc", catalog.con);
        rs.Fields("SessionName") = "Z";
        rs.Update();
        QCOMPARE(shown(catalog.con, "select SessionId,SessionName from tblSession"), "1|A;2|B;3|Z");
    }

    void rowsOnDemand_data() {
        columns<bool, QString, QString>("byAnother", "change", "asked");
        for (const bool byAnother : {false, true})
            for (const char *change :
                 {"delete from tblSession", "update tblSession set SessionName='NEW',SessionId=-SessionId",
                  "insert into tblSession values (-1,'NEW')", "create index i on tblSession (SessionId)"})
                for (const char *asked : {"count", "last row", "way to the end", "nothing", "login ends"})
                    fill(QTest::addRow("%s %s, %s", byAnother ? "another's" : "own", change, asked),
                         byAnother, change, asked);
    }

    /// To whoever asks, they are what a whole reading gave when the query ran; then nothing of it is held.
    void rowsOnDemand() {
        const auto [byAnother, change, asked] = fetched<bool, QString, QString>();
        OpenCatalog catalog;
        addSessions(catalog.con);
        Connection another;
        open(another, catalog.path());
        const Sql list = "select SessionId,SessionName from tblSession";
        const QString whole = shown(catalog.con, list);
        Recordset rs;
        rs.Open(list, catalog.con, adOpenKeyset, adLockOptimistic, OnDemand);
        QCOMPARE(rs.Fields("SessionId").text(), "0");
        const RowsPtr rows = rs.rows();
        QVERIFY(!rows->isWhole() && rows->rowsRead() < 100);
        (byAnother ? another : catalog.con).Execute(Sql::trusted(change.toStdString()));
        QCOMPARE(plain(catalog.file(), "pragma wal_checkpoint(truncate)"), "1");
        if (asked == "count") {
            QCOMPARE(rs.RecordCount(), Sessions);
        } else if (asked == "last row") {
            QCOMPARE(rows->text(Sessions - 1, 0), QString::number(Sessions - 1));
            QVERIFY_EXCEPTION_THROWN((void)rows->text(Sessions, 0), std::out_of_range);
        } else if (asked == "way to the end") {
            for (; !rs.atEnd(); rs.MoveNext())
                QCOMPARE(rs.Fields("SessionName").text(), "OLD");
        } else {
            if (asked == "login ends")
                catalog.con.Close();
            QTRY_VERIFY(rows->isWhole());
        }
        QVERIFY(rows->isWhole());
        QCOMPARE(plain(catalog.file(), "pragma wal_checkpoint(truncate)"), "0");
        QCOMPARE(shown(rows), whole);
    }

    void onDemandButWhole_data() {
        columns<QString, QString, int>("before", "list", "count");
        row("an open transaction", "begin", "select * from tblSession", int(Sessions) + 1);
        row("a temporary table",
            "create table #s (SessionId int) insert into #s select SessionId from tblSession",
            "select * from #s", int(Sessions));
        row("more than a query", "", "select * from tblSession delete from tblSession", int(Sessions));
        row("more lists on their way than connections", "lists", "select * from tblSession", int(Sessions));
        row("told how many", "most", "select * from tblSession", 7);
        row("no row", "", "select * from tblSession where 0=1", 0);
    }

    void onDemandButWhole() {
        const auto [before, list, count] = fetched<QString, QString, int>();
        OpenCatalog catalog;
        addSessions(catalog.con);
        std::optional<Transaction> transaction;
        std::vector<std::unique_ptr<Recordset>> lists(before == "lists" ? 4 : 0);
        Recordset rs;
        if (before == "begin") {
            transaction.emplace(catalog.con);
            catalog.con.Execute("insert into tblSession values (-1,'NEW')");
        } else if (before == "most") {
            rs.MaxRecords = 7;
        } else if (before.startsWith("create")) {
            catalog.con.Execute(Sql::trusted(before.toStdString()));
        }
        for (std::unique_ptr<Recordset> &other : lists) {
            other = std::make_unique<Recordset>();
            other->Open("select * from tblSession", catalog.con, adOpenKeyset, adLockOptimistic, OnDemand);
            QVERIFY(!other->rows()->isWhole());
        }
        rs.Open(Sql::trusted(list.toStdString()), catalog.con, adOpenKeyset, adLockOptimistic, OnDemand);
        QCOMPARE(rs.atEnd(), count == 0);
        QVERIFY(rs.rows()->isWhole());
        QCOMPARE(rs.RecordCount(), count);
    }

    void onDemandRefuses() {
        OpenCatalog catalog;
        addSessions(catalog.con);
        Recordset rs;
        rs.Open("select * from tblSession", catalog.con, adOpenKeyset, adLockOptimistic, OnDemand);
        QCOMPARE(failure([&] { rs.AddNew(); }), 3251);
        QCOMPARE(failure([&] { rs.Fields("SessionName") = "NEW"; }), 3251);
        rs.Close();
        catalog.con.Execute("update tblSession set SessionName='7' update tblSession set SessionName='SEVEN' "
                            "where SessionId=1000");
        rs.Open("select convert(int,SessionName) as n from tblSession", catalog.con, adOpenKeyset,
                adLockOptimistic, OnDemand);
        QCOMPARE(rs.Fields("n").value(), Value(7));
        QCOMPARE(failure([&] { (void)rs.RecordCount(); }), 245);
    }
};

QTEST_GUILESS_MAIN(tst_recordset)
#include "tst_recordset.moc"
