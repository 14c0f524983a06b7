#include "on_screen.h"
#include "platform/base/error.h"
#include "platform/controls/cell_delegate.h"
#include "platform/controls/grid.h"
#include "platform/controls/grid_model.h"
#include "platform/controls/look.h"
#include "table_rows.h"

#include "tests/support/rows.h"
#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <functional>

Q_DECLARE_METATYPE(std::function<void(zel::controls::Grid &)>)

using namespace zel;
using namespace zel::controls;
using namespace zel::test;

namespace {

const QStringList Names{"#SessionId", "SessionName", "#Amount"};

RowsPtr threeRows() {
    return TableRows::make(Names, {{"3", "AUTUMN", "12.5"}, {"2", "SPRING", ""}, {"1", "FIRST", "7"}});
}

QString all(const Grid &grid) {
    QStringList rows;
    for (int row = 0; row < grid.Rows(); ++row) {
        QStringList cells;
        for (int col = 0; col < grid.Cols(); ++col)
            cells << grid.TextMatrix(row, col);
        rows << cells.join(',');
    }
    return rows.join('|');
}

} // namespace

namespace {

/// Very many rows that count how often a cell is read.
class CountingRows : public TableRows {
public:
    CountingRows() : TableRows({"#No", "Name"}, {}) {}
    qsizetype rowCount() const override { return 300000; }
    QString text(qsizetype row, int) const override {
        ++reads;
        return QString::number(row);
    }
    mutable int reads = 0;
};

/// Rows on demand.
class ComingRows : public CountingRows {
public:
    static constexpr int Count = 5000;
    qsizetype rowCount() const override {
        readOn(Count);
        return read;
    }
    qsizetype rowsRead() const override { return read; }
    bool isWhole() const override { return read == Count; }
    void readOn(qsizetype count) const override { read = std::max(read, std::min<qsizetype>(count, Count)); }
    mutable qsizetype read = 1;
};

} // namespace

class tst_grid : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void modelStandsTheTester() {
        GridModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setRows(1);
        model.setCols(4);
        model.setRows(6);
        model.setText(3, 2, "x");
        model.removeRow(2);
        model.setCols(3);
        model.bind(threeRows());
        model.setCols(2);
        model.setCols(5);
        model.setText(0, 0, "Session No");
        model.removeRow(1);
        model.bind(threeRows());
        model.bind(nullptr);
        model.clear();
        model.setRows(2);
        model.bind(TableRows::make(Names, {}));
        model.setRows(1);
        const auto coming = std::make_shared<ComingRows>();
        model.bind(coming, 64);
        model.showUpTo(1000);
        model.setCols(3);
        QCOMPARE(model.rowCount(), ComingRows::Count);
        model.bind(std::make_shared<ComingRows>());
        model.removeRow(4000);
        model.bind(std::make_shared<ComingRows>());
        model.showNone();
    }

    void bound() {
        Grid grid;
        grid.setDataSource(threeRows());
        QCOMPARE(all(grid), "SessionId,SessionName,Amount|3,AUTUMN,12.5|2,SPRING,|1,FIRST,7");
        QCOMPARE(grid.Row(), 1);
        grid.setColumns({{"SESSION NO", 1200}, {"SESSION NAME", 3000}});
        grid.setTextMatrix(0, 0, "Session No");
        QCOMPARE(all(grid), "Session No,SESSION NAME|3,AUTUMN|2,SPRING|1,FIRST");
        const auto alignment = [&](int col) {
            return grid.model()->index(0, col).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
        };
        QVERIFY(alignment(0).testFlag(Qt::AlignRight));
        QVERIFY(alignment(1).testFlag(Qt::AlignLeft));
        grid.setTextMatrix(2, 1, "SUMMER");
        QCOMPARE(all(grid), "Session No,SESSION NAME|3,AUTUMN|2,SUMMER|1,FIRST");
        grid.setDataSource(threeRows());
        QCOMPARE(all(grid), "SessionId,SessionName,Amount|3,AUTUMN,12.5|2,SPRING,|1,FIRST,7");
    }

    void emptySearch() {
        Grid grid;
        grid.setEmptyText("No session found");
        const auto *label = grid.findChild<QLabel *>();
        grid.setDataSource(threeRows());
        QVERIFY(label->isHidden() && grid.selectionModel()->hasSelection());
        grid.setColumns({{"SESSION NO", 1200}, {"SESSION NAME", 3000}});
        grid.setDataSource(nullptr);
        QCOMPARE(grid.Rows(), 4);
        grid.Clear();
        grid.setRows(2);
        QCOMPARE(all(grid), ",|,");
        QCOMPARE(grid.Row(), 1);
        QCOMPARE(grid.TextMatrix(grid.Row(), 0), QString());
        QVERIFY(!label->isHidden() && !grid.selectionModel()->hasSelection() && !grid.showGrid());
        QTest::keyClick(&grid, Qt::Key_Down);
        QVERIFY(!grid.selectionModel()->hasSelection());
        grid.setTextMatrix(1, 0, "4");
        QVERIFY(label->isHidden() && grid.selectionModel()->hasSelection() && grid.showGrid());
    }

    void holdsRowsUntilLetGo() {
        const auto released = [](auto letGo) {
            std::weak_ptr<const Rows> watch;
            auto grid = std::make_unique<Grid>();
            {
                const RowsPtr rows = threeRows();
                watch = rows;
                grid->setDataSource(rows);
            }
            if (watch.expired())
                return false;
            letGo(grid);
            return watch.expired();
        };
        QVERIFY(released([](auto &grid) { grid->setDataSource(threeRows()); }));
        QVERIFY(released([](auto &grid) { grid->setDataSource(nullptr); }));
        QVERIFY(released([](auto &grid) { grid->Clear(); }));
        QVERIFY(released([](auto &grid) { grid.reset(); }));
    }

    /// The working copy of a voucher: lines are added, overwritten and taken out.
    void entryGrid() {
        Grid grid;
        grid.setRows(1);
        grid.setColumns({{"", 0}, {"Account Debit:", 4000}, {"Amount:", 1900, Qt::AlignRight}});
        QCOMPARE(grid.Rows(), 1);
        QCOMPARE(grid.Row(), 0);
        grid.setRows(grid.Rows() + 1);
        grid.setTextMatrix(1, 0, "15");
        grid.setTextMatrix(1, 1, "RENT");
        grid.setTextMatrix(1, 2, "1,234.50");
        QCOMPARE(grid.Row(), 1);
        grid.setRows(grid.Rows() + 1);
        grid.setTextMatrix(2, 0, "16");
        QCOMPARE(grid.Row(), 1);
        QCOMPARE(all(grid), ",Account Debit:,Amount:|15,RENT,1,234.50|16,,");
        QVERIFY(grid.model()
                    ->index(0, 2)
                    .data(Qt::TextAlignmentRole)
                    .value<Qt::Alignment>()
                    .testFlag(Qt::AlignRight));
        grid.setRows(1);
        QCOMPARE(grid.Row(), 0);
        grid.setRows(2);
        QCOMPARE(grid.TextMatrix(1, 0), QString());
    }

    void removal_data() {
        columns<bool, int, int, QString, int>("boundRows", "current", "removed", "left", "currentAfter");
        for (const bool boundRows : {true, false}) {
            const char *kind = boundRows ? "bound" : "own";
            fill(QTest::addRow("%s, first", kind), boundRows, 1, 1, "2,1", 1);
            fill(QTest::addRow("%s, middle", kind), boundRows, 2, 2, "3,1", 2);
            fill(QTest::addRow("%s, last", kind), boundRows, 3, 3, "3,2", 2);
            fill(QTest::addRow("%s, another than the current", kind), boundRows, 3, 1, "2,1", 2);
        }
    }

    void removal() {
        const auto [boundRows, current, removed, left, currentAfter] =
            fetched<bool, int, int, QString, int>();
        Grid grid;
        if (boundRows) {
            grid.setDataSource(threeRows());
        } else {
            grid.setRows(4);
            for (int row = 1; row <= 3; ++row)
                grid.setTextMatrix(row, 0, QString::number(4 - row));
        }
        grid.setRow(current);
        grid.RemoveItem(removed);
        QStringList firsts;
        for (int row = 1; row < grid.Rows(); ++row)
            firsts << grid.TextMatrix(row, 0);
        QCOMPARE(firsts.join(','), left);
        QCOMPARE(grid.Row(), currentAfter);
    }

    void outsideIsAnError() {
        Grid grid;
        grid.setDataSource(threeRows());
        QVERIFY_EXCEPTION_THROWN((void)grid.TextMatrix(4, 0), Error);
        QVERIFY_EXCEPTION_THROWN((void)grid.TextMatrix(0, 3), Error);
        QVERIFY_EXCEPTION_THROWN(grid.setTextMatrix(-1, 0, "x"), Error);
        QVERIFY_EXCEPTION_THROWN(grid.RemoveItem(0), Error);
        QVERIFY_EXCEPTION_THROWN(grid.RemoveItem(4), Error);
        QVERIFY_EXCEPTION_THROWN(grid.setRows(0), Error);
    }

    void widths() {
        Grid grid;
        grid.setDataSource(threeRows());
        grid.setColumns({{"", 0}, {"NAME", 2880}, {"A heading wider than its column", 100}});
        QVERIFY(grid.isColumnHidden(0));
        QCOMPARE(grid.TextMatrix(1, 0), "3");
        grid.resize(2000, 300);
        grid.show();
        QVERIFY(grid.columnWidth(1) > pixels(2880)); // what the others leave is the widest one's
        QCOMPARE(grid.horizontalHeader()->length(), grid.viewport()->width());
        grid.resize(200, 300);
        QCOMPARE(grid.columnWidth(1), pixels(2880));
        const QFontMetrics bold(grid.horizontalHeader()->font());
        QVERIFY(grid.horizontalHeader()->font().bold());
        QVERIFY(grid.columnWidth(2) > bold.horizontalAdvance("A heading wider than its column"));
        grid.setDataSource(threeRows());
        QVERIFY(grid.isColumnHidden(0));
        grid.setColWidth(0, 1440);
        QVERIFY(!grid.isColumnHidden(0));
    }

    void amountsArePainted_data() {
        columns<QString, QString>("cell", "painted");
        for (const auto &[cell, painted] :
             {std::pair("7", "7.00"), std::pair("9876543210.55", "9,876,543,210.55"),
              std::pair("-9876543210.55", "-9,876,543,210.55"), std::pair("", ""), std::pair("none", "none"),
              std::pair("99999999999999999999", "99999999999999999999")})
            fill(QTest::addRow("'%s'", cell), cell, painted);
    }

    void amountsArePainted() {
        const auto [cell, painted] = fetched<QString, QString>();
        struct Painter : CellDelegate {
            using CellDelegate::initStyleOption;
        };
        Grid grid;
        grid.setDataSource(TableRows::make({"$Amount", "Name"}, {{cell, "A"}}));
        grid.setColWidth(0, 100);
        const QModelIndex index = grid.model()->index(0, 0);
        QStyleOptionViewItem option;
        Painter().initStyleOption(&option, index);
        QCOMPARE(option.text, painted);
        QVERIFY(option.displayAlignment.testFlag(Qt::AlignRight));
        QCOMPARE(index.data().toString(), cell);
        QVERIFY(grid.columnWidth(0) > grid.fontMetrics().horizontalAdvance("-9,876,543,210.55"));
    }

    void cutCellTellsAll() {
        Grid grid;
        const QString whole = QString("A LONG NAME & MORE ").repeated(20);
        grid.setDataSource(TableRows::make({"Name", "#No"}, {{"SHORT", "1"}, {whole, "2"}}));
        grid.resize(300, 200);
        grid.show();
        for (int row = 0; row < 2; ++row) {
            const QPoint place = grid.visualRect(grid.model()->index(row, 0)).center();
            QHelpEvent help(QEvent::ToolTip, place, grid.viewport()->mapToGlobal(place));
            QCoreApplication::sendEvent(grid.viewport(), &help);
            QCOMPARE(QToolTip::text(), row == 1 ? "<p>" + whole.toHtmlEscaped() + "</p>" : QString());
        }
    }

    void keys() {
        Grid grid;
        grid.setDataSource(threeRows());
        grid.setColumns({{"", 0}, {"NAME", 3000}});
        grid.show();
        QSignalSpy clicked(&grid, &Grid::rowClicked);
        QSignalSpy doubled(&grid, &Grid::rowDoubleClicked);
        QSignalSpy entered(&grid, &Grid::enterPressed);
        QSignalSpy menu(&grid, &Grid::contextMenuAsked);
        QTest::keyClick(&grid, Qt::Key_Down);
        QCOMPARE(grid.Row(), 2);
        QTest::keyClick(&grid, 'F'); // picks nothing
        QCOMPARE(grid.Row(), 2);
        QTest::keyClick(&grid, Qt::Key_F2);
        QCOMPARE(doubled.size(), 1);
        QCOMPARE(doubled.at(0).at(0).toInt(), 2);
        QCOMPARE(clicked.size(), 1);
        QTest::keyClick(&grid, Qt::Key_Return);
        QCOMPARE(entered.size(), 1);
        QCOMPARE(entered.at(0).at(0).toInt(), 2);
        QCOMPARE(doubled.size(), 1);
        QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QCoreApplication::sendEvent(&grid, &byKey);
        QCOMPARE(menu.size(), 1);

        grid.setRows(1);
        QTest::keyClick(&grid, Qt::Key_F2);
        QCOMPARE(doubled.size(), 1);
        QTest::keyClick(&grid, Qt::Key_Return);
        QCOMPARE(entered.at(1).at(0).toInt(), 0);
    }

    void mouse() {
        Grid grid;
        grid.resize(500, 300);
        grid.setDataSource(threeRows());
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QSignalSpy clicked(&grid, &Grid::rowClicked);
        QSignalSpy doubled(&grid, &Grid::rowDoubleClicked);
        const QPoint third = grid.visualRect(grid.model()->index(2, 1)).center();
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, third);
        QCOMPARE(clicked.value(0).value(0).toInt(), 3);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, third);
        QCOMPARE(doubled.value(0).value(0).toInt(), 3);
        QTest::mouseDClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
        QCOMPARE(doubled.size(), 1);
        // The hand may move between the two clicks: it is the row that counts.
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, third);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {},
                           grid.visualRect(grid.model()->index(2, 0)).center());
        QCOMPARE(doubled.size(), 2);
        QCOMPARE(doubled.at(1).at(0).toInt(), 3);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {},
                           QPoint(20, grid.visualRect(grid.model()->index(2, 0)).bottom() + 40));
        QCOMPARE(doubled.size(), 2);
    }

    /// Binding reads no cell but those on view, whatever the number of rows.
    void bindingIsLazy() {
        Grid grid;
        grid.resize(600, 400);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        const auto rows = std::make_shared<CountingRows>();
        QElapsedTimer timer;
        timer.start();
        grid.setDataSource(rows);
        grid.setColumns({{"No", 1000}, {"Name", 3000}});
        const auto bindingNs = timer.nsecsElapsed();
        QTest::qWait(50);
        qInfo("300,000 rows bound in %.2f ms, %d cells read until shown", double(bindingNs) / 1e6,
              rows->reads);
        QVERIFY(rows->reads < 1000);
        QTest::keyClick(&grid, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(grid.Row(), 300000);
        QTest::keyClick(&grid, '7');
        QTest::qWait(50);
        QVERIFY(rows->reads < 2000);
    }

    /// What is done to a grid of rows on demand, and how many of them are read for it.
    void rowsAreReadAsAsked_data() {
        columns<std::function<void(Grid &)>, int, int>("asks", "least", "most");
        const auto key = [](Qt::Key pressed, Qt::KeyboardModifiers modifiers = {}, int times = 1) {
            return std::function<void(Grid &)>([=](Grid &grid) {
                for (int time = 0; time < times; ++time)
                    QTest::keyClick(&grid, pressed, modifiers);
            });
        };
        const auto asks = [](auto action) { return std::function<void(Grid &)>(action); };
        constexpr int All = ComingRows::Count;
        row("painting", asks([](Grid &) {}), 20, 100);
        row("an arrow", key(Qt::Key_Down), 20, 100);
        row("the row's end", key(Qt::Key_End), 20, 100);
        row("arrows", key(Qt::Key_Down, {}, 200), 201, 300);
        row("pages", key(Qt::Key_PageDown, {}, 20), 201, 600);
        row("the end", key(Qt::Key_End, Qt::ControlModifier), All, All);
        row("scrolling down", asks([](Grid &grid) {
                for (int time = 0; time < 3; ++time)
                    grid.verticalScrollBar()->setValue(grid.verticalScrollBar()->maximum());
            }),
            300, 1500);
        row("a cell", asks([](Grid &grid) { QCOMPARE(grid.TextMatrix(900, 0), "899"); }), 900, 1000);
        row("a row made current", asks([](Grid &grid) {
                grid.setRow(900);
                QCOMPARE(grid.Row(), 900);
            }),
            900, 1300);
        row("an index", asks([](Grid &grid) { QVERIFY(grid.model()->index(899, 1).isValid()); }), 900, 1000);
        row("the number of rows", asks([](Grid &grid) { QCOMPARE(grid.Rows(), All + 1); }), All, All);
        row("the model's", asks([](Grid &grid) { QCOMPARE(grid.model()->rowCount(), All); }), All, All);
        row("blank rows", asks([](Grid &grid) {
                grid.setDataSource(nullptr);
                QCOMPARE(grid.Rows(), All + 1);
            }),
            All, All);
        row("a change", asks([](Grid &grid) {
                grid.RemoveItem(1);
                QCOMPARE(grid.Rows(), All);
            }),
            All, All);
        row("nothing found after it", asks([](Grid &grid) {
                grid.showNone();
                QCOMPARE(grid.Rows(), 2);
            }),
            20, 100);
        row("a click", asks([](Grid &grid) {
                QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(20, 50));
                QCOMPARE(grid.Row(), 50 / grid.rowHeight(0) + 1);
            }),
            20, 100);
        row("headings", asks([](Grid &grid) { grid.setTextMatrix(0, 0, "SESSION"); }), 20, 100);
    }

    void rowsAreReadAsAsked() {
        QFETCH(std::function<void(Grid &)>, asks);
        Grid grid;
        grid.resize(600, 400);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        const auto rows = std::make_shared<ComingRows>();
        grid.setDataSource(rows);
        QTest::qWait(20);
        asks(grid);
        QTest::qWait(60);
        QFETCH(int, least);
        QFETCH(int, most);
        QVERIFY2(rows->read >= least && rows->read <= most, qPrintable(QString::number(rows->read)));
    }

    /// The user's place stays while rows come; none come under the hand that holds the scroll bar.
    void comingRowsLeaveThePlace() {
        Grid grid;
        grid.resize(600, 400);
        grid.setDataSource(threeRows());
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        const auto rows = std::make_shared<ComingRows>();
        grid.setDataSource(rows);
        QScrollBar &bar = *grid.verticalScrollBar();
        QVERIFY(bar.isVisible());
        grid.setRow(50);
        const int value = bar.value();
        const int range = bar.maximum();
        QVERIFY(value > 0);
        bar.setSliderDown(true);
        rows->readOn(2000);
        QTest::qWait(100);
        QCOMPARE(bar.maximum(), range);
        bar.setSliderDown(false);
        for (const int read : {3000, ComingRows::Count}) {
            rows->readOn(read);
            QTRY_VERIFY(bar.maximum() > read - 50);
            QCOMPARE(bar.value(), value);
            QCOMPARE(grid.Row(), 50);
            QVERIFY(grid.selectionModel()->isRowSelected(49));
        }
    }
};

ZEL_CONTROLS_MAIN(tst_grid)
#include "tst_grid.moc"
