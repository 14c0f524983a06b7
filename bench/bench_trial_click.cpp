// From the click of cmdTrialBal to the first page painted in the viewer, against the procedure with its rows
// plus three times a bare loop that paints the same page.
#include "desk.h"
#include "measure.h"

#include "menu_screens.h"
#include "platform/ado/recordset.h"
#include "platform/controls/application.h"
#include "platform/controls/date_box.h"
#include "platform/report/pages/document.h"
#include "platform/report/report.h"
#include "platform/report/viewer/cr_viewer.h"
#include "reports/frmRPTAccounts.h"
#include "shell/frmVeiwer.h"
#include "shell/module1.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QImage>
#include <QPainter>
#include <QTest>

namespace {

/// Sees the pages being painted.
class Paints : public QObject {
public:
    bool eventFilter(QObject *receiver, QEvent *event) override {
        if (event->type() == QEvent::Paint && receiver->parent() &&
            receiver->parent()->objectName() == "pages")
            ++count;
        return false;
    }
    int count = 0;
};

/// The page's texts and lines, each with one call, as somebody draws who knows no report.
void paintBare(const zel::report::Page &page, QImage &image) {
    const double scale = image.width() / page.size.width();
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (const auto &line : page.lines)
        painter.drawLine(QLineF(line.x1 * scale, line.y1 * scale, line.x2 * scale, line.y2 * scale));
    const zel::report::Font *current = nullptr;
    for (const auto &item : page.texts) {
        if (item.font.get() != current) {
            current = item.font.get();
            QFont font(current->family);
            font.setPointSizeF(current->points);
            font.setBold(current->bold);
            painter.setFont(font);
        }
        painter.drawText(QPointF(item.x * scale, item.baseline * scale), item.text);
    }
}

} // namespace

int main(int argc, char **argv) {
    using namespace zel;
    controls::Application application(argc, argv);
    bench::connect(QString::fromLocal8Bit(argv[1]));
    menuScreens().at("mnuSubTBSimple").open();
    reports::frmRPTAccounts &screen = *reports::frmRPTAccounts::reference;
    screen.findChild<controls::DateBox *>("DTPicker1")->setValue(QDate(2025, 1, 1));
    screen.findChild<controls::DateBox *>("DTPicker2")->setValue(QDate(2025, 12, 31));
    auto *button = screen.findChild<QAbstractButton *>("cmdTrialBal");
    Paints paints;
    qApp->installEventFilter(&paints);
    const auto click = [&] {
        const int before = paints.count;
        button->click();
        while (paints.count == before)
            QCoreApplication::processEvents(QEventLoop::AllEvents);
    };
    click();

    const auto document = shell::frmVeiwer::reference->CRViewer91()->ReportSource()->document();
    const report::Page page = document->page(0);
    QImage image((page.size * 96 / 25.4).toSize(), QImage::Format_ARGB32_Premultiplied);
    const bool within =
        bench::compare("click of cmdTrialBal to the first page, of rows + 3 pages", 0.9, 15, click, [&] {
            shell::gCon.Execute("exec TrialBalance '2025-01-01','2025-12-31'");
            ado::Recordset balance;
            balance.Open("Select * From rptTrialBalance", shell::gCon);
            for (int time = 0; time < 3; ++time)
                paintBare(page, image);
        });
    std::printf("    %d pages; a bare page takes %.3f ms\n", document->pageCount(),
                bench::seconds([&] { paintBare(page, image); }) * 1e3);
    std::fflush(stdout);
    std::_Exit(within ? 0 : 1);
}
