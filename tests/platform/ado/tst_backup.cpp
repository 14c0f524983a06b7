#include "catalog_fixture.h"
#include "tests/support/rows.h"
#include "zeldb_program.h"

#include <QDir>

#include <atomic>
#include <thread>

using namespace zel;
using namespace zel::test;

namespace {

/// What a catalog holds, past the program: all rows in their order, the definitions, the last identities.
QByteArray content(const QString &file) {
    QProcess process;
    process.start("sqlite3", {file, ".dump"});
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("no content of %s: %s", qPrintable(file), process.readAllStandardError().constData());
    QList<QByteArray> rows;
    QList<QByteArray> inNoOrder;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n'))
        if (!line.contains("sqlite_stat") && !line.startsWith("ANALYZE"))
            (line.contains(" INDEX ") || line.contains("sqlite_sequence") ? inNoOrder : rows) << line;
    std::sort(inNoOrder.begin(), inNoOrder.end());
    return (rows + inNoOrder).join('\n');
}

/// A catalog of what is hard to carry: the demonstration; texts with every special character; numbers at the
/// ends of their ranges; identities that were given out and went; tables, indexes and procedures of its own.
class HardCatalog {
public:
    HardCatalog() {
        static const QTemporaryDir first;
        static const bool made = make(first.path());
        if (!made || !QFile::copy(first.filePath("ZEL.db"), file()))
            qFatal("no catalog");
    }
    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString file() const { return m_folder.filePath("ZEL.db"); }
    [[nodiscard]] QString beside(const char *name) const { return m_beside.filePath(name); }
    [[nodiscard]] QStringList besides() const {
        return QDir(m_beside.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

private:
    static bool make(const QString &folder) {
        const char *script =
            "create table Ours ([A Key] int not null, B varchar(9) not null, C float, D date, E datetime, "
            "primary key ([A Key], B))\nGO\n"
            "create unique index ixOurs on Ours (C desc, D) where E is not null\nGO\n"
            "insert into Ours values (-2147483648, '', 0.1, '0001-01-01', '2024-02-29 23:59:59.997')\n"
            "insert into Ours values (1, '\\N', 1e300, null, null)\n"
            "insert into Ours values (2, '\\', 5, null, null)\n"
            "insert into Company (Company) values (' TAB\tLINE\r\nEND\\.\nÑ \"'' नमस्ते ')\n"
            "insert into Company (comTel) values ('')\n"
            "insert into Accounts (AcName, OpenBal) values ('LARGE', -69999999999999.99)\n"
            "insert into Accounts (AcName, OpenBal) values ('GONE', 0.07)\n"
            "delete from Accounts where AcName = 'GONE'\nGO\n"
            "create procedure Mine @n int as select @n -- the end\nGO\n"
            "exec sp_addlogin 'Zoë', 'her password', 'ZEL'\nGO\nexec sp_adduser 'Zoë'\n";
        return zeldb({"demo", folder}).status == 0 && zeldb({"sql", folder, "-f", "-"}, script).status == 0;
    }
    QTemporaryDir m_folder;
    QTemporaryDir m_beside;
};

/// Kills the program at moments spread over the time that it takes, told after each.
template <class Before, class After>
void killAtMoments(const QStringList &arguments, const Before &before, const After &after) {
    constexpr int Times = 16;
    qint64 whole = 0;
    int killed = 0;
    for (int time = 0; time <= Times; ++time) {
        before();
        QProcess process;
        QElapsedTimer clock;
        clock.start();
        process.start(zeldbPath(), arguments);
        QVERIFY(process.waitForStarted());
        if (time > 0) {
            QTest::qSleep(int(whole * time / (Times + 1)));
            process.kill();
        }
        QVERIFY(process.waitForFinished());
        if (time == 0)
            whole = std::max<qint64>(clock.elapsed(), Times);
        killed += process.exitStatus() == QProcess::CrashExit ? 1 : 0;
        after();
    }
    QVERIFY(killed > Times / 2);
}

} // namespace

class tst_backup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void roundTrip() {
        const HardCatalog from;
        const QByteArray before = content(from.file());
        const QString file = from.beside("one.backup");
        QCOMPARE(zeldb({"backup", from.path(), file}).err, "");
        QVERIFY(!(QFile::permissions(file) & QFile::Permissions(0x0077)));
        QCOMPARE(zeldb({"restore", file, from.beside("restored")}).err, "");
        QCOMPARE(content(from.beside("restored/ZEL.db")), before);
        const Ran copied = zeldb({"copy", from.path(), from.beside("copied")});
        QCOMPARE(copied.err, "");
        QVERIFY(copied.out.contains("Ours") && copied.out.contains("the same"));
        QCOMPARE(content(from.beside("copied/ZEL.db")), before);
        QCOMPARE(content(from.file()), before);
        zel::ado::Connection con;
        open(con, from.beside("restored"), "zoË", "her password");
        QCOMPARE(shown(con, "exec Mine 7"), "7");
        con.Execute("insert into Accounts (AcName) values ('NEXT')");
        const QString last = shown(con, "select max(RowID) - (select RowID from Accounts where AcName = "
                                        "'LARGE') from Accounts");
        QCOMPARE(last, "2");
        QCOMPARE(zeldb({"refresh", from.beside("restored")}).out, "");
    }

    /// Two rows come at a time and go at a time; a backup of one moment has them both or neither.
    void isOfOneMoment() {
        const HardCatalog from;
        std::jthread clerk([&](const std::stop_token &end) {
            zel::ado::Connection con;
            open(con, from.path());
            while (!end.stop_requested()) {
                zel::ado::Transaction both(con);
                con.Execute("delete from User_Information where Row_No = 1");
                con.Execute("delete from tbl_Tele_Directory where Row_No = 1");
                con.Execute("insert into User_Information (Row_No) values (2)");
                con.Execute("insert into tbl_Tele_Directory (Row_No) values (2)");
                both.commit();
            }
        });
        for (int time = 0; time < 5; ++time)
            QCOMPARE(zeldb({"backup", "--replace", from.path(), from.beside("b")}).err, "");
        clerk.request_stop();
        clerk.join();
        QCOMPARE(zeldb({"restore", from.beside("b"), from.beside("r")}).err, "");
        QCOMPARE(plain(from.beside("r/ZEL.db"), "select (select count(*) from User_Information) = (select "
                                                "count(*) from tbl_Tele_Directory)"),
                 "1");
        QVERIFY(plain(from.beside("r/ZEL.db"), "select count(*) from User_Information").toInt() > 0);
    }

    void keepsTheNewest() {
        const HardCatalog from;
        const QDir folder(from.beside("kept"));
        QVERIFY(folder.mkpath("."));
        for (const char *name :
             {"ZEL-20200101T000000Z.backup", "ZEL-20190101T000000Z.backup", "ZEL-before-the-move.backup",
              "ZEL-20210101T000000Z.backup", "ZEL-20220101T000000Z.backup.new"})
            QFile(folder.filePath(name)).open(QIODevice::WriteOnly);
        const QStringList before = folder.entryList(QDir::Files);
        QCOMPARE(zeldbOnFullDisk(8, {"backup", "--keep", "2", from.path(), folder.path()}).status, 1);
        QCOMPARE(folder.entryList(QDir::Files), before);
        QCOMPARE(zeldb({"backup", "--keep", "0", from.path(), folder.path()}).status, 1);
        QCOMPARE(zeldb({"backup", "--keep", "2", from.path(), folder.path()}).err, "");
        const QStringList left = folder.entryList(QDir::Files, QDir::Name);
        QCOMPARE(left.size(), 3);
        QCOMPARE(left[0], "ZEL-20210101T000000Z.backup");
        QCOMPARE(left[2], "ZEL-before-the-move.backup");
        QCOMPARE(zeldb({"restore", folder.filePath(left[1]), from.beside("r")}).err, "");
    }

    void badBackups_data() {
        columns<QString, qsizetype, int, QString>("change", "place", "what", "says");
        for (const int percent : {0, 1, 50, 99})
            row(qPrintable(QString("cut off at %1 %").arg(percent)), "cut", qsizetype(percent), 0,
                percent == 0 ? "no backup" : "cut off or was altered");
        row("cut off before its last byte", "chop", qsizetype(1), 0, "cut off or was altered");
        for (const int percent : {1, 40, 80, 100})
            row(qPrintable(QString("a bit turned at %1 %").arg(percent)), "turn", qsizetype(percent), 4,
                "cut off or was altered");
        row("longer than it was", "append", qsizetype(0), 0, "cut off or was altered");
        row("no backup", "set", qsizetype(10), int('Q'), "no backup of zeldb");
        row("of a later format", "set", qsizetype(19), int('2'), "later version");
    }
    void badBackups() {
        QFETCH(QString, change);
        QFETCH(qsizetype, place);
        QFETCH(int, what);
        QFETCH(QString, says);
        const HardCatalog from;
        static const QByteArray whole = [&] {
            zeldb({"backup", from.path(), from.beside("whole")});
            QFile made(from.beside("whole"));
            return made.open(QIODevice::ReadOnly) ? made.readAll() : QByteArray();
        }();
        QByteArray bad = whole;
        const qsizetype at = std::min(bad.size() * place / 100, bad.size() - 1);
        if (change == "cut")
            bad.truncate(at);
        else if (change == "chop")
            bad.chop(place);
        else if (change == "turn")
            bad[at] = char(bad[at] ^ what);
        else if (change == "append")
            bad += '\0';
        else
            bad[place] = char(what);
        QFile file(from.beside("bad"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bad) == bad.size());
        file.close();
        const QByteArray before = content(from.file());
        const Ran ran = zeldb({"restore", file.fileName(), from.path()});
        QCOMPARE(ran.status, 1);
        QVERIFY2(ran.err.count('\n') == 1 && ran.err.contains(says), qPrintable(ran.err));
        QCOMPARE(content(from.file()), before);
        QCOMPARE(QDir(from.path()).entryList(QDir::Files), QStringList{"ZEL.db"});
    }

    /// One sentence, a status, and every catalog and backup as it was.
    void refusals_data() {
        columns<QStringList, int, QString>("command", "kilobytes", "says");
        for (const int kilobytes : {0, 4, 40})
            row(qPrintable(QString("a backup on a disk of %1 kB").arg(kilobytes)),
                QStringList{"backup", "FROM", "B/new"}, kilobytes, "File too large");
        row("a backup over another on a full disk", QStringList{"backup", "--replace", "FROM", "B/old"}, 60,
            "no backup was made");
        row("a restore on a full disk", QStringList{"restore", "B/old", "FROM"}, 200, "can't be ");
        row("a copy on a full disk", QStringList{"copy", "FROM", "B/new"}, 200, "can't be ");
        row("a backup over a file", QStringList{"backup", "FROM", "B/old"}, -1, "--replace");
        row("a backup in no folder", QStringList{"backup", "FROM", "B/no/such"}, -1, "No such file");
        row("a backup of no catalog", QStringList{"backup", "B", "B/new"}, -1, "holds no catalog");
        row("a restore of nothing", QStringList{"restore", "B/nothing", "FROM"}, -1, "can't be opened");
        row("a restore into a file", QStringList{"restore", "B/old", "B/old"}, -1, "can't be made");
        row("a copy over a catalog", QStringList{"copy", "FROM", "FROM"}, -1, "holds a catalog");
        row("a copy to a server", QStringList{"copy", "FROM", "postgresql://h"}, -1, "can't reach");
    }
    void refusals() {
        QFETCH(QStringList, command);
        QFETCH(int, kilobytes);
        QFETCH(QString, says);
        const HardCatalog from;
        QCOMPARE(zeldb({"backup", from.path(), from.beside("old")}).err, "");
        const QByteArray before = content(from.file());
        for (QString &word : command)
            word = word == "FROM"         ? from.path()
                   : word.startsWith('B') ? from.beside(qPrintable(word.mid(2)))
                                          : word;
        const Ran ran = kilobytes < 0 ? zeldb(command) : zeldbOnFullDisk(kilobytes, command);
        QCOMPARE(ran.status, 1);
        QVERIFY2(ran.err.count('\n') == 1 && ran.err.contains(says), qPrintable(ran.err));
        QCOMPARE(content(from.file()), before);
        QCOMPARE(QDir(from.path()).entryList(QDir::Files), QStringList{"ZEL.db"});
        QCOMPARE(from.besides(), QStringList{"old"});
        QCOMPARE(zeldb({"restore", from.beside("old"), from.beside("r")}).err, "");
    }

    /// What stands only in the log of a program that was killed is kept, too.
    void keepsWhatWasThere() {
        const HardCatalog from;
        const HardCatalog other;
        QCOMPARE(zeldb({"backup", other.path(), from.beside("b")}).err, "");
        auto con = std::make_unique<zel::ado::Connection>();
        open(*con, from.path());
        con->Execute("insert into LctPswd (Pswd) values ('LAST')");
        const Ran refused = zeldb({"restore", from.beside("b"), from.path()});
        QCOMPARE(refused.status, 1);
        QVERIFY2(refused.err.contains("has the catalog") && refused.err.count('\n') == 1,
                 qPrintable(refused.err));
        QDir().mkdir(from.beside("killed"));
        for (const char *name : {"ZEL.db", "ZEL.db-wal"}) // as a killed program leaves them
            QVERIFY(QFile::copy(from.path() + '/' + name, from.beside("killed/") + name));
        con.reset();
        for (const QString &folder : {from.path(), from.beside("killed")}) {
            const Ran ran = zeldb({"restore", from.beside("b"), folder});
            QCOMPARE(ran.err, "");
            QCOMPARE(content(folder + "/ZEL.db"), content(other.file()));
            QStringList files = QDir(folder).entryList(QDir::Files);
            QCOMPARE(files.size(), 2);
            QVERIFY(ran.out.contains(files[1]));
            QCOMPARE(plain(folder + '/' + files[1], "select Pswd from LctPswd"), "ZEL;LAST");
        }
    }

    /// A program that begins while a catalog is restored waits, and works on the new one.
    void whoWaitsOpensTheNewOne() {
        const HardCatalog from;
        QCOMPARE(zeldb({"backup", from.path(), from.beside("b")}).err, "");
        std::atomic<int> saved = 0;
        std::atomic<int> failed = 0;
        std::jthread clerk([&](const std::stop_token &end) {
            while (!end.stop_requested()) {
                const QString number = QString::number(saved + 1);
                const int refused = failure([&] {
                    ado::Connection con;
                    open(con, from.path());
                    con.Execute("insert into User_Information (Row_No) values ("_sql + number + ")");
                });
                saved += refused == 0 ? 1 : 0;
                failed = refused == 0 ? failed.load() : refused;
                QThread::msleep(30); // with all programs closed, so that a restore may begin
            }
        });
        for (int restored = 0; restored < 3;) {
            const bool done = zeldb({"restore", from.beside("b"), from.path()}).status == 0;
            const int before = saved + 1; // the next one may have begun before
            QTRY_VERIFY(saved > before);
            restored += done ? 1 : 0;
            const QString question = "select Row_No from User_Information where Row_No = ";
            const Ran ran = zeldb({"sql", from.path(), question + QString::number(before + 1)});
            QVERIFY2(ran.out.endsWith("1 row\n"), qPrintable(ran.out + ran.err));
        }
        clerk.request_stop();
        clerk.join();
        QCOMPARE(failed, 0);
        for (const QString &name : QDir(from.path()).entryList({"ZEL.db", "*.before-*"}, QDir::Files))
            QCOMPARE(plain(from.path() + '/' + name, "pragma integrity_check"), "ok");
    }

    /// A file that is no catalog any more, and a log that has lost its catalog, harm no restored one.
    void replacesWhatIsBroken() {
        const HardCatalog from;
        QCOMPARE(zeldb({"backup", from.path(), from.beside("b")}).err, "");
        for (const bool withFile : {true, false}) {
            const QString folder = from.beside(withFile ? "one" : "other");
            QDir().mkdir(folder);
            for (const char *name : {"/ZEL.db", "/ZEL.db-wal"}) {
                QFile broken(folder + name);
                if (withFile || name[7] != '\0')
                    QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write(QByteArray(5000, 'x')) == 5000);
            }
            QCOMPARE(zeldb({"restore", from.beside("b"), folder}).err, "");
            QCOMPARE(content(folder + "/ZEL.db"), content(from.file()));
            QVERIFY(!QDir(folder).entryList({"*.before-*"}, QDir::Files).isEmpty());
        }
    }

    void killedBackups() {
        const HardCatalog from;
        const QString file = from.beside("b");
        killAtMoments(
            {"backup", from.path(), file}, [&] { QFile::remove(file); },
            [&] {
                if (QFile::exists(file))
                    QCOMPARE(zeldb({"restore", file, from.path()}).status, 0);
            });
        QCOMPARE(zeldb({"backup", "--replace", from.path(), file}).err, "");
        QCOMPARE(from.besides(), QStringList{"b"});
    }

    void killedRestores() {
        const HardCatalog from;
        QCOMPARE(zeldb({"sql", from.path(), "delete from DetJV"}).status, 0);
        const QByteArray restored = content(from.file());
        QCOMPARE(zeldb({"backup", from.path(), from.beside("b")}).err, "");
        const QString place = from.beside("place");
        QByteArray old;
        killAtMoments(
            {"restore", from.beside("b"), place},
            [&] {
                QDir(place).removeRecursively();
                const HardCatalog other;
                QVERIFY(QDir().rename(other.path(), place));
                old = content(place + "/ZEL.db");
            },
            [&] {
                const QByteArray now = content(place + "/ZEL.db");
                QVERIFY(now == old || now == restored);
                QCOMPARE(zeldb({"restore", from.beside("b"), place}).err, "");
                QCOMPARE(QDir(place).entryList({"*.new*"}, QDir::Files), QStringList());
                bool kept = false;
                for (const QString &name : QDir(place).entryList({"*.before-*"}, QDir::Files))
                    kept |= content(place + '/' + name) == old;
                QVERIFY(kept);
            });
    }

    void killedCopies() {
        const HardCatalog from;
        const QByteArray before = content(from.file());
        const QString to = from.beside("to");
        killAtMoments(
            {"copy", from.path(), to}, [&] { QDir(to).removeRecursively(); },
            [&] {
                if (QFile::exists(to + "/ZEL.db"))
                    QCOMPARE(content(to + "/ZEL.db"), before);
                else
                    QCOMPARE(zeldb({"copy", from.path(), to}).err, "");
            });
    }

    void whatDoesNotFit_data() {
        columns<QString, QString>("plant", "tells");
        row("a text too long", "update tblSession set SessionName = hex(zeroblob(30)) where SessionId = 2",
            "tblSession.SessionName is varchar(50): rows that do not fit: 1, the first is row 2, \"0000");
        row("no number", "update DetJV set AcCode = 'x' where rowid % 100 = 0",
            "DetJV.AcCode is int: rows that do not fit: 55, the first is row 100, \"x\".");
        row("no date", "update MasJV set VouDate = '2024-02-30' where rowid = 7",
            "MasJV.VouDate is datetime: rows that do not fit: 1, the first is row 7, \"2024-02-30\".");
        row("too large a number", "update tblSubject set TotAmt = 1e17 where rowid = 1",
            "tblSubject.TotAmt is numeric(18,2): ");
    }
    void whatDoesNotFit() {
        QFETCH(QString, plant);
        QFETCH(QString, tells);
        const HardCatalog from;
        QVERIFY(zeldb({"copy", "--dry-run", from.path(), from.beside("to")}).out.startsWith("All fits"));
        QCOMPARE(plain(from.file(), qPrintable(plant)), "");
        const Ran dry = zeldb({"copy", "--dry-run", from.path(), from.beside("to")});
        QCOMPARE(dry.status, 1);
        QVERIFY2(dry.out.count('\n') == 1 && dry.out.contains(tells), qPrintable(dry.out));
        QCOMPARE(zeldb({"copy", from.path(), from.beside("to")}).status, 1);
        QCOMPARE(from.besides(), QStringList());
        QCOMPARE(zeldb({"backup", from.path(), from.beside("b")}).err, "");
        QCOMPARE(zeldb({"restore", from.beside("b"), from.beside("r")}).err, "");
        QCOMPARE(content(from.beside("r/ZEL.db")), content(from.file()));
    }
};

QTEST_GUILESS_MAIN(tst_backup)
#include "tst_backup.moc"
