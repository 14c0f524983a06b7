// A ledger to PDF, against a bare loop that draws the same texts at the same places in the same fonts on
// QPdfWriter; and what it needs in memory as it gets longer.
#include "measure.h"

#include "platform/report/paint.h"
#include "platform/report/report.h"
#include "platform/report/source.h"
#include "platform/report/text_metrics.h"

#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>

#include <sys/resource.h>

namespace {

using namespace zel;

/// Reads each statement once and gives its rows again.
class KeptRows final : public report::Source {
public:
    explicit KeptRows(const QString &folder) : m_source(report::openSource({{}, folder, "ZEL", "sa", {}})) {}
    RowsPtr rows(const Sql &select) override {
        RowsPtr &kept = m_rows[select.text()];
        if (!kept)
            kept = m_source->rows(select);
        return kept;
    }

private:
    std::unique_ptr<report::Source> m_source;
    std::map<std::string, RowsPtr> m_rows;
};

report::DocumentPtr read(const QString &folder, const Sql &selection,
                         const std::shared_ptr<report::Source> &source = {}) {
    auto ledger = report::Application().OpenReport(QStringLiteral(ZEL_BENCH_DIR "/ledger.rpt"));
    ledger->setSource(source);
    report::Table &table = ledger->Database().Tables().Item(1);
    table.ConnectionProperties("User ID").Value = "sa";
    table.ConnectionProperties("Data Source").Value = folder;
    table.ConnectionProperties("Initial Catalog").Value = "ZEL";
    ledger->RecordSelectionFormula = selection;
    return ledger->document();
}

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

double peak() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return double(used.ru_maxrss) / 1024;
}

/// The selections, so chosen that the ledger has about so many pages.
const std::pair<int, Sql> lengths[] = {
    {50, "{DetJV.AcCode} = 36 and {DetJV.VouDate} < #2024-01-29#"},
    {500, "{DetJV.AcCode} = 36 and {DetJV.VouDate} < #2024-10-15#"},
    {5000, "{DetJV.VouDate} < #2025-01-25#"},
};

/// In a process of its own: what reading and exporting need at most.
int measureMemory(const QString &folder, int length) {
    const report::DocumentPtr document = read(folder, lengths[length].second);
    const double beforehand = peak();
    report::exportPdf(*document, folder + "/memory.pdf");
    std::printf("%d %f %f\n", document->pageCount(), beforehand, peak());
    return 0;
}

bool measureMemories(const QString &folder) {
    double growth[3] = {};
    for (int length = 0; length < 3; ++length) {
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {folder, QString::number(length)});
        process.waitForFinished(-1);
        const QList<QByteArray> words = process.readAllStandardOutput().split(' ');
        growth[length] = words.value(2).toDouble() - words.value(1).toDouble();
        std::printf("    %5d pages: %.1f MB with the rows read, exporting adds %.1f MB\n",
                    words.value(0).toInt(), words.value(1).toDouble(), growth[length]);
    }
    return growth[2] < growth[0] + 8;
}

} // namespace

int main(int argc, char **argv) {
    const QGuiApplication application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    if (argc > 3 && argv[3][0] == 'd') {
        const auto kept = std::make_shared<KeptRows>(folder);
        for (int i = 0; i < 60; ++i)
            static_cast<void>(read(folder, lengths[1].second, kept));
        return 0;
    }
    if (argc > 3 && argv[3][0] == 'l') {
        const auto d = read(folder, lengths[1].second);
        for (int i = 0; i < 16; ++i)
            for (int p = 0; p < d->pageCount(); ++p)
                static_cast<void>(d->page(p));
        return 0;
    }
    if (argc > 3) {
        const auto d = read(folder, lengths[1].second);
        for (int i = 0; i < 4; ++i)
            report::exportPdf(*d, folder + "/perf.pdf");
        return 0;
    }
    if (argc > 2)
        return measureMemory(folder, QByteArray(argv[2]).toInt());
    const report::DocumentPtr document = read(folder, lengths[1].second);
    std::vector<report::Page> pages;
    for (int page = 0; page < document->pageCount(); ++page)
        pages.push_back(document->page(page));
    std::printf("    a ledger of %d pages\n", document->pageCount());
    bool within = bench::compare(
        "a ledger to PDF, against a bare loop of drawText", 1 / 0.8, 5,
        [&] { report::exportPdf(*document, folder + "/ledger.pdf"); },
        [&] { exportBare(pages, folder + "/bare.pdf"); });
    within &= bench::compare(
        "  all its pages laid out, against painting them bare", 0.5, 5,
        [&] {
            for (int page = 0; page < document->pageCount(); ++page)
                static_cast<void>(document->page(page));
        },
        [&] { exportBare(pages, folder + "/bare.pdf"); });
    const double scale = 96 / 25.4;
    report::PagePainter pagePainter;
    QImage screen(794, 1123, QImage::Format_ARGB32_Premultiplied);
    const auto painted = [&](auto paint) {
        screen.fill(Qt::white);
        QPainter painter(&screen);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        paint(painter);
    };
    within &= bench::compare(
        "a page on the screen at 100 %, laid out and painted", 3, 51,
        [&] { painted([&](QPainter &painter) { pagePainter.paint(painter, document->page(7), scale); }); },
        [&] { painted([&](QPainter &painter) { drawBare(painter, pages[7], scale); }); });
    within &= bench::compare(
        "  painted only", 3, 51,
        [&] { painted([&](QPainter &painter) { pagePainter.paint(painter, pages[7], scale); }); },
        [&] { painted([&](QPainter &painter) { drawBare(painter, pages[7], scale); }); });
    const auto kept = std::make_shared<KeptRows>(folder);
    within &= bench::compare(
        "rows read to the first page painted", 3, 11,
        [&] {
            const report::DocumentPtr made = read(folder, lengths[1].second, kept);
            painted([&](QPainter &painter) { report::PagePainter().paint(painter, made->page(0), scale); });
        },
        [&] { painted([&](QPainter &painter) { drawBare(painter, pages[0], scale); }); });
    within &= measureMemories(folder);
    return within ? 0 : 1;
}
