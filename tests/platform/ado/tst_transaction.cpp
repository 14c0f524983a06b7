#include "catalog_fixture.h"
#include "fault_vfs.h"
#include "tests/support/rows.h"

#include "platform/ado/drivers/sqlite_driver.h"

#include <thread>

using namespace zel;
using namespace zel::ado;
using namespace zel::test;

namespace {

/// A voucher of four lines as a screen saves it: header, old lines out, new lines in.
void saveVoucher(Connection &con, const QString &payee) {
    Recordset rs;
    rs.Open("select * from MasJV where VouNo = 1", con);
    if (rs.RecordCount() == 0) {
        rs.AddNew();
        rs.Fields("VouNo") = 1;
    }
    rs.Fields("VouStatus") = "BP";
    rs.Fields("PaidReceive") = payee;
    rs.Update();
    con.Execute("delete from DetJV where VouNo = 1");
    rs.Close();
    rs.Open("select * from DetJV where 0=1", con);
    for (int line = 1; line <= 4; ++line) {
        rs.AddNew();
        rs.Fields("VouNo") = 1;
        rs.Fields("EntryNo") = line;
        rs.Fields("DrAmt") = line % 2 ? "250.50" : "0";
        rs.Fields("CrAmt") = line % 2 ? "0" : "250.50";
        rs.Fields("Naration") = payee;
        rs.Fields("VouStatus") = "BP";
        rs.Update();
    }
}

/// More pages than the connection may keep in memory, most of them written twice: whether they were read back
/// as written before the commit, and seen by no other program.
bool writeLong(Connection &con) {
    SqliteDriver &driver = dynamic_cast<SqliteDriver &>(con.driver());
    driver.session().execute("pragma cache_size = 10");
    Transaction transaction(con);
    Recordset rs;
    rs.Open("select * from tblSession where 0=1", con);
    for (int number = 0; number < 3000; ++number) {
        rs.AddNew();
        rs.Fields("SessionId") = number;
        rs.Fields("SessionName") = QString(20, u'A');
        rs.Update();
    }
    con.Execute("update tblSession set SessionName = SessionName + SessionName");
    const QString file = QString::fromStdString(driver.session().path());
    const bool seen =
        shown(con, "select count(*), sum(len(SessionName)) from tblSession") == u"3000|120000" &&
        plain(file, "select count(*) from tblSession") == u"0";
    transaction.commit();
    return seen;
}

QString voucher(const QString &file) {
    return plain(file, "select (select group_concat(PaidReceive) from MasJV) || ':' ||"
                       " (select group_concat(EntryNo || Naration, ' ') from DetJV) || ':' ||"
                       " (select sum(DrAmt) - sum(CrAmt) from DetJV)");
}

} // namespace

class tst_transaction : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { faulty_disk::install(); }

    /// The disk gets full anywhere in the save, or when the connection closes. Another program then finds the
    /// voucher whole, new or old.
    void wholeOrAsBefore() {
        const QString before = QStringLiteral("OLD:1OLD 2OLD 3OLD 4OLD:0.0");
        const QString after = QStringLiteral("NEW:1NEW 2NEW 3NEW 4NEW:0.0");
        int failures = 0;
        for (int bytes = 0;; bytes += 1500) {
            const CatalogFolder folder;
            {
                Connection con;
                open(con, folder.path());
                saveVoucher(con, "OLD");
                faulty_disk::fullAfter(bytes);
                const int number = failure([&con] {
                    Transaction transaction(con);
                    saveVoucher(con, "NEW");
                    transaction.commit();
                });
                if (number != 0) {
                    ++failures;
                    QCOMPARE(number, 1105);
                    QCOMPARE(shown(con, "select PaidReceive from MasJV"), "OLD");
                }
            }
            const bool failed = faulty_disk::failed();
            faulty_disk::roomy();
            const QString found = voucher(folder.file());
            QVERIFY2(found == before || found == after, qPrintable(found));
            QCOMPARE(plain(folder.file(), "pragma integrity_check"), "ok");
            if (!failed) {
                QCOMPARE(found, after);
                break;
            }
        }
        QVERIFY(failures > 3);
    }

    void diskFullIsTold() {
        OpenCatalog catalog;
        faulty_disk::fullAfter(0);
        QString told;
        try {
            catalog.con.Execute("insert into LctPswd (Pswd) values ('X')");
        } catch (const Error &error) {
            told = error.description();
        }
        faulty_disk::roomy();
        QCOMPARE(told, QStringLiteral("The catalog \"%1\" can't be written because the disk is full.")
                           .arg(catalog.file()));
        catalog.con.Execute("insert into LctPswd (Pswd) values ('Y')");
        QCOMPARE(plain(catalog.file(), "select Pswd from LctPswd"), "ZEL;Y");
    }

    /// Pages leave the memory before the commit, find the disk full, and are dropped with the transaction.
    void diskFullAmidALongTransaction() {
        OpenCatalog catalog;
        catalog.con.Execute("insert into LctPswd (Pswd) values ('X')");
        faulty_disk::fullAfter(100'000);
        QCOMPARE(failure([&] { writeLong(catalog.con); }), 1105);
        QCOMPARE(plain(catalog.file(), "select count(*) from tblSession"), "0");
        faulty_disk::roomy();
        QVERIFY(writeLong(catalog.con));
        QCOMPARE(plain(catalog.file(), "select count(*) from tblSession"), "3000");
        QCOMPARE(plain(catalog.file(), "pragma integrity_check"), "ok");
    }

    void undoneWithoutCommit() {
        OpenCatalog catalog;
        {
            const Transaction transaction(catalog.con);
            catalog.con.Execute("insert into LctPswd (Pswd) values ('X')");
            QCOMPARE(failure([&] { const Transaction inner(catalog.con); }), 3988);
        }
        QCOMPARE(plain(catalog.file(), "select Pswd from LctPswd"), "ZEL");
        catalog.con.Execute("insert into LctPswd (Pswd) values ('Y')");
        QCOMPARE(plain(catalog.file(), "select Pswd from LctPswd"), "ZEL;Y");
    }

    void secondConnectionSeesWhatIsCommitted() {
        OpenCatalog catalog;
        Connection report;
        open(report, catalog.path());
        {
            Transaction transaction(catalog.con);
            catalog.con.Execute("update LctPswd set Pswd = 'NEW'");
            QCOMPARE(shown(report, "select Pswd from LctPswd"), "ZEL");
            transaction.commit();
        }
        QCOMPARE(shown(report, "select Pswd from LctPswd"), "NEW");
        catalog.con.Execute(
            "create table Later (Number int null) create table #own (Id int identity, Number int null)");
        QCOMPARE(shown(report, "select Number from Later"), QString());
        // A table of the connection's own is edited like others, unseen by others, and goes with the
        // connection.
        Recordset own;
        own.Open("select * from #own", catalog.con);
        own.AddNew();
        own.Fields("Number") = 5;
        own.Update();
        QCOMPARE(shown(catalog.con, "select Number, @@identity, scope_identity(), @@rowcount from #own"),
                 "5|1|1|1");
        const auto missing = [](Connection &con) { return refusal(con, "delete from #own"); };
        QCOMPARE(missing(report), 208);
        catalog.con.Close();
        catalog.con.Open();
        QCOMPARE(missing(catalog.con), 208);
    }

    void procedureIsOneTransaction_data() {
        columns<QString, bool>("table", "within");
        row("a table that lasts", "tblSession", false);
        row("a work table", "rptAcLedger", false);
        row("within a transaction", "tblSession", true);
    }

    /// A procedure that fails at a later statement leaves its table as it was, and the connection in order.
    void procedureIsOneTransaction() {
        const auto [table, within] = fetched<QString, bool>();
        OpenCatalog catalog;
        const QString column =
            table == u"tblSession" ? QStringLiteral("SessionId") : QStringLiteral("AcCode");
        catalog.con.Execute(
            Sql::trusted(QStringLiteral("create procedure Refill @divisor int as begin delete from %1"
                                        " create table #own (Number int null)"
                                        " insert into %1 (%2) values (@divisor)"
                                        " insert into %1 (%2) select 100 / @divisor end")
                             .arg(table, column)
                             .toStdString()));
        const Sql rows = Sql::trusted("select " + column.toStdString() + " from " + table.toStdString());
        catalog.con.Execute("exec Refill 7");
        QCOMPARE(shown(catalog.con, rows), "7;14");
        QCOMPARE(failure([&] {
                     std::optional<Transaction> transaction;
                     if (within)
                         transaction.emplace(catalog.con);
                     catalog.con.Execute("exec Refill 0");
                 }),
                 8134);
        const QByteArray plainRows = QStringLiteral("select %2 from %1").arg(table, column).toUtf8();
        QCOMPARE(plain(catalog.file(), plainRows.constData()), "7;14");
        {
            std::optional<Transaction> transaction;
            if (within)
                transaction.emplace(catalog.con);
            catalog.con.Execute("exec Refill 5");
            QCOMPARE(plain(catalog.file(), plainRows.constData()),
                     within ? QStringLiteral("7;14") : QStringLiteral("5;20"));
            if (within)
                transaction->commit();
        }
        QCOMPARE(plain(catalog.file(), plainRows.constData()), "5;20");
    }

    /// Nobody waits for a work table to be on the disk; other connections and other programs see it whole at
    /// once nevertheless, and what is written next is on the disk as ever.
    void refilledWorkTableIsSeen() {
        OpenCatalog catalog;
        Connection report;
        open(report, catalog.path());
        const std::string naration(190, 'x');
        catalog.con.Execute(Sql::trusted("create procedure Refill @lines int as begin delete from rptAcLedger"
                                         " insert into rptAcLedger (AcCode, Naration) select s.SessionId, '" +
                                         naration + "' from tblSession s where s.SessionId < @lines end"));
        QVERIFY(writeLong(catalog.con));
        const auto pragma = [&](const char *text) {
            auto running = dynamic_cast<SqliteDriver &>(catalog.con.driver()).session().prepare(text);
            return running.step() ? running.text(0) : std::string();
        };
        for (const int lines : {1, 40, 3000, 2}) {
            catalog.con.Execute("exec Refill "_sql + QString::number(lines));
            const QString expected = QStringLiteral("%1|%2").arg(lines).arg(lines * 190);
            QCOMPARE(shown(report, "select count(*), sum(len(Naration)) from rptAcLedger"), expected);
            QCOMPARE(
                plain(catalog.file(), "select count(*) || '|' || sum(length(Naration)) from rptAcLedger"),
                expected);
            QCOMPARE(pragma("pragma synchronous"), "2");
        }
        catalog.con.Close();
        report.Close();
        QCOMPARE(plain(catalog.file(), "select count(*) from rptAcLedger"), "2");
        QCOMPARE(plain(catalog.file(), "pragma integrity_check"), "ok");
    }

    /// What leaves the memory before the commit is seen by its own connection, changed again, and by nobody
    /// else before.
    void longTransactionIsReadBack() {
        OpenCatalog catalog;
        QVERIFY(writeLong(catalog.con));
        QCOMPARE(plain(catalog.file(), "select count(*) || '|' || sum(length(SessionName)) from tblSession"),
                 "3000|120000");
        QCOMPARE(plain(catalog.file(), "pragma integrity_check"), "ok");
    }

    void droppedPagesAreNeverWritten_data() {
        columns<int, int, int>("rows", "room", "number");
        row("undone", 5000, -1, 0);
        row("the disk gets full before the commit", 5000, 60'000, 1105);
        row("the disk gets full at the commit", 200, 5'000, 1105);
        row("the disk is full at the commit", 200, 0, 1105);
    }

    /// Pages of a transaction that came to nothing still wait to be written. Another program's commits take
    /// their places in the log, and stay.
    void droppedPagesAreNeverWritten() {
        const auto [rows, room, number] = fetched<int, int, int>();
        OpenCatalog catalog;
        Connection other;
        open(other, catalog.path());
        other.Execute("insert into LctPswd (Pswd) values ('OTHER')");
        if (room >= 0)
            faulty_disk::fullAfter(room);
        QCOMPARE(failure([&] {
                     SqliteSession &session = dynamic_cast<SqliteDriver &>(catalog.con.driver()).session();
                     session.execute("pragma cache_size = 10");
                     Transaction transaction(catalog.con);
                     for (int row = 0; row < rows; ++row)
                         catalog.con.Execute("insert into tblSession (SessionId, SessionName) values (1,"
                                             " 'A NAME OF A SESSION THAT IS RATHER LONG')");
                     if (room >= 0)
                         transaction.commit();
                 }),
                 number);
        faulty_disk::roomy();
        for (int commit = 1; commit <= 70; ++commit) {
            other.Execute("insert into LctPswd (Pswd) values ('OTHER')");
            QCOMPARE(shown(catalog.con, "select count(*) from LctPswd"), QString::number(2 + commit));
        }
        catalog.con.Close();
        QCOMPARE(shown(other, "select count(*) from LctPswd"), "72");
        other.Close();
        QCOMPARE(plain(catalog.file(), "select count(*) from LctPswd"), "72");
        QCOMPARE(plain(catalog.file(), "pragma integrity_check"), "ok");
    }

    void writersWaitForEachOther() {
        OpenCatalog catalog;
        Connection second;
        open(second, catalog.path());
        std::thread other;
        int number = -1;
        {
            Transaction transaction(catalog.con);
            catalog.con.Execute("insert into LctPswd (Pswd) values ('FIRST')");
            other = std::thread([&second, &number] {
                number = refusal(second, "insert into LctPswd (Pswd) values ('SECOND')");
            });
            QTest::qSleep(1500);
            transaction.commit();
        }
        other.join();
        QCOMPARE(number, 0);
        QCOMPARE(plain(catalog.file(), "select Pswd from LctPswd"), "ZEL;FIRST;SECOND");
    }

    void tooLongALockIsTold() {
        OpenCatalog catalog;
        Connection second;
        open(second, catalog.path());
        const Transaction transaction(catalog.con);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(refusal(second, "insert into LctPswd (Pswd) values ('SECOND')"), 1222);
        QVERIFY(clock.elapsed() >= 5000);
    }
};

QTEST_GUILESS_MAIN(tst_transaction)
#include "tst_transaction.moc"
