// The ledger of the busiest account to PDF, against a bare loop that draws the same texts at the same places
// in the same fonts on QPdfWriter; the way to its first page; and what it needs in memory as it gets longer.
#include "desk.h"
#include "measure.h"

#include "platform/ado/connection.h"
#include "platform/report/output/paint.h"
#include "platform/report/query/source.h"
#include "platform/report/report.h"
#include "shell/module1.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>

#include <map>

namespace {

using namespace zel;

constexpr int Busiest = 36;

/// Ledgers of about so many pages: up to a day, and with the account's lines once more so many times.
struct Length {
    int pages;
    const char *until;
    int copies;
} constexpr lengths[] = {{50, "2024-01-26", 0}, {500, "2024-09-20", 0}, {5000, "2025-12-31", 3}};

void fillLedger(const Length &length) {
    const Sql account = Sql::trusted(std::to_string(Busiest));
    shell::gCon.Execute("exec AcLedger " + account + ",'2024-01-01','" + Sql::trusted(length.until) + "'");
    for (int copy = 0; copy < length.copies; ++copy)
        shell::gCon.Execute("insert into rptAcLedger (LineOrder, AcCode, VouDate, VouStatus, VouNo, EntryNo, "
                            "CrAc, Naration, DrAmt, CrAmt) select 1, AcCode, VouDate, VouStatus, VouNo, "
                            "EntryNo, CrAc, Naration, DrAmt, CrAmt from DetJV where AcCode = " +
                            account);
}

report::DocumentPtr read(const std::shared_ptr<report::Source> &source) {
    auto ledger =
        report::Application(shell::gCon).OpenReport(QStringLiteral(ZEL_SOURCE_DIR "/rpt/rptAcLedger.rpt"));
    ledger->setSource(source);
    ledger->Database().Tables().Item(1).ConnectionProperties("User ID").Value = "sa";
    ledger->FormulaFields("Dates").Text = "\"From 01/01/2024\"";
    ledger->OpenSubreport("rptSubAC").RecordSelectionFormula =
        "{Accounts.RowID} = " + Sql::trusted(std::to_string(Busiest));
    return ledger->document();
}

std::shared_ptr<report::Source> sourceOf(const QString &folder) {
    return report::openSource({{}, folder, "ZEL", "sa", {}});
}

/// Reads each statement once and gives its rows again.
class KeptRows final : public report::Source {
public:
    explicit KeptRows(std::shared_ptr<report::Source> source) : m_source(std::move(source)) {}
    RowsPtr rows(const Sql &select) override {
        RowsPtr &kept = m_rows[std::string(select.text())];
        if (!kept)
            kept = m_source->rows(select);
        return kept;
    }

private:
    std::shared_ptr<report::Source> m_source;
    std::map<std::string, RowsPtr> m_rows;
};

QFont bareFont(const report::Font &font) {
    QFont made(font.family);
    made.setPointSizeF(font.points);
    made.setBold(font.bold);
    made.setItalic(font.italic);
    return made;
}

void drawBare(QPainter &painter, const report::Page &page, double scale) {
    const report::Font *current = nullptr;
    for (const report::TextItem &item : page.texts) {
        if (item.font.get() != current) {
            current = item.font.get();
            painter.setFont(bareFont(*current));
            painter.setPen(current->color);
        }
        painter.drawText(QPointF(item.x * scale, item.baseline * scale), item.text);
    }
}

void exportBare(const std::vector<report::Page> &pages, const QString &path) {
    QPdfWriter writer(path);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter(&writer);
    for (const report::Page &page : pages) {
        if (&page != &pages.front())
            writer.newPage();
        drawBare(painter, page, writer.resolution() / 25.4);
    }
}

/// Megabytes of this process: "VmRSS" now, or "VmHWM" at most since forgetPeak().
double megabytes(const char *what) {
    QFile status("/proc/self/status");
    if (status.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith(what))
                return line.simplified().split(' ').value(1).toDouble() / 1024;
        }
    }
    qFatal("no %s", what);
}

/// A login takes more memory than a book: what was needed before doesn't count.
void forgetPeak() {
    QFile references("/proc/self/clear_refs");
    if (!references.open(QIODevice::WriteOnly) || references.write("5") != 1)
        qFatal("the peak can't be reset");
}

/// In a process of its own: pages, then megabytes that reading and that exporting take at most.
int measureMemory(const QString &folder) {
    const auto source = sourceOf(folder);
    forgetPeak();
    const double before = megabytes("VmRSS");
    const report::DocumentPtr document = read(source);
    const double reading = megabytes("VmHWM") - before;
    forgetPeak();
    const double held = megabytes("VmRSS");
    report::exportPdf(*document, folder + "/memory.pdf");
    std::printf("%d %f %f\n", document->pageCount(), reading, megabytes("VmHWM") - held);
    return 0;
}

bool measureMemories(const QString &folder) {
    double reading[3] = {};
    double exporting[3] = {};
    int pages[3] = {};
    for (int i = 0; i < 3; ++i) {
        fillLedger(lengths[i]);
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {folder, "memory"});
        process.waitForFinished(-1);
        const QList<QByteArray> words = process.readAllStandardOutput().split(' ');
        pages[i] = words.value(0).toInt();
        reading[i] = words.value(1).toDouble();
        exporting[i] = words.value(2).toDouble();
        std::printf("    %5d pages: reading takes %.1f MB at most, exporting %.1f MB more\n", pages[i],
                    reading[i], exporting[i]);
    }
    const double growth = (reading[2] / reading[1]) / (double(pages[2]) / pages[1]);
    const bool within = pages[2] > 4500 && exporting[2] < exporting[0] + 2 && growth <= 1.2;
    std::printf("%-58s ratio %6.2f  limit  1.20  %s\n", "  memory with the rows, to ten times the pages",
                growth, within ? "ok  " : "OVER");
    return within;
}

template <class Paint>
void onScreen(QImage &screen, Paint paint) {
    screen.fill(Qt::white);
    QPainter painter(&screen);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    paint(painter, 96 / 25.4);
}

} // namespace

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    bench::connect(QString::fromLocal8Bit(argv[1]));
    if (argc > 2)
        return measureMemory(argv[1]);
    const bench::Copy books(QString::fromLocal8Bit(argv[1]));
    bench::connect(books.folder());
    fillLedger(lengths[1]);
    const auto kept = std::make_shared<KeptRows>(sourceOf(books.folder()));
    const report::DocumentPtr document = read(kept);
    std::vector<report::Page> pages;
    for (int page = 0; page < document->pageCount(); ++page)
        pages.push_back(document->page(page));
    std::printf("    a ledger of %d pages\n", document->pageCount());
    bool within = bench::compare(
        "a ledger to PDF, against a bare loop of drawText", 1 / 1.2, 7,
        [&] { report::exportPdf(*document, books.folder() + "/ledger.pdf"); },
        [&] { exportBare(pages, books.folder() + "/bare.pdf"); });
    QImage screen(794, 1123, QImage::Format_ARGB32_Premultiplied);
    report::PagePainter painter;
    within &= bench::compare(
        "  a page of it on the screen, laid out and painted", 1.5, 51,
        [&] {
            onScreen(screen,
                     [&](QPainter &on, double scale) { painter.paint(on, document->page(7), scale); });
        },
        [&] { onScreen(screen, [&](QPainter &on, double scale) { drawBare(on, pages[7], scale); }); });
    // Beside what a bare loop would need too: opening the definition, the totals and where each page begins,
    // which is two texts to measure a row.
    within &= bench::compare(
        "  from the click to its first page", 1.6, 11,
        [&] {
            fillLedger(lengths[1]);
            const report::DocumentPtr made = read({});
            onScreen(screen, [&](QPainter &on, double scale) {
                report::PagePainter().paint(on, made->page(0), scale);
            });
        },
        [&] {
            fillLedger(lengths[1]);
            static_cast<void>(
                sourceOf(books.folder())
                    ->rows("select LineOrder, AcCode, VouDate, DayOrder, VouStatus, VouNo, CrAc, "
                           "CrAcName, ChecqNo, FileNo, BillNo, "
                           "Naration, DrAmt, CrAmt, AcName from rptAcLedger left join Accounts on "
                           "RowID = CrAc order by LineOrder, "
                           "VouDate, DayOrder, VouNo, VouStatus, EntryNo, "
                           "DrAmt desc, CrAmt desc"));
            for (int time = 0; time < 3; ++time)
                onScreen(screen, [&](QPainter &on, double scale) { drawBare(on, pages[0], scale); });
        });
    within &= bench::compare(
        "  the same once the rows are there, against 3 paintings", 6, 11,
        [&] {
            const report::DocumentPtr made = read(kept);
            onScreen(screen, [&](QPainter &on, double scale) {
                report::PagePainter().paint(on, made->page(0), scale);
            });
        },
        [&] {
            for (int time = 0; time < 3; ++time)
                onScreen(screen, [&](QPainter &on, double scale) { drawBare(on, pages[0], scale); });
        });
    within &= measureMemories(books.folder());
    return within ? 0 : 1;
}
