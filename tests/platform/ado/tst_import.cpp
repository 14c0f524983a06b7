#include "catalog_fixture.h"
#include "schema/demo/institute.h"
#include "schema/demo/writer.h"
#include "tests/support/facts.h"
#include "zeldb_program.h"

#include <QDir>

using namespace zel;
using namespace zel::test;

namespace {

QString quoted(QString cell) {
    return '"' + cell.replace('"', "\"\"") + '"';
}

QString line(const QStringList &cells) {
    QStringList quotedCells;
    for (const QString &cell : cells)
        quotedCells << quoted(cell);
    return quotedCells.join(',') + "\r\n";
}

QString amount(demo::Cents cents) {
    return QString::number(double(cents) / 100, 'f', 2);
}

Ran importText(const QString &catalog, const QString &kind, const QByteArray &text,
               const QStringList &options = {}) {
    const QTemporaryDir place;
    QFile file(place.filePath("rows.csv"));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("no file of rows");
    file.close();
    return zeldb(QStringList{"import"} + options + QStringList{catalog, kind, file.fileName()});
}

/// Every column but the row's own number.
QString rowsOf(const QString &file, const char *table, const QString &where) {
    const QString columns =
        plain(file, qPrintable(QString("select 'quote(' || name || ')' from pragma_table_info('%1')"
                                       " where name <> 'RowID'")
                                   .arg(table)));
    return plain(
        file,
        qPrintable(QString("select concat_ws from (select %1 as concat_ws from %2 where %3 order by rowid)")
                       .arg(QString(columns).replace(';', "||'|'||"), table, where)));
}

/// The demonstration, and a catalog with what stood there before the students came.
struct Institutes {
    Institutes() {
        fill(whole.path(), all);
        demo::Institute before = all;
        before.vouchers.clear();
        before.carried.clear();
        before.applications.clear();
        fill(empty.path(), before);
    }
    static void fill(const QString &folder, const demo::Institute &institute) {
        ado::Connection owner;
        open(owner, folder);
        ado::Transaction rows(owner);
        demo::write(owner.driver(), institute);
        rows.commit();
    }
    demo::Institute all = demo::makeInstitute();
    CatalogFolder whole;
    CatalogFolder empty;
};

} // namespace

class tst_import : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The demonstration's students from a file become what the screens write for them.
    void students() {
        const Institutes are;
        QString text =
            "\uFEFF" + line({"StuName", "CellNo",    "SessionID", "AppDate", "RegNo",       "FatherName",
                             "NIC",     "Contact",   "Email",     "MailAdd", "LastQulS",    "AudCompany",
                             "ExamAtt", "ModPart",   "RegFee",    "SubID",   "SectionAtoZ", "Discount",
                             "SubAmt",  "RecAmount", "Nerration", "InActive"});
        for (const demo::Application &one : are.all.applications) {
            QStringList person = {one.name.toLower(),
                                  one.cell,
                                  are.all.sessions[std::size_t(one.session - 1)].name,
                                  one.date.toString("dd/MM/yyyy"),
                                  one.regNo,
                                  one.father,
                                  QString(one.nic).remove('-'),
                                  one.residence,
                                  one.email,
                                  one.address,
                                  one.education,
                                  one.firm,
                                  one.attempt,
                                  one.part,
                                  amount(one.registrationFee)};
            for (const demo::SubjectLine &subject : one.lines) {
                text += line(person + QStringList{QString::number(subject.subject), one.section,
                                                  amount(subject.discount), amount(subject.amount),
                                                  amount(subject.received), subject.narration,
                                                  subject.inactive ? "1" : "0"});
                person.fill(QString());
            }
        }
        const Ran dry = importText(are.empty.path(), "students", text.toUtf8(), {"--dry-run"});
        QVERIFY2(dry.out.contains("students can be imported: 200"), qPrintable(dry.err + dry.out));
        QCOMPARE(plain(are.empty.file(), "select count(*) from tblMasApp"), "0");
        QCOMPARE(importText(are.empty.path(), "students", text.toUtf8()).err, "");
        for (const auto &[table, where] : {std::pair("tblMasApp", "1"),
                                           {"tblDetApp", "1"},
                                           {"Accounts", "1"},
                                           {"DetJV", "VouStatus = 'AR'"}})
            QVERIFY2(rowsOf(are.empty.file(), table, where) == rowsOf(are.whole.file(), table, where), table);
        QCOMPARE(zeldb({"check", are.empty.path()}).status, 0);
    }

    void accounts() {
        const Institutes are;
        const CatalogFolder bare;
        QString text = line({"AcName", "ParentID", "OpenBal", "openDate", "BStatus", "ContactPer", "Addr",
                             "Contact", "Email", "OrderStatus"});
        for (const demo::Account &one : are.all.chart) {
            const auto point = one.nodes.lastIndexOf('.');
            const bool detail = one.nodes.count('.') == 2;
            text += line({one.name, one.nodes.left(std::max<qsizetype>(point, 0)),
                          one.opening ? amount(*one.opening) : QString(), detail ? "2024-07-01" : "",
                          one.mark, one.contactPerson, one.address, one.contact, one.email,
                          point < 0 ? one.order : QString()});
        }
        QCOMPARE(importText(bare.path(), "accounts", text.toUtf8()).err, "");
        QCOMPARE(rowsOf(bare.file(), "Accounts", "1"), rowsOf(are.empty.file(), "Accounts", "1"));
    }

    void refusals_data() { rowsFrom<QString, QString, QString>("platform/ado/import.json"); }
    void refusals() {
        QFETCH(QString, kind);
        QFETCH(QString, text);
        QFETCH(QString, says);
        static const Institutes are;
        const QString before = rowsOf(are.empty.file(), "Accounts", "1");
        // Bytes that are no text stand as characters below 256.
        const QByteArray bytes = text.startsWith("bytes:") ? text.mid(6).toLatin1() : text.toUtf8();
        const Ran ran = importText(are.empty.path(), kind, bytes);
        QCOMPARE(ran.status, 1);
        QVERIFY2(ran.err.contains(says), qPrintable(ran.err));
        QVERIFY(ran.err.count("zeldb: ") == 1 && ran.out.isEmpty());
        QCOMPARE(rowsOf(are.empty.file(), "Accounts", "1"), before);
        QCOMPARE(plain(are.empty.file(), "select count(*) from tblMasApp"), "0");
    }
};

QTEST_GUILESS_MAIN(tst_import)
#include "tst_import.moc"
