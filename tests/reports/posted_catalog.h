#pragma once

#include "platform/ado/recordset.h"
#include "platform/report/pages/document.h"
#include "tests/reports/printed.h"
#include "tests/support/chart_catalog.h"

#include <algorithm>
#include <cmath>

namespace zel::test {

/// All pages' text, of which nothing is cut, leaves the margins or stands over anything else.
inline QString wholeText(const report::Document &document) {
    QString text;
    for (int index = 0; index < document.pageCount(); ++index) {
        const report::Page page = document.page(index);
        text += page.plainText() + '\n';
        for (const report::TextItem &item : page.texts) {
            const auto isOver = [&](const report::TextItem &other) {
                return &item != &other && std::abs(item.baseline - other.baseline) <= 2 &&
                       item.x + item.width > other.x && other.x + other.width > item.x;
            };
            if (item.text.contains("##") || item.text.contains(QChar(0x2026)) || item.x < 14.9 ||
                item.x + item.width > page.size.width() - 14.9 || item.baseline > page.size.height() - 12 ||
                std::ranges::any_of(page.texts, isOver))
                qFatal("not whole: %s", qPrintable(item.text));
        }
    }
    return text;
}

/// The two rows of a line of a kind that posts pairs, as PostedCatalog takes them.
inline QString pair(const QString &voucher, const QString &debit, const QString &credit,
                    const QString &amount, const QString &narration, const QString &day = "2024-03-04",
                    int entry = 1) {
    return QString("%1|%2|%3|%4|%5|%6|0|%7\n%1|%2|%3|%5|%4|0|%6|%7\n")
        .arg(day, voucher, QString::number(entry), debit, credit, amount, narration);
}

/// A catalog of its own with the small chart of accounts, into which a test posts rows that it writes down as
/// a table, and from which it opens the shipped reports; the program's connection is open on it, too.
class PostedCatalog {
public:
    PostedCatalog() {
        execute("update Company set Company = 'NORTHFIELD INSTITUTE'");
        connectProgram(m_catalog.filePath({}));
    }
    ~PostedCatalog() { shell::gCon.Close(); }
    PostedCatalog(const PostedCatalog &) = delete;
    PostedCatalog &operator=(const PostedCatalog &) = delete;

    void execute(const QString &statement) {
        if (!statement.isEmpty())
            m_catalog.program().Execute(Sql::trusted(statement.toStdString()));
    }

    /// Rows of DetJV, a line each, the parts between "|", as postRow() takes them.
    void post(const QString &rows) {
        for (const QString &line : rows.split('\n', Qt::SkipEmptyParts)) {
            QStringList parts;
            for (const QString &part : line.split('|'))
                parts << part.trimmed();
            postRow(parts);
        }
    }
    /// Date, kind and number, entry, account, other account ("-": none), debit, credit, narration. Accounts
    /// go by their codes, or as "#17".
    void postRow(const QStringList &parts) {
        if (parts.size() != 8)
            qFatal("not a row: %s", qPrintable(parts.join('|')));
        execute(QString("insert into DetJV (VouDate, VouStatus, VouNo, EntryNo, AcCode, CrAc, DrAmt, CrAmt, "
                        "Naration) "
                        "values ('%1', '%2', %3, %4, %5, %6, %7, %8, %9)")
                    .arg(parts[0], parts[1].section(' ', 0, 0), parts[1].section(' ', 1), parts[2],
                         account(parts[3]), parts[4] == "-" ? "null" : account(parts[4]), parts[5], parts[6],
                         parts[7] == "-" ? "null" : "'" + parts[7] + "'"));
    }

    /// The RowID of an account as it is written into a statement.
    static QString account(const QString &code) {
        return code[0] == '#' ? code.mid(1)
                              : "(select min(RowID) from Accounts where AcNodes = '" + code + "')";
    }
    int rowId(const QString &code) {
        ado::Recordset found;
        found.Open("select min(RowID) as Id from Accounts where AcNodes = '"_sql + code + "'",
                   m_catalog.program());
        return static_cast<int>(found.Fields("Id").value().integer());
    }

    [[nodiscard]] std::shared_ptr<report::Report> open(const QString &file) {
        auto opened =
            report::Application(m_catalog.program()).OpenReport(QString(ZEL_SOURCE_DIR) + "/rpt/" + file);
        opened->Database().Tables().Item(1).ConnectionProperties("User ID").Value = "sa";
        opened->setPrintTime(QDateTime(QDate(2024, 4, 1), QTime(9, 5)));
        return opened;
    }

private:
    ChartCatalog m_catalog;
};

} // namespace zel::test
