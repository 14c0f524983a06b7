#include "tests/support/facts.h"
#include "tests/vouchers/voucher_desk.h"

#include "shell/module1.h"

using namespace zel;
using namespace zel::test;

namespace {

constexpr const char *Facts = "vouchers/entry.json";

const char *const FixedCredit =
    "update VouSetting set AcCode = '1', AcStatus = 'CR', Fix = 'Y' where VouStatus = 'BP'";

/// The side that the setup fixes stands empty after a cancel: the next line asks for it, at a button that is
/// disabled.
void fixedSideAskedFor() {
    Desk desk("BP", Sql::trusted(FixedCredit));
    desk.push("cmdCancel");
    desk.fill({"RENT", "", "5"});
    if (desk.push("cmdAdd") != QStringList("Please Select Credit Account"))
        qFatal("the fixed side was not asked for");
}

int found() {
    return control<controls::Grid>(form("frmFindAC"), "mshSearch")->Rows();
}

} // namespace

class tst_voucher_entry : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void refusals_data() {
        columns<Line, QString, QString>("line", "message", "focus");
        const char *one = "BANK ONE";
        const char *debit = "Please Select Debit Account";
        const char *same = "same account title not allow, please change debit or cedit Account";
        const char *amount = "please enter Amount";
        for (const QByteArray kind : Kinds) {
            const auto row = [&](const char *name, const Line &line, const char *message, const char *focus) {
                fill(QTest::addRow("%s %s", kind.constData(), name), line, message, focus);
            };
            const char *noDebit = kind == "CR" ? "cmdAdd" : "cmdSelectDr";
            row("no debit account", {"", one, "5"}, debit, noDebit);
            row("neither account", {"", "", "5"}, debit, noDebit);
            row("no credit account", {one, "", "5"}, "Please Select Credit Account",
                kind == "CP" ? "cmdAdd" : "cmdSelectCr");
            row("one account twice", {one, one, "5"}, same, kind == "JV" ? "cmdSelectDr" : "cmdAdd");
            row("no amount", {one, "BANK TWO", ""}, amount, "txtDRCR");
            row("a point", {one, "BANK TWO", "."}, amount, "txtDRCR");
            row("a point and no debit account", {"", one, "."}, debit, noDebit);
            row("nought", {one, "BANK TWO", "0.00"}, amount, "txtDRCR");
        }
    }

    void refusals() {
        const auto [line, message, focus] = fetched<Line, QString, QString>();
        Desk desk(QByteArray(QTest::currentDataTag()).left(2));
        desk.fill(line);
        const std::vector<Box> said = boxesOf([&desk] { click(desk.screen(), "cmdAdd"); }, {QMessageBox::Ok});
        QCOMPARE(said.size(), 1U);
        QCOMPARE(said[0].text, message);
        QCOMPARE(said[0].icon, QMessageBox::Information);
        desk.expect(QString("focus=%1; MshEntry=1; txtDrAc=%2; txtCrAc=%3; txtDRCR=%4")
                        .arg(focus, line.debit, line.credit, line.amount == "." ? "" : line.amount));
    }

    /// The accounts that then stand.
    void boxes_data() { rowsFrom<QString, QString, QString>(Facts); }

    /// What a line that is added, removed or cancelled leaves in the boxes.
    void boxes() {
        const auto [added, removed, cancelled] = fetched<QString, QString, QString>();
        const Line filled{"BANK ONE", "BANK TWO", "9", "8", "n", "7", "6"};
        Desk desk(QTest::currentDataTag());
        desk.date(2020, 2, 29);
        desk.replace("txtPaidTo", "p");
        QVERIFY(desk.add({"BANK ONE", "BANK TWO", "1234567.5", "1", "n", "2", "3"}).empty());
        QCOMPARE(desk.accounts(), added);
        desk.expect("txtDRCR=; txtChecque=; txtBill=; txtFile=; txtGrdRow=; txtNaration=n; txtPaidTo=p; "
                    "focus=cmdSelectDr; lblTotalAmount=Total Amount : 1,234,567.50; txtTotAmount=1234567.50; "
                    "txtTotAmount.visible=false");

        desk.add({"BANK ONE", "BANK TWO", "2"});
        desk.add({"BANK ONE", "BANK TWO", "4"});
        desk.fill(filled);
        desk.grid("MshEntry")->setRow(2);
        desk.push("acmRemove");
        QCOMPARE(desk.accounts(), removed);
        desk.expect(
            "MshEntry=3; lblTotalAmount=Total Amount : 1,234,571.50; txtDRCR=; txtNaration=; txtChecque=8; "
            "txtFile=7; txtBill=6");
        desk.push("acmRemove");
        desk.push("acmRemove");
        desk.expect("MshEntry=1; lblTotalAmount=Total Amount : 0.00");
        desk.push("acmRemove");
        desk.expect("MshEntry=1");

        desk.add({"BANK ONE", "BANK TWO", "1"});
        desk.fill(filled);
        desk.push("cmdCancel");
        QCOMPARE(desk.accounts(), cancelled);
        desk.expect(
            "txtDRCR=; txtChecque=; txtBill=; txtGrdRow=; txtPaidTo=; txtFile=7; txtVoucher=1; MshEntry=1; "
            "DTPicker=29/02/2020; focus=DTPicker");
    }

    void chosenAccount_data() {
        columns<QString, bool, QString>("side", "banksOnly", "focus");
        for (const QByteArray kind : Kinds) {
            fill(QTest::addRow("%s debit", kind.constData()), "Dr", kind == "BR",
                 kind == "JV" ? "cmdSelectCr" : "txtDRCR");
            fill(QTest::addRow("%s credit", kind.constData()), "Cr", kind == "BP", "txtDRCR");
        }
    }

    void chosenAccount() {
        const auto [side, banksOnly, focus] = fetched<QString, bool, QString>();
        const QByteArray button = "cmdSelect" + side.toLatin1();
        Desk desk(QByteArray(QTest::currentDataTag()).left(2));
        control(desk.screen(), button)->setFocus();
        press(Qt::Key_Return);
        QCOMPARE(found(), banksOnly ? 3 : 7);
        QCOMPARE(control(form("frmFindAC"), "chkAll")->isVisible(), banksOnly);
        // Going away without a choice changes nothing and takes the filter back.
        click(form("frmFindAC"), "cmdExit");
        QTRY_VERIFY(!form("frmFindAC"));
        QCOMPARE(shell::gFindFilter, QString());
        QCOMPARE(desk.accounts(), "|");

        desk.choose(button, "BANK TWO");
        QCOMPARE(focused(), focus);
        QCOMPARE(desk.accounts(), side == "Dr" ? "BANK TWO 2|" : "|BANK TWO 2");
        QCOMPARE(shell::gFoundRowID, 0);
        QCOMPARE(shell::gFoundName, QString());
    }

    void setupRow_data() { rowsFrom<QString, QString, QString>(Facts); }

    void setupRow() {
        const auto [setting, accounts, disabled] = fetched<QString, QString, QString>();
        Desk desk(
            nullptr,
            "insert into Accounts (ParentID, Dcode, AcName, AcStatus) values ('1', 1, 'A HEADING', 'HD') "
            "update VouSetting set "_sql +
                Sql::trusted(setting.toStdString()));
        for (const char *kind : Kinds) {
            desk.open(kind);
            QCOMPARE(desk.accounts(), accounts);
            for (const char *side : {"Dr", "Cr"})
                desk.expect(QString("txt%1Ac.enabled=%2; cmdSelect%1.enabled=%2")
                                .arg(side, disabled == side ? "false" : "true"));
        }
    }

    void fixedSide() {
        expectEnd("fixedSideAskedFor", "Error 5:\n\nInvalid procedure call or argument");
        Desk desk("BP", Sql::trusted(FixedCredit));
        desk.add({"RENT", "", "5"});
        QCOMPARE(focused(), "cmdSelectDr");
        desk.push("cmdCancel");
        desk.expect("txtCrAc=; cmdSelectCr.enabled=false");
        click(desk.screen(), "cmdExit");
        QVERIFY(!form("frmBP"));
        desk.open("BP"); // a fresh screen has it again
        desk.expect("txtCrAc=BANK ONE; cmdSelectCr.enabled=false");
    }

    void amountsTyped() {
        Desk desk("BP");
        int line = 0;
        for (const auto &[typed, shown, cell] :
             {std::tuple("1234.5", "1234.5", "1,234.50"),
              {"-12a,3", "123", "123.00"},
              {"1 2", "12", "12.00"},
              {"1.2.3", "1.23", "1.23"},
              {"2.345", "2.345", "2.35"},
              {"123456789012345", "12345678901234", "12,345,678,901,234.00"},
              {".5", ".5", "0.50"}}) {
            desk.fill({"RENT", "BANK ONE", typed});
            QCOMPARE(desk.text("txtDRCR"), shown);
            desk.push("cmdAdd");
            QCOMPARE(desk.grid("MshEntry")->TextMatrix(++line, 3), cell);
        }
    }

    void keysOfTheLineBoxes() {
        Desk desk("BP");
        for (const auto &[box, typed, left] : {std::tuple("txtBill", "a1 2.3-4567890123", "1234567890"),
                                               {"txtFile", "x 9", "9"},
                                               {"txtChecque", "ab C-1'", "ab C-1'"},
                                               {"txtPaidTo", "Mr. d'Souza", "Mr. d'Souza"},
                                               {"txtVoucher", "5", "1"}}) {
            desk.replace(box, typed);
            QCOMPARE(desk.text(box), left);
        }
        desk.save({"RENT", "BANK ONE", "1", "ab C-1'", "it's"});
        QCOMPARE(desk.rows("select PaidReceive from MasJV").value(0), "Mr. d'Souza");
        QCOMPARE(desk.rows("select Naration from DetJV").value(0), "it's");
    }

    void enterWalksTheBoxes() {
        Desk desk("BP");
        for (const char *walk :
             {"DTPicker txtPaidTo cmdSelectCr", "txtDRCR txtChecque txtBill txtFile txtNaration"}) {
            const QStringList boxes = QString(walk).split(' ');
            control(desk.screen(), boxes[0])->setFocus();
            for (const QString &next : boxes.mid(1)) {
                press(Qt::Key_Return);
                QCOMPARE(focused(), next);
            }
        }
        type("a");
        press(Qt::Key_Return);
        type("b");
        desk.expect("txtNaration=a\nb");
        press(Qt::Key_Tab);
        QCOMPARE(focused(), "cmdAdd");
    }

    void dateByKeys_data() { rowsFrom<QString, QString>(Facts); }

    /// F9 saves what is typed, though the date box has not been left.
    void dateByKeys() {
        const auto [typed, date] = fetched<QString, QString>();
        Desk desk("JV");
        desk.add({"RENT", "FEES", "1"});
        desk.date(2026, 2, 15);
        auto *picker = control<controls::DateBox>(desk.screen(), "DTPicker");
        picker->setFocus();
        picker->setSelectedSection(QDateTimeEdit::DaySection);
        type(typed);
        press(Qt::Key_F9);
        settle();
        compare(desk.rows("select VouDate from MasJV union all select VouDate from DetJV"),
                {date, date, date});
    }

    void enterInTheNumberOfANewVoucher() {
        Desk desk("BP");
        desk.add({"RENT", "BANK ONE", "1"});
        QCOMPARE(textsOf([&] { pressOn(desk.screen(), "txtVoucher", Qt::Key_Return); }),
                 QStringList("Voucher not found!"));
        desk.expect("MshEntry=1; txtVoucher=1; focus=DTPicker");
    }

    void enterInTheNumberOfAnOpenedVoucher() {
        Desk desk("JV");
        desk.save({"RENT", "FEES", "1"});
        desk.openFromSearch(1);
        desk.add({"LIGHT", "FEES", "9"});
        desk.replace("txtPaidTo", "unsaved");
        desk.expect("MshEntry=3");
        pressOn(desk.screen(), "txtVoucher", Qt::Key_Return);
        desk.expect("MshEntry=2; txtPaidTo=; cmdDelete.enabled=true");
        desk.push("cmdSave"); // still the same voucher
        QCOMPARE(desk.rows("select VouNo from MasJV").size(), 1);

        desk.openFromSearch(1);
        desk.execute("delete from DetJV");
        pressOn(desk.screen(), "txtVoucher", Qt::Key_Return);
        desk.expect("cmdDelete.enabled=false; MshEntry=2; lblTotalAmount=Total Amount : 1.00");
    }

    /// The voucher of the proposed number is shown, yet what is saved is a new one.
    void enterInTheNumberThatAnotherHasTaken() {
        Desk desk("JV");
        desk.execute("insert into MasJV (VouNo, VouStatus, PaidReceive) values (1, 'JV', 'another')");
        pressOn(desk.screen(), "txtVoucher", Qt::Key_Return);
        QCOMPARE(desk.text("txtPaidTo"), "another");
        desk.save({"RENT", "FEES", "1"});
        compare(desk.rows("select VouNo, TotalAmount from MasJV"), table("1|NULL\n2|1"));
    }

    /// The finder is not modal: it answers for the button that was pressed last.
    void findButtonAimsTheOpenFinder() {
        Desk desk("BP");
        click(desk.screen(), "cmdSelectCr");
        QCOMPARE(found(), 3);
        desk.open("BP");
        desk.choose("cmdSelectDr", "RENT");
        QCOMPARE(desk.accounts(), "RENT 4|");
    }

    /// Texts as long as their columns, with whatever a keyboard gives, come back as they were typed.
    void limits() {
        const QString payee =
            QString("Çelik & Söhne, O'Brien \"Estates\" \u0627\u0631\u062f\u0648 ").leftJustified(100, 'p');
        const QString lines =
            QString("Rent of März\nsecond line; 50% -- it's [late]\n").leftJustified(200, 'n');
        Desk desk("BP");
        desk.replace("txtPaidTo", payee + "more");
        desk.fill({"RENT", "BANK ONE", "1234567890.5", QString(20, 'C') + "more", "", "12345678901",
                   "98765432109"});
        control(desk.screen(), "txtNaration")->setFocus();
        for (const QChar letter : lines + "more")
            letter == '\n' ? press(Qt::Key_Return) : type(letter);
        desk.push("cmdAdd");
        desk.add({"LIGHT", "", "0.004"});
        const QStringList rows = {"RENT|BANK ONE|1,234,567,890.50|" + QString(20, 'C') + '|' + lines +
                                      "|1234567890|9876543210",
                                  "LIGHT|BANK ONE|0.00||||"};
        compare(desk.seen("MshEntry"), rows);
        desk.push("cmdSave");
        desk.openFromSearch(1);
        QCOMPARE(desk.text("txtPaidTo"), payee);
        desk.expect("txtPaidTo.cursorPosition=0; txtCrAc.cursorPosition=0"); // their beginning is seen
        compare(desk.seen("MshEntry"), rows.mid(0, 1));                      // a line of nothing is none
        desk.doubleClick("MshEntry", 1, 1);
        QCOMPARE(text(desk.screen(), "txtNaration"), lines);
        desk.grid("mshSearch")->setFocus();
        desk.toSearch();
    }

    void screensStandBesideEachOther() {
        Desk desk("BP");
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
        Desk desk("JV");
        desk.open("BP");
        for (const auto &[key, rows] : {std::pair(Qt::Key_F8, 7), {Qt::Key_F7, 3}}) {
            control(desk.screen(), "txtDRCR")->setFocus();
            press(key);
            QCOMPARE(found(), rows);
            click(form("frmFindAC"), "cmdExit");
        }
        control(desk.screen(), "txtDRCR")->setFocus();
        QCOMPARE(textsOf([] { press(Qt::Key_F9); }).size(), 1);

        // Nothing is saved or chosen where it can't be seen, and the heading isn't edited.
        desk.add({"RENT", "BANK ONE", "1"});
        desk.toSearch();
        for (const Qt::Key key : {Qt::Key_F7, Qt::Key_F8, Qt::Key_F9})
            press(key);
        settle();
        QVERIFY(!form("frmFindAC"));
        desk.expect("MshEntry=2");
        QVERIFY(desk.rows("select VouNo from MasJV").isEmpty());
        desk.push("cmdCancel");
        pressOn(desk.screen(), "MshEntry", Qt::Key_F2);
        desk.expect("txtGrdRow=");
    }
};

ZEL_TEST_MAIN(tst_voucher_entry, {{"fixedSideAskedFor", fixedSideAskedFor}})

#include "tst_voucher_entry.moc"
