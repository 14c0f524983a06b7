#include "accounts/frmFindAC.h"
#include "platform/controls/button.h"
#include "platform/controls/grid.h"
#include "shell/module1.h"
#include "tests/accounts/account_screen.h"
#include "tests/support/facts.h"
#include "tests/support/test_program.h"

#include <QCheckBox>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

QWidget *openFinder(const QString &filter) {
    shell::gFindFilter = filter;
    accounts::frmFindAC::reference->Show();
    settle();
    return form("frmFindAC");
}

QString list(QWidget *finder) {
    return columnOf(finder, "mshSearch", 2).join(',');
}

} // namespace

/// The finder by itself; how a screen takes its answer is tested with the screens.
class TestFindAccount : public QObject {
    Q_OBJECT

    std::unique_ptr<Office> office;

private Q_SLOTS:
    void init() {
        setAccountScreens();
        office = std::make_unique<Office>(Office::Chart::Demo);
        office->execute(
            "update Accounts set OpenBal=1500.5,Contact='0300-1',Fax='042-7',Addr='1 MALL',Addr2='LAHORE' "
            "where AcName='CITY BANK'");
        office->logIn();
    }
    void cleanup() { office.reset(); }

    /// What is found, and what is with "All Accounts" ticked.
    void filters_data() { rowsFrom<QString, QString, QString, QString>("accounts/finder.json"); }
    void filters() {
        auto [filter, typed, found, all] = fetched<QString, QString, QString, QString>();
        QWidget *finder = openFinder(filter);
        typeInto(finder, "txtFindAC", typed);
        if (all == "*")
            all = office->rows("select AcName from Accounts where AcStatus='DD' order by AcName").join(',');
        QVERIFY(!control(finder, "chkAll")->isVisible());
        accounts::frmFindAC::reference->chkAll().setVisible(true);
        for (int round = 0; round < 2; ++round) {
            QCOMPARE(list(finder), found);
            QCOMPARE(shell::gFindFilter, filter);
            click(finder, "chkAll");
            QCOMPARE(list(finder), all);
            QCOMPARE(shell::gFindFilter, "");
            click(finder, "chkAll");
        }
        QCOMPARE(cells(finder, "mshSearch").constFirst(), "|Code|Account Title|Opening Balance|Contact|||");
    }

    void choice() {
        for (const auto &[way, key] : {std::pair(Qt::Key_Down, Qt::Key_Return), {Qt::Key_Up, Qt::Key_F2}}) {
            QWidget *finder = openFinder({});
            typeInto(finder, "txtFindAC", "city");
            press(way);
            QCOMPARE(focused(), "mshSearch");
            press(key);
            settle();
            QVERIFY(!form("frmFindAC"));
            QCOMPARE(office->rows("select AcName from Accounts where RowID="_sql + shell::gFoundRowID),
                     QStringList("CITY BANK"));
            QCOMPARE(QStringList({shell::gFoundName, shell::gFoundContact, shell::gFoundFax,
                                  shell::gFoundAddr, shell::gFoundAddr2}),
                     QStringList({"CITY BANK", "0300-1", "042-7", "1 MALL", "LAHORE"}));
            shell::gFoundRowID = 0;
        }
    }

    void manyAccounts_data() {
        columns<QString, bool, bool>("typed", "changed", "last");
        for (const char *typed : {"many", "many abc", "l"})
            for (const bool changed : {false, true})
                for (const bool last : {false, true})
                    fill(QTest::addRow("%s%s, %s", typed, changed ? ", deleted meanwhile" : "",
                                       last ? "last" : "first"),
                         typed, changed, last);
    }

    /// The keys come before the rows: they find what stood when the last of them was pressed.
    void manyAccounts() {
        const auto [typed, changed, last] = fetched<QString, bool, bool>();
        office->execute("insert into Accounts (AcName,AcStatus) values ('MANY ','DD')");
        for (char letter = 'A'; letter <= 'L'; ++letter)
            office->execute("insert into Accounts (AcName,AcStatus) select AcName + '"_sql + QString(letter) +
                            "','DD' from Accounts where AcName like 'MANY%'");
        const QStringList found =
            office->rows("select AcName from Accounts where AcStatus='DD' and AcName like '%"_sql + typed +
                         "%' order by AcName");
        QVERIFY(found.size() > 500);
        QWidget *finder = openFinder({});
        typeInto(finder, "txtFindAC", typed);
        if (changed)
            office->execute("delete from Accounts where AcName like 'MANY%'");
        press(Qt::Key_Down);
        if (last)
            press(Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(control<controls::Grid>(finder, "mshSearch")->Row(), last ? int(found.size()) : 1);
        QCOMPARE(columnOf(finder, "mshSearch", 2), found);
        press(Qt::Key_Return);
        settle();
        QCOMPARE(shell::gFoundName, last ? found.last() : found.first());
        shell::gFoundRowID = 0;
    }

    void nothingChosen() {
        for (const QString by : {"Enter on an empty list", "Exit", "Alt+X"}) {
            QWidget *finder = openFinder("B");
            shell::gAddAccount = shell::gFinderOpen = true;
            typeInto(finder, "txtFindAC", "none such");
            const bool open = by.startsWith("Enter");
            if (by == "Alt+X")
                press(Qt::Key_X, Qt::AltModifier);
            else
                pressOn(finder, open ? "mshSearch" : "cmdExit", Qt::Key_Return);
            settle();
            QVERIFY(form("MDIForm1"));
            QCOMPARE(shell::gFoundRowID, 0);
            QCOMPARE(shell::gFindFilter, "B");
            QCOMPARE(form("frmFindAC") != nullptr, open);
            QCOMPARE(shell::gAddAccount, open);
            QCOMPARE(shell::gFinderOpen, open);
        }
    }

    /// Add Accounts leads through the lock to the chart of accounts, whose exit only hides it; what was added
    /// there stands in the list when the finder is active again.
    void addAccounts() {
        QWidget *finder = openFinder({});
        typeInto(finder, "txtFindAC", "water");
        click(finder, "cmdAccounts");
        QCOMPARE(activeForm(), "frmLocPass");
        type("ZEL");
        press(Qt::Key_Return);
        settle();
        QWidget *chart = form("frmAccount");
        QVERIFY(chart && chart->parentWidget()->isMaximized());
        clickNode(chart, "5.1");
        click(chart, "cmdCreateAc");
        type("water");
        click(chart, "cmdCreateAc");
        QCOMPARE(list(finder), "");
        click(chart, "cmdExit");
        QVERIFY(form("frmAccount") && !chart->isVisible());
        QTRY_COMPARE(activeForm(), "frmFindAC");
        QCOMPARE(list(finder), "WATER");
    }

    void apostrophe() { expectEnd("apostrophe", "Error 105:"); }
};

namespace {

void apostropheInSearch() {
    Office office;
    office.logIn();
    typeInto(openFinder({}), "txtFindAC", "o'neil");
}

} // namespace

ZEL_TEST_MAIN(TestFindAccount, {{"apostrophe", apostropheInSearch}})

#include "tst_find_account.moc"
