#include "tests/support/rows.h"
#include "tests/vouchers/voucher_desk.h"

#include "shell/module1.h"

#include <QImage>

using namespace zel;
using namespace zel::test;

/// What tells the five screens apart: how each looks, what it reads back, what it copies into a line's boxes.

namespace {

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

/// The cells of a grid below the heading, hidden ones included.
QStringList allCells(const controls::Grid *grid) {
    QStringList rows;
    for (int row = 1; row < grid->Rows(); ++row) {
        QStringList texts;
        for (int col = 0; col < grid->Cols(); ++col)
            texts << grid->TextMatrix(row, col);
        rows << texts.join('|');
    }
    return rows;
}

Sql headerOf(const QString &kind) {
    return "insert into MasJV (VouNo, VouStatus, VouDate, ChecqNo) values (5, '"_sql + kind +
           "', '2026-02-28', 'of the header') ";
}

} // namespace

/// A line of someone else's with a Null where the kind expects a text.
void openNull(const QString &kind, const char *column) {
    const bool receives = kind.endsWith('R');
    Desk desk(
        headerOf(kind) +
        "insert into DetJV (VouNo, VouStatus, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration) values (5, '" +
        kind + "', 1, 4, 1, " + (receives ? "0, 5"_sql : "5, 0"_sql) + ", 'n') update DetJV set " +
        Sql::trusted(column) + " = null");
    desk.open(kind.toLatin1());
    desk.openFromSearch(1);
}

/// Somebody deletes the voucher that is open here: its save has no header row to change.
void saveWithoutHeader(const char *kind) {
    Desk desk("update Accounts set BStatus = 'B'");
    desk.open(kind);
    desk.add({"RENT", "FEES", "1"});
    desk.push("cmdSave");
    desk.openFromSearch(1);
    desk.office.execute("delete from MasJV");
    desk.push("cmdSave");
}

/// A voucher that could not be opened leaves the screen as if it had been: the next save changes no row.
void saveAfterNotFound(const char *kind) {
    Desk desk(headerOf(kind) + "update Accounts set BStatus = 'B'");
    desk.open(kind);
    desk.office.execute("delete from MasJV");
    if (Desk::boxes([&] { desk.openFromSearch(1); }).size() != 1)
        qFatal("the voucher was found");
    desk.add({"RENT", "FEES", "1"});
    desk.push("cmdSave");
}

class tst_voucher_kinds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void faces_data() {
        columns<QString, QString, bool, QString>("caption", "paidTo", "fileFirst", "grid");
        const QString pairs = " = 0 | Account Debit: = 4000 | Account Credit: = 4000 | > Amount: = 1900 | "
                              "Checque No. : = 1900 | Naration: = 4000 | CrAcCode: = 0 | File No: = 1200 | "
                              "Bill No: = 1200";
        const QString lines = " = 0 | Account Title: = 5000 | > %1 = 1900 | Checque No. : = 1900 | "
                              "Naration: = 5000 | File No: = 1200 | Bill No: = 1200";
        row("BP", "Bank Payment Voucher", "Paid To :", false, pairs);
        row("BR", "Bank Receive Voucher", "Receive From :", false, pairs);
        row("CP", "Cash Payment Voucher", "Paid To :", false, lines.arg("Debit:"));
        row("CR", "Cash Receive Voucher", "Receive From :", false, lines.arg("Credit:"));
        row("JV", "Journal Voucher", "Paid To :", true, pairs);
    }

    void faces() {
        QFETCH(QString, caption);
        QFETCH(QString, paidTo);
        QFETCH(bool, fileFirst);
        QFETCH(QString, grid);
        const QString kind = QTest::currentDataTag();
        Desk desk("insert into MasJV (VouNo, VouStatus, VouDate) values (1, '"_sql + kind +
                  "', '2026-01-01')");
        desk.open(QTest::currentDataTag());
        QCOMPARE(focused(), "DTPicker");
        QCOMPARE(desk.screen()->objectName(), "frm" + kind);
        QCOMPARE(desk.screen()->windowTitle(), caption);
        QCOMPARE(desk.label("lblTitle"), caption);
        QCOMPARE(desk.label("lblPaidTo"), paidTo);
        QCOMPARE(desk.box("txtPaidTo")->accessibleName() + " :", paidTo);
        QCOMPARE(desk.text("txtVouStatus"), kind);
        QCOMPARE(headings(desk.grid("MshEntry")), grid);
        QCOMPARE(desk.grid("MshEntry")->Rows(), 1);
        QCOMPARE(
            headings(desk.grid("mshSearch")),
            "> Voucher #  = 2000 | Voucher Date = 2000 | Paid To = 5000 | > Amount = 2000 | Multi = 1000");
        QCOMPARE(placeOf(desk, "txtFile").x() < placeOf(desk, "txtBill").x(), fileFirst);
        for (const auto &[label, box] : {std::pair("lblFile", "txtFile"), std::pair("lblBill", "txtBill"),
                                         std::pair("lblPaidTo", "txtPaidTo")}) {
            const int gap =
                placeOf(desk, box).x() - placeOf(desk, label).x() - control(desk.screen(), label)->width();
            QVERIFY2(gap >= 0 && gap < 20, label);
        }
        QVERIFY(!desk.enabled("cmdDelete"));
        QVERIFY(desk.box("txtVoucher")->isReadOnly() && desk.box("txtDrAc")->isReadOnly() &&
                desk.box("txtCrAc")->isReadOnly());
        QCOMPARE(control<controls::DateBox>(desk.screen(), "DTPicker")->Value(), QDate::currentDate());
        picture(desk.screen(), "frm" + kind + "-empty");

        // Enter goes the way that the eye goes.
        control(desk.screen(), "txtChecque")->setFocus();
        press(Qt::Key_Return);
        QCOMPARE(focused(), fileFirst ? "txtFile" : "txtBill");
        press(Qt::Key_Return);
        QCOMPARE(focused(), fileFirst ? "txtBill" : "txtFile");
        press(Qt::Key_Return);
        QCOMPARE(focused(), "txtNaration");
    }

    void colourOfTheAmount_data() {
        QTest::addColumn<bool>("turnsYellow");
        for (const char *kind : {"BP", "BR", "CP", "CR", "JV"})
            zel::test::row(kind, (QByteArray(kind) == "JV"));
    }

    void colourOfTheAmount() {
        QFETCH(bool, turnsYellow);
        Desk desk;
        desk.open(QTest::currentDataTag());
        QWidget *amount = control(desk.screen(), "txtDRCR");
        QCOMPARE(ground(amount), QColor(Qt::white));
        amount->setFocus();
        const QColor held = ground(amount);
        picture(desk.screen(), desk.screen()->objectName() + "-amount");
        QCOMPARE(held.red() > 200 && held.green() > 200 && held.blue() < 200, turnsYellow);
        QVERIFY(turnsYellow || held == QColor(Qt::white));
        press(Qt::Key_Tab);
        QCOMPARE(ground(amount), QColor(Qt::white));
    }

    void filterLeftByAnotherScreen_data() {
        columns<QString, QString>("button", "listed");
        row("BP", "cmdSelectDr", "BANK ONE");
        row("BR", "cmdSelectCr", "BANK ONE");
        row("CP", "cmdSelectDr", "A HEADING");
        row("CR", "cmdSelectCr", "A HEADING");
        row("JV", "cmdSelectDr", "BANK ONE");
    }

    void filterLeftByAnotherScreen() {
        QFETCH(QString, button);
        QFETCH(QString, listed);
        Desk desk(
            "insert into Accounts (ParentID, Dcode, AcName, AcStatus) values ('1', 1, 'A HEADING', 'HD')");
        shell::gFindFilter = "SUB";
        desk.open(QTest::currentDataTag());
        click(desk.screen(), button);
        QCOMPARE(control<controls::Grid>(form("frmFindAC"), "mshSearch")->TextMatrix(1, 2), listed);
    }

    void linesReadBack_data() {
        columns<QString, QString, QString, QString>("debit", "credit", "cheque", "rows");
        row("BP", "", "BANK ONE 1", "",
            "4 | RENT | BANK ONE | 0.01 | '' | debit 1 | 1 | '' | 7\n"
            "5 | LIGHT | BANK TWO | 1,234,567,890.50 | c2 | debit 2 | 2 | 12 | ''\n"
            "99 | '' | '' | 3.00 | '' | debit 3 | 98 | '' | ''");
        row("BR", "RENT 4", "", "of the header",
            "4 | RENT | BANK ONE | 0.01 | '' | credit 1 | 1 | '' | 8\n"
            "5 | LIGHT | BANK TWO | 1,234,567,890.50 | x2 | credit 2 | 2 | 13 | ''\n"
            "99 | '' | '' | 3.00 | '' | credit 3 | 98 | '' | ''");
        row("CP", "", "", "",
            "4 | RENT | 0.01 | '' | debit 1 | '' | 7\n"
            "5 | LIGHT | 1,234,567,890.50 | c2 | debit 2 | 12 | ''\n"
            "99 | '' | 3.00 | '' | debit 3 | '' | ''");
        row("CR", "", "", "",
            "1 | BANK ONE | 0.01 | '' | credit 1 | '' | 8\n"
            "2 | BANK TWO | 1,234,567,890.50 | x2 | credit 2 | 13 | ''\n"
            "98 | '' | 3.00 | '' | credit 3 | '' | ''");
        row("JV", "", "", "",
            "4 | RENT | BANK ONE | 0.01 | '' | debit 1 | 1 | '' | 7\n"
            "5 | LIGHT | BANK TWO | 1,234,567,890.50 | c2 | debit 2 | 2 | 12 | ''\n"
            "99 | '' | '' | 3.00 | '' | debit 3 | 98 | '' | ''");
    }

    /// Pairs whose two rows differ, the second line first, with amounts that no line shows at the end.
    void linesReadBack() {
        QFETCH(QString, debit);
        QFETCH(QString, credit);
        QFETCH(QString, cheque);
        QFETCH(QString, rows);
        const QString kind = QTest::currentDataTag();
        Sql all = headerOf(kind);
        for (const char *values :
             {"2, 5, 2, 1234567890.5, 0, 'c2', 'debit 2', '12', null",
              "2, 2, 5, 0, 1234567890.5, 'x2', 'credit 2', '13', null",
              "1, 4, 1, 0.01, 0, null, 'debit 1', null, '7'", "1, 1, 4, 0, 0.01, null, 'credit 1', null, '8'",
              "3, 99, 98, 3, 0, '', 'debit 3', '', ''", "3, 98, 99, 0, 3, '', 'credit 3', '', ''",
              "4, 4, 1, 0, 0, '', 'nothing', '', ''", "5, 4, 1, -5, 0, '', 'less', '', ''",
              "5, 1, 4, 0, -5, '', 'less', '', ''", "6, 4, 1, null, null, null, null, null, null"}) {
            all = all +
                  "insert into DetJV (VouNo, VouStatus, EntryNo, AcCode, CrAc, DrAmt, CrAmt, ChecqNo, "
                  "Naration, "
                  "FileNo, BillNo) values (5, '" +
                  kind + "', " + Sql::trusted(values) + ") ";
        }
        Desk desk(all);
        desk.open(QTest::currentDataTag());
        desk.openFromSearch(1);
        compare(allCells(desk.grid("MshEntry")), table(rows));
        QCOMPARE((desk.text("txtDrAc") + ' ' + desk.tag("txtDrAc")).trimmed(), debit);
        QCOMPARE((desk.text("txtCrAc") + ' ' + desk.tag("txtCrAc")).trimmed(), credit);
        QCOMPARE(desk.text("txtChecque"), cheque);
        QCOMPARE(desk.text("txtPaidTo"), "");
        QCOMPARE(control<controls::DateBox>(desk.screen(), "DTPicker")->Value(), QDate(2026, 2, 28));
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 1,234,567,893.51");
        QVERIFY(desk.enabled("cmdDelete"));
    }

    void nullThatEndsTheProgram_data() {
        QTest::addColumn<int>("status");
        const auto rows = [](const char *column, const char *shown) {
            for (const char *kind : {"BP", "BR", "CP", "CR", "JV"})
                fill(QTest::addRow("%s %s", kind, column), (QByteArray(shown).contains(kind) ? 0 : 1));
        };
        rows("Naration", "BR");
        rows("AcCode", "");
        rows("CrAc", "CP CR");
    }

    void nullThatEndsTheProgram() {
        QFETCH(int, status);
        const Ended ended = play(QTest::currentDataTag());
        QVERIFY2(ended.status == status, qPrintable(ended.box + ended.errorStream));
        QCOMPARE(ended.box.contains("Invalid use of Null"), status == 1);
    }

    void lineUnderEdit_data() {
        QTest::addColumn<QString>("cells");
        QTest::addColumn<QStringList>(
            "accounts"); // debit and credit in their boxes, then after the line is added
        const QString pair = "1 | BANK ONE | BANK TWO | 1,234,567,890.50 | c | n | 2 | 5 | 6";
        const QString one = "BANK ONE", two = "BANK TWO", rent = "RENT", fees = "FEES", none;
        zel::test::row("BP", pair, QStringList{one, two, none, two});
        zel::test::row("BR", pair, QStringList{one, two, one, none});
        zel::test::row("CP", "1 | BANK ONE | 1,234,567,890.50 | c | n | 5 | 6",
                       QStringList{one, fees, none, fees});
        zel::test::row("CR", "2 | BANK TWO | 1,234,567,890.50 | c | n | 5 | 6",
                       QStringList{rent, two, rent, none});
        zel::test::row("JV", pair, QStringList{one, two, one, two});
    }

    void lineUnderEdit() {
        QFETCH(QString, cells);
        QFETCH(QStringList, accounts);
        const auto shown = [](const QString &account) {
            return account.isEmpty() ? QString(" ") : account + ' ' + QString::number(accountId(account));
        };
        Desk desk("update Accounts set BStatus = 'B'");
        desk.open(QTest::currentDataTag());
        desk.add({"LIGHT", "CASH BOX", "1"});
        desk.add({"BANK ONE", "BANK TWO", "1234567890.5", "c", "n", "5", "6"});
        desk.fill({"RENT", "FEES", "9", "x", "y", "8", "7"});
        controls::Grid *lines = desk.grid("MshEntry");
        const QStringList before = allCells(lines);
        compare(before.mid(1), table(cells));
        desk.doubleClick("MshEntry", 2, 1);
        QCOMPARE(desk.text("txtGrdRow"), "2");
        QCOMPARE(desk.text("txtDrAc") + ' ' + desk.tag("txtDrAc"), shown(accounts[0]));
        QCOMPARE(desk.text("txtCrAc") + ' ' + desk.tag("txtCrAc"), shown(accounts[1]));
        QCOMPARE(desk.text("txtDRCR"), "1234567890.50");
        QCOMPARE(desk.text("txtChecque"), "c");
        QCOMPARE(text(desk.screen(), "txtNaration"), "n");
        QCOMPARE(desk.text("txtFile"), "5");
        QCOMPARE(desk.text("txtBill"), "6");
        QVERIFY(desk.push("cmdAdd").empty());
        compare(allCells(lines), before);
        QCOMPARE(desk.text("txtDrAc") + ' ' + desk.tag("txtDrAc"), shown(accounts[2]));
        QCOMPARE(desk.text("txtCrAc") + ' ' + desk.tag("txtCrAc"), shown(accounts[3]));
    }

    void fixedDebitSide_data() {
        QTest::addColumn<QByteArray>("kind");
        for (const QByteArray kind : {"BP", "BR", "CP", "CR", "JV"})
            zel::test::row(kind, kind);
    }

    /// The focus after a line goes to the side that the clerk may still choose.
    void fixedDebitSide() {
        QFETCH(QByteArray, kind);
        Desk desk("update VouSetting set AcCode = '3', AcStatus = 'DR', Fix = 'Y' "
                  "update Accounts set BStatus = 'B'");
        desk.open(kind);
        QVERIFY(desk.add({"", "FEES", "1"}).empty());
        QCOMPARE(focused(), "cmdSelectCr");
    }

    void cashVoucherMovesToTheAccountInTheBox_data() {
        columns<Line, QString, QString>("line", "button", "box");
        zel::test::row("CP", Line{"RENT", "CASH BOX", "10"}, "cmdSelectCr", "txtCrAc");
        zel::test::row("CR", Line{"CASH BOX", "RENT", "10"}, "cmdSelectDr", "txtDrAc");
    }

    void cashVoucherMovesToTheAccountInTheBox() {
        QFETCH(Line, line);
        QFETCH(QString, button);
        QFETCH(QString, box);
        Desk desk;
        desk.open(QTest::currentDataTag());
        desk.add(line);
        desk.push("cmdSave");
        QCOMPARE(desk.text(box.toLatin1()), "CASH BOX");
        desk.choose(button.toLatin1(), "BANK ONE");
        desk.openFromSearch(1);
        QCOMPARE(desk.text(box.toLatin1()), "BANK ONE");
        desk.push("cmdSave");
        compare(desk.office.rows("select AcCode, CrAc from DetJV"), table("4 | 1\n1 | NULL"));
    }

    void headerThatIsGoneAtTheSave_data() {
        QTest::addColumn<QString>("scene");
        for (const char *scene : {"BP opened", "BP not found", "CR opened", "CR not found"})
            zel::test::row(scene, scene);
    }

    void headerThatIsGoneAtTheSave() {
        QFETCH(QString, scene);
        const Ended ended = play(scene);
        QCOMPARE(ended.status, 1);
        QVERIFY2(ended.box.contains("3021"), qPrintable(ended.box + ended.errorStream));
    }
};

int main(int argc, char **argv) {
    tst_voucher_kinds tests;
    Scenes scenes;
    for (const char *kind : {"BP", "BR", "CP", "CR", "JV"}) {
        for (const char *column : {"Naration", "CrAc", "AcCode"})
            scenes[QString("%1 %2").arg(kind, column)] = [kind, column] { openNull(kind, column); };
        scenes[QString("%1 opened").arg(kind)] = [kind] { saveWithoutHeader(kind); };
        scenes[QString("%1 not found").arg(kind)] = [kind] { saveAfterNotFound(kind); };
    }
    return zel::test::run(argc, argv, tests, scenes);
}

#include "tst_voucher_kinds.moc"
