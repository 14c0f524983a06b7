#include "platform/controls/button.h"
#include "platform/controls/text_box.h"
#include "shell/master_screen.h"
#include "shell/search_page.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"
#include "tests/support/test_program.h"

#include <QTabWidget>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

/// Sessions kept as a directory is: read by their key, listed by the criterion, without a criterion to choose
/// from where there is but one box to search with.
const shell::MasterTable table{
    .noun = "Entry",
    .tag = "D",
    .keyColumn = "SessionId",
    .keyBox = "txt_Row_No",
    .firstBox = "txtCName",
    .none = "select * from tblSession where 0 = 1",
    .byKey = "select * from tblSession where SessionId =",
    .search = {.criteria = {{"Client Name", "select SessionId from tblSession where SessionName like '%",
                             "%'"},
                            {"Course Wise"}},
               .all = "select SessionId from tblSession",
               .columns = {{"Row No", 1200}}},
    .criterionOnLoad = true,
    .choice = shell::Choice::FromRecord,
    .enter = shell::EnterInList::Closes,
    .limit = shell::TypingLimit::DefinedSize,
    .valueBox = "txtSearch",
};

class Directory : public shell::MasterScreen {
public:
    Directory() : MasterScreen(table) {
        setObjectName("frmDirectory");
        auto *tabs = new QTabWidget(this);
        tabs->setObjectName("SSTab1");
        for (const auto &[name, column] :
             {std::pair("txt_Row_No", "SessionId"), {"txtCName", "SessionName"}}) {
            auto *box = new controls::TextBox(tabs);
            box->setObjectName(name);
            box->setTag("D");
            box->setDataField(column);
        }
        auto *page = new shell::SearchPage;
        page->setValueName("txtSearch");
        tabs->addTab(new QWidget, "Entry");
        tabs->addTab(page, "Search");
        for (const char *button : {"cmdSave", "cmdCancel", "cmdDelete", "cmdExit"})
            (new controls::Button(this))->setObjectName(button);
        connectControls();
        Show();
    }

protected:
    void clearReference() override {}
};

} // namespace

class tst_master_screen : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsItsRecords() {
        Office office;
        office.execute("insert into tblSession (SessionId, SessionName) values (1, null) "
                       "insert into tblSession (SessionId, SessionName) values (2, 'AUTUMN')");
        office.logIn();
        auto *screen = new Directory;
        QCOMPARE(cells(screen, "Msh"), QStringList({"Row No", "2"})); // a Null is like nothing
        QCOMPARE(control<controls::TextBox>(screen, "txtCName")->maxTyped(), 50);
        screen->FillGrid("Course Wise");
        QCOMPARE(cells(screen, "Msh"), QStringList({"Row No", "1", "2"}));
        typeInto(screen, "txtSearch", "u");
        control<controls::Grid>(screen, "Msh")->setRow(1);
        pressOn(screen, "Msh", Qt::Key_F2);
        expect(screen, "txt_Row_No=2; txtCName=AUTUMN; underWay=correcting entry 2");
        pressOn(screen, "Msh", Qt::Key_Return);
        settle();
        QVERIFY(!form("frmDirectory"));
    }
};

ZEL_TEST_MAIN(tst_master_screen)

#include "tst_master_screen.moc"
