#include "tests/support/rows.h"
#include "tests/vouchers/voucher_desk.h"

#include "shell/module1.h"

using namespace zel;
using namespace zel::test;

namespace {

const char *const NoDebit = "Please Select Debit Account";
const char *const NoCredit = "Please Select Credit Account";
const char *const SameAccount = "same account title not allow, please change debit or cedit Account";
const char *const NoAmount = "please enter Amount";

} // namespace

/// The side that the setup fixes stands empty after a cancel: the next line asks for it, at a button that is
/// disabled.
void fixedSideAskedFor() {
    Desk desk("update VouSetting set AcCode = '1', AcStatus = 'CR', Fix = 'Y' where VouStatus = 'BP'");
    desk.open("BP");
    desk.push("cmdCancel");
    desk.fill({"RENT", "", "5"});
    QCOMPARE(desk.push("cmdAdd").at(0).text, NoCredit);
}

class tst_voucher_entry : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void refusals_data() {
        columns<Line, QString, QString>("line", "message", "focus");

        const QString stays = "cmdAdd";
        const struct {
            const char *kind;
            QString noDebit, noCredit, same;
        } kinds[] = {
            {"BP", "cmdSelectDr", "cmdSelectCr", stays},
            {"BR", "cmdSelectDr", "cmdSelectCr", stays},
            {"CP", "cmdSelectDr", stays, stays},
            {"CR", stays, "cmdSelectCr", stays},
            {"JV", "cmdSelectDr", "cmdSelectCr", "cmdSelectDr"},
        };
        for (const auto &kind : kinds) {
            const auto row = [&](const char *name, const Line &line) -> QTestData & {
                return QTest::addRow("%s %s", kind.kind, name) << line;
            };
            const char *one = "BANK ONE";
            row("no debit account", {"", one, "5"}) << NoDebit << kind.noDebit;
            row("neither account", {"", "", "5"}) << NoDebit << kind.noDebit;
            row("no credit account", {one, "", "5"}) << NoCredit << kind.noCredit;
            row("one account twice", {one, one, "5"}) << SameAccount << kind.same;
            row("no amount", {one, "BANK TWO", ""}) << NoAmount << "txtDRCR";
            row("a point", {one, "BANK TWO", "."}) << NoAmount << "txtDRCR";
            row("a point and no debit account", {"", one, "."}) << NoDebit << kind.noDebit;
            row("nought", {one, "BANK TWO", "0.00"}) << NoAmount << "txtDRCR";
        }
    }

    void refusals() {
        QFETCH(Line, line);
        QFETCH(QString, message);
        QFETCH(QString, focus);
        Desk desk;
        desk.open(QByteArray(QTest::currentDataTag()).left(2));
        const std::vector<Box> said = desk.add(line);
        QCOMPARE(said.size(), 1U);
        QCOMPARE(said[0].text, message);
        QCOMPARE(said[0].icon, QMessageBox::Information);
        QCOMPARE(focused(), focus);
        QCOMPARE(desk.grid("MshEntry")->Rows(), 1);
        QCOMPARE(desk.text("txtDrAc"), line.debit);
        QCOMPARE(desk.text("txtCrAc"), line.credit);
        QCOMPARE(desk.text("txtDRCR"), line.amount == "." ? QString() : line.amount);
    }

    void afterALine_data() {
        columns<QString, QString>("debit", "credit");
        row("BP", "", "BANK TWO");
        row("BR", "BANK ONE", "");
        row("CP", "", "BANK TWO");
        row("CR", "BANK ONE", "");
        row("JV", "BANK ONE", "BANK TWO");
    }

    void afterALine() {
        QFETCH(QString, debit);
        QFETCH(QString, credit);
        Desk desk;
        desk.open(QTest::currentDataTag());
        desk.replace("txtPaidTo", "p");
        QVERIFY(desk.add({"BANK ONE", "BANK TWO", "1234567.5", "1", "n", "2", "3"}).empty());
        QCOMPARE(desk.text("txtDrAc"), debit);
        QCOMPARE(desk.tag("txtDrAc").isEmpty(), debit.isEmpty());
        QCOMPARE(desk.text("txtCrAc"), credit);
        QCOMPARE(desk.tag("txtCrAc").isEmpty(), credit.isEmpty());
        for (const char *name : {"txtDRCR", "txtChecque", "txtBill", "txtFile", "txtGrdRow"})
            QCOMPARE(desk.text(name), QString());
        QCOMPARE(control<controls::MemoBox>(desk.screen(), "txtNaration")->text(), "n");
        QCOMPARE(desk.text("txtPaidTo"), "p");
        QCOMPARE(focused(), "cmdSelectDr");
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 1,234,567.50");
        QVERIFY(!control(desk.screen(), "txtTotAmount")->isVisible());
        QCOMPARE(desk.text("txtTotAmount"), "1234567.50");
    }

    void removingALine_data() {
        QTest::addColumn<bool>("debitEmptied");
        for (const char *kind : {"BP", "BR", "CP", "CR", "JV"})
            zel::test::row(kind, (QByteArray(kind) != "CR"));
    }

    void removingALine() {
        QFETCH(bool, debitEmptied);
        Desk desk;
        desk.open(QTest::currentDataTag());
        desk.add({"BANK ONE", "BANK TWO", "1"});
        desk.add({"BANK ONE", "BANK TWO", "2"});
        desk.add({"BANK ONE", "BANK TWO", "4"});
        desk.fill({"BANK ONE", "BANK TWO", "9", "8", "n", "7", "6"});
        desk.grid("MshEntry")->setRow(2);
        desk.push("acmRemove");
        QCOMPARE(desk.grid("MshEntry")->Rows(), 3);
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 5.00");
        QCOMPARE(desk.text("txtDrAc"), debitEmptied ? "" : "BANK ONE");
        QCOMPARE(desk.tag("txtDrAc"), debitEmptied ? "" : "1");
        QCOMPARE(desk.text("txtCrAc"), debitEmptied ? "BANK TWO" : "");
        QCOMPARE(desk.text("txtDRCR"), "");
        QCOMPARE(control<controls::MemoBox>(desk.screen(), "txtNaration")->text(), "");
        QCOMPARE(desk.text("txtChecque"), "8");
        QCOMPARE(desk.text("txtFile"), "7");
        QCOMPARE(desk.text("txtBill"), "6");
        desk.push("acmRemove");
        desk.push("acmRemove");
        QCOMPARE(desk.grid("MshEntry")->Rows(), 1);
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 0.00");
        desk.push("acmRemove");
        QCOMPARE(desk.grid("MshEntry")->Rows(), 1);
    }

    void cancelling_data() {
        columns<QString, QString>("debit", "credit");
        row("BP", "", "");
        row("BR", "", "");
        row("CP", "", "BANK TWO");
        row("CR", "BANK ONE", "");
        row("JV", "", "");
    }

    void cancelling() {
        QFETCH(QString, debit);
        QFETCH(QString, credit);
        Desk desk;
        desk.open(QTest::currentDataTag());
        desk.date(2020, 2, 29);
        desk.replace("txtPaidTo", "p");
        desk.add({"BANK ONE", "BANK TWO", "1"});
        desk.fill({"BANK ONE", "BANK TWO", "9", "8", "n", "7", "6"});
        desk.push("cmdCancel");
        QCOMPARE(desk.text("txtDrAc"), debit);
        QCOMPARE(desk.tag("txtDrAc"), debit.isEmpty() ? "" : "1");
        QCOMPARE(desk.text("txtCrAc"), credit);
        QCOMPARE(desk.tag("txtCrAc"), credit.isEmpty() ? "" : "2");
        for (const char *name : {"txtDRCR", "txtChecque", "txtBill", "txtGrdRow", "txtPaidTo"})
            QCOMPARE(desk.text(name), QString());
        QCOMPARE(desk.text("txtFile"), "7");
        QCOMPARE(desk.text("txtVoucher"), "1");
        QCOMPARE(desk.grid("MshEntry")->Rows(), 1);
        QCOMPARE(control<controls::DateBox>(desk.screen(), "DTPicker")->Value(), QDate(2020, 2, 29));
        QCOMPARE(focused(), "DTPicker");
    }

    void chosenAccount_data() {
        columns<QString, bool, QString>("button", "banksOnly", "focus");
        zel::test::row("BP debit", "cmdSelectDr", false, "txtDRCR");
        zel::test::row("BP credit", "cmdSelectCr", true, "txtDRCR");
        zel::test::row("BR debit", "cmdSelectDr", true, "txtDRCR");
        zel::test::row("BR credit", "cmdSelectCr", false, "txtDRCR");
        zel::test::row("CP debit", "cmdSelectDr", false, "txtDRCR");
        zel::test::row("CP credit", "cmdSelectCr", false, "txtDRCR");
        zel::test::row("CR debit", "cmdSelectDr", false, "txtDRCR");
        zel::test::row("CR credit", "cmdSelectCr", false, "txtDRCR");
        zel::test::row("JV debit", "cmdSelectDr", false, "cmdSelectCr");
        zel::test::row("JV credit", "cmdSelectCr", false, "txtDRCR");
    }

    void chosenAccount() {
        QFETCH(QString, button);
        QFETCH(bool, banksOnly);
        QFETCH(QString, focus);
        const QByteArray name = button.toLatin1();
        Desk desk;
        desk.open(QByteArray(QTest::currentDataTag()).left(2));
        control(desk.screen(), button)->setFocus();
        press(Qt::Key_Return);
        QWidget *finder = form("frmFindAC");
        QVERIFY(finder);
        QCOMPARE(control<controls::Grid>(finder, "mshSearch")->Rows(), banksOnly ? 3 : 7);
        QCOMPARE(control(finder, "chkAll")->isVisible(), banksOnly);
        // Going away without a choice changes nothing and takes the filter back.
        click(finder, "cmdExit");
        QTRY_VERIFY(!form("frmFindAC"));
        QCOMPARE(shell::gFindFilter, QString());
        QCOMPARE(desk.text("txtDrAc") + desk.text("txtCrAc"), QString());

        desk.choose(name, "BANK TWO");
        QCOMPARE(focused(), focus);
        QCOMPARE(desk.text(button == "cmdSelectDr" ? "txtDrAc" : "txtCrAc"), "BANK TWO");
        QCOMPARE(desk.text(button == "cmdSelectDr" ? "txtCrAc" : "txtDrAc"), QString());
        QCOMPARE(shell::gFoundRowID, 0);
        QCOMPARE(shell::gFoundName, QString());
    }

    void setupRow_data() {
        columns<QString, QString, QString, QString>("setting", "debit", "credit", "free");
        row("credit, free", "AcCode = '1', AcStatus = 'CR', Fix = 'N'", "", "BANK ONE", "both");
        row("credit, fixed", "AcCode = '1', AcStatus = 'CR', Fix = 'Y'", "", "BANK ONE", "debit");
        row("debit, fixed", "AcCode = '4', AcStatus = 'DR', Fix = 'Y'", "RENT", "", "credit");
        row("no side", "AcCode = '4', AcStatus = null, Fix = 'Y'", "", "", "both");
        row("account gone, fixed", "AcCode = '99', AcStatus = 'CR', Fix = 'Y'", "", "", "debit");
        row("a heading", "AcCode = '7', AcStatus = 'DR', Fix = 'N'", "", "", "both");
        row("no account", "AcCode = '', AcStatus = 'CR', Fix = 'N'", "", "", "both");
    }

    void setupRow() {
        QFETCH(QString, setting);
        QFETCH(QString, debit);
        QFETCH(QString, credit);
        QFETCH(QString, free);
        Desk desk(
            "insert into Accounts (ParentID, Dcode, AcName, AcStatus) values ('1', 1, 'A HEADING', 'HD') "
            "update VouSetting set "_sql +
            Sql::trusted(setting.toStdString()));
        for (const char *kind : {"BP", "BR", "CP", "CR", "JV"}) {
            desk.open(kind);
            QCOMPARE(desk.text("txtDrAc"), debit);
            QCOMPARE(desk.text("txtCrAc"), credit);
            QCOMPARE(desk.tag("txtDrAc"), debit.isEmpty() ? "" : QString::number(accountId(debit)));
            QCOMPARE(desk.tag("txtCrAc"), credit.isEmpty() ? "" : QString::number(accountId(credit)));
            QCOMPARE(desk.enabled("txtDrAc"), free != "credit");
            QCOMPARE(desk.enabled("cmdSelectDr"), free != "credit");
            QCOMPARE(desk.enabled("txtCrAc"), free != "debit");
            QCOMPARE(desk.enabled("cmdSelectCr"), free != "debit");
        }
    }

    void fixedSideIsEmptyAfterCancelAndEndsTheProgram() {
        const Ended ended = play("fixedSideAskedFor");
        QCOMPARE(ended.status, 1);
        QVERIFY2(ended.box.contains("5") && ended.box.contains("Invalid procedure call or argument"),
                 qPrintable(ended.box + ended.errorStream));
    }

    void fixedSideComesBackWithAFreshScreen() {
        Desk desk("update VouSetting set AcCode = '1', AcStatus = 'CR', Fix = 'Y' where VouStatus = 'BP'");
        desk.open("BP");
        desk.add({"RENT", "", "5"});
        QCOMPARE(focused(), "cmdSelectDr");
        desk.push("cmdCancel");
        QCOMPARE(desk.text("txtCrAc"), "");
        QVERIFY(!desk.enabled("cmdSelectCr"));
        click(desk.screen(), "cmdExit");
        QVERIFY(!form("frmBP"));
        desk.open("BP");
        QCOMPARE(desk.text("txtCrAc"), "BANK ONE");
        QVERIFY(!desk.enabled("cmdSelectCr"));
    }

    void amountsTyped_data() {
        columns<QString, QString, QString>("typed", "shown", "cell");
        row("plain", "1234.5", "1234.5", "1,234.50");
        row("letters and a sign", "-12a,3", "123", "123.00");
        row("blanks", "1 2", "12", "12.00");
        row("second point", "1.2.3", "1.23", "1.23");
        row("half a hundredth", "2.345", "2.345", "2.35");
        row("fourteen characters", "123456789012345", "12345678901234", "12,345,678,901,234.00");
        row("begins with a point", ".5", ".5", "0.50");
    }

    void amountsTyped() {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(QString, cell);
        Desk desk;
        desk.open("BP");
        desk.fill({"RENT", "BANK ONE", typed});
        QCOMPARE(desk.text("txtDRCR"), shown);
        desk.push("cmdAdd");
        QCOMPARE(desk.grid("MshEntry")->TextMatrix(1, 3), cell);
    }

    void keysOfTheLineBoxes() {
        Desk desk;
        desk.open("BP");
        desk.replace("txtBill", "a1 2.3-4567890123");
        QCOMPARE(desk.text("txtBill"), "1234567890");
        desk.replace("txtFile", "x 9");
        QCOMPARE(desk.text("txtFile"), "9");
        desk.replace("txtChecque", "ab C-1'");
        QCOMPARE(desk.text("txtChecque"), "ab C-1'");
        desk.replace("txtPaidTo", "Mr. d'Souza");
        QCOMPARE(desk.text("txtPaidTo"), "Mr. d'Souza");
        control(desk.screen(), "txtVoucher")->setFocus();
        type("5");
        QCOMPARE(desk.text("txtVoucher"), "1");
        desk.add({"RENT", "BANK ONE", "1", "ab C-1'", "it's"});
        desk.replace("txtPaidTo", "Mr. d'Souza");
        desk.push("cmdSave");
        QCOMPARE(desk.office.rows("select PaidReceive from MasJV").value(0), "Mr. d'Souza");
        QCOMPARE(desk.office.rows("select Naration from DetJV").value(0), "it's");
    }

    void enterWalksTheBoxes() {
        Desk desk;
        desk.open("BP");
        control(desk.screen(), "DTPicker")->setFocus();
        for (const char *next : {"txtPaidTo", "cmdSelectCr"}) {
            press(Qt::Key_Return);
            QCOMPARE(focused(), next);
        }
        control(desk.screen(), "txtDRCR")->setFocus();
        for (const char *next : {"txtChecque", "txtBill", "txtFile", "txtNaration"}) {
            press(Qt::Key_Return);
            QCOMPARE(focused(), next);
        }
        type("a");
        press(Qt::Key_Return);
        type("b");
        QCOMPARE(control<controls::MemoBox>(desk.screen(), "txtNaration")->text(), "a\nb");
        press(Qt::Key_Tab);
        QCOMPARE(focused(), "cmdAdd");
    }

    void dateByKeys_data() {
        columns<QString, QString>("typed", "date");
        row("whole", "29022024", "29/02/2024");
        row("a day that the month shown lacks", "31122025", "31/12/2025");
        row("with strokes", "05/03/2027", "05/03/2027");
        row("one digit, with points", "5.3.2027", "05/03/2027");
        row("the day and the month", "3103", "31/03/2026");
        row("the day alone, one digit of two", "3", "03/02/2026");
        row("no such day", "31022026", "28/02/2026");
    }

    /// F9 saves what is typed, though the date box has not been left.
    void dateByKeys() {
        QFETCH(QString, typed);
        QFETCH(QString, date);
        Desk desk;
        desk.open("JV");
        desk.add({"RENT", "FEES", "1"});
        desk.date(2026, 2, 15);
        auto *picker = control<controls::DateBox>(desk.screen(), "DTPicker");
        picker->setFocus();
        picker->setSelectedSection(QDateTimeEdit::DaySection);
        type(typed);
        press(Qt::Key_F9);
        settle();
        compare(desk.office.rows("select VouDate from MasJV"), {date});
        compare(desk.office.rows("select VouDate from DetJV"), {date, date});
    }

    void enterInTheNumberOfANewVoucher() {
        Desk desk;
        desk.open("BP");
        desk.add({"RENT", "BANK ONE", "1"});
        control(desk.screen(), "txtVoucher")->setFocus();
        const std::vector<Box> said = Desk::boxes([] { press(Qt::Key_Return); });
        QCOMPARE(said.size(), 1U);
        QCOMPARE(said[0].text, "Voucher not found!");
        QCOMPARE(desk.grid("MshEntry")->Rows(), 1);
        QCOMPARE(desk.text("txtVoucher"), "1");
        QCOMPARE(focused(), "DTPicker");
    }

    void enterInTheNumberOfAnOpenedVoucher() {
        Desk desk;
        desk.open("JV");
        desk.add({"RENT", "FEES", "1"});
        desk.push("cmdSave");
        desk.openFromSearch(1);
        desk.add({"LIGHT", "FEES", "9"});
        desk.replace("txtPaidTo", "unsaved");
        QCOMPARE(desk.grid("MshEntry")->Rows(), 3);
        control(desk.screen(), "txtVoucher")->setFocus();
        press(Qt::Key_Return);
        QCOMPARE(desk.grid("MshEntry")->Rows(), 2);
        QCOMPARE(desk.text("txtPaidTo"), "");
        QVERIFY(desk.enabled("cmdDelete"));
        desk.push("cmdSave"); // still the same voucher
        QCOMPARE(desk.office.rows("select VouNo from MasJV").size(), 1);
    }

    /// The voucher of the proposed number is shown, yet what is saved is a new one.
    void enterInTheNumberThatAnotherHasTaken() {
        Desk desk;
        desk.open("JV");
        desk.office.execute("insert into MasJV (VouNo, VouStatus, PaidReceive) values (1, 'JV', 'another')");
        control(desk.screen(), "txtVoucher")->setFocus();
        press(Qt::Key_Return);
        QCOMPARE(desk.text("txtPaidTo"), "another");
        desk.add({"RENT", "FEES", "1"});
        desk.push("cmdSave");
        compare(desk.office.rows("select VouNo, TotalAmount from MasJV"), table("1|NULL\n2|1"));
    }

    void enterInTheNumberWhenTheLinesAreGone() {
        Desk desk;
        desk.open("JV");
        desk.add({"RENT", "FEES", "1"});
        desk.push("cmdSave");
        desk.openFromSearch(1);
        desk.office.execute("delete from DetJV");
        control(desk.screen(), "txtVoucher")->setFocus();
        press(Qt::Key_Return);
        QVERIFY(!desk.enabled("cmdDelete"));
        QCOMPARE(desk.grid("MshEntry")->Rows(), 2);
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 1.00");
    }

    /// The finder is not modal: it answers for the button that was pressed last.
    void findButtonAimsTheOpenFinder() {
        Desk desk;
        desk.open("BP");
        click(desk.screen(), "cmdSelectCr");
        QCOMPARE(control<controls::Grid>(form("frmFindAC"), "mshSearch")->Rows(), 3);
        desk.open("BP");
        desk.choose("cmdSelectDr", "RENT");
        QCOMPARE(desk.text("txtDrAc"), "RENT");
        QCOMPARE(desk.text("txtCrAc"), "");
    }

    void headingIsNotEdited() {
        Desk desk;
        desk.open("BP");
        desk.grid("MshEntry")->setFocus();
        press(Qt::Key_F2);
        QCOMPARE(desk.text("txtGrdRow"), "");
    }

    /// Texts as long as their columns, with whatever a keyboard gives, come back as they were typed.
    void limits() {
        const QString payee =
            QString("Çelik & Söhne, O'Brien \"Estates\" \u0627\u0631\u062f\u0648 ").leftJustified(100, 'p');
        const QString lines =
            QString("Rent of März\nsecond line; 50% -- it's [late]\n").leftJustified(200, 'n');
        Desk desk;
        desk.open("BP");
        desk.replace("txtPaidTo", payee + "more");
        desk.choose("cmdSelectDr", "RENT");
        desk.choose("cmdSelectCr", "BANK ONE");
        desk.replace("txtDRCR", "1234567890.5");
        desk.replace("txtChecque", QString(20, 'C') + "more");
        control(desk.screen(), "txtNaration")->setFocus();
        for (const QChar letter : lines + "more")
            letter == '\n' ? press(Qt::Key_Return) : type(letter);
        desk.replace("txtFile", "12345678901");
        desk.replace("txtBill", "98765432109");
        desk.push("cmdAdd");
        desk.add({"LIGHT", "", "0.004"});
        settle();
        picture(desk.screen(), "frmBP-long-texts");
        const QStringList rows = {"RENT|BANK ONE|1,234,567,890.50|" + QString(20, 'C') + '|' + lines +
                                      "|1234567890|9876543210",
                                  "LIGHT|BANK ONE|0.00||||"};
        compare(desk.seen("MshEntry"), rows);
        desk.push("cmdSave");
        desk.openFromSearch(1);
        QCOMPARE(desk.text("txtPaidTo"), payee);
        QCOMPARE(desk.box("txtPaidTo")->cursorPosition(), 0); // its beginning is seen
        QCOMPARE(desk.box("txtCrAc")->cursorPosition(), 0);
        compare(desk.seen("MshEntry"), rows.mid(0, 1)); // a line of nothing is none
        desk.doubleClick("MshEntry", 1, 1);
        QCOMPARE(text(desk.screen(), "txtNaration"), lines);
        desk.grid("mshSearch")->setFocus();
        turnTo(desk.screen(), "SSTab1", 1);
        settle();
        picture(desk.screen(), "frmBP-search-long-texts");
    }

    void kindBoxHandsTheFocusOn_data() {
        QTest::addColumn<QString>("focus");
        for (const char *kind : {"BP", "BR", "CP", "CR", "JV"})
            zel::test::row(kind, (QByteArray(kind) == "CP" ? "txtVouStatus" : "DTPicker"));
    }

    void kindBoxHandsTheFocusOn() {
        QFETCH(QString, focus);
        Desk desk;
        desk.open(QTest::currentDataTag());
        QCOMPARE(desk.text("txtVouStatus"), QTest::currentDataTag());
        control(desk.screen(), "txtPaidTo")->setFocus();
        QTest::mouseClick(control(desk.screen(), "txtVouStatus"), Qt::LeftButton);
        QCOMPARE(focused(), focus);
    }

    void screensStandBesideEachOther() {
        Desk desk;
        desk.open("BP");
        desk.replace("txtPaidTo", "bank");
        desk.open("JV");
        desk.replace("txtPaidTo", "journal");
        desk.open("BP");
        QCOMPARE(desk.text("txtPaidTo"), "bank");
        click(desk.screen(), "cmdExit");
        QTRY_VERIFY(!form("frmBP"));
        QVERIFY(form("frmJV"));
        desk.open("BP");
        QCOMPARE(desk.text("txtPaidTo"), "");
    }

    void plainKeysForTheButtonsOfOneLetter() {
        Desk desk;
        desk.open("JV");
        desk.open("BP");
        control(desk.screen(), "txtDRCR")->setFocus();
        press(Qt::Key_F8);
        QCOMPARE(control<controls::Grid>(form("frmFindAC"), "mshSearch")->Rows(), 7);
        click(form("frmFindAC"), "cmdExit");
        control(desk.screen(), "txtDRCR")->setFocus();
        press(Qt::Key_F7);
        QCOMPARE(control<controls::Grid>(form("frmFindAC"), "mshSearch")->Rows(), 3);
        click(form("frmFindAC"), "cmdExit");
        control(desk.screen(), "txtDRCR")->setFocus();
        QCOMPARE(Desk::boxes([] { press(Qt::Key_F9); }).size(), 1U);

        // Nothing is saved or chosen where it can't be seen.
        desk.add({"RENT", "BANK ONE", "1"});
        turnTo(desk.screen(), "SSTab1", 1);
        for (const Qt::Key key : {Qt::Key_F7, Qt::Key_F8, Qt::Key_F9})
            press(key);
        settle();
        QVERIFY(!form("frmFindAC"));
        QCOMPARE(desk.grid("MshEntry")->Rows(), 2);
        QVERIFY(desk.office.rows("select VouNo from MasJV").isEmpty());
    }
};

int main(int argc, char **argv) {
    tst_voucher_entry tests;
    return zel::test::run(argc, argv, tests, {{"fixedSideAskedFor", fixedSideAskedFor}});
}

#include "tst_voucher_entry.moc"
