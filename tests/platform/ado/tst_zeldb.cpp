#include "catalog_fixture.h"
#include "zeldb_program.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace zel::test;

namespace {

QString cell(const QString &jsonLine, int row, int column) {
    const QJsonArray rows = QJsonDocument::fromJson(jsonLine.toUtf8()).object()["rows"].toArray();
    return QString::fromUtf8(
        QJsonDocument(QJsonArray{rows[row].toArray()[column]}).toJson(QJsonDocument::Compact));
}

} // namespace

class tst_zeldb : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void createsOnce() {
        const QTemporaryDir parent;
        const QString folder = parent.filePath("data");
        QCOMPARE(zeldb({"create", folder}).status, 0);
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{"ZEL.db"});
        QCOMPARE(zeldb({"sql", folder, "update LctPswd set Pswd = 'MINE'"}).status, 0);
        const Ran second = zeldb({"create", folder});
        QCOMPARE(second.status, 1);
        QCOMPARE(second.err.count(u'\n'), 1);
        QVERIFY(second.err.contains("already"));
        QCOMPARE(plain(folder + "/ZEL.db", "select Pswd from LctPswd"), "MINE");
        QCOMPARE(
            plain(folder + "/ZEL.db", "select count(*) from VouSetting union all select count(*) from Menus"),
            "13;19");
        QCOMPARE(plain(folder + "/ZEL.db", "pragma journal_mode"), "wal");
    }

    void leavesNothingHalfMade() {
        const QTemporaryDir parent;
        for (const int kilobytes : {0, 4, 40, 120}) {
            const Ran ran = zeldbOnFullDisk(kilobytes, {"create", parent.filePath("data")});
            QCOMPARE(ran.status, 1);
            QVERIFY2(ran.err.count('\n') == 1 && ran.err.contains("/data/ZEL.db\" can't be "),
                     qPrintable(ran.err));
            QCOMPARE(QDir(parent.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
        }
    }

    /// Stopped at different moments: the catalog stands whole, or not at all.
    void stoppedLeavesNothingHalfMade() {
        int stopped = 0;
        for (int milliseconds = 0; milliseconds < 400; milliseconds += 40) {
            const QTemporaryDir folder;
            QProcess process;
            process.start(zeldbPath(), {"create", folder.path()});
            QVERIFY(process.waitForStarted());
            QTest::qSleep(milliseconds);
            process.terminate();
            QVERIFY(process.waitForFinished());
            stopped += process.exitStatus() == QProcess::CrashExit ? 1 : 0;
            const QStringList files = QDir(folder.path()).entryList(QDir::Files);
            if (files.isEmpty())
                continue;
            QCOMPARE(files, QStringList{"ZEL.db"});
            QCOMPARE(plain(folder.filePath("ZEL.db"), "select count(*) from Menus"), "19");
        }
        QVERIFY(stopped > 0);
    }

    void bare() {
        const QTemporaryDir folder;
        QCOMPARE(zeldb({"create", folder.path(), "--bare"}).status, 0);
        QCOMPARE(plain(folder.filePath("ZEL.db"), "select name from sys_logins"), "sa");
        QCOMPARE(plain(folder.filePath("ZEL.db"),
                       "select count(*) from sqlite_master where type = 'table'"
                       " and name not like 'sys!_%' escape '!' and name not like 'sqlite%'"),
                 "0");
        QCOMPARE(zeldb({"sql", folder.path(), "create table T (N int null)"}).status, 0);
    }

    void chartIsSetUp() {
        const QTemporaryDir folder;
        QCOMPARE(zeldb({"create", "--chart", folder.path()}).status, 0);
        QCOMPARE(plain(folder.filePath("ZEL.db"),
                       "select v.VouStatus || ' ' || a.AcName from VouSetting v join Accounts a"
                       " on a.RowID = v.AcCode where v.VouStatus in ('CP','BR','IR')"),
                 "CP CASH IN HAND;BR CITY BANK;IR STUDENTS");
    }

    /// What a catalog of an earlier version has otherwise comes up to date; what was entered stays.
    void refreshes() {
        const QTemporaryDir folder;
        const QString file = folder.filePath("ZEL.db");
        const char *definitions =
            "select group_concat(sql) from (select sql from sqlite_master order by name)";
        const char *procedures =
            "select group_concat(Text) from (select Text from sys_procedures order by NameKey)";
        QCOMPARE(zeldb({"create", "--chart", folder.path()}).status, 0);
        const QString made = plain(file, definitions) + plain(file, procedures);
        QCOMPARE(zeldb({"refresh", folder.path()}).out, QString());

        plain(file, "drop table rptTrialBalance");
        plain(file, "create table RPTTRIALBALANCE (AcCode int)");
        plain(file, "drop table rptAcLedger");
        plain(file, "drop index ixDetJVSubject");
        plain(file, "create index ixDetJVSubject on DetJV (AcCode, SubID)");
        plain(file, "drop index ixDetJVDate");
        plain(file, "create index ixDetJVNumber on DetJV (VouNo)");
        plain(file, "alter table Accounts add Remark text");
        plain(file, "update sys_procedures set Text = 'create procedure AcLedger as begin delete from "
                    "rptAcLedger end'"
                    " where NameKey = 'acledger'");
        plain(file, "delete from sys_procedures where NameKey = 'trialbalance3'");
        const Ran ran = zeldb({"refresh", folder.path()});
        QCOMPARE(ran.status, 0);
        QVERIFY(ran.out.contains("up to date"));
        QVERIFY(plain(file, "select sql from sqlite_master where name = 'Accounts'").contains("Remark"));
        QCOMPARE(plain(file, "select count(*) from Accounts where AcName = 'CITY BANK'"), "1");
        plain(file, "alter table Accounts drop column Remark");
        QCOMPARE(plain(file, definitions) + plain(file, procedures), made);
        QCOMPARE(QDir(folder.path()).entryList({"*.new*"}, QDir::Files), QStringList());
        QCOMPARE(zeldb({"sql", folder.path(), "exec TrialBalance3 '2026-01-01','2026-12-31'"}).status, 0);
    }

    void json() {
        const CatalogFolder folder;
        QCOMPARE(zeldb({"sql", folder.path(),
                        "insert into DetJV (VouNo, VouStatus, VouDate, DrAmt, CrAmt, Naration)"
                        " values (7, 'BP', '2024-03-05', 1000.5, 12, 'Ñ \"x\"')"})
                     .status,
                 0);
        const Ran ran = zeldb({"sql", "--json", folder.path(),
                               "select VouNo, VouDate, DrAmt, CrAmt, Naration, FileNo from DetJV"});
        QCOMPARE(ran.status, 0);
        QCOMPARE(ran.out.count(u'\n'), 1);
        const QJsonObject answer = QJsonDocument::fromJson(ran.out.toUtf8()).object();
        QCOMPARE(answer["ok"], QJsonValue(true));
        QCOMPARE(answer["columns"].toArray().size(), 6);
        QCOMPARE(answer["rows_affected"], QJsonValue(1));
        const QStringList cells = {"[7]",  "[\"2024-03-05\"]",  "[1000.5]",
                                   "[12]", "[\"Ñ \\\"x\\\"\"]", "[null]"};
        for (int column = 0; column < 6; ++column)
            QCOMPARE(cell(ran.out, 0, column), cells[column]);

        const Ran changed = zeldb({"sql", "--json", folder.path(), "delete from DetJV"});
        QCOMPARE(QJsonDocument::fromJson(changed.out.toUtf8()).object()["rows_affected"], QJsonValue(1));

        const Ran failed = zeldb({"sql", "--json", folder.path(), "select * from NoSuchTable"});
        QCOMPARE(failed.status, 1);
        const QJsonObject refusal = QJsonDocument::fromJson(failed.out.toUtf8()).object();
        QCOMPARE(refusal["ok"], QJsonValue(false));
        QCOMPARE(refusal["number"], QJsonValue(208));
    }

    void tables() {
        const CatalogFolder folder;
        const Ran ran = zeldb(
            {"sql", folder.path(), "select VouStatus, VouNo, AcCode from VouSetting where VouStatus = 'PO'"});
        QCOMPARE(ran.out, "VouStatus  VouNo  AcCode\n"
                          "---------  -----  ------\n"
                          "PO         1      NULL  \n"
                          "1 row\n");
    }

    void files() {
        const CatalogFolder folder;
        const QTemporaryDir place;
        QFile file(place.filePath("rows.sql"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("\xEF\xBB\xBFinsert into LctPswd (Pswd) values ('A')\r\ngo\r\n\nGO\ninsert into LctPswd "
                   "(Pswd) values "
                   "('GO ON')\n  GO  \n"
                   "delete from LctPswd where Pswd = 'ZEL'");
        file.close();
        const Ran ran = zeldb({"sql", folder.path(), "-f", file.fileName()});
        QCOMPARE(ran.status, 0);
        QCOMPARE(ran.out, "1 row changed\n1 row changed\n1 row changed\n");
        QCOMPARE(plain(folder.file(), "select Pswd from LctPswd"), "A;GO ON");
        QCOMPARE(zeldb({"sql", folder.path(), "-f", "-"}, "delete from LctPswd").status, 0);
        QCOMPARE(plain(folder.file(), "select count(*) from LctPswd"), "0");
    }

    void failedBatches() {
        const CatalogFolder folder;
        const Ran ran = zeldb({"sql", folder.path(), "-f", "-"},
                              "delete from LctPswd\nGO\n\ndelete from NoSuchTable\nGO\ndelete from Menus\n");
        QCOMPARE(ran.status, 1);
        QVERIFY(ran.err.contains("line 3"));
        QCOMPARE(plain(folder.file(), "select count(*) from Menus"), "0");
        QCOMPARE(zeldb({"sql", folder.path()}).status, 1);
        QCOMPARE(zeldb({"sql", "/no/such/folder", "select 1"}).status, 1);
        QCOMPARE(zeldb({"frobnicate"}).status, 1);
        plain(folder.file(), "pragma user_version = 99");
        QVERIFY(zeldb({"sql", folder.path(), "select 1"}).err.contains("later version"));
    }

    void passwords() {
        const CatalogFolder folder;
        QCOMPARE(zeldb({"passwd", folder.path(), "nobody"}, "x\n").status, 1);
        QCOMPARE(zeldb({"passwd", folder.path(), "sa"}, "").status, 1);
        QCOMPARE(zeldb({"passwd", folder.path(), "sa"}, "SECRET ONE\n").status, 0);
        zel::ado::Connection con;
        QCOMPARE(failure([&] { open(con, folder.path()); }), 18456);
        open(con, folder.path(), "sa", "SECRET ONE");
    }

    void twoProcessesWriteTogether() {
        const CatalogFolder folder;
        QByteArray script;
        for (int row = 0; row < 100; ++row)
            script += "insert into LctPswd (Pswd) values ('X')\nGO\n";
        QProcess both[2];
        for (QProcess &process : both) {
            process.start(zeldbPath(), {"sql", folder.path(), "-f", "-"});
            process.write(script);
            process.closeWriteChannel();
        }
        for (QProcess &process : both) {
            QVERIFY(process.waitForFinished(60'000));
            QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
        }
        QCOMPARE(plain(folder.file(), "select count(*) from LctPswd where Pswd = 'X'"), "200");
    }
};

QTEST_GUILESS_MAIN(tst_zeldb)
#include "tst_zeldb.moc"
