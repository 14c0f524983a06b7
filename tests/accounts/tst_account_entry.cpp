#include "platform/controls/focus.h"
#include "tests/accounts/account_screen.h"
#include "tests/support/facts.h"
#include "tests/support/test_program.h"

#include <QLineEdit>
#include <QtTest>

using namespace zel;
using namespace zel::test;

static constexpr const char *Facts = "accounts/entry.json";

class TestAccountEntry : public QObject {
    Q_OBJECT

    std::unique_ptr<Office> office;
    QWidget *screen = nullptr;

    void open(bool withChart) {
        if (withChart)
            office->execute(smallChart());
        office->logIn();
        screen = openByMenu("mnuChartOfAC", "frmAccount");
    }
    QStringList save() {
        return textsOf([this] { pressOn(screen, "cmdCreateAc", Qt::Key_F9); }, {QMessageBox::Ok});
    }

private Q_SLOTS:
    void init() {
        setAccountScreens();
        office = std::make_unique<Office>();
    }
    void cleanup() { office.reset(); }

    /// From the empty chart to the tenth child, each account under the one that stands selected.
    void creation() {
        open(false);
        QCOMPARE(tree(screen)->nodes().size(), 0);
        click(screen, "cmdCreateAc");
        QCOMPARE(focused(), "txtAcDes");
        type("assets");
        QCOMPARE(save(), QStringList("please select any one type or create a control account "));
        expect(screen, "txtAcDes=ASSETS; mshSearch=2");

        click(screen, "chkHead");
        typeInto(screen, "txtOrder", "1 x2");
        QCOMPARE(save(), QStringList());
        press(Qt::Key_F9); // saves, and so begins no new account
        expect(screen, "cmdCreateAc=&New");

        click(screen, "cmdCreateAc");
        expect(screen, "txtAcDes=ASSETS; txtSubControl=ASSETS; focus=txtSubControl");
        typeInto(screen, "txtSubControl", "cash in hand");
        QCOMPARE(save(), QStringList());

        clickNode(screen, "1.1");
        click(screen, "cmdCreateAc");
        expect(screen, "txtAcDes=ASSETS; txtSubControl=CASH IN HAND; focus=txtSubsidiary");
        type("petty cash");
        QCOMPARE(save(), QStringList());
        // The tree stands open at the new account, and the next one goes beside it.
        expect(screen, "txtSubControl=CASH IN HAND");
        for (int number = 2; number <= 10; ++number) {
            clickNode(screen, "1");
            click(screen, "cmdCreateAc");
            typeInto(screen, "txtSubControl", "sub " + QString::number(number));
            QCOMPARE(save(), QStringList());
        }
        QVERIFY(tree(screen)->node("'1'")->isExpanded());
        QStringList keys;
        for (const controls::TreeNode *node : tree(screen)->nodes())
            keys << node->Key();
        QCOMPARE(keys.mid(0, 5), QStringList({"'1'", "'1.1'", "'1.1.1'", "'1.10'", "'1.2'"}));

        clickNode(screen, "1");
        click(screen, "chkHead");
        click(screen, "cmdCreateAc");
        type("income");
        QCOMPARE(save(), QStringList());
        QCOMPARE(
            office->rows("select AcStatus,ParentID,Dcode,AcNodes,AcName,OrderStatus,OpenBal from Accounts "
                         "where Dcode in (0,1,10) order by RowID"),
            QStringList({"HH|1|0|1|ASSETS|12|NULL", "HD|1|1|1.1|CASH IN HAND|NULL|NULL",
                         "DD|1.1|1|1.1.1|PETTY CASH|NULL|NULL", "HD|1|10|1.10|SUB 10|NULL|NULL",
                         "HH|2|0|2|INCOME|NULL|NULL"}));
    }

    /// Numbers that fell free at the end are given again, gaps are not filled.
    void numbers_data() {
        columns<QString, QString>("gone", "code");
        row("nothing gone", "", "1.1.3");
        row("the last one", "1.1.2", "1.1.2");
        row("one in the middle", "1.1.1", "1.1.3");
    }
    void numbers() {
        const auto [gone, code] = fetched<QString, QString>();
        office->execute(smallChart());
        office->execute("delete from Accounts where AcNodes='"_sql + gone + "'");
        open(false);
        clickNode(screen, "1.1");
        click(screen, "cmdCreateAc");
        type("one more");
        save();
        QCOMPARE(office->rows("select AcNodes from Accounts where AcName='ONE MORE'"), QStringList(code));
    }

    void refused_data() {
        columns<QString, bool, QString>("node", "cancelFirst", "message");
        row("a control account without a title", "1", false,
            "Account Titel is already exitis, please change Account Title");
        row("nothing selected, no title", "", false, "please enter Account Title");
        row("a subsidiary after Cancel", "1.1.1", true, "please enter Account Title");
    }
    void refused() {
        const auto [node, cancelFirst, message] = fetched<QString, bool, QString>();
        open(true);
        if (!node.isEmpty())
            clickNode(screen, node);
        if (cancelFirst)
            click(screen, "cmdCancel");
        if (node == "1")
            QVERIFY(editByPopup(screen, node));
        if (node == "1")
            typeInto(screen, "txtAcDes", "hillbank");
        else
            click(screen, "cmdCreateAc");
        QCOMPARE(text(screen, "cmdCreateAc"), "&Save");
        QCOMPARE(save(), QStringList(message));
        QCOMPARE(text(screen, "cmdCreateAc"), "&Save");
        QCOMPARE(office->rows("select count(*) from Accounts"), QStringList("5"));
    }

    void duplicates_data() { rowsFrom<QString, bool, QString, QString, bool>(Facts); }
    void duplicates() {
        const auto [node, isNew, box, title, taken] = fetched<QString, bool, QString, QString, bool>();
        open(true);
        clickNode(screen, node);
        if (box == "txtAcDes")
            click(screen, "chkHead");
        if (isNew)
            click(screen, "cmdCreateAc");
        typeInto(screen, box, title);
        const QStringList expected =
            taken ? QStringList("Account Titel is already exitis, please change Account Title")
                  : QStringList();
        QCOMPARE(save(), expected);
        if (taken)
            QCOMPARE(screen->focusWidget()->objectName(), box); // the platform may give the window back later
        QCOMPARE(office->rows("select AcName from Accounts where AcName='"_sql + title + "'").isEmpty(),
                 taken && title != "assets" && title != "hill bank");
    }

    /// What one keystroke sequence in one control leaves in one column of 1.1.1.
    void detail_data() { rowsFrom<QString, QString, QString, QString>(Facts); }
    void detail() {
        const auto [box, typed, column, stored] = fetched<QString, QString, QString, QString>();
        open(true);
        clickNode(screen, "1.1.1");
        QVERIFY(isShown(screen, "frmEntry"));
        if (auto *masked = qobject_cast<QLineEdit *>(control(screen, box));
            box == "txt_Gstno" || box == "txt_Ntnno") {
            controls::SetFocus(masked);
            masked->selectAll();
            press(Qt::Key_Delete);
            masked->setCursorPosition(0);
            type(typed);
        } else {
            typeInto(screen, box, "");
            type(typed);
        }
        if (stored == "FAILS") {
            QCOMPARE(text(screen, box), "1.2-34");
            return;
        }
        QCOMPARE(save(), QStringList());
        QCOMPARE(office->rows("select "_sql + Sql::trusted(column.toStdString()) +
                              " from Accounts where AcNodes='1.1.1'"),
                 QStringList(stored));
        QCOMPARE(text(screen, "cmdCreateAc"), "&Save");
        QCOMPARE(currentKey(screen), "'1.1.1'");
    }

    void ticks_data() {
        columns<QStringList, QString>("clicked", "stored");
        row("bank as it was", QStringList(), "B");
        row("bank cleared", QStringList("chkBank"), "NULL");
        row("supplier takes over", QStringList("chkSupplier"), "S");
        row("and back", QStringList({"chkSupplier", "chkBank"}), "B");
    }
    void ticks() {
        const auto [clicked, stored] = fetched<QStringList, QString>();
        open(true);
        clickNode(screen, "1.1.1");
        for (const QString &box : clicked)
            click(screen, box);
        save();
        QCOMPARE(office->rows("select BStatus from Accounts where AcNodes='1.1.1'"), QStringList(stored));
        // A new subsidiary starts with the ticks of the one last shown.
        clickNode(screen, "1.1");
        click(screen, "cmdCreateAc");
        type("another");
        save();
        QCOMPARE(office->rows("select BStatus from Accounts where AcName='ANOTHER'"), QStringList(stored));
    }

    void shownAccount() {
        open(true);
        clickNode(screen, "1.1.1");
        expect(screen,
               "txtAcDes=ASSETS; txtSubControl=BANKS; txtSubsidiary=CITY BANK; txt_OpenBal=-1250.5; "
               "dtpOpening=01/07/2024; txtContactPerson=MR A; txt_address=4 Mall Road; txtAdd2=2nd floor; "
               "txt_telno=042-1; txt_faxno=042-2; txt_email=a@b.pk; txt_website=b.pk; txtLocation=LAHORE; "
               "txt_Gstno.displayText=12-34-5678-901-23; txt_Ntnno.displayText=1234567-8; cmdCreateAc=&Save; "
               "chkBank.checked=true");
        turnTo(screen, "SSTab", 1);
        turnTo(screen, "SSTab", 0);
        clickNode(screen, "1.1.2");
        expect(screen, "txt_OpenBal=; txt_Gstno.displayText=__-__-____-___-__; chkBank.checked=false");
        clickNode(screen, "1");
        expect(screen, "txtOrder=5");
        QVERIFY(!isShown(screen, "frmEntry") && !isShown(screen, "txtSubControl"));
    }

    void edit_data() {
        columns<QString, QString, QString>("node", "order", "stored");
        row("control account, order", "1", "7", "FIXED ASSETS|7");
        row("control account, order emptied", "1", "", "FIXED ASSETS|NULL");
        row("sub-control account", "1.1", "-", "FIXED ASSETS|NULL");
        row("a subsidiary has no menu", "1.1.1", "-", "CITY BANK|NULL");
    }
    void edit() {
        const auto [node, order, stored] = fetched<QString, QString, QString>();
        open(true);
        QCOMPARE(editByPopup(screen, node), node != "1.1.1");
        const bool isControl = node == "1";
        if (node != "1.1.1") {
            QCOMPARE(focused(), isControl ? "txtAcDes" : "txtSubControl");
            typeInto(screen, isControl ? "txtAcDes" : "txtSubControl", "fixed assets");
        }
        if (isControl)
            typeInto(screen, "txtOrder", order);
        QCOMPARE(text(screen, "cmdCreateAc"), "&Save");
        QCOMPARE(save(), QStringList());
        QCOMPARE(office->rows("select AcName,OrderStatus from Accounts where AcNodes='"_sql + node + "'"),
                 QStringList(stored));
        QCOMPARE(text(screen, "cmdCreateAc"), node == "1.1.1" ? "&Save" : "&New");
        QCOMPARE(currentKey(screen), "'" + node + "'");
        QTRY_COMPARE(focused(), "lstTree");
    }

    void keys_data() { rowsFrom<QString, QString, QString>(Facts); }
    void keys() {
        const auto [typed, left, next] = fetched<QString, QString, QString>();
        const QString box = QTest::currentDataTag();
        open(true);
        if (box == "txtAcDes" || box == "txtOrder")
            editByPopup(screen, "1");
        else
            clickNode(screen, "1.1.1");
        typeInto(screen, box, typed);
        QCOMPARE(text(screen, box), left);
        press(Qt::Key_Return);
        QCOMPARE(focused(), next);
    }

    void failures() {
        for (const char *scene : {"in a new title", "in a changed title", "in the search"})
            expectEnd(scene, "Error 105:");
    }
};

namespace {

/// An apostrophe typed into a box whose text goes into a statement ends the program.
void apostrophe(const QString &node, const QString &box, bool save) {
    setAccountScreens();
    Office office;
    office.execute(smallChart());
    office.logIn();
    QWidget *screen = openByMenu("mnuChartOfAC", "frmAccount");
    if (node == "1") {
        editByPopup(screen, node);
    } else if (!node.isEmpty()) {
        clickNode(screen, node);
        click(screen, "cmdCreateAc");
    } else {
        turnTo(screen, "SSTab", 1);
    }
    typeInto(screen, box, "o'neil");
    if (save)
        click(screen, "cmdCreateAc");
}

} // namespace

ZEL_TEST_MAIN(TestAccountEntry, {{"in a new title", [] { apostrophe("1.1", "txtSubsidiary", true); }},
                                 {"in a changed title", [] { apostrophe("1", "txtAcDes", true); }},
                                 {"in the search", [] { apostrophe({}, "txtFindAC", false); }}})

#include "tst_account_entry.moc"
