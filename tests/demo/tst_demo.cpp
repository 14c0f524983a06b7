#include "menu_screens.h"
#include "schema/demo/institute.h"
#include "schema/demo/table.h"
#include "schema/demo/writer.h"
#include "tests/demo/clerks.h"
#include "tests/support/book_catalog.h"
#include "tests/support/office.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QProcess>

using namespace zel;
using namespace zel::test;

namespace {

using Cells = std::vector<std::vector<std::string>>;
constexpr std::size_t Sample = 30; // of each kind, in the order of entry

/// The demonstration as `zeldb demo` makes it, in a folder of its own.
class Made {
public:
    Made() {
        if (QProcess::execute(ZEL_BINARY_DIR "/bin/zeldb", {"demo", m_folder.path()}) != 0)
            qFatal("no demonstration");
        m_catalog = std::make_unique<BookCatalog>(m_folder.filePath("ZEL.db").toStdString());
    }
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    BookCatalog *operator->() const { return m_catalog.get(); }
    BookCatalog &operator*() const { return *m_catalog; }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<BookCatalog> m_catalog;
};

Made &made() {
    static Made all;
    return all;
}

/// Every column of a table's rows, so that '1' is not 1 and '' not NULL.
Cells rows(BookCatalog &catalog, const std::string &table, const std::string &where = "1") {
    const std::string columns = catalog.ask(
        "select group_concat('quote([' || name || '])') from pragma_table_info('" + table + "')")[0][0];
    return catalog.ask("select " + columns + " from " + table + " where " + where + " order by rowid");
}

/// An office with what the clerks found when they came to a step.
struct Begun {
    explicit Begun(const demo::Institute &institute) {
        ado::Connection owner;
        owner.setProperty("Data Source", office.folder());
        owner.setProperty("User ID", "sa");
        owner.Open();
        ado::Transaction whole(owner);
        demo::write(owner.driver(), institute);
        whole.commit();
        shell::setScreens(menuScreens());
        office.logIn();
        catalog = std::make_unique<BookCatalog>((office.folder() + "/ZEL.db").toStdString());
    }
    Office office;
    std::unique_ptr<BookCatalog> catalog;
};

/// What a clerk enters in one go, and where its rows stand.
struct Record {
    std::function<void()> enter;
    std::vector<std::pair<std::string, std::string>> written; ///< table and condition
};

std::vector<Record> vouchersOf(const demo::Institute &all, const RowIds &ids) {
    std::vector<Record> records;
    std::map<demo::Kind, std::size_t> taken;
    for (const demo::Voucher &voucher : all.vouchers) {
        if (taken[voucher.kind]++ >= Sample)
            continue;
        const std::string where = std::string("VouStatus = '") + demo::Codes[std::size_t(voucher.kind)] +
                                  "' and VouNo = " + std::to_string(voucher.number);
        const auto enter = voucher.kind == demo::Kind::FR ? enterReceipt : enterVoucher;
        records.push_back({[&, enter] { enter(voucher, ids); }, {{"MasJV", where}, {"DetJV", where}}});
    }
    return records;
}

std::vector<Record> applicationsOf(const demo::Institute &all, const RowIds &) {
    std::vector<Record> records;
    for (const demo::Application &application : std::span(all.applications).first(Sample)) {
        const std::string where = "AppID = " + std::to_string(records.size() + 1);
        const std::string account = " = (select CusCode from tblMasApp where " + where + ")";
        records.push_back({[&] { enterApplication(application); },
                           {{"tblMasApp", where},
                            {"tblDetApp", where},
                            {"Accounts", "RowID" + account},
                            {"DetJV", "VouStatus = 'AR' and VouNo" + account}}});
    }
    return records;
}

std::vector<Record> formsOf(const demo::Institute &all, const RowIds &) {
    std::vector<Record> records;
    for (const demo::CarryForward &carried : all.carried) {
        const std::string number = std::to_string(records.size() + 1);
        records.push_back({[&] { enterForm(carried); },
                           {{"tblMasCarryForw", "FormID = " + number},
                            {"tblDetCarryForw", "FormID = " + number},
                            {"DetJV", "VouStatus = 'CF' and VouNo = " + number}}});
    }
    return records;
}

using RecordsOf = std::vector<Record> (*)(const demo::Institute &, const RowIds &);

} // namespace

class tst_demo : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void isTheSameEachTime() {
        const Made again;
        const Cells tables =
            made()->ask("select name from sqlite_master where type = 'table' and name not like 'sys%'");
        for (const auto &table : tables)
            QVERIFY2(rows(*made(), table[0]) == rows(*again, table[0]), table[0].c_str());
        QCOMPARE(QProcess::execute(ZEL_BINARY_DIR "/bin/zeldb", {"check", again.folder()}), 0);
    }

    void holds_data() {
        columns<QString, QString>("answer", "question");
        QFile file(ZEL_SOURCE_DIR "/tests/demo/questions.txt");
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (const demo::Row &asked : demo::tableOf(file.readAll().toStdString()))
            row(qPrintable(asked[0]), asked[1], asked[2]);
    }
    void holds() {
        QFETCH(QString, question);
        const Cells found = made()->ask(question.toStdString());
        QStringList answer;
        for (const std::string &cell : found[0])
            answer << QString::fromStdString(cell);
        QTEST(answer.join(' '), "answer");
    }

    /// A carried credit has no other side; all else balances.
    void trialBalance() {
        ado::Connection program;
        program.setProperty("Data Source", made().folder());
        program.setProperty("User ID", "sa");
        program.Open();
        program.Execute("exec TrialBalance3 '2025-07-01','2026-06-30'");
        ado::Recordset sums;
        sums.Open("select sum(OpenDr) - sum(OpenCr) as Opening, sum(CloseDr) - sum(CloseCr) as Closing from "
                  "rptTrialBalance",
                  program);
        ado::Recordset carried;
        carried.Open(
            "select 0 - sum(CrAmt) as Before from DetJV where VouStatus = 'CF' and VouDate < '2025-07-01' "
            "union all select 0 - sum(CrAmt) from DetJV where VouStatus = 'CF'",
            program);
        QCOMPARE(sums.Fields("Opening").value().decimal(), carried.Fields("Before").value().decimal());
        carried.MoveNext();
        QCOMPARE(sums.Fields("Closing").value().decimal(), carried.Fields("Before").value().decimal());
    }

    /// The first records of each sort, entered on their screen in an office that has what came before: row
    /// for row and column for column what the demonstration has.
    void screensWriteTheSame_data() {
        columns<RecordsOf, bool>("recordsOf", "withStudents");
        row("vouchers of the six kinds", RecordsOf(vouchersOf), true);
        row("applications", RecordsOf(applicationsOf), false);
        row("carried subjects", RecordsOf(formsOf), true);
    }
    void screensWriteTheSame() {
        QFETCH(RecordsOf, recordsOf);
        QFETCH(bool, withStudents);
        const demo::Institute all = demo::makeInstitute();
        demo::Institute before = all;
        before.vouchers.clear();
        before.carried.clear();
        if (!withStudents)
            before.applications.clear();
        const Begun begun(before);
        RowIds ids;
        for (const auto &account : begun.catalog->ask("select RowID from Accounts order by RowID"))
            ids.push_back(std::stoi(account[0]));
        for (const Record &record : recordsOf(all, ids)) {
            record.enter();
            QVERIFY(!rows(*made(), record.written[0].first, record.written[0].second).empty());
            for (const auto &[table, where] : record.written)
                QVERIFY2(rows(*begun.catalog, table, where) == rows(*made(), table, where),
                         (table + " where " + where).c_str());
        }
    }
};

ZEL_TEST_MAIN(tst_demo)
#include "tst_demo.moc"
