#include "tests/support/facts.h"
#include "tests/vouchers/voucher_desk.h"

#include "shell/module1.h"

#include <QImage>

using namespace zel;
using namespace zel::test;

/// What tells the five screens apart: how each looks, what it reads back, what it copies into a line's boxes.

namespace {

constexpr const char *Facts = "vouchers/kinds.json";

/// The columns of a grid as "heading = width", a ">" before those that stand at the right.
QString headings(const controls::Grid *grid) {
    QStringList all;
    for (int col = 0; col < grid->Cols(); ++col) {
        const auto alignment =
            Qt::Alignment(grid->model()->headerData(col, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
        all << QString("%1%2 = %3")
                   .arg(alignment & Qt::AlignRight ? "> " : "", grid->TextMatrix(0, col))
                   .arg(grid->ColWidth(col));
    }
    return all.join(" | ");
}

QPoint placeOf(Desk &desk, const char *name) {
    return control(desk.screen(), name)->mapTo(desk.screen(), QPoint());
}

/// The ground of a box, left of its text, which stands at the right.
QColor ground(QWidget *box) {
    settle();
    return box->grab().toImage().pixelColor(10, box->height() / 2);
}

/// The cells of the lines, hidden ones included.
QStringList linesOf(const Desk &desk) {
    return cells(desk.screen(), "MshEntry").mid(1);
}

Sql headerOf(const QString &kind) {
    return "insert into MasJV (VouNo, VouStatus, VouDate, ChecqNo) values (5, '"_sql + kind +
           "', '2026-02-28', 'of the header') ";
}

} // namespace

/// A line of someone else's with a Null where the kind expects a text.
void openNull(const QString &kind, const char *column) {
    const bool receives = kind.endsWith('R');
    Desk desk(kind.toLatin1(), headerOf(kind) +
                                   "insert into DetJV (VouNo, VouStatus, EntryNo, AcCode, CrAc, DrAmt, "
                                   "CrAmt, Naration) values (5, '" +
                                   kind + "', 1, 4, 1, " + (receives ? "0, 5"_sql : "5, 0"_sql) +
                                   ", 'n') update DetJV set " + Sql::trusted(column) + " = null");
    desk.openFromSearch(1);
}

/// Somebody deletes the voucher that is open here: its save has no header row to change.
void saveWithoutHeader(const char *kind) {
    Desk desk(kind, "update Accounts set BStatus = 'B'");
    desk.save({"RENT", "FEES", "1"});
    desk.openFromSearch(1);
    desk.execute("delete from MasJV");
    desk.push("cmdSave");
}

/// A voucher that could not be opened leaves the screen as if it had been: the next save changes no row.
void saveAfterNotFound(const char *kind) {
    Desk desk(kind, headerOf(kind) + "update Accounts set BStatus = 'B'");
    desk.execute("delete from MasJV");
    if (textsOf([&] { desk.openFromSearch(1); }).size() != 1)
        qFatal("the voucher was found");
    desk.save({"RENT", "FEES", "1"});
}

class tst_voucher_kinds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void faces_data() { rowsFrom<QString, QString, bool, QString>(Facts); }

    void faces() {
        const auto [caption, paidTo, fileFirst, grid] = fetched<QString, QString, bool, QString>();
        const QString kind = QTest::currentDataTag();
        Desk desk(QTest::currentDataTag(), "insert into MasJV (VouNo, VouStatus, VouDate) values (1, '"_sql +
                                               kind + "', '2026-01-01')");
        QCOMPARE(desk.screen()->objectName(), "frm" + kind);
        QCOMPARE(desk.screen()->windowTitle(), caption);
        desk.expect(
            QString("lblTitle=%1; lblPaidTo=%2; txtPaidTo.accessibleName=%3; txtVouStatus=%4; MshEntry=1; "
                    "cmdDelete.enabled=false; txtVoucher.readOnly=true; txtDrAc.readOnly=true; "
                    "txtCrAc.readOnly=true; DTPicker=%5; focus=DTPicker")
                .arg(caption, paidTo, paidTo.chopped(2), kind, QDate::currentDate().toString("dd/MM/yyyy")));
        QCOMPARE(headings(desk.grid("MshEntry")), grid);
        QCOMPARE(
            headings(desk.grid("mshSearch")),
            "> Voucher #  = 2000 | Voucher Date = 2000 | Paid To = 5000 | > Amount = 2000 | Multi = 1000");
        QCOMPARE(placeOf(desk, "txtFile").x() < placeOf(desk, "txtBill").x(), fileFirst);
        for (const char *name : {"File", "Bill", "PaidTo"}) {
            const QWidget *label = control(desk.screen(), QString("lbl") + name);
            const int gap = placeOf(desk, QByteArray("txt") + name).x() -
                            placeOf(desk, label->objectName().toLatin1()).x() - label->width();
            QVERIFY2(gap >= 0 && gap < 20, name);
        }

        // Enter goes the way that the eye goes.
        control(desk.screen(), "txtChecque")->setFocus();
        for (const char *next :
             {fileFirst ? "txtFile" : "txtBill", fileFirst ? "txtBill" : "txtFile", "txtNaration"}) {
            press(Qt::Key_Return);
            QCOMPARE(focused(), next);
        }

        // The box of the kind hands the focus on, all but that of CP.
        QTest::mouseClick(control(desk.screen(), "txtVouStatus"), Qt::LeftButton);
        QCOMPARE(focused(), kind == "CP" ? "txtVouStatus" : "DTPicker");

        // The amount under the cursor is yellow on JV, white elsewhere.
        QWidget *amount = control(desk.screen(), "txtDRCR");
        QCOMPARE(ground(amount), QColor(Qt::white));
        amount->setFocus();
        const QColor held = ground(amount);
        QCOMPARE(held.red() > 200 && held.green() > 200 && held.blue() < 200, kind == "JV");
        QVERIFY(kind == "JV" || held == QColor(Qt::white));
        press(Qt::Key_Tab);
        QCOMPARE(ground(amount), QColor(Qt::white));
    }

    void filterLeftByAnotherScreen_data() { rowsFrom<QString, QString>(Facts); }

    void filterLeftByAnotherScreen() {
        const auto [button, listed] = fetched<QString, QString>();
        Desk desk(
            nullptr,
            "insert into Accounts (ParentID, Dcode, AcName, AcStatus) values ('1', 1, 'A HEADING', 'HD')");
        shell::gFindFilter = "SUB";
        desk.open(QTest::currentDataTag());
        click(desk.screen(), button);
        QCOMPARE(control<controls::Grid>(form("frmFindAC"), "mshSearch")->TextMatrix(1, 2), listed);
    }

    void linesReadBack_data() { rowsFrom<QString, QString, QString>(Facts); }

    /// Pairs whose two rows differ, the second line first, with amounts that no line shows at the end.
    void linesReadBack() {
        const auto [accounts, cheque, rows] = fetched<QString, QString, QString>();
        const QString kind = QTest::currentDataTag();
        Sql all = headerOf(kind);
        for (const char *values :
             {"2, 5, 2, 1234567890.5, 0, 'c2', 'debit 2', '12', null",
              "2, 2, 5, 0, 1234567890.5, 'x2', 'credit 2', '13', null",
              "1, 4, 1, 0.01, 0, null, 'debit 1', null, '7'", "1, 1, 4, 0, 0.01, null, 'credit 1', null, '8'",
              "3, 99, 98, 3, 0, '', 'debit 3', '', ''", "3, 98, 99, 0, 3, '', 'credit 3', '', ''",
              "4, 4, 1, 0, 0, '', 'nothing', '', ''", "5, 4, 1, -5, 0, '', 'less', '', ''",
              "5, 1, 4, 0, -5, '', 'less', '', ''", "6, 4, 1, null, null, null, null, null, null"})
            all = all +
                  "insert into DetJV (VouNo, VouStatus, EntryNo, AcCode, CrAc, DrAmt, CrAmt, ChecqNo, "
                  "Naration, " +
                  "FileNo, BillNo) values (5, '" + kind + "', " + Sql::trusted(values) + ") ";
        Desk desk(QTest::currentDataTag(), all);
        desk.openFromSearch(1);
        compare(linesOf(desk), table(rows));
        QCOMPARE(desk.accounts(), accounts);
        desk.expect("txtChecque=" + cheque +
                    "; txtPaidTo=; DTPicker=28/02/2026; lblTotalAmount=Total Amount : 1,234,567,893.51; "
                    "cmdDelete.enabled=true");
    }

    void nullThatEndsTheProgram_data() {
        columns<QString, QString>("column", "shown"); // the kinds that show the line all the same
        row("narration", "Naration", "BR");
        row("account", "AcCode", "");
        row("contra account", "CrAc", "CP CR");
    }

    void nullThatEndsTheProgram() {
        const auto [column, shown] = fetched<QString, QString>();
        for (const char *kind : Kinds) {
            const QString scene = QString("%1 %2").arg(kind, column);
            if (shown.contains(kind))
                QCOMPARE(play(scene).status, 0);
            else
                expectEnd(scene, "Error 94:\n\nInvalid use of Null");
        }
    }

    /// The accounts then in their boxes.
    void lineUnderEdit_data() { rowsFrom<QString, QString, QString>(Facts); }

    void lineUnderEdit() {
        const auto [line, taken, added] = fetched<QString, QString, QString>();
        Desk desk(QTest::currentDataTag(), "update Accounts set BStatus = 'B'");
        desk.add({"LIGHT", "CASH BOX", "1"});
        desk.add({"BANK ONE", "BANK TWO", "1234567890.5", "c", "n", "5", "6"});
        desk.fill({"RENT", "FEES", "9", "x", "y", "8", "7"});
        const QStringList before = linesOf(desk);
        compare(before.mid(1), table(line));
        desk.doubleClick("MshEntry", 2, 1);
        QCOMPARE(desk.accounts(), taken);
        desk.expect("txtGrdRow=2; txtDRCR=1234567890.50; txtChecque=c; txtNaration=n; txtFile=5; txtBill=6");
        QVERIFY(desk.push("cmdAdd").empty());
        compare(linesOf(desk), before);
        QCOMPARE(desk.accounts(), added);
    }

    /// The focus after a line goes to the side that the clerk may still choose.
    void fixedDebitSide() {
        Desk desk(nullptr, "update VouSetting set AcCode = '3', AcStatus = 'DR', Fix = 'Y' "
                           "update Accounts set BStatus = 'B'");
        for (const char *kind : Kinds) {
            desk.open(kind);
            QVERIFY(desk.add({"", "FEES", "1"}).empty());
            QCOMPARE(focused(), "cmdSelectCr");
        }
    }

    void cashVoucherMovesToTheAccountInTheBox() {
        for (const bool pays : {true, false}) {
            Desk desk(pays ? "CP" : "CR");
            desk.save(pays ? Line{"RENT", "CASH BOX", "10"} : Line{"CASH BOX", "RENT", "10"});
            QCOMPARE(desk.accounts(), pays ? "|CASH BOX 3" : "CASH BOX 3|");
            desk.choose(pays ? "cmdSelectCr" : "cmdSelectDr", "BANK ONE");
            desk.openFromSearch(1);
            QCOMPARE(desk.accounts(), pays ? "|BANK ONE 1" : "BANK ONE 1|");
            desk.push("cmdSave");
            compare(desk.rows("select AcCode, CrAc from DetJV"), table("4 | 1\n1 | NULL"));
        }
    }

    void headerThatIsGoneAtTheSave() {
        for (const char *scene : {"BP opened", "BP not found", "CR opened", "CR not found"})
            expectEnd(scene, "Error 3021:");
    }
};

int main(int argc, char **argv) {
    tst_voucher_kinds tests;
    Scenes scenes;
    for (const char *kind : Kinds) {
        for (const char *column : {"Naration", "CrAc", "AcCode"})
            scenes[QString("%1 %2").arg(kind, column)] = [kind, column] { openNull(kind, column); };
        scenes[QString("%1 opened").arg(kind)] = [kind] { saveWithoutHeader(kind); };
        scenes[QString("%1 not found").arg(kind)] = [kind] { saveAfterNotFound(kind); };
    }
    return zel::test::run(argc, argv, tests, scenes);
}

#include "tst_voucher_kinds.moc"
