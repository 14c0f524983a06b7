#include "../memory_source.h"

#include "platform/report/viewer/cr_viewer.h"
#include "platform/report/viewer/page_view.h"

#include "tests/support/facts.h"
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

#include <algorithm>
#include <functional>

using namespace zel;
using namespace zel::report;
using namespace zel::test;
using namespace zel::viewer;

static constexpr const char *Facts = "platform/report/viewer/viewer.json";

/// Runs `action`, whose dialog is told to write to `path`, on `paper` if that is given. Gives the texts of
/// the message boxes after it.
static QStringList writeTo(const QString &path, const std::function<void()> &action,
                           const QPageSize &paper = {}) {
    QStringList said;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        if (const auto *box = qobject_cast<QMessageBox *>(dialog)) {
            said << box->text();
            return dialog->reject();
        }
        // Where there is no printer, the dialog offers to print to a file.
        for (const char *name : {"fileNameEdit", "filename"})
            if (auto *file = dialog->findChild<QLineEdit *>(name))
                file->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
        if (auto *print = qobject_cast<QPrintDialog *>(dialog); print && paper.isValid())
            print->printer()->setPageSize(paper);
    });
    timer.start(20);
    action();
    return said;
}

static QSizeF firstPageOf(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression shape("/MediaBox \\[0 0 ([\\d.]+) ([\\d.]+)\\]");
    const auto match = shape.match(QString::fromLatin1(file.readAll()));
    return QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble()) * 25.4 / 72;
}

/// The viewer by its keys and tools, on a report of 40 pages in 20 groups, one item a page.
class tst_viewer : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        PageView::chosen.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        m_viewer = std::make_unique<CRViewer91>();
        QString rows = "S_Area|S_Item\n";
        for (int row = 0; row < 40; ++row)
            rows += QString("AREA %1|item %2 of pens\n").arg(row / 2).arg(row);
        m_viewer->setReportSource(
            open("<group name='Area' by='{S.Area}'><header><field>{S.Area}</field></header></group>"
                 "<detail height='200'><field>{S.Item}</field><field y='20'>{S.Item}</field></detail>",
                 rows));
        QCOMPARE(m_viewer->pageCount(), 0);
        m_viewer->ViewReport();
        m_viewer->resize(800, 600);
        m_viewer->show();
        QVERIFY(QTest::qWaitForWindowActive(m_viewer.get()));
        pages().setFocus();
    }

    void cleanup() {
        m_viewer.reset();
        m_folder.reset();
    }

    void keys_data() {
        columns<double, QString, int>("zoom", "keys", "page"); // 0 shows the page as a whole
        const std::pair<const char *, int> fromPage20[] = {
            {"End", 40}, {"Home", 1}, {"Alt+PgUp", 19}, {"Alt+PgDown", 21}, {"F5", 20}};
        for (const double zoom : {0.1, 0.3, 0.0, 1.0, 6.0})
            for (const auto &[keys, page] : fromPage20)
                fill(QTest::addRow("%s at %g", keys, zoom), zoom, keys, page);
    }

    /// However many pages are in view, the keys go by exactly one, and the view can be moved a little from
    /// there.
    void keys() {
        const auto [zoom, keys, page] = fetched<double, QString, int>();
        const QKeyCombination pressed = QKeySequence(keys)[0];
        if (zoom > 0)
            pages().setZoom(zoom);
        else
            pages().setFit(PageView::Fit::Page);
        pages().showPage(19);
        QTest::keyClick(&pages(), pressed.key(), pressed.keyboardModifiers());
        QCOMPARE(m_viewer->currentPage(), page);
        QCOMPARE(m_viewer->findChild<QLineEdit *>("txtPage")->text(), QString::number(page));
        QScrollBar &bar = *pages().verticalScrollBar();
        for (const int step : {-1, 1}) {
            bar.setValue(bar.value() + step);
            QCOMPARE(m_viewer->currentPage(), page);
        }
        const int before = bar.value();
        QTest::keyClick(&pages(), keys == "End" ? Qt::Key_PageUp : Qt::Key_PageDown);
        QVERIFY(bar.value() != before);
    }

    /// What is typed on page 3, and the page after it.
    void pageBox_data() { rowsFrom<QString, int>(Facts); }

    /// Whatever was typed, the box then says where the reader is.
    void pageBox() {
        const auto [typed, page] = fetched<QString, int>();
        pages().showPage(2);
        auto &box = *m_viewer->findChild<QLineEdit *>("txtPage");
        box.setFocus();
        box.selectAll();
        QTest::keyClick(&box, Qt::Key_Delete);
        QTest::keyClicks(&box, typed);
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(m_viewer->currentPage(), page);
        QCOMPARE(box.text(), QString::number(page));
    }

    /// The file to write in the test's folder, and the one written: '' for none, and a message.
    void output_data() { rowsFrom<QString, QString, QString>(Facts); }

    /// What can't be written is told, and the report stays on view.
    void output() {
        const auto [action, file, written] = fetched<QString, QString, QString>();
        if (action == "actPrint" && !QPrinterInfo::availablePrinterNames().isEmpty())
            QSKIP("a printer is set up, which would print");
        const QString path = m_folder->filePath(file);
        const QStringList said = writeTo(path, [&] { this->action(action.toLatin1()).trigger(); });
        if (written.isEmpty()) {
            QCOMPARE(said.size(), 1);
            QVERIFY2(said[0].contains(path), qPrintable(said[0]));
        } else {
            QCOMPARE(said, QStringList());
            QFile made(m_folder->filePath(written));
            QVERIFY(made.open(QIODevice::ReadOnly));
            QCOMPARE(made.read(5), QByteArray("%PDF-"));
        }
        QCOMPARE(m_viewer->pageCount(), 40);
    }

    /// The page of the definition, and the sheet, its orientation counted.
    void paper_data() { rowsFrom<QByteArray, QString, double, double>(Facts); }

    /// What the printer is asked for, and what a PDF's pages are.
    void paper() {
        const auto [page, id, width, height] = fetched<QByteArray, QString, double, double>();
        m_viewer->setReportSource(
            open("<page " + page + "/><detail><field>{S.Item}</field></detail>", "S_Item\nonly\n"));
        m_viewer->ViewReport();
        QPageLayout asked;
        QTimer::singleShot(0, m_viewer.get(), [&] {
            auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            asked = dialog->printer()->pageLayout();
            dialog->reject();
        });
        m_viewer->PrintReport();
        const QString path = m_folder->filePath("paper.pdf");
        QCOMPARE(writeTo(path, [&] { m_viewer->ExportReport(); }), QStringList());
        const auto isSize = [&](QSizeF found) {
            return qAbs(found.width() - width) < 0.4 && qAbs(found.height() - height) < 0.4;
        };
        QCOMPARE(asked.pageSize().key(), id);
        QVERIFY2(isSize(asked.fullRect(QPageLayout::Millimeter).size()), qPrintable(asked.pageSize().name()));
        QVERIFY2(isSize(firstPageOf(path)), qPrintable(QString::number(firstPageOf(path).width())));
    }

    /// A page printed on a smaller sheet stands on it whole.
    void otherPaper() {
        if (!QPrinterInfo::availablePrinterNames().isEmpty())
            QSKIP("a printer is set up, which would print");
        if (QStandardPaths::findExecutable("pdftotext").isEmpty())
            QSKIP("pdftotext is not installed");
        m_viewer->setReportSource(open("<page size='Legal'/><style name='default' align='right'/>"
                                       "<detail><field w='185'>{S.Item}</field></detail>"
                                       "<pageFooter height='6'><field w='185'>'foot'</field></pageFooter>",
                                       "S_Item\nonly\n"));
        m_viewer->ViewReport();
        const QString path = m_folder->filePath("small.pdf");
        const auto said = writeTo(
            path, [&] { m_viewer->PrintReport(); }, QPageSize(QPageSize::A5));
        QCOMPARE(said, QStringList());
        QProcess reader;
        reader.start("pdftotext", {"-bbox", path, "-"});
        QVERIFY(reader.waitForFinished());
        const QString found = reader.readAllStandardOutput();
        static const QRegularExpression shape(
            "page width=\"(.+)\" height=\"(.+)\"[^$]*xMax=\"(.+)\" yMax=\"(.+)\">foot");
        const auto match = shape.match(found);
        const auto number = [&](int group) { return match.captured(group).toDouble(); };
        QVERIFY2(match.hasMatch() && number(1) < 425, qPrintable(found));
        QVERIFY2(number(3) < number(1) - 10 && number(4) < number(2) - 10, qPrintable(found));
    }

    /// A line that begins with Latin letters goes on from right to left where its paragraph does.
    void linesKeepTheirParagraphsDirection() {
        m_viewer->setReportSource(open("<detail><field w='30' grow='yes'>{S.Item}</field></detail>",
                                       QString::fromUtf8("S_Item\nداخلہ برائے ABCDEFGHIJ (K)\n")));
        m_viewer->ViewReport();
        const std::vector<TextItem> texts = pages().document()->page(0).texts;
        QVERIFY(texts.size() > 1);
        QVERIFY(texts.back().text.startsWith("ABC"));
        QCOMPARE(texts.back().direction, Qt::RightToLeft);
    }

    /// On a viewer of that width, a page a row. 0 is as wide as the view, for what was chosen nothing; -1 as
    /// wide as the view, -2 the page as a whole.
    void opensAt_data() { rowsFrom<int, int, double, double>(Facts); }

    /// The zoom that a document opens with; what the reader chose stays for the next, in another viewer too.
    void opensAt() {
        auto [width, rows, chosen, zoom] = fetched<int, int, double, double>();
        if (chosen > 0)
            pages().setZoom(chosen);
        else if (chosen < 0)
            action(chosen == -1 ? "actFitWidth" : "actFitPage").trigger();
        m_viewer = std::make_unique<CRViewer91>();
        m_viewer->resize(width, 600);
        m_viewer->setReportSource(open("<detail height='200'><field>{S.Item}</field></detail>",
                                       "S_Item\n" + QString("only\n").repeated(rows)));
        m_viewer->ViewReport();
        m_viewer->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_viewer.get()));
        const double scale = pages().logicalDpiX() / 25.4;
        if (zoom == 0)
            zoom = (width - 28 - pages().verticalScrollBar()->sizeHint().width()) / (210 * scale);
        else if (zoom < 0)
            zoom = (pages().height() - 28) / (297 * scale);
        QVERIFY2(qAbs(pages().zoom() - zoom) < 0.005, qPrintable(QString::number(pages().zoom())));
        QCOMPARE(action("actFitPage").isChecked(), zoom < 0.5 && chosen <= 0);
    }

    void zoom() {
        action("actNext").trigger();
        const double fitted = pages().zoom();
        QTest::keyClick(&pages(), Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(qFuzzyCompare(pages().zoom(), fitted * 1.25));
        QCOMPARE(m_viewer->currentPage(), 2);
        QTest::keyClick(&pages(), Qt::Key_Minus, Qt::ControlModifier);
        QVERIFY(qFuzzyCompare(pages().zoom(), fitted));
        action("actFitPage").trigger();
        QVERIFY(pages().zoom() < fitted);
        m_viewer->resize(800, 900);
        QTRY_VERIFY(pages().zoom() > 0.6);
        QCOMPARE(m_viewer->currentPage(), 2);
    }

    void zoomKeepsPage_data() {
        columns<int, QString>("page", "back");
        for (const int page : {1, 20, 39, 40})
            for (const char *back : {"actFitWidth", "actFitPage", "actZoomIn"})
                fill(QTest::addRow("%d, %s", page, back), page, back);
    }

    /// From a page to the smallest pages and back: it is that page that stands in the view.
    void zoomKeepsPage() {
        const auto [page, back] = fetched<int, QString>();
        pages().showPage(page - 1);
        for (int times = 0; times < 20; ++times)
            action("actZoomOut").trigger();
        QCOMPARE(m_viewer->currentPage(), page);
        for (int times = 0; times < (back == "actZoomIn" ? 20 : 1); ++times)
            action(back.toLatin1()).trigger();
        QCOMPARE(m_viewer->currentPage(), page);
        QScrollBar &bar = *pages().verticalScrollBar();
        for (const int step : {-1, 1}) { // a page is current by where the view stands
            bar.setValue(bar.value() + step);
            QCOMPARE(m_viewer->currentPage(), page);
        }
    }

    void findMarksAllHits() {
        QTest::keyClick(&pages(), Qt::Key_F, Qt::ControlModifier);
        auto &box = *m_viewer->findChild<QLineEdit *>("txtFind");
        QVERIFY(box.hasFocus());
        QTest::keyClicks(&box, "ITEM 37");
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(m_viewer->currentPage(), 38);
        QTest::keyClick(&box, Qt::Key_F3);
        QCOMPARE(m_viewer->currentPage(), 38);
        const auto painted = [this](QColor color) {
            return pixels([&](QRgb pixel) { return QColor(pixel) == color; });
        };
        QVERIFY(painted(QColor(255, 235, 130)) > 50);
        QVERIFY(painted(QColor(255, 170, 60)) > 50);
        QVERIFY(m_viewer->find("item 3 of"));
        QCOMPARE(m_viewer->currentPage(), 4);
        QVERIFY(!m_viewer->find("nowhere"));
        QCOMPARE(box.toolTip(), "Not found");
    }

    /// What is said when typed, then after Return, F3, Shift+F3 twice.
    void hitsAreCounted_data() { rowsFrom<QString, QStringList>(Facts); }

    void hitsAreCounted() {
        const auto [words, said] = fetched<QString, QStringList>();
        auto &box = *m_viewer->findChild<QLineEdit *>("txtFind");
        const auto &label = *m_viewer->findChild<QLabel *>("lblHits");
        QTest::keyClick(&pages(), Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(&box, words);
        QTRY_COMPARE(label.text(), said[0]);
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(label.text(), said[1]);
        QTest::keyClick(&box, Qt::Key_F3);
        QCOMPARE(label.text(), said[2]);
        for (const int time : {3, 4}) {
            QTest::keyClick(&box, Qt::Key_F3, Qt::ShiftModifier);
            QCOMPARE(label.text(), said[time]);
        }
        QTest::keyClick(&box, Qt::Key_F5);
        QTRY_COMPARE(label.text(), said[0]);
        QVERIFY(box.hasFocus());
        QTest::keyClick(&box, Qt::Key_PageDown);
        QVERIFY(pages().verticalScrollBar()->value() > 0);
        QTest::keyClick(&box, Qt::Key_Escape);
        QCOMPARE(box.text() + label.text(), QString());
        QVERIFY(pages().hasFocus());
    }

    void groupTree() {
        auto &tree = *m_viewer->findChild<QTreeWidget *>("groups");
        QVERIFY(tree.isVisible());
        QCOMPARE(tree.topLevelItemCount(), 20);
        tree.setCurrentItem(tree.topLevelItem(10));
        const QString shown = pages().document()->page(m_viewer->currentPage() - 1).plainText();
        QVERIFY2(shown.contains("AREA 10"), qPrintable(shown));
    }

    void onePageAtATime() {
        QTest::keyClick(&pages(), Qt::Key_2, Qt::ControlModifier);
        action("actFitPage").trigger();
        for (int page = 2; page <= 4; ++page) {
            QTest::keyClick(&pages(), Qt::Key_PageDown);
            QCOMPARE(m_viewer->currentPage(), page);
        }
        QCOMPARE(pages().verticalScrollBar()->maximum(), 0);
        QTest::keyClick(&pages(), Qt::Key_PageUp);
        QCOMPARE(m_viewer->currentPage(), 3);
    }

    void onlyPagesInViewArePainted() {
        const auto ink = [this] { return pixels([](QRgb pixel) { return qGray(pixel) < 80; }); };
        QVERIFY(ink() > 20);
        action("actLast").trigger();
        QVERIFY(ink() > 20);
    }

    void secondReportReplaces() {
        QTest::keyClick(&pages(), Qt::Key_End);
        m_viewer->setReportSource(open("<detail><field>{S.Item}</field></detail>", "S_Item\nonly\n"));
        QCOMPARE(m_viewer->pageCount(), 40);
        m_viewer->ViewReport();
        QCOMPARE(m_viewer->property("pageCount").toInt(), 1);
        QCOMPARE(m_viewer->property("plainText").toString(), "only");
        QCOMPARE(m_viewer->currentPage(), 1);
        QVERIFY(!m_viewer->findChild<QTreeWidget *>("groups")->isVisible());
    }

    /// By the mouse, with a word on what each does, and by a key.
    void toolsCanBeReached() {
        int buttons = 0;
        for (const QToolButton *button :
             m_viewer->findChild<QToolBar *>("tools")->findChildren<QToolButton *>(
                 QString(), Qt::FindDirectChildrenOnly)) {
            const QAction *tool = button->defaultAction();
            if (!tool)
                continue;
            ++buttons;
            const bool byPlace =
                QStringList({"actFirst", "actLast"}).contains(tool->objectName()); // Home, End
            QVERIFY2(!button->text().isEmpty() && !button->toolTip().isEmpty(),
                     qPrintable(tool->objectName()));
            QVERIFY2(byPlace || !tool->shortcut().isEmpty(), qPrintable(tool->objectName()));
        }
        QCOMPARE(buttons, 13);
    }

private:
    [[nodiscard]] std::shared_ptr<Report> open(const QByteArray &content, const QString &rows) {
        QFile file(m_folder->filePath("r.rpt"));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("no room for the test");
        file.write("<report name='r'><table name='S'>Area text, Item text</table>" + content + "</report>");
        file.close();
        auto source = std::make_shared<MemorySource>();
        source->add("S", rows);
        auto report = Application().OpenReport(file.fileName());
        report->setSource(source);
        return report;
    }
    [[nodiscard]] PageView &pages() const { return *m_viewer->findChild<PageView *>(); }
    [[nodiscard]] QAction &action(const char *name) const { return *m_viewer->findChild<QAction *>(name); }

    /// How many of the view's are such.
    [[nodiscard]] int pixels(const std::function<bool(QRgb)> &such) const {
        const QImage image = pages().viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const auto *first = reinterpret_cast<const QRgb *>(image.constBits());
        return static_cast<int>(std::count_if(first, first + image.width() * image.height(), such));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CRViewer91> m_viewer;
};

QTEST_MAIN(tst_viewer)
#include "tst_viewer.moc"
