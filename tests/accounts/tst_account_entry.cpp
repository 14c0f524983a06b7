#include "platform/controls/focus.h"
#include "tests/accounts/account_screen.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QtTest>

using namespace zel;
using namespace zel::test;

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
        click(screen, "chkHead");
        click(screen, "cmdCreateAc");
        QCOMPARE(focused(), "txtAcDes");
        type("assets");
        typeInto(screen, "txtOrder", "1 x2");
        QCOMPARE(save(), QStringList());
        press(Qt::Key_F9); // saves, and so begins no new account
        QCOMPARE(text(screen, "cmdCreateAc"), "&New");

        click(screen, "cmdCreateAc");
        QCOMPARE(focused(), "txtSubControl");
        QCOMPARE(text(screen, "txtAcDes"), "ASSETS");
        QCOMPARE(text(screen, "txtSubControl"), "ASSETS");
        typeInto(screen, "txtSubControl", "cash in hand");
        QCOMPARE(save(), QStringList());

        clickNode(screen, "1.1");
        click(screen, "cmdCreateAc");
        QCOMPARE(focused(), "txtSubsidiary");
        QCOMPARE(text(screen, "txtAcDes"), "ASSETS");
        QCOMPARE(text(screen, "txtSubControl"), "CASH IN HAND");
        type("petty cash");
        QCOMPARE(save(), QStringList());
        // The tree stands open at the new account, and the next one goes beside it.
        QCOMPARE(text(screen, "txtSubControl"), "CASH IN HAND");
        for (int number = 2; number <= 10; ++number) {
            clickNode(screen, "1");
            click(screen, "cmdCreateAc");
            typeInto(screen, "txtSubControl", "sub " + QString::number(number));
            QCOMPARE(save(), QStringList());
        }
        QCOMPARE(
            office->rows("select AcStatus,ParentID,Dcode,AcNodes,AcName,OrderStatus,OpenBal from Accounts "
                         "where Dcode in (0,1,10) order by RowID"),
            QStringList({"HH|1|0|1|ASSETS|12|NULL", "HD|1|1|1.1|CASH IN HAND|NULL|NULL",
                         "DD|1.1|1|1.1.1|PETTY CASH|NULL|NULL", "HD|1|10|1.10|SUB 10|NULL|NULL"}));
        QStringList keys;
        for (const controls::TreeNode *node : tree(screen)->nodes())
            keys << node->Key();
        QCOMPARE(keys.mid(0, 5), QStringList({"'1'", "'1.1'", "'1.1.1'", "'1.10'", "'1.2'"}));
        QVERIFY(tree(screen)->node("'1'")->isExpanded());

        clickNode(screen, "1");
        click(screen, "chkHead");
        click(screen, "cmdCreateAc");
        type("income");
        QCOMPARE(save(), QStringList());
        QCOMPARE(office->rows("select AcNodes,OrderStatus from Accounts where AcName='INCOME'"),
                 QStringList("2|NULL"));
    }

    /// Numbers that fell free at the end are given again, gaps are not filled.
    void numbers_data() {
        columns<QString, QString>("gone", "code");
        zel::test::row("nothing gone", "", "1.1.3");
        zel::test::row("the last one", "1.1.2", "1.1.2");
        zel::test::row("one in the middle", "1.1.1", "1.1.3");
    }
    void numbers() {
        QFETCH(QString, gone);
        QFETCH(QString, code);
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
        zel::test::row("a control account without a title", "1", false,
                       "Account Titel is already exitis, please change Account Title");
        zel::test::row("nothing selected, no title", "", false, "please enter Account Title");
        zel::test::row("a subsidiary after Cancel", "1.1.1", true, "please enter Account Title");
    }
    void refused() {
        QFETCH(QString, node);
        QFETCH(bool, cancelFirst);
        QFETCH(QString, message);
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

    void emptyChart() {
        open(false);
        click(screen, "cmdCreateAc");
        QCOMPARE(focused(), "txtAcDes");
        type("assets");
        QCOMPARE(save(), QStringList("please select any one type or create a control account "));
        QCOMPARE(text(screen, "txtAcDes"), "ASSETS");
        QCOMPARE(cells(screen, "mshSearch").size(), 2);
    }

    void duplicates_data() {
        columns<QString, bool, QString, QString, bool>("node", "isNew", "box", "title", "taken");
        zel::test::row("subsidiary, another level's title", "1.1", true, "txtSubsidiary", "assets", true);
        zel::test::row("subsidiary, other blanks", "1.1", true, "txtSubsidiary", "ci ty b ank", true);
        zel::test::row("subsidiary, free", "1.1", true, "txtSubsidiary", "city bank 2", false);
        zel::test::row("control account", "1", true, "txtAcDes", " income", true);
        zel::test::row("sub-control may repeat", "1", true, "txtSubControl", "income", false);
        zel::test::row("edit, title as it was", "1.1.1", false, "txtSubsidiary", "city bank", false);
        zel::test::row("edit, blanks of its own", "1.1.1", false, "txtSubsidiary", "citybank", true);
        zel::test::row("edit, another's title", "1.1.1", false, "txtSubsidiary", "hill bank", true);
    }
    void duplicates() {
        QFETCH(QString, node);
        QFETCH(bool, isNew);
        QFETCH(QString, box);
        QFETCH(QString, title);
        QFETCH(bool, taken);
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
    void detail_data() {
        columns<QString, QString, QString, QString>("box", "typed", "column", "stored");
        zel::test::row("a lone point", "txt_OpenBal", ".", "OpenBal", "NULL");
        zel::test::row("nothing", "txt_OpenBal", "", "OpenBal", "NULL");
        zel::test::row("negative", "txt_OpenBal", "-12.5", "OpenBal", "-12.5");
        zel::test::row("second point and minus", "txt_OpenBal", "1.2-.3-a 4", "OpenBal", "FAILS");
        zel::test::row("telephone", "txt_telno", "04 2,-35x7", "Contact", "042,357");
        zel::test::row("location in capitals", "txtLocation", "multan", "Location", "MULTAN");
        zel::test::row("address as typed", "txt_address", "12 Canal Road", "Addr", "12 Canal Road");
        zel::test::row("emptied address", "txtAdd2", "", "Addr2", "NULL");
        zel::test::row("an apostrophe where it is safe", "txt_address", "St. John's", "Addr", "St. John's");
        zel::test::row("full tax number", "txt_Gstno", "99887766554433", "GST", "99-88-7766-554-43");
        zel::test::row("tax number with a digit missing", "txt_Gstno", "998877665544", "GST",
                       "12-34-5678-901-23");
        zel::test::row("full national number", "txt_Ntnno", "76543210", "NTN", "7654321-0");
        zel::test::row("half national number", "txt_Ntnno", "7654", "NTN", "1234567-8");
    }
    void detail() {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, column);
        QFETCH(QString, stored);
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
        zel::test::row("bank as it was", QStringList(), "B");
        zel::test::row("bank cleared", QStringList("chkBank"), "NULL");
        zel::test::row("supplier takes over", QStringList("chkSupplier"), "S");
        zel::test::row("and back", QStringList({"chkSupplier", "chkBank"}), "B");
    }
    void ticks() {
        QFETCH(QStringList, clicked);
        QFETCH(QString, stored);
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
        const QList<std::pair<QString, QString>> expected{
            {"txtAcDes", "ASSETS"},         {"txtSubControl", "BANKS"},
            {"txtSubsidiary", "CITY BANK"}, {"txt_OpenBal", "-1250.5"},
            {"dtpOpening", "01/07/2024"},   {"txtContactPerson", "MR A"},
            {"txt_address", "4 Mall Road"}, {"txtAdd2", "2nd floor"},
            {"txt_telno", "042-1"},         {"txt_faxno", "042-2"},
            {"txt_email", "a@b.pk"},        {"txt_website", "b.pk"},
            {"txtLocation", "LAHORE"},      {"txt_Gstno", "12-34-5678-901-23"},
            {"txt_Ntnno", "1234567-8"},     {"cmdCreateAc", "&Save"},
        };
        for (const auto &[name, value] : expected)
            QCOMPARE(qobject_cast<QLineEdit *>(control(screen, name))
                         ? qobject_cast<QLineEdit *>(control(screen, name))->displayText()
                         : text(screen, name),
                     value);
        QVERIFY(control<QCheckBox>(screen, "chkBank")->isChecked());
        picture(screen, "frmAccount");
        turnTo(screen, "SSTab", 1);
        picture(screen, "frmAccount_search");
        turnTo(screen, "SSTab", 0);
        clickNode(screen, "1.1.2");
        QCOMPARE(text(screen, "txt_OpenBal"), "");
        QCOMPARE(control<QLineEdit>(screen, "txt_Gstno")->displayText(), "__-__-____-___-__");
        QVERIFY(!control<QCheckBox>(screen, "chkBank")->isChecked());
        clickNode(screen, "1");
        QCOMPARE(text(screen, "txtOrder"), "5");
        QVERIFY(!isShown(screen, "frmEntry") && !isShown(screen, "txtSubControl"));
    }

    void edit_data() {
        columns<QString, QString, QString>("node", "order", "row");
        zel::test::row("control account, order", "1", "7", "FIXED ASSETS|7");
        zel::test::row("control account, order emptied", "1", "", "FIXED ASSETS|NULL");
        zel::test::row("sub-control account", "1.1", "-", "FIXED ASSETS|NULL");
        zel::test::row("a subsidiary has no menu", "1.1.1", "-", "CITY BANK|NULL");
    }
    void edit() {
        QFETCH(QString, node);
        QFETCH(QString, order);
        QFETCH(QString, row);
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
                 QStringList(row));
        QCOMPARE(text(screen, "cmdCreateAc"), node == "1.1.1" ? "&Save" : "&New");
        QCOMPARE(currentKey(screen), "'" + node + "'");
        QTRY_COMPARE(focused(), "lstTree");
    }

    void keys_data() {
        columns<QString, QString, QString, QString>("box", "typed", "left", "next");
        const auto row = [](const char *box, const char *typed, const char *left, const char *next) {
            zel::test::row(box, box, typed, left, next);
        };
        row("txtSubsidiary", "a b'c", "A B'C", "chkSupplier");
        row("txt_OpenBal", "1 2x", "12", "txtContactPerson");
        row("txtContactPerson", "mr a", "MR A", "txt_address");
        row("txt_address", "a B", "a B", "txtAdd2");
        row("txtAdd2", "a B", "a B", "txt_telno");
        row("txt_telno", "1 a-2,", "12,", "txt_faxno");
        row("txt_faxno", "1 a-2,", "12,", "txt_email");
        row("txt_email", "A@b", "A@b", "txt_website");
        row("txt_website", "A.b", "A.b", "txtLocation");
        row("txtLocation", "ab", "AB", "txt_Gstno");
        row("txtAcDes", "a b", "A B", "txtAcDes");
        row("txtOrder", "1 a-2", "12", "txtOrder");
    }
    void keys() {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, left);
        QFETCH(QString, next);
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

    void failures_data() {
        QTest::addColumn<QString>("scene");
        zel::test::row("in a new title", "title");
        zel::test::row("in a changed title", "change");
        zel::test::row("in the search", "search");
    }
    void failures() {
        QFETCH(QString, scene);
        const Ended ended = play(scene);
        QCOMPARE(ended.status, 1);
        QVERIFY2(ended.errorStream.contains("ZEL: error 105:"), qPrintable(ended.errorStream));
        QVERIFY2(ended.box.contains("105"), qPrintable(ended.box));
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

int main(int argc, char *argv[]) {
    TestAccountEntry tests;
    return run(argc, argv, tests,
               {{"title", [] { apostrophe("1.1", "txtSubsidiary", true); }},
                {"change", [] { apostrophe("1", "txtAcDes", true); }},
                {"search", [] { apostrophe({}, "txtFindAC", false); }}});
}

#include "tst_account_entry.moc"
