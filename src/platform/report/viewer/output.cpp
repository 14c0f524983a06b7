#include "platform/report/viewer/output.h"

#include "platform/base/error.h"
#include "platform/controls/msg_box.h"
#include "platform/report/output/paint.h"
#include "platform/report/pages/document.h"
#include "platform/report/viewer/cr_viewer.h"

#include <QFileDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

#include <algorithm>

namespace zel::viewer {

namespace {

QString text(const char *words) {
    return CRViewer91::tr(words);
}

} // namespace

void print(const report::Document &document, int currentPage, QWidget *window) {
    QPrinter printer(QPrinter::HighResolution);
    const QSizeF size = document.pageSize();
    const bool wide = size.width() > size.height();
    // A wide page is a usual paper on its side, not a paper of its own.
    const QPageSize paper(wide ? size.transposed() : size, QPageSize::Millimeter, {}, QPageSize::FuzzyMatch);
    printer.setPageSize(paper);
    printer.setPageOrientation(wide ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setFullPage(true);
    printer.setDocName(document.title());
    QPrintDialog dialog(&printer, window);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage);
    dialog.setMinMax(1, document.pageCount());
    if (dialog.exec() != QDialog::Accepted)
        return;
    int first = 0;
    int last = document.pageCount() - 1;
    if (printer.printRange() == QPrinter::CurrentPage)
        first = last = currentPage;
    else if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = printer.fromPage() - 1;
        last = std::min(last, printer.toPage() - 1);
    }
    QPainter painter;
    if (!painter.begin(&printer)) {
        const QString to = printer.outputFileName();
        controls::MsgBox(to.isEmpty() ? text("The report could not be printed: the printer can't be used.")
                                      : text("The report could not be printed: %1 can't be written.").arg(to),
                         controls::vbCritical, {}, window);
        return;
    }
    // What was chosen in the dialog may be another paper than the report's own.
    QPageLayout chosen = printer.pageLayout();
    chosen.setUnits(QPageLayout::Millimeter);
    const QSizeF sheet = chosen.fullRect().size();
    const report::Placement place =
        report::placed(size, sheet, QRectF({}, sheet).marginsRemoved(chosen.minimumMargins()));
    const double dots = printer.resolution() / 25.4;
    painter.translate(place.corner * dots);
    report::PagePainter pages;
    for (int page = first; page <= last; ++page) {
        if (page > first)
            printer.newPage();
        pages.paint(painter, document.page(page), dots * place.scale);
    }
}

void exportAsPdf(const report::Document &document, QWidget *window) {
    QFileDialog dialog(window, text("Export as PDF"), {}, text("PDF (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(document.title() + QStringLiteral(".pdf"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    try {
        report::exportPdf(document, dialog.selectedFiles().constFirst());
    } catch (const Error &error) {
        controls::MsgBox(text("The report could not be exported: ") + error.description(),
                         controls::vbCritical, {}, window);
    }
}

} // namespace zel::viewer
