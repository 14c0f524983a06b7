#pragma once

#include "platform/report/pages/document.h"
#include "platform/report/report.h"
#include "shell/module1.h"
#include "tests/support/seeded_books.h"

#include <QDate>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

/// The shipped reports, prepared as the screen prepares them, and their figures read off the pages.
namespace zel::test {

/// The program's connection, without a login screen.
inline void connectProgram(const QString &folder) {
    shell::gCon.setProperty("User ID", "sa");
    shell::gCon.setProperty("Data Source", folder);
    shell::gCon.setProperty("Initial Catalog", "ZEL");
    shell::gCon.Open();
    shell::gUserName = "sa";
}

inline report::DocumentPtr printed(const QString &file, const std::optional<Sql> &selection,
                                   const std::vector<std::pair<QString, Sql>> &subReports = {}) {
    const auto report = report::Application(shell::gCon).OpenReport(ZEL_SOURCE_DIR "/rpt/" + file);
    report->Database().Tables().Item(1).ConnectionProperties("User ID").Value = shell::gUserName;
    if (selection)
        report->RecordSelectionFormula = *selection;
    report->FormulaFields("Dates").Text = "\"From :  one day  To :  another\"";
    for (const auto &[name, formula] : subReports)
        report->OpenSubreport(name).RecordSelectionFormula = formula;
    return report->document();
}

struct Period {
    QDate from;
    QDate to;
    [[nodiscard]] QString d1() const { return from.toString("yyyy-MM-dd"); }
    [[nodiscard]] QString d2() const { return to.toString("yyyy-MM-dd"); }
    [[nodiscard]] bool holds(QDate date) const { return from <= date && date <= to; }
};

inline report::DocumentPtr printedBook(int account, const Period &period) {
    const QString d1 = period.d1();
    return printed(
        "rptAcLedger3.rpt",
        "{Company.comActive}='Y' and {DetJV.CrAc} = "_sql + account + " and {DetJV.VouDate} in #" + d1 +
            "# to #" + period.d2() + "#",
        {{"rptSubAc", "{Accounts.RowID} = "_sql + account},
         {"rptSubOpening", "{DetJV.AcCode} = "_sql + account + " and {DetJV.VouDate} < #" + d1 + "#"},
         {"rptSubAcOpen", "{Accounts.RowID}  = "_sql + account}});
}

enum class Ledger { Simple, Detail };

inline void makeLedger(Ledger form, int account, const Period &period) {
    if (form == Ledger::Simple) {
        shell::gCon.Execute("exec AcLedger "_sql + account + ",'" + period.d1() + "','" + period.d2() + "'");
        return;
    }
    Sql exec = "exec DetailAcLedger "_sql + account;
    for (const QDate date : {period.from, period.to})
        exec += ","_sql + date.day() + "," + date.month() + "," + date.year();
    shell::gCon.Execute(exec);
}

inline report::DocumentPtr printedLedger(Ledger form, int account, const Period &period) {
    makeLedger(form, account, period);
    return printed("rptAcLedger.rpt", {}, {{"rptSubAC", "{Accounts.RowID} = "_sql + account}});
}

/// "", "2" or "3".
inline report::DocumentPtr printedBalance(const char *which, const Period &period) {
    shell::gCon.Execute("exec TrialBalance"_sql + (which[0] == '3' ? Sql("3") : Sql("")) + " '" +
                        period.d1() + "','" + period.d2() + "'");
    return printed(QString("rptTrialBalance%1.rpt").arg(which), "{Company.comActive} = 'Y'"_sql);
}

/// "-1,234.50"; nullopt for anything else.
inline std::optional<Cents> figure(QString text) {
    if (text == QChar(0x2013)) // a total of nothing
        return 0;
    static const QRegularExpression Shape("^-?[0-9]{1,3}(,[0-9]{3})*\\.[0-9]{2}$");
    if (!Shape.match(text).hasMatch())
        return {};
    return text.remove(',').remove('.').toLongLong();
}

/// What a book or a ledger says at its beginning and its end; a credit balance is negative.
struct PrintedLedger {
    int rows = 0;
    std::optional<Cents> opening;
    std::optional<Cents> debits;
    std::optional<Cents> credits;
    std::optional<Cents> closing;
    friend bool operator==(const PrintedLedger &, const PrintedLedger &) = default;
};

inline PrintedLedger ledgerOf(const report::Document &document) {
    static const QRegularExpression Balance("^(Opening|Closing) balance (\\S+)( Dr| Cr)?$");
    static const QRegularExpression Total("^Total of the period (\\S+) (\\S+)$");
    static const QRegularExpression Row("^\\d\\d/\\d\\d/\\d{4} [A-Z]{2} - \\d+( |$)");
    PrintedLedger read;
    for (int page = 0; page < document.pageCount(); ++page) {
        for (const QString &line : document.page(page).plainText().split('\n')) {
            if (const auto found = Balance.match(line); found.hasMatch()) {
                auto &place = found.captured(1) == "Opening" ? read.opening : read.closing;
                const auto amount = figure(found.captured(2));
                // A balance says its side, and 0.00 has none.
                if (!place && amount && (*amount != 0) == found.hasCaptured(3))
                    place = found.captured(3) == " Cr" ? -*amount : *amount;
            } else if (const auto total = Total.match(line); total.hasMatch()) {
                read.debits = figure(total.captured(1));
                read.credits = figure(total.captured(2));
            } else if (Row.match(line).hasMatch()) {
                ++read.rows;
            }
        }
    }
    return read;
}

using Columns = std::vector<Cents>;

/// A line of a table of amounts. A blank amount is 0.
struct PrintedLine {
    QString code;
    QString name;    ///< of a wrapped one the beginning
    Columns amounts; ///< none where the line has no amount
};

/// The lines of all pages. Amounts stand at the right edges of those headings, codes under `code`.
inline std::vector<PrintedLine> linesUnder(const report::Document &document, const QStringList &headings,
                                           const QString &code) {
    std::vector<PrintedLine> lines;
    for (int page = 0; page < document.pageCount(); ++page) {
        const report::Page shown = document.page(page);
        std::vector<double> edges;
        double codes = 0;
        for (const report::TextItem &item : shown.texts) {
            if (headings.contains(item.text))
                edges.push_back(item.x + item.width);
            if (item.text == code)
                codes = item.x;
        }
        std::sort(edges.begin(), edges.end());
        std::vector<const report::TextItem *> items;
        for (const report::TextItem &item : shown.texts)
            items.push_back(&item);
        std::ranges::stable_sort(items, {}, &report::TextItem::baseline);
        for (auto item = items.begin(); item != items.end();) {
            const double height = (*item)->baseline;
            PrintedLine line;
            Columns amounts(edges.size());
            for (; item != items.end() && (*item)->baseline < height + 1; ++item) {
                const report::TextItem &text = **item;
                const auto amount = figure(text.text);
                const auto edge = std::ranges::find_if(
                    edges, [&](double right) { return std::abs(right - text.x - text.width) < 0.2; });
                if (amount && edge != edges.end()) {
                    amounts[std::size_t(edge - edges.begin())] = *amount;
                    line.amounts = amounts;
                } else {
                    (std::abs(text.x - codes) < 0.2 ? line.code : line.name) += text.text;
                }
            }
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

inline std::vector<PrintedLine> balanceOf(const report::Document &document) {
    std::vector<PrintedLine> lines = linesUnder(document, {"Debit", "Credit"}, "Code");
    std::erase_if(lines, [](const PrintedLine &line) { return line.amounts.empty(); });
    return lines;
}

/// A trial balance's lines by what they stand for.
struct Balance {
    explicit Balance(const report::Document &document) {
        for (const PrintedLine &line : balanceOf(document)) {
            if (line.name.startsWith("Grand total"))
                grand = line.amounts;
            else if (line.name.endsWith("without a counterpart"))
                (line.name.startsWith("Opening") ? openings : entries) = line.amounts;
            else if (line.name.startsWith("Total CONTROL"))
                heads[line.name.section(' ', 2, 2)] = line.amounts;
            else if (!line.code.isEmpty())
                rows[line.code] = line.amounts;
        }
    }
    std::map<QString, Columns> rows;  ///< by code
    std::map<QString, Columns> heads; ///< the totals of control accounts, by their code
    Columns grand;
    Columns openings; ///< what lacks of the opening balances, and of the entries; none when nothing does
    Columns entries;
};

} // namespace zel::test
