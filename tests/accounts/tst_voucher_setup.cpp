#include "platform/controls/text_box.h"
#include "shell/module1.h"
#include "tests/accounts/account_screen.h"
#include "tests/support/facts.h"
#include "tests/support/test_program.h"

#include <QAbstractButton>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

constexpr char allColumns[] =
    "select VouStatus,VouNo,AcCode,AcStatus,Fix,OthAcCode,ITaxAc,STaxAc from VouSetting";

} // namespace

/// frmAcSetting on the small chart; CITY BANK is RowID 3, HILL BANK 4, BANKS 2.
static constexpr const char *Facts = "accounts/voucher_setup.json";

class TestVoucherSetup : public QObject {
    Q_OBJECT

    std::unique_ptr<Office> office;
    QWidget *screen = nullptr;

    void open() {
        if (form("frmAcSetting"))
            click(form("frmAcSetting"), "cmdExit");
        screen = openByMenu("mnuVocSetting", "frmAcSetting");
    }
    QStringList save() {
        return textsOf([this] { pressOn(screen, "cmdSave", Qt::Key_F9); }, {QMessageBox::Ok});
    }
    bool ticked(const QString &button) { return control<QAbstractButton>(screen, button)->isChecked(); }
    /// Every row filled, every box and option in use.
    void fill() {
        office->execute("update VouSetting set VouNo='7',AcCode='3' where VouStatus<>'IR' "
                        "update VouSetting set AcCode='2' where VouStatus='IR' "
                        "update VouSetting set AcStatus='DR',Fix='Y' where VouStatus in "
                        "('CP','CR','BP','BR','JV','SI','RI') "
                        "update VouSetting set OthAcCode='4',ITaxAc='3',STaxAc='4' where VouStatus='TI'");
    }

private Q_SLOTS:
    void init() {
        setAccountScreens();
        office = std::make_unique<Office>();
        office->execute(smallChart());
        office->logIn();
    }
    void cleanup() { office.reset(); }

    void find_data() { rowsFrom<QString, QString, bool>(Facts); }
    void find() {
        const auto [box, filter, widens] = fetched<QString, QString, bool>();
        const QString button = QTest::currentDataTag();
        open();
        click(screen, button);
        QWidget *finder = form("frmFindAC");
        QVERIFY(finder);
        QCOMPARE(shell::gFindFilter, filter);
        QCOMPARE(control(finder, "chkAll")->isEnabled(), widens);
        pressOn(finder, "mshSearch", Qt::Key_Return);
        settle();
        QTRY_COMPARE(focused(), button);
        expect(screen, QString(filter.isEmpty() ? "%1=CITY BANK; %1.Tag=3" : "%1=BANKS; %1.Tag=2").arg(box));
        QCOMPARE(shell::gFoundRowID, 0);
        QCOMPARE(shell::gFoundName, "");
        // The filter stays for the next finder of this screen.
        click(screen, "cmdCPFindAC");
        QCOMPARE(cells(form("frmFindAC"), "mshSearch").size(), filter.isEmpty() ? 3 : 2);
    }

    void saved() {
        fill();
        office->execute("update VouSetting set AcCode='4',AcStatus='CR',Fix='N' where VouStatus='CR'");
        open();
        expect(screen, "txtCP=7; txtCR=7; txtBP=7; txtBR=7; txtJV=7; txtSalInv=7; txtAppSubACC=BANKS; "
                       "txtInsRecACC=CITY BANK");
        typeInto(screen, "txtCP", "12");
        click(screen, "optJVCr");
        click(screen, "chkSalInvYN");
        const std::vector<Box> boxes = boxesOf([this] { click(screen, "cmdSave"); }, {QMessageBox::Ok});
        QCOMPARE(boxes.size(), std::size_t(1));
        QCOMPARE(boxes[0].text, "Sucessfully  save you Voucher Setting");
        QCOMPARE(boxes[0].icon, QMessageBox::Information);
        QCOMPARE(office->rows(Sql(allColumns)),
                 QStringList({"CP|12|3|DR|Y|NULL|NULL|NULL", "CR|7|4|CR|N|NULL|NULL|NULL",
                              "BP|7|3|DR|Y|NULL|NULL|NULL", "BR|7|3|DR|Y|NULL|NULL|NULL",
                              "JV|7|3|CR|Y|NULL|NULL|NULL", "SI|7|3|DR|N|NULL|NULL|NULL",
                              "PO|7|NULL|NULL|NULL|NULL|NULL|NULL", "QT|7|NULL|NULL|NULL|NULL|NULL|NULL",
                              "DC|7|NULL|NULL|NULL|NULL|NULL|NULL", "TI|7|3|NULL|NULL|4|3|4",
                              "GI|7|3|NULL|NULL|NULL|NULL|NULL", "IR|0|2|NULL|NULL|NULL|NULL|NULL",
                              "RI|7|4|CR|N|NULL|NULL|NULL"}));
        open();
        expect(
            screen,
            "txtInsRecACC=HILL BANK; txtShortFLLAC=HILL BANK; optJVCr.checked=true; optJVDr.checked=false; "
            "chkSalInvYN.checked=false; chkJVYN.checked=true");
    }

    /// Boxes; a voucher frame's options and tick, too.
    void clear_data() { rowsFrom<QString, QString>(Facts); }
    void clear() {
        const auto [emptied, frame] = fetched<QString, QString>();
        fill();
        open();
        click(screen, QTest::currentDataTag());
        for (const controls::TextBox *box : screen->findChildren<controls::TextBox *>()) {
            const bool gone = emptied.split(' ').contains(box->objectName());
            QVERIFY2(box->text().isEmpty() == gone && (!gone || box->Tag().isEmpty()),
                     qPrintable(box->objectName()));
        }
        for (const QString kind : {"CP", "CR", "BP", "BR", "JV", "SalInv"})
            QVERIFY2(ticked("opt" + kind + "Dr") == (kind != frame) &&
                         ticked("chk" + kind + "YN") == (kind != frame),
                     qPrintable(kind));
    }

    void emptySetup() {
        fill();
        open();
        click(screen, "cmdClear");
        QCOMPARE(save(), QStringList("Sucessfully  save you Voucher Setting"));
        const QString settled = "|||NULL|N|NULL|NULL|NULL", numbered = "||NULL|NULL|NULL|NULL|NULL|NULL";
        QCOMPARE(office->rows(Sql(allColumns)),
                 QStringList({"CP" + settled, "CR" + settled, "BP" + settled, "BR" + settled, "JV" + settled,
                              "SI" + settled, "PO" + numbered, "QT" + numbered, "DC" + numbered,
                              "TI|||NULL|NULL|||", "GI|||NULL|NULL|NULL|NULL|NULL",
                              "IR|0||NULL|NULL|NULL|NULL|NULL", "RI" + settled}));
        open();
        expect(screen, "optCPDr.checked=false; optCPCr.checked=false");
    }

    void accountThatIsGone() {
        fill();
        office->execute("delete from Accounts where RowID=3");
        open();
        expect(screen, "txtCPAcc=; txtCPAcc.Tag=3; txtShortFLLAC=HILL BANK");
    }
};

ZEL_TEST_MAIN(TestVoucherSetup)

#include "tst_voucher_setup.moc"
