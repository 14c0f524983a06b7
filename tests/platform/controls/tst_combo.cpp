#include "on_screen.h"
#include "platform/base/error.h"
#include "platform/controls/data_combo.h"
#include "platform/controls/date_box.h"
#include "platform/controls/text_box.h"
#include "table_rows.h"

#include "tests/support/facts.h"
#include <QAbstractItemView>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace zel;
using namespace zel::controls;
using namespace zel::test;

namespace {

/// What opens a list or a calendar.
constexpr std::pair<Qt::Key, Qt::KeyboardModifier> openers[] = {{Qt::Key_Down, Qt::AltModifier},
                                                                {Qt::Key_F4, Qt::NoModifier}};

RowsPtr courses() {
    return TableRows::make({"#CourseId", "CourseName"},
                           {{"7", "ACCOUNTS"}, {"3", "BANKING"}, {"12", "COMMERCE"}});
}

} // namespace

class tst_combo : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void searchDropDownTakesNoLetters() {
        ComboBox combo;
        combo.addItems({"Session Name", "Session No", "Both"});
        combo.setCurrentIndex(0);
        QVERIFY(activated(combo));
        QSignalSpy changed(&combo, &ComboBox::changed);
        QTest::keyClicks(&combo, "both B");
        QTest::keyClick(&combo, Qt::Key_Space);
        QCOMPARE(combo.currentIndex(), 0);
        QVERIFY(!combo.view()->isVisible());
        QTest::keyClick(&combo, Qt::Key_Down);
        QCOMPARE(combo.Text(), "Session No");
        QTest::keyClick(&combo, Qt::Key_Up);
        QCOMPARE(changed.size(), 2);
        combo.showPopup();
        QTest::keyClicks(combo.view(), "b");
        QTest::keyClick(combo.view(), Qt::Key_Escape);
        QCOMPARE(combo.currentIndex(), 0);
        combo.setText("Both");
        QCOMPARE(combo.currentIndex(), 2);
        QCOMPARE(changed.size(), 3);
    }

    void openingKeys() {
        for (const auto &[key, modifier] : openers) {
            ComboBox combo;
            combo.addItems({"Voucher #", "Date", "Paid To"});
            QVERIFY(activated(combo));
            QSignalSpy clicked(&combo, &ComboBox::clicked);
            QTest::keyClick(&combo, key, modifier);
            QVERIFY(combo.view()->isVisible());
            QTest::keyClick(combo.view(), Qt::Key_Down);
            QTest::keyClick(combo.view(), Qt::Key_Return);
            QTRY_VERIFY(!combo.view()->isVisible());
            QCOMPARE(combo.Text(), "Date");
            QCOMPARE(clicked.size(), 1);
        }
    }

    void dataCombo() {
        DataCombo combo;
        combo.setListField("CourseName");
        combo.setBoundColumn("CourseId");
        QSignalSpy changed(&combo, &DataCombo::changed);
        combo.setRowSource(courses());
        QCOMPARE(combo.count(), 3);
        QCOMPARE(combo.Text(), QString());
        QCOMPARE(combo.BoundText(), QString());
        QCOMPARE(changed.size(), 0);

        combo.setBoundText("3");
        QCOMPARE(combo.Text(), "BANKING");
        QCOMPARE(changed.size(), 1);
        QTest::keyClick(&combo, 'c');
        QCOMPARE(combo.BoundText(), "12");
        QTest::keyClick(&combo, Qt::Key_Delete);
        QCOMPARE(combo.Text(), QString());

        combo.setBoundText("7");
        changed.clear();
        combo.setRowSource(nullptr);
        QCOMPARE(combo.count(), 0);
        QCOMPARE(combo.Text(), QString());
        QCOMPARE(changed.size(), 1);
    }

    void boundText_data() {
        rowsFrom<QString, QString, QString, QString, int>("platform/controls/combo.json");
    }

    void boundText() {
        QFETCH(QString, bound);
        QFETCH(QString, step);
        DataCombo combo;
        combo.setListField("CourseName");
        combo.setBoundColumn("CourseId");
        combo.setRowSource(courses());
        combo.setBoundText(bound);
        QSignalSpy changed(&combo, &DataCombo::changed);
        if (step == "pick")
            QTest::keyClick(&combo, 'c');
        else if (step == "empty")
            QTest::keyClick(&combo, Qt::Key_Delete);
        else if (step == "fill")
            combo.ReFill(
                TableRows::make({"#CourseId", "CourseName"}, {{"5", "DRAFTING"}, {"7", "ACCOUNTS"}}));
        QTEST(combo.Text(), "text");
        QTEST(combo.BoundText(), "boundAfter");
        QTEST(int(changed.size()), "changes");
    }

    /// Bound, laid out and painted: of many rows hardly one is read.
    void manyRowsAreNotMeasured() {
        class Students : public TableRows {
        public:
            Students() : TableRows({"#AppID", "StuName"}, {}) {}
            qsizetype rowCount() const override { return 20000; }
            QString text(qsizetype row, int) const override {
                ++reads;
                return QString::number(row);
            }
            mutable int reads = 0;
        };
        const auto students = std::make_shared<Students>();
        DataCombo combo;
        combo.setRowSource(students);
        combo.setListField("StuName");
        combo.setBoundColumn("AppID");
        combo.setCurrentIndex(combo.count() - 1);
        combo.adjustSize();
        combo.show();
        QVERIFY(QTest::qWaitForWindowExposed(&combo));
        QCOMPARE(combo.Text(), "19999");
        QVERIFY2(students->reads < 100, qPrintable(QString::number(students->reads)));
        QVERIFY(combo.width() > combo.fontMetrics().horizontalAdvance("A STUDENT'S NAME"));
    }

    void dataComboRefusesUnknownColumns() {
        DataCombo combo;
        combo.setRowSource(courses());
        QVERIFY_EXCEPTION_THROWN(combo.setBoundColumn("SubId"), Error);
        QVERIFY_EXCEPTION_THROWN(combo.setListField("SubName"), Error);
    }

    void dateBoxKeys() {
        QWidget screen;
        auto *date = new DateBox;
        auto *next = new TextBox;
        stack(screen, {date, next});
        QVERIFY(activated(screen));
        date->setFocus();
        QSignalSpy changed(date, &DateBox::changed);
        date->setValue(QDate(2024, 2, 29));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(date->text(), "29/02/2024");
        date->setSelectedSection(QDateTimeEdit::DaySection);
        QTest::keyClicks(date, "05112023");
        QCOMPARE(date->Value(), QDate(2023, 11, 5));
        QVERIFY(changed.size() > 1);
        // Over a selection of all, and in place of what was erased.
        auto *line = date->findChild<QLineEdit *>();
        line->selectAll();
        QTest::keyClicks(date, "01022021");
        QCOMPARE(date->Value(), QDate(2021, 2, 1));
        line->selectAll();
        QTest::keyClick(date, Qt::Key_Delete);
        QCOMPARE(date->Value(), QDate(2021, 2, 1));
        QTest::keyClicks(date, "3.4.2020");
        QCOMPARE(date->Value(), QDate(2020, 4, 3));
        line->clear();
        QTest::keyClicks(date, "29/02/2024");
        QCOMPARE(date->Value(), QDate(2024, 2, 29));
        QTest::keyClick(date, Qt::Key_Return);
        QVERIFY(next->hasFocus());
        date->setFocus();
        QTest::keyClick(date, Qt::Key_Tab);
        QVERIFY(next->hasFocus());
    }

    void calendarOpensByKey() {
        for (const auto &[key, modifier] : openers) {
            DateBox date;
            QVERIFY(activated(date));
            QSignalSpy closed(&date, &DateBox::calendarClosed);
            QTest::keyClick(&date, key, modifier);
            QWidget *calendar = QApplication::activePopupWidget();
            QVERIFY(calendar);
            calendar->close();
            QCOMPARE(closed.size(), 1);
        }
    }
};

ZEL_CONTROLS_MAIN(tst_combo)
#include "tst_combo.moc"
