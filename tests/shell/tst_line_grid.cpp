#include "platform/base/error.h"
#include "platform/base/number_text.h"
#include "platform/controls/button.h"
#include "platform/controls/data_combo.h"
#include "platform/controls/text_box.h"
#include "shell/line_grid.h"
#include "tests/platform/controls/table_rows.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QtTest>

using namespace zel;
using namespace zel::shell;
using namespace zel::test;

namespace {

constexpr LineColumn Columns[] = {
    {"Sub ID", 0, {"txtSubId"}},
    {"Subjects", 4000, {"txtSubName"}},
    {"Amount", 1500, {"txt_rate"}, Picture::Amount},
    {"Rec. Amount", 1500, {"txtRecAmt"}},
    {"Session", 1500, {"cboSession"}, Picture::Plain, false},
    {"SessionID", 2000, {"cboSession", Part::Bound}},
    {"InActive", 700, {"ChkInactive", Part::Ticked}},
};
constexpr Box Line[] = {
    {"txtSubId"}, {"txtSubName"}, {"txt_rate"}, {"txtRecAmt"}, {"ChkInactive", Part::Ticked}};
constexpr LineTable Lines{.grid = "MshSubject",
                          .rowUnderEdit = "txtEditRow",
                          .takenBackBy = TakenBackBy::Click,
                          .columns = Columns,
                          .emptiedByAdd = Line,
                          .emptiedByRemove = Line};

/// The subjects of an application, as such a screen's boxes stand.
struct Subjects : QWidget {
    Subjects() {
        setObjectName("frmZelApplication");
        for (const char *box : {"txtEditRow", "txtSubId", "txtSubName", "txt_rate", "txtRecAmt"})
            (new controls::TextBox(this))->setObjectName(box);
        (new controls::Grid(this))->setObjectName("MshSubject");
        (new controls::CheckBox(this))->setObjectName("ChkInactive");
        auto *session = new controls::DataCombo(this);
        session->setObjectName("cboSession");
        session->setListField("SessionName");
        session->setBoundColumn("SessionId");
        session->setRowSource(
            TableRows::make({"#SessionId", "SessionName"}, {{"1", "SPRING"}, {"2", "AUTUMN"}}));
    }
    void fill(const QStringList &line) {
        std::size_t col = 0;
        for (const QString &value : line)
            ScreenBox(*this, Columns[col++].box).write(value);
    }
    [[nodiscard]] QString boxes() {
        QStringList all;
        for (const LineColumn &column : Columns)
            all << ScreenBox(*this, column.box).read();
        return all.join('|');
    }
};

QStringList cells(const LineGrid &lines) {
    QStringList rows;
    for (int row = 1; row < lines.grid().Rows(); ++row) {
        QStringList cells;
        for (int col = 0; col < lines.grid().Cols(); ++col)
            cells << lines.grid().TextMatrix(row, col);
        rows << cells.join('|');
    }
    return rows;
}

const QStringList Law{"7", "LAW", "1250.5", "1,250", "SPRING", "1", "0"};
const QStringList Tax{"8", "TAX", "9", "3 paid", "AUTUMN", "2", "1"};

} // namespace

class tst_line_grid : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lines() {
        Subjects screen;
        int taken = 0;
        LineGrid lines(screen, Lines, [&](int row) { taken = row; });
        lines.reset();
        QVERIFY(lines.isEmpty() && lines.grid().isColumnHidden(0) && !lines.grid().isColumnHidden(1));
        for (const QStringList &line : {Law, Tax}) {
            screen.fill(line);
            QVERIFY(!lines.isRepeated());
            lines.add();
            QCOMPARE(screen.boxes(), "||||" + line[4] + '|' + line[5] + "|0");
        }
        const QStringList both{"7|LAW|1,250.50|1,250|SPRING|1|0", "8|TAX|9.00|3 paid|AUTUMN|2|1"};
        QCOMPARE(cells(lines), both);
        QCOMPARE(storedAmount(lines.total(2)), "1259.50");
        QCOMPARE(storedAmount(lines.total(3)), "4.00"); // as plain texts are read

        // A code stands once, but a line under edit may take another's.
        screen.fill({"8", "TAX AGAIN"});
        QVERIFY(lines.isRepeated());
        Q_EMIT lines.grid().rowClicked(1);
        QCOMPARE(taken, 1);
        QCOMPARE(screen.boxes(), "7|LAW|1250.50|1,250|SPRING|1|0");
        screen.fill({"8"});
        QVERIFY(!lines.isRepeated());
        Q_EMIT lines.grid().rowDoubleClicked(2);
        screen.fill({"8", "TAX", "2", "", "AUTUMN", "2", "1"});
        lines.add();
        QCOMPARE(cells(lines), QStringList({"8|TAX|2.00||AUTUMN|2|1", both[1]}));

        // The session of a line that is gone from the list stays the line's.
        lines.grid().setTextMatrix(2, 5, "99");
        lines.takeBack(2);
        QCOMPARE(screen.boxes(), "8|TAX|9.00|3 paid||99|1");
        lines.grid().setRow(1);
        lines.remove();
        QCOMPARE(cells(lines), QStringList{"8|TAX|9.00|3 paid|AUTUMN|99|1"});
        QCOMPARE(screen.boxes(), "|||||99|0");
        lines.remove();
        QVERIFY(lines.isEmpty());
        lines.takeBack(0);
        QCOMPARE(taken, 2);
    }

    void missing_data() {
        columns<QString, Part>("box", "part");
        row("no such control", "txtNone", Part::Text);
        row("a box isn't bound", "txtSubId", Part::Bound);
        row("a combo has no text of its own to tag", "cboSession", Part::Tag);
        row("a grid has no text", "MshSubject", Part::Text);
    }

    void missing() {
        const auto [box, part] = fetched<QString, Part>();
        Subjects screen;
        const QByteArray name = box.toLatin1();
        try {
            ScreenBox(screen, {name.constData(), part});
            QFAIL("found");
        } catch (const Error &error) {
            QCOMPARE(error.number(), errors::ControlNotFound);
            QCOMPARE(error.description(), "Control '" + box + "' not found on frmZelApplication");
        }
    }
};

ZEL_TEST_MAIN(tst_line_grid)

#include "tst_line_grid.moc"
