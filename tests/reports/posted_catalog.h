#pragma once

#include "platform/ado/recordset.h"
#include "platform/report/report.h"
#include "tests/support/chart_catalog.h"

namespace zel::test {

/// A catalog of its own with the small chart of accounts, into which a test posts rows that it writes down as
/// a table, and from which it opens the shipped reports.
class PostedCatalog {
public:
    PostedCatalog() { execute("update Company set Company = 'NORTHFIELD INSTITUTE'"); }

    void execute(const QString &statement) {
        if (!statement.isEmpty())
            m_catalog.program().Execute(Sql::trusted(statement.toStdString()));
    }

    /// Rows of DetJV, a line each, the parts between "|": date, kind and number, entry, account, other
    /// account
    /// ("-": none), debit, credit, narration. Accounts go by their codes.
    void post(const QString &rows) {
        for (const QString &line : rows.split('\n', Qt::SkipEmptyParts)) {
            QStringList parts = line.split('|');
            if (parts.size() != 8)
                qFatal("not a row: %s", qPrintable(line));
            for (QString &part : parts)
                part = part.trimmed();
            const QStringList voucher = parts[1].split(' ');
            m_catalog.program().Execute(
                "insert into DetJV (VouDate, VouStatus, VouNo, EntryNo, AcCode, CrAc, DrAmt, CrAmt, "
                "Naration) values ('"_sql +
                parts[0] + "', '" + voucher[0] + "', " + voucher[1] + ", " + parts[2] + ", " +
                account(parts[3]) + ", " + (parts[4] == "-" ? "null"_sql : account(parts[4])) + ", " +
                Sql::trusted(parts[5].toStdString()) + ", " + Sql::trusted(parts[6].toStdString()) + ", " +
                (parts[7] == "-" ? "null"_sql : "'"_sql + parts[7] + "'") + ")");
        }
    }

    /// The RowID of an account as it is written into a statement.
    static Sql account(const QString &code) {
        return "(select min(RowID) from Accounts where AcNodes = '"_sql + code + "')";
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
