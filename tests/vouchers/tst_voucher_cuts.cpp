#include "schema/new_catalog.h"

#include "tests/support/book_catalog.h"
#include "tests/support/rows.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace zel::test;

namespace {

const QString Writer = QStringLiteral(ZEL_BINARY_DIR "/bin/voucher_writer");

/// Vouchers of which something is missing: not as many lines as the header tells, or sums that differ.
const char *const Unsound =
    "select VouNo, VouStatus from MasJV m where "
    "(select count(*) from DetJV d where d.VouNo = m.VouNo and d.VouStatus = m.VouStatus) <> "
    "case when VouStatus in ('CP', 'CR') then cast(PaidReceive as integer) + 1 "
    "else 2 * cast(PaidReceive as integer) end "
    "or (select sum(DrAmt) from DetJV d where d.VouNo = m.VouNo and d.VouStatus = m.VouStatus) <> "
    "TotalAmount "
    "or (select sum(CrAmt) from DetJV d where d.VouNo = m.VouNo and d.VouStatus = m.VouStatus) <> "
    "TotalAmount "
    "union all select VouNo, VouStatus from DetJV d where not exists "
    "(select 1 from MasJV m where m.VouNo = d.VouNo and m.VouStatus = d.VouStatus) "
    "union all select VouNo, VouStatus from MasJV group by VouNo, VouStatus having count(*) > 1";

const char *const Everything =
    "select 'H', VouNo, VouStatus, VouDate, PaidReceive, TotalAmount, Login, 0 from MasJV union all "
    "select EntryNo, VouNo, VouStatus, AcCode, CrAc, DrAmt, CrAmt, Naration from DetJV";

} // namespace

/// Saves that do not come to their end, each in a process of its own, and what is left in the catalog.
class tst_voucher_cuts : public QObject {
    Q_OBJECT

    int save(const QString &kind, const QString &state, const QString &how, int statement) {
        QProcess process;
        process.start(Writer, {"save", m_folder->path(), kind, state, how, QString::number(statement)});
        return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit ? process.exitCode()
                                                                                         : -1;
    }

    /// The rows as text, "" for none.
    QByteArray select(const char *statement) {
        QByteArray text;
        for (const auto &row : BookCatalog((m_folder->path() + "/ZEL.db").toStdString()).ask(statement)) {
            for (const std::string &cell : row)
                text.append(cell).append(&cell == &row.back() ? "\n" : " ");
        }
        return text;
    }

    void checkCatalog() {
        QCOMPARE(select("pragma integrity_check"), "ok\n");
        QCOMPARE(select(Unsound), "");
    }

    std::unique_ptr<QTemporaryDir> m_folder;

private Q_SLOTS:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        zel::schema::createCatalog(m_folder->path());
    }

    void aSaveCutAtEachStatement_data() {
        columns<QString, QString, QString, int>("kind", "state", "how", "cutStatus");
        for (const char *kind : {"BP", "CR"})
            for (const char *state : {"new", "changed"}) {
                fill(QTest::addRow("%s %s, a statement fails", kind, state), kind, state, "fail", 1);
                fill(QTest::addRow("%s %s, the process goes", kind, state), kind, state, "stop", 2);
            }
    }

    void aSaveCutAtEachStatement() {
        const auto [kind, state, how, cutStatus] = fetched<QString, QString, QString, int>();
        QCOMPARE(save(kind, "new", how, 0), 0);
        const QByteArray before = select(Everything);
        QVERIFY(before.count('\n') >= 5);
        // After the last statement of the save those of the clearing follow, when the voucher is there.
        int asBefore = 0;
        int statement = 1;
        int status = cutStatus;
        for (; status == cutStatus; ++statement) {
            status = save(kind, state, how, statement);
            QVERIFY2(status == cutStatus || status == 0, QByteArray::number(status));
            checkCatalog();
            if (QTest::currentTestFailed())
                return;
            const QByteArray now = select(Everything);
            if (now != before)
                break;
            ++asBefore;
        }
        // begin, numbers or the header's row, header, search, delete, lines: at least one each.
        QVERIFY2(asBefore >= 8, QByteArray::number(asBefore));
        QVERIFY(select(Everything) != before);
        qInfo("%d statements cut, and the voucher as before", asBefore);
    }

    void processesKilledAtRandom() {
        bool given = false;
        const int asked = qEnvironmentVariableIntValue("ZEL_KILLS", &given);
        const int kills = given ? asked : 20;
        const auto vouchers = [this] { return select("select count(*) from MasJV").toInt(); };
        int before = 0;
        for (int kill = 0; kill < kills; ++kill) {
            QProcess process;
            process.start(Writer, {"loop", m_folder->path()});
            QVERIFY(process.waitForReadyRead());
            QTest::qSleep(int(QRandomGenerator::global()->bounded(300)));
            QCOMPARE(process.state(), QProcess::Running);
            process.kill();
            QVERIFY(process.waitForFinished());
            QCOMPARE(process.exitStatus(), QProcess::CrashExit);
            checkCatalog();
            if (QTest::currentTestFailed())
                return;
            QVERIFY(vouchers() > before);
            before = vouchers();
        }
        qInfo("%d kills, %d vouchers", kills, before);
    }

    void processesSaveAtOneTime() {
        constexpr int Wanted = 150;
        std::vector<std::unique_ptr<QProcess>> clerks;
        for (int i = 0; i < 3; ++i) {
            clerks.push_back(std::make_unique<QProcess>());
            clerks.back()->start(Writer, {"loop", m_folder->path()});
        }
        for (const auto &clerk : clerks)
            QVERIFY(clerk->bytesAvailable() > 0 || clerk->waitForReadyRead());
        QTRY_VERIFY_WITH_TIMEOUT(select("select count(*) from MasJV").toInt() >= Wanted, 60000);
        for (const auto &clerk : clerks) {
            QVERIFY2(clerk->state() == QProcess::Running, clerk->readAllStandardError().constData());
            clerk->kill();
            clerk->waitForFinished();
        }
        checkCatalog();
        // No number was given twice or left out.
        QCOMPARE(
            select(
                "select VouNo from MasJV group by VouStatus having max(VouNo) - min(VouNo) + 1 <> count(*)"),
            "");
    }
};

QTEST_GUILESS_MAIN(tst_voucher_cuts)
#include "tst_voucher_cuts.moc"
