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
                saveVoucher(con, QStringLiteral("OLD"));
                faulty_disk::fullAfter(bytes);
                const int number = failure([&con] {
                    Transaction transaction(con);
                    saveVoucher(con, QStringLiteral("NEW"));
                    transaction.commit();
                });
                if (number != 0) {
                    ++failures;
                    QCOMPARE(number, 1105);
                    QCOMPARE(shown(con, "select PaidReceive from MasJV"), QStringLiteral("OLD"));
                }
            }
            const bool failed = faulty_disk::failed();
            faulty_disk::roomy();
            const QString found = voucher(folder.file());
            QVERIFY2(found == before || found == after, qPrintable(found));
            QCOMPARE(plain(folder.file(), "pragma integrity_check"), QStringLiteral("ok"));
            if (!failed) {
                QCOMPARE(found, after);
                break;
            }
        }
        QVERIFY(failures > 3);
    }

    void diskFullIsTold() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        faulty_disk::fullAfter(0);
        QString told;
        try {
            con.Execute("insert into LctPswd (Pswd) values ('X')");
        } catch (const Error &error) {
            told = error.description();
        }
        faulty_disk::roomy();
        QCOMPARE(told, QStringLiteral("The catalog \"%1\" can't be written because the disk is full.")
                           .arg(folder.file()));
        con.Execute("insert into LctPswd (Pswd) values ('Y')");
        QCOMPARE(plain(folder.file(), "select Pswd from LctPswd"), QStringLiteral("ZEL;Y"));
    }

    /// Pages leave the memory before the commit, find the disk full, and are dropped with the transaction.
    void diskFullAmidALongTransaction() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        con.Execute("insert into LctPswd (Pswd) values ('X')");
        faulty_disk::fullAfter(100'000);
        QCOMPARE(failure([&con] { writeLong(con); }), 1105);
        QCOMPARE(plain(folder.file(), "select count(*) from tblSession"), QStringLiteral("0"));
        faulty_disk::roomy();
        QVERIFY(writeLong(con));
        QCOMPARE(plain(folder.file(), "select count(*) from tblSession"), QStringLiteral("3000"));
        QCOMPARE(plain(folder.file(), "pragma integrity_check"), QStringLiteral("ok"));
    }

    void undoneWithoutCommit() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        {
            const Transaction transaction(con);
            con.Execute("insert into LctPswd (Pswd) values ('X')");
            QCOMPARE(failure([&con] { const Transaction inner(con); }), 3988);
        }
        QCOMPARE(plain(folder.file(), "select Pswd from LctPswd"), QStringLiteral("ZEL"));
        con.Execute("insert into LctPswd (Pswd) values ('Y')");
        QCOMPARE(plain(folder.file(), "select Pswd from LctPswd"), QStringLiteral("ZEL;Y"));
    }

    void secondConnectionSeesWhatIsCommitted() {
        const CatalogFolder folder;
        Connection writer;
        Connection report;
        open(writer, folder.path());
        open(report, folder.path());
        {
            Transaction transaction(writer);
            writer.Execute("update LctPswd set Pswd = 'NEW'");
            QCOMPARE(shown(report, "select Pswd from LctPswd"), QStringLiteral("ZEL"));
            transaction.commit();
        }
        QCOMPARE(shown(report, "select Pswd from LctPswd"), QStringLiteral("NEW"));
        writer.Execute(
            "create table Later (Number int null) create table #own (Id int identity, Number int null)");
        QCOMPARE(shown(report, "select Number from Later"), QString());
        // A table of the connection's own is edited like others, unseen by others, and goes with the
        // connection.
        Recordset own;
        own.Open("select * from #own", writer);
        own.AddNew();
        own.Fields("Number") = 5;
        own.Update();
        QCOMPARE(shown(writer, "select Number, @@identity, scope_identity(), @@rowcount from #own"),
                 QStringLiteral("5|1|1|1"));
        const auto missing = [](Connection &con) {
            return failure([&con] { con.Execute("delete from #own"); });
        };
        QCOMPARE(missing(report), 208);
        writer.Close();
        writer.Open();
        QCOMPARE(missing(writer), 208);
    }

    void procedureIsOneTransaction_data() {
        columns<QString, bool>("table", "within");
        zel::test::row("a table that lasts", "tblSession", false);
        zel::test::row("a work table", "rptAcLedger", false);
        zel::test::row("within a transaction", "tblSession", true);
    }

    /// A procedure that fails at a later statement leaves its table as it was, and the connection in order.
    void procedureIsOneTransaction() {
        QFETCH(const QString, table);
        QFETCH(const bool, within);
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        const QString column =
            table == u"tblSession" ? QStringLiteral("SessionId") : QStringLiteral("AcCode");
        con.Execute(Sql::trusted(QStringLiteral("create procedure Refill @divisor int as begin delete from %1"
                                                " create table #own (Number int null)"
                                                " insert into %1 (%2) values (@divisor)"
                                                " insert into %1 (%2) select 100 / @divisor end")
                                     .arg(table, column)
                                     .toStdString()));
        const Sql rows = Sql::trusted("select " + column.toStdString() + " from " + table.toStdString());
        con.Execute("exec Refill 7");
        QCOMPARE(shown(con, rows), QStringLiteral("7;14"));
        QCOMPARE(failure([&con, within] {
                     std::optional<Transaction> transaction;
                     if (within)
                         transaction.emplace(con);
                     con.Execute("exec Refill 0");
                 }),
                 8134);
        const QByteArray plainRows = QStringLiteral("select %2 from %1").arg(table, column).toUtf8();
        QCOMPARE(plain(folder.file(), plainRows.constData()), QStringLiteral("7;14"));
        {
            std::optional<Transaction> transaction;
            if (within)
                transaction.emplace(con);
            con.Execute("exec Refill 5");
            QCOMPARE(plain(folder.file(), plainRows.constData()),
                     within ? QStringLiteral("7;14") : QStringLiteral("5;20"));
            if (within)
                transaction->commit();
        }
        QCOMPARE(plain(folder.file(), plainRows.constData()), QStringLiteral("5;20"));
    }

    /// Nobody waits for a work table to be on the disk; other connections and other programs see it whole at
    /// once nevertheless, and what is written next is on the disk as ever.
    void refilledWorkTableIsSeen() {
        const CatalogFolder folder;
        Connection con;
        Connection report;
        open(con, folder.path());
        open(report, folder.path());
        const std::string naration(190, 'x');
        con.Execute(Sql::trusted("create procedure Refill @lines int as begin delete from rptAcLedger"
                                 " insert into rptAcLedger (AcCode, Naration) select s.SessionId, '" +
                                 naration + "' from tblSession s where s.SessionId < @lines end"));
        QVERIFY(writeLong(con));
        const auto pragma = [&con](const char *text) {
            auto running = dynamic_cast<SqliteDriver &>(con.driver()).session().prepare(text);
            return running.step() ? running.text(0) : std::string();
        };
        for (const int lines : {1, 40, 3000, 2}) {
            con.Execute("exec Refill "_sql + QString::number(lines));
            const QString expected = QStringLiteral("%1|%2").arg(lines).arg(lines * 190);
            QCOMPARE(shown(report, "select count(*), sum(len(Naration)) from rptAcLedger"), expected);
            QCOMPARE(plain(folder.file(), "select count(*) || '|' || sum(length(Naration)) from rptAcLedger"),
                     expected);
            QCOMPARE(pragma("pragma synchronous"), "2");
        }
        con.Close();
        report.Close();
        QCOMPARE(plain(folder.file(), "select count(*) from rptAcLedger"), QStringLiteral("2"));
        QCOMPARE(plain(folder.file(), "pragma integrity_check"), QStringLiteral("ok"));
    }

    /// What leaves the memory before the commit is seen by its own connection, changed again, and by nobody
    /// else before.
    void longTransactionIsReadBack() {
        const CatalogFolder folder;
        Connection con;
        open(con, folder.path());
        QVERIFY(writeLong(con));
        QCOMPARE(plain(folder.file(), "select count(*) || '|' || sum(length(SessionName)) from tblSession"),
                 QStringLiteral("3000|120000"));
        QCOMPARE(plain(folder.file(), "pragma integrity_check"), QStringLiteral("ok"));
    }

    void droppedPagesAreNeverWritten_data() {
        columns<int, int, int>("rows", "room", "number");
        zel::test::row("undone", 5000, -1, 0);
        zel::test::row("the disk gets full before the commit", 5000, 60'000, 1105);
        zel::test::row("the disk gets full at the commit", 200, 5'000, 1105);
        zel::test::row("the disk is full at the commit", 200, 0, 1105);
    }

    /// Pages of a transaction that came to nothing still wait to be written. Another program's commits take
    /// their places in the log, and stay.
    void droppedPagesAreNeverWritten() {
        QFETCH(const int, rows);
        QFETCH(const int, room);
        QFETCH(const int, number);
        const CatalogFolder folder;
        Connection con;
        Connection other;
        open(con, folder.path());
        open(other, folder.path());
        other.Execute("insert into LctPswd (Pswd) values ('OTHER')");
        if (room >= 0)
            faulty_disk::fullAfter(room);
        QCOMPARE(failure([&con, rows, room] {
                     SqliteSession &session = dynamic_cast<SqliteDriver &>(con.driver()).session();
                     session.execute("pragma cache_size = 10");
                     Transaction transaction(con);
                     for (int row = 0; row < rows; ++row)
                         con.Execute("insert into tblSession (SessionId, SessionName) values (1,"
                                     " 'A NAME OF A SESSION THAT IS RATHER LONG')");
                     if (room >= 0)
                         transaction.commit();
                 }),
                 number);
        faulty_disk::roomy();
        for (int commit = 1; commit <= 70; ++commit) {
            other.Execute("insert into LctPswd (Pswd) values ('OTHER')");
            QCOMPARE(shown(con, "select count(*) from LctPswd"), QString::number(2 + commit));
        }
        con.Close();
        QCOMPARE(shown(other, "select count(*) from LctPswd"), QStringLiteral("72"));
        other.Close();
        QCOMPARE(plain(folder.file(), "select count(*) from LctPswd"), QStringLiteral("72"));
        QCOMPARE(plain(folder.file(), "pragma integrity_check"), QStringLiteral("ok"));
    }

    void writersWaitForEachOther() {
        const CatalogFolder folder;
        Connection first;
        Connection second;
        open(first, folder.path());
        open(second, folder.path());
        std::thread other;
        int number = -1;
        {
            Transaction transaction(first);
            first.Execute("insert into LctPswd (Pswd) values ('FIRST')");
            other = std::thread([&second, &number] {
                number =
                    failure([&second] { second.Execute("insert into LctPswd (Pswd) values ('SECOND')"); });
            });
            QTest::qSleep(1500);
            transaction.commit();
        }
        other.join();
        QCOMPARE(number, 0);
        QCOMPARE(plain(folder.file(), "select Pswd from LctPswd"), QStringLiteral("ZEL;FIRST;SECOND"));
    }

    void tooLongALockIsTold() {
        const CatalogFolder folder;
        Connection first;
        Connection second;
        open(first, folder.path());
        open(second, folder.path());
        const Transaction transaction(first);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(failure([&second] { second.Execute("insert into LctPswd (Pswd) values ('SECOND')"); }),
                 1222);
        QVERIFY(clock.elapsed() >= 5000);
    }
};

QTEST_GUILESS_MAIN(tst_transaction)
#include "tst_transaction.moc"
