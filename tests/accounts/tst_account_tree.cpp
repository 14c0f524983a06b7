#include "shell/module1.h"
#include "tests/accounts/account_screen.h"
#include "tests/support/facts.h"
#include "tests/support/test_program.h"

#include <QtTest>

using namespace zel;
using namespace zel::test;

static constexpr const char *Facts = "accounts/tree.json";

/// The tree, deleting, the search tab and the ways out of the screen.
class TestAccountTree : public QObject {
    Q_OBJECT

    std::unique_ptr<Office> office;
    QWidget *screen = nullptr;

    void open() {
        office->logIn();
        screen = openByMenu("mnuChartOfAC", "frmAccount");
    }
    QStringList list() { return columnOf(screen, "mshSearch", 1); } // its codes

private Q_SLOTS:
    void init() {
        setAccountScreens();
        office = std::make_unique<Office>();
        office->execute(smallChart());
    }
    void cleanup() { office.reset(); }

    void nodes() {
        office->execute(
            "insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus) values "
            "('1 ',10,'1.10 ','STOCK','HD'), ('1',2,'1.2','DEBTORS','HD'), ('9',2,'9.2','NEITHER','XX')");
        open();
        QCOMPARE(focused(), "lstTree");
        QStringList shown;
        for (const controls::TreeNode *at : tree(screen)->nodes()) {
            const auto *parent = static_cast<controls::TreeNode *>(at->parent());
            shown << (parent ? parent->Key() : QString()) + " " + at->Key() + " " + at->text(0) + " " +
                         at->Tag;
            QVERIFY(!at->isExpanded() && !at->icon(0).isNull());
        }
        QCOMPARE(shown, QStringList({" '1' ASSETS 1", "'1' '1.1' BANKS 2", "'1.1' '1.1.1' CITY BANK 3",
                                     "'1.1' '1.1.2' HILL BANK 4", "'1' '1.10' STOCK 6", "'1' '1.2' DEBTORS 7",
                                     " '2' INCOME 5"}));
    }

    /// Opening and closing a node shows it, without its frame and with nothing to type in.
    void openAndClose() {
        open();
        clickNode(screen, "1.1.1");
        QVERIFY(isShown(screen, "frmEntry"));
        tree(screen)->select(node(screen, "1.1"));
        pressOn(screen, "lstTree", Qt::Key_Left);
        QVERIFY(!node(screen, "1.1")->isExpanded());
        expect(screen,
               "txtSubControl=BANKS; txtAcDes=ASSETS; txtSubsidiary=; txtFindParent=2; cmdCreateAc=&New");
        QVERIFY(!isShown(screen, "frmEntry"));
        tree(screen)->select(node(screen, "1"));
        pressOn(screen, "lstTree", Qt::Key_Left);
        press(Qt::Key_Right);
        expect(screen, "txtAcDes=ASSETS; txtOrder=5; txtAcDes.enabled=false; txtOrder.enabled=false; "
                       "txtSubControl.enabled=false");
    }

    /// The keys that move the highlight choose the account, as a click does.
    void keysChoose_data() {
        columns<Qt::Key, QString>("key", "code");
        row("Down", Qt::Key_Down, "1.1.2");
        row("Up", Qt::Key_Up, "1.1");
        row("Left", Qt::Key_Left, "1.1");
        row("End", Qt::Key_End, "2");
        row("Home", Qt::Key_Home, "1");
        row("a letter", Qt::Key_H, "1.1.2");
    }
    void keysChoose() {
        const auto [key, code] = fetched<Qt::Key, QString>();
        open();
        clickNode(screen, "1.1.1");
        press(key);
        QCOMPARE(currentKey(screen), "'" + code + "'");
        QCOMPARE(text(screen, "txtFindParent"), node(screen, code)->Tag);
        QCOMPARE(isShown(screen, "frmEntry"), code == "1.1.2");
        // What Delete then removes is the account that the key chose.
        QStringList left = office->rows("select AcNodes from Accounts");
        if (code == "1.1.2" || code == "2") // the others have accounts below them
            left.removeOne(code);
        (void)textsOf([this] { click(screen, "Command3"); }, {QMessageBox::Yes});
        QCOMPARE(office->rows("select AcNodes from Accounts"), left);
    }

    void remove_data() { rowsFrom<QString, QString, QString>(Facts); }
    void remove() {
        const auto [prepared, code, answer] = fetched<QString, QString, QString>();
        office->execute(Sql::trusted(prepared.toStdString()));
        open();
        if (!code.isEmpty())
            clickNode(screen, code);
        const QStringList present = office->rows("select count(*) from Accounts");
        const auto remove = [this] { click(screen, "Command3"); };
        std::vector<Box> boxes = boxesOf(remove, {QMessageBox::Ok});
        QCOMPARE(boxes.size(), std::size_t(1));
        QCOMPARE(boxes[0].text, answer);
        QCOMPARE(boxes[0].icon, QMessageBox::Information);
        QCOMPARE(office->rows("select count(*) from Accounts"), present);
        if (boxes[0].buttons != (QMessageBox::Yes | QMessageBox::No))
            return;
        const QString name =
            office->rows("select AcName from Accounts where AcNodes='"_sql + code + "'").first();
        QCOMPARE(textsOf(remove, {QMessageBox::Yes}), QStringList(answer));
        QCOMPARE(office->rows("select AcName from Accounts where AcNodes='"_sql + code + "'"), QStringList());
        QVERIFY(!tree(screen)->find("'" + code + "'"));
        expect(screen, "txtFindParent=; txtAcDes=; said=" + name + " deleted");
        QVERIFY(!isShown(screen, "frmEntry"));
        QCOMPARE(screen->focusWidget()->objectName(),
                 "lstTree"); // the platform may give the window back later
    }

    void search_data() { rowsFrom<QString, QStringList>(Facts); }
    void search() {
        const auto [typed, codes] = fetched<QString, QStringList>();
        open();
        turnTo(screen, "SSTab", 1);
        typeInto(screen, "txtFindAC", typed);
        QCOMPARE(list(), codes);
        if (typed == "x") { // F2 chooses nothing where there is nothing
            pressOn(screen, "mshSearch", Qt::Key_F2);
            expect(screen, "SSTab.currentIndex=1; txtFindParent=");
        }
        QCOMPARE(cells(screen, "mshSearch").constFirst(),
                 "RowNo|Code|Account Title|Location|Contact|Fax|E-Mail|Opening Balance|Address 1|Address 2");
        typeInto(screen, "txtFindAC", "");
        QCOMPARE(list(), QStringList({"1.1.1", "1.1.2"}));
    }

    /// F2 in the list shows the account on the first tab, whatever stands open in the tree.
    void choice_data() {
        QTest::addColumn<QString>("opened");
        row("closed tree", "");
        row("another branch open behind it", "2");
        row("its own branch open", "1");
    }
    void choice() {
        QFETCH(QString, opened);
        office->execute("insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus) values "
                        "('2',1,'2.1','FEES','HD')");
        open();
        if (!opened.isEmpty()) {
            tree(screen)->select(node(screen, opened));
            pressOn(screen, "lstTree", Qt::Key_Right);
        }
        turnTo(screen, "SSTab", 1);
        typeInto(screen, "txtFindAC", "city");
        press(Qt::Key_Tab);
        QCOMPARE(focused(), "mshSearch");
        press(Qt::Key_F2);
        expect(
            screen,
            "SSTab.currentIndex=0; txtFindParent=3; txtSubsidiary=CITY BANK; underWay=correcting CITY BANK");
        QVERIFY(isShown(screen, "frmEntry"));
        QCOMPARE(currentKey(screen), "'1.1.1'");
        QVERIFY(opened != "2" || !node(screen, "2")->isExpanded());
        typeInto(screen, "txtSubsidiary", "city bank 2");
        click(screen, "cmdCreateAc");
        expect(screen, "said=CITY BANK 2 saved");
        QCOMPARE(office->rows("select AcName from Accounts where RowID=3"), QStringList("CITY BANK 2"));
    }

    void exit() {
        for (const bool finderOpen : {true, false}) { // from the finder it is only hidden
            if (!screen || !form("frmAccount"))
                open();
            shell::gFinderOpen = finderOpen;
            click(screen, "cmdExit");
            QCOMPARE(form("frmAccount") != nullptr, finderOpen);
            if (finderOpen)
                QVERIFY(!screen->isVisible());
        }
    }

    void printing() {
        office->addReports(ZEL_SOURCE_DIR "/rpt");
        office->execute("insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus,OpenBal) values "
                        "('1.1',10,'1.1.10','LAST BANK','DD',1234.5)");
        open();
        click(screen, "cmdPrint");
        const QString text = control(form("frmVeiwer"), "CRViewer91")->property("plainText").toString();
        int from = 0;
        for (const char *line : {"CHART OF ACCOUNTS", "\n1 ASSETS\n", "\n1.1 BANKS\n", "\n1.1.1 CITY BANK ",
                                 "\n1.1.2 HILL BANK", "\n1.1.10 LAST BANK 1,234.50\n", "\n2 INCOME\n"}) {
            const int at = int(text.indexOf(line, from));
            QVERIFY2(at >= 0, qPrintable(QString(line) + " is not in its place in\n" + text));
            from = at;
        }
    }

    void printingWithoutReport() { expectEnd("print", "Error 53:"); }
};

namespace {

/// There is no report file beside the program of a test.
void print() {
    setAccountScreens();
    Office office;
    office.logIn();
    click(openByMenu("mnuChartOfAC", "frmAccount"), "cmdPrint");
}

} // namespace

ZEL_TEST_MAIN(TestAccountTree, {{"print", print}})

#include "tst_account_tree.moc"
