#include "shell/module1.h"
#include "tests/accounts/account_screen.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QStatusBar>
#include <QTabWidget>
#include <QtTest>

using namespace zel;
using namespace zel::test;

/// The tree, deleting, the search tab and the ways out of the screen.
class TestAccountTree : public QObject {
    Q_OBJECT

    std::unique_ptr<Office> office;
    QWidget *screen = nullptr;

    void open() {
        office->logIn();
        screen = openByMenu("mnuChartOfAC", "frmAccount");
    }
    static QStatusBar *statusBar() { return form("MDIForm1")->findChild<QStatusBar *>(); }
    QStringList list() { // codes of the search tab
        QStringList codes;
        const QStringList rows = cells(screen, "mshSearch");
        for (const QString &row : rows.mid(1))
            codes << row.section('|', 1, 1);
        return codes;
    }

private Q_SLOTS:
    void init() {
        setAccountScreens();
        office = std::make_unique<Office>();
        office->execute(smallChart());
    }
    void cleanup() { office.reset(); }

    void nodes() {
        office->execute("insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus) values "
                        "('1 ',10,'1.10 ','STOCK','HD')\n"
                        "insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus) values "
                        "('1',2,'1.2','DEBTORS','HD')\n"
                        "insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus) values "
                        "('9',2,'9.2','NEITHER','XX')");
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
        QCOMPARE(text(screen, "txtSubControl"), "BANKS");
        QCOMPARE(text(screen, "txtAcDes"), "ASSETS");
        QCOMPARE(text(screen, "txtSubsidiary"), "");
        QCOMPARE(text(screen, "txtFindParent"), "2");
        QCOMPARE(text(screen, "cmdCreateAc"), "&New");
        QVERIFY(!isShown(screen, "frmEntry"));
        tree(screen)->select(node(screen, "1"));
        pressOn(screen, "lstTree", Qt::Key_Left);
        press(Qt::Key_Right);
        QCOMPARE(text(screen, "txtAcDes"), "ASSETS");
        QCOMPARE(text(screen, "txtOrder"), "5");
        for (const char *box : {"txtAcDes", "txtOrder", "txtSubControl"})
            QVERIFY(!control(screen, box)->isEnabled());
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
        QFETCH(Qt::Key, key);
        QFETCH(QString, code);
        open();
        clickNode(screen, "1.1.1");
        press(key);
        QCOMPARE(currentKey(screen), "'" + code + "'");
        QCOMPARE(text(screen, "txtFindParent"), node(screen, code)->Tag);
        QCOMPARE(isShown(screen, "frmEntry"), code == "1.1.2");
        if (code != "1.1.2")
            return;
        const QStringList said = textsOf([this] { click(screen, "Command3"); }, {QMessageBox::Yes});
        QCOMPARE(said, QStringList("are you sure delete this account"));
        QCOMPARE(statusBar()->currentMessage(), "HILL BANK deleted");
        QVERIFY(tree(screen)->find("'1.1.1'") && !tree(screen)->find("'1.1.2'"));
    }

    void remove_data() {
        columns<QString, QString, QString>("prepared", "code", "answer");
        const QString ask = "are you sure delete this account";
        row("nothing selected", "", "", "please select any one account");
        row("heading with children", "", "1.1", "this head not remove ");
        row("1 has children", "", "1", "this head not remove ");
        row("1 isn't held by 10",
            "delete from Accounts where AcNodes like '1.%' insert into "
            "Accounts (ParentID,Dcode,AcNodes,AcName,"
            "AcStatus) values ('10',1,'10.1','TEN','HD') insert into "
            "Accounts (ParentID,Dcode,AcNodes,AcName,"
            "AcStatus) values ('10',0,'10','TEN','HH')",
            "1", ask);
        row("heading whose children are gone", "delete from Accounts where AcNodes like '1.1.%'", "1.1", ask);
        row("posted to", "insert into DetJV (VouNo,VouStatus,AcCode,CrAc) values (1,'JV',3,4)", "1.1.1",
            "this Account use in vouceher detail ");
        row("contra account only", "insert into DetJV (VouNo,VouStatus,AcCode,CrAc) values (1,'JV',3,4)",
            "1.1.2", ask);
        row("a student's", "insert into tblMasApp (AppID,CusCode) values (1,4)", "1.1.2",
            "this Account use in Application detail ");
        row("with an opening balance", "", "1.1.1", ask);
    }
    void remove() {
        QFETCH(QString, prepared);
        QFETCH(QString, code);
        QFETCH(QString, answer);
        office->execute(Sql::trusted(prepared.toStdString()));
        open();
        if (!code.isEmpty())
            clickNode(screen, code);
        const QString present = office->rows("select count(*) from Accounts").constFirst();
        const auto remove = [this] { click(screen, "Command3"); };
        std::vector<Box> boxes = boxesOf(remove, {QMessageBox::Ok});
        QCOMPARE(boxes.size(), std::size_t(1));
        QCOMPARE(boxes[0].text, answer);
        QCOMPARE(boxes[0].icon, QMessageBox::Information);
        QCOMPARE(office->rows("select count(*) from Accounts"), QStringList(present));
        if (boxes[0].buttons != (QMessageBox::Yes | QMessageBox::No))
            return;
        QCOMPARE(textsOf(remove, {QMessageBox::Yes}), QStringList(answer));
        QCOMPARE(office->rows("select AcName from Accounts where AcNodes='"_sql + code + "'"), QStringList());
        QVERIFY(!tree(screen)->find("'" + code + "'"));
        QCOMPARE(text(screen, "txtFindParent"), "");
        QCOMPARE(text(screen, "txtAcDes"), "");
        QVERIFY(!isShown(screen, "frmEntry"));
        QCOMPARE(screen->focusWidget()->objectName(),
                 "lstTree"); // the platform may give the window back later
    }

    void search_data() {
        columns<QString, QStringList>("typed", "codes");
        row("a part, any case", "ity b", QStringList("1.1.1"));
        row("all of a kind", "BANK", QStringList({"1.1.1", "1.1.2"}));
        row("headings are not searched", "ASSETS", QStringList(""));
        row("no hit", "x", QStringList(""));
        row("a pattern", "c%k", QStringList("1.1.1"));
    }
    void search() {
        QFETCH(QString, typed);
        QFETCH(QStringList, codes);
        open();
        turnTo(screen, "SSTab", 1);
        typeInto(screen, "txtFindAC", typed);
        QCOMPARE(list(), codes);
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
        QCOMPARE(control<QTabWidget>(screen, "SSTab")->currentIndex(), 0);
        QCOMPARE(text(screen, "txtFindParent"), "3");
        QCOMPARE(text(screen, "txtSubsidiary"), "CITY BANK");
        QVERIFY(isShown(screen, "frmEntry"));
        QCOMPARE(currentKey(screen), "'1.1.1'");
        QVERIFY(opened != "2" || !node(screen, "2")->isExpanded());
        QCOMPARE(text(form("MDIForm1"), "lblUnderWay"), "correcting CITY BANK");
        typeInto(screen, "txtSubsidiary", "city bank 2");
        click(screen, "cmdCreateAc");
        QCOMPARE(statusBar()->currentMessage(), "CITY BANK 2 saved");
        QCOMPARE(office->rows("select AcName from Accounts where RowID=3"), QStringList("CITY BANK 2"));
    }

    void choiceOfNothing() {
        open();
        turnTo(screen, "SSTab", 1);
        typeInto(screen, "txtFindAC", "none such");
        pressOn(screen, "mshSearch", Qt::Key_F2);
        QCOMPARE(control<QTabWidget>(screen, "SSTab")->currentIndex(), 1);
        QCOMPARE(text(screen, "txtFindParent"), "");
    }

    void exit_data() {
        QTest::addColumn<bool>("finderOpen");
        row("from the menu", false);
        row("from the finder", true);
    }
    void exit() {
        QFETCH(bool, finderOpen);
        open();
        shell::gFinderOpen = finderOpen;
        click(screen, "cmdExit");
        QCOMPARE(form("frmAccount") != nullptr, finderOpen);
        if (finderOpen)
            QVERIFY(!screen->isVisible());
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
        settle();
        picture(form("frmVeiwer"), "frmVeiwer-rptChartAC");
    }

    void printingWithoutReport() {
        const Ended ended = play("print");
        QCOMPARE(ended.status, 1);
        QVERIFY2(ended.errorStream.contains("ZEL: error 53:"), qPrintable(ended.errorStream));
    }
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

int main(int argc, char *argv[]) {
    TestAccountTree tests;
    return run(argc, argv, tests, {{"print", print}});
}

#include "tst_account_tree.moc"
