#include "../memory_source.h"

#include "platform/report/viewer/cr_viewer.h"
#include "platform/report/viewer/page_view.h"

#include "tests/support/rows.h"
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

using zel::test::columns;
using zel::test::fill;
using zel::test::row;

using namespace zel;
using namespace zel::report;
using namespace zel::viewer;

/// The viewer by its keys and tools, on a report of 40 pages in 20 groups, one item a page.
class tst_viewer : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void keys_data();
    void keys();
    void pageBox_data();
    void pageBox();
    void output_data();
    void output();
    void paper_data();
    void paper();
    void otherPaper();
    void linesKeepTheirParagraphsDirection();
    void opensAt_data();
    void opensAt();
    void zoom();
    void zoomKeepsPage_data();
    void zoomKeepsPage();
    void findMarksAllHits();
    void hitsAreCounted_data();
    void hitsAreCounted();
    void groupTree();
    void onePageAtATime();
    void onlyPagesInViewArePainted();
    void secondReportReplaces();
    void toolsCanBeReached();

private:
    [[nodiscard]] std::shared_ptr<Report> open(const QByteArray &content, const QString &rows);
    [[nodiscard]] PageView &pages() const { return *m_viewer->findChild<PageView *>(); }
    [[nodiscard]] QAction &action(const char *name) const { return *m_viewer->findChild<QAction *>(name); }

    /// How many of the view's are such.
    [[nodiscard]] int pixels(const std::function<bool(QRgb)> &such) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CRViewer91> m_viewer;
};

int tst_viewer::pixels(const std::function<bool(QRgb)> &such) const {
    const QImage image = pages().viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const auto *first = reinterpret_cast<const QRgb *>(image.constBits());
    return static_cast<int>(std::count_if(first, first + image.width() * image.height(), such));
}

std::shared_ptr<Report> tst_viewer::open(const QByteArray &content, const QString &rows) {
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

void tst_viewer::init() {
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

void tst_viewer::cleanup() {
    m_viewer.reset();
    m_folder.reset();
}

void tst_viewer::keys_data() {
    QTest::addColumn<double>("zoom"); // 0: the page as a whole
    columns<Qt::Key, Qt::KeyboardModifiers>("key", "modifiers");
    QTest::addColumn<int>("page"); // from page 20
    for (const double zoom : {0.1, 0.3, 0.0, 1.0, 6.0}) {
        const auto row = [zoom](const char *name, Qt::Key key, Qt::KeyboardModifiers modifiers, int page) {
            fill(QTest::addRow("%s at %g", name, zoom), zoom, key, modifiers, page);
        };
        row("End", Qt::Key_End, Qt::NoModifier, 40);
        row("Home", Qt::Key_Home, Qt::NoModifier, 1);
        row("Alt+PgUp", Qt::Key_PageUp, Qt::AltModifier, 19);
        row("Alt+PgDn", Qt::Key_PageDown, Qt::AltModifier, 21);
        row("F5", Qt::Key_F5, Qt::NoModifier, 20);
    }
}

/// However many pages are in view, the keys go by exactly one, and the view can be moved a little from there.
void tst_viewer::keys() {
    QFETCH(double, zoom);
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(int, page);
    if (zoom > 0)
        pages().setZoom(zoom);
    else
        pages().setFit(PageView::Fit::Page);
    pages().showPage(19);
    QTest::keyClick(&pages(), key, modifiers);
    QCOMPARE(m_viewer->currentPage(), page);
    QCOMPARE(m_viewer->findChild<QLineEdit *>("txtPage")->text(), QString::number(page));
    QScrollBar &bar = *pages().verticalScrollBar();
    for (const int step : {-1, 1}) {
        bar.setValue(bar.value() + step);
        QCOMPARE(m_viewer->currentPage(), page);
    }
    const int before = bar.value();
    QTest::keyClick(&pages(), key == Qt::Key_End ? Qt::Key_PageUp : Qt::Key_PageDown);
    QVERIFY(bar.value() != before);
}

void tst_viewer::pageBox_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("page"); // from page 3
    QTest::newRow("a page") << "17" << 17;
    zel::test::row("beyond the last", "999", 40);
    zel::test::row("before the first", "0", 1);
    zel::test::row("negative", "-2", 1);
    zel::test::row("letters", "abc", 3);
    zel::test::row("letters behind a number", "17x", 3);
    zel::test::row("nothing", "", 3);
}

/// Whatever was typed, the box then says where the reader is.
void tst_viewer::pageBox() {
    QFETCH(QString, typed);
    QFETCH(int, page);
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

void tst_viewer::output_data() {
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("file");    // in the test's folder
    QTest::addColumn<QString>("written"); // '': nothing, and a message
    const auto row = [](const char *name, const char *action, const char *file, const char *written) {
        zel::test::row(name, QString(action), QString(file), QString(written));
    };
    row("export", "actExport", "out.pdf", "out.pdf");
    row("export, no ending typed", "actExport", "out", "out.pdf");
    row("export to a folder that isn't there", "actExport", "none/out.pdf", "");
    row("print to a file", "actPrint", "out.pdf", "out.pdf");
    row("print to a folder that isn't there", "actPrint", "none/out.pdf", "");
}

/// What can't be written is told, and the report stays on view.
void tst_viewer::output() {
    QFETCH(QString, action);
    QFETCH(QString, file);
    QFETCH(QString, written);
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

void tst_viewer::paper_data() {
    QTest::addColumn<QByteArray>("page"); // of the definition
    QTest::addColumn<QPageSize::PageSizeId>("id");
    QTest::addColumn<QSizeF>("size"); // of the sheet, its orientation counted
    QTest::newRow("A4") << QByteArray("size='A4'") << QPageSize::A4 << QSizeF(210, 297);
    zel::test::row("A4 on its side", QByteArray("size='A4' orientation='landscape'"), QPageSize::A4,
                   QSizeF(297, 210));
    zel::test::row("A5", QByteArray("size='A5'"), QPageSize::A5, QSizeF(148, 210));
    zel::test::row("letter", QByteArray("size='Letter'"), QPageSize::Letter, QSizeF(215.9, 279.4));
    zel::test::row("legal on its side", QByteArray("size='Legal' orientation='landscape'"), QPageSize::Legal,
                   QSizeF(355.6, 215.9));
    zel::test::row("free", QByteArray("width='100' height='180'"), QPageSize::Custom, QSizeF(100, 180));
    zel::test::row("free and wide", QByteArray("width='180' height='100'"), QPageSize::Custom,
                   QSizeF(180, 100));
}

static QSizeF firstPageOf(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression shape("/MediaBox \\[0 0 ([\\d.]+) ([\\d.]+)\\]");
    const auto match = shape.match(QString::fromLatin1(file.readAll()));
    return QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble()) * 25.4 / 72;
}

/// What the printer is asked for, and what a PDF's pages are.
void tst_viewer::paper() {
    QFETCH(QByteArray, page);
    QFETCH(QPageSize::PageSizeId, id);
    QFETCH(QSizeF, size);
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
        return qAbs(found.width() - size.width()) < 0.4 && qAbs(found.height() - size.height()) < 0.4;
    };
    QCOMPARE(asked.pageSize().id(), id);
    QVERIFY2(isSize(asked.fullRect(QPageLayout::Millimeter).size()), qPrintable(asked.pageSize().name()));
    QVERIFY2(isSize(firstPageOf(path)), qPrintable(QString::number(firstPageOf(path).width())));
}

/// A page printed on a smaller sheet stands on it whole.
void tst_viewer::otherPaper() {
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
void tst_viewer::linesKeepTheirParagraphsDirection() {
    m_viewer->setReportSource(open("<detail><field w='30' grow='yes'>{S.Item}</field></detail>",
                                   QString::fromUtf8("S_Item\nداخلہ برائے ABCDEFGHIJ (K)\n")));
    m_viewer->ViewReport();
    const std::vector<TextItem> texts = pages().document()->page(0).texts;
    QVERIFY(texts.size() > 1);
    QVERIFY(texts.back().text.startsWith("ABC"));
    QCOMPARE(texts.back().direction, Qt::RightToLeft);
}

void tst_viewer::zoom() {
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

void tst_viewer::opensAt_data() {
    QTest::addColumn<int>("width");     // of the viewer
    QTest::addColumn<int>("rows");      // a page each
    QTest::addColumn<double>("chosen"); // 0: nothing, -1: as wide as the view, -2: the page as a whole
    QTest::addColumn<double>("zoom");   // 0: as wide as the view, -2: the page as a whole
    QTest::newRow("as wide as the view") << 800 << 2 << 0.0 << 0.0;
    zel::test::row("but not too large", 1800, 2, 0.0, 1.25);
    zel::test::row("one page as a whole", 1800, 1, 0.0, -2.0);
    zel::test::row("one page as chosen", 1800, 1, 0.5, 0.5);
    zel::test::row("pages as chosen", 800, 2, 0.5, 0.5);
    zel::test::row("as wide as the view, chosen", 1800, 2, -1.0, 0.0);
    zel::test::row("each as a whole, chosen", 800, 2, -2.0, -2.0);
}

/// The zoom that a document opens with; what the reader chose stays for the next, in another viewer too.
void tst_viewer::opensAt() {
    QFETCH(int, width);
    QFETCH(int, rows);
    QFETCH(double, chosen);
    QFETCH(double, zoom);
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

void tst_viewer::zoomKeepsPage_data() {
    columns<int, QString>("page", "back");
    for (const int page : {1, 20, 39, 40})
        for (const char *back : {"actFitWidth", "actFitPage", "actZoomIn"})
            fill(QTest::addRow("%d, %s", page, back), page, back);
}

/// From a page to the smallest pages and back: it is that page that stands in the view.
void tst_viewer::zoomKeepsPage() {
    QFETCH(int, page);
    QFETCH(QString, back);
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

void tst_viewer::findMarksAllHits() {
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
    QCOMPARE(box.toolTip(), QString("Not found"));
}

void tst_viewer::hitsAreCounted_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QStringList>("said"); // when typed, then after Return, F3, Shift+F3 twice
    QTest::newRow("several") << "item 3"
                             << QStringList{"22 found", "1 of 22", "2 of 22", "1 of 22", "22 of 22"};
    zel::test::row("one page", "ITEM 7 of", QStringList{"2 found", "1 of 2", "2 of 2", "1 of 2", "2 of 2"});
    zel::test::row("none", "item 40",
                   QStringList{"Not found", "Not found", "Not found", "Not found", "Not found"});
    zel::test::row("nothing", "", QStringList{"", "", "", "", ""});
}

void tst_viewer::hitsAreCounted() {
    QFETCH(QString, words);
    QFETCH(QStringList, said);
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

void tst_viewer::groupTree() {
    auto &tree = *m_viewer->findChild<QTreeWidget *>("groups");
    QVERIFY(tree.isVisible());
    QCOMPARE(tree.topLevelItemCount(), 20);
    tree.setCurrentItem(tree.topLevelItem(10));
    const QString shown = pages().document()->page(m_viewer->currentPage() - 1).plainText();
    QVERIFY2(shown.contains("AREA 10"), qPrintable(shown));
}

void tst_viewer::onePageAtATime() {
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

void tst_viewer::onlyPagesInViewArePainted() {
    const auto ink = [this] { return pixels([](QRgb pixel) { return qGray(pixel) < 80; }); };
    QVERIFY(ink() > 20);
    action("actLast").trigger();
    QVERIFY(ink() > 20);
}

void tst_viewer::secondReportReplaces() {
    QTest::keyClick(&pages(), Qt::Key_End);
    m_viewer->setReportSource(open("<detail><field>{S.Item}</field></detail>", "S_Item\nonly\n"));
    QCOMPARE(m_viewer->pageCount(), 40);
    m_viewer->ViewReport();
    QCOMPARE(m_viewer->property("pageCount").toInt(), 1);
    QCOMPARE(m_viewer->property("plainText").toString(), QString("only"));
    QCOMPARE(m_viewer->currentPage(), 1);
    QVERIFY(!m_viewer->findChild<QTreeWidget *>("groups")->isVisible());
}

/// By the mouse, with a word on what each does, and by a key.
void tst_viewer::toolsCanBeReached() {
    int buttons = 0;
    for (const QToolButton *button : m_viewer->findChild<QToolBar *>("tools")->findChildren<QToolButton *>(
             QString(), Qt::FindDirectChildrenOnly)) {
        const QAction *tool = button->defaultAction();
        if (!tool)
            continue;
        ++buttons;
        const bool byPlace = QStringList({"actFirst", "actLast"}).contains(tool->objectName()); // Home, End
        QVERIFY2(!button->text().isEmpty() && !button->toolTip().isEmpty(), qPrintable(tool->objectName()));
        QVERIFY2(byPlace || !tool->shortcut().isEmpty(), qPrintable(tool->objectName()));
    }
    QCOMPARE(buttons, 13);
}

QTEST_MAIN(tst_viewer)
#include "tst_viewer.moc"
