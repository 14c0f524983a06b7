#include "platform/controls/text_box.h"
#include "shell/module1.h"
#include "tests/accounts/account_screen.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

const QStringList voucherBoxes{"txtCP", "txtCR", "txtBP", "txtBR", "txtJV", "txtSalInv"};

constexpr char allColumns[] =
    "select VouStatus,VouNo,AcCode,AcStatus,Fix,OthAcCode,ITaxAc,STaxAc from VouSetting";

} // namespace

/// frmAcSetting on the small chart; CITY BANK is RowID 3, HILL BANK 4, BANKS 2.
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
    QString tag(const QString &box) { return control<controls::TextBox>(screen, box)->Tag(); }
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

    void find_data() {
        columns<QString, QString, QString, bool>("button", "box", "filter", "widens");
        const auto row = [](const char *button, const char *box, const char *filter = "",
                            bool widens = true) { zel::test::row(button, button, box, filter, widens); };
        row("cmdCPFindAC", "txtCPAcc");
        row("cmdCRFindAC", "txtCRAcc");
        row("cmdBPFindAC", "txtBPAcc");
        row("cmdBRFindAC", "txtBRAcc");
        row("cmdJVFindAC", "txtJVAcc");
        row("cmdSalInvFindAC", "txtSalInvACC");
        row("cmdFindSTaxAC", "txtSTaxACC");
        row("cmdShrtFLLAc", "txtShortFLLAC");
        row("cmdIncTaxAC", "txtIncTaxACRpt");
        row("cmdSTaxACRpt", "txtSalTaxAcRpt");
        row("cmdFindGst", "txtGstACC");
        row("cmdInsRecFindAC", "txtInsRecACC", "", false);
        row("cmdAppSub", "txtAppSubACC", "SUB", false);
    }
    void find() {
        QFETCH(QString, button);
        QFETCH(QString, box);
        QFETCH(QString, filter);
        QFETCH(bool, widens);
        open();
        click(screen, button);
        QWidget *finder = form("frmFindAC");
        QVERIFY(finder);
        QCOMPARE(shell::gFindFilter, filter);
        QCOMPARE(control(finder, "chkAll")->isEnabled(), widens);
        pressOn(finder, "mshSearch", Qt::Key_Return);
        settle();
        QTRY_COMPARE(focused(), button);
        QCOMPARE(text(screen, box), filter.isEmpty() ? "CITY BANK" : "BANKS");
        QCOMPARE(tag(box), filter.isEmpty() ? "3" : "2");
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
        for (const QString &box : voucherBoxes)
            QCOMPARE(text(screen, box), "7");
        QCOMPARE(text(screen, "txtAppSubACC"), "BANKS");
        QCOMPARE(text(screen, "txtInsRecACC"), "CITY BANK");
        picture(screen, "frmAcSetting");
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
        QCOMPARE(text(screen, "txtInsRecACC"), "HILL BANK");
        QCOMPARE(text(screen, "txtShortFLLAC"), "HILL BANK");
        QVERIFY(ticked("optJVCr") && !ticked("optJVDr") && !ticked("chkSalInvYN") && ticked("chkJVYN"));
    }

    void clear_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("emptied"); // boxes; for a voucher frame its options and tick, too
        QTest::addColumn<QString>("frame");
        const auto voucher = [](const char *button, const char *number, const char *account,
                                const char *frame) {
            zel::test::row(button, button, QStringList({number, account}), frame);
        };
        voucher("cmdClearCP", "txtCP", "txtCPAcc", "CP");
        voucher("cmdClearCR", "txtCR", "txtCRAcc", "CR");
        voucher("cmdClearBP", "txtBP", "txtBPAcc", "BP");
        voucher("cmdClearBR", "txtBR", "txtBRAcc", "BR");
        voucher("cmdClearJV", "txtJV", "txtJVAcc", "JV");
        voucher("cmdClearSalInv", "txtSalInv", "txtSalInvACC", "SalInv");
        voucher("cmdClearGst", "txtGstInv", "txtGstACC", "");
        voucher("cmdClearInsRec", "txtInsRec", "txtInsRecACC", "");
        voucher("cmdClearAppSub", "txtAppSubACC", "txtAppSubACC", "");
        zel::test::row("cmdClearSTax", "cmdClearSTax",
                       QStringList({"txtTaxInv", "txtSTaxACC", "txtShortFLLAC"}), "");
    }
    void clear() {
        QFETCH(QString, button);
        QFETCH(QStringList, emptied);
        QFETCH(QString, frame);
        fill();
        open();
        click(screen, button);
        for (const controls::TextBox *box : screen->findChildren<controls::TextBox *>()) {
            const bool gone = emptied.contains(box->objectName());
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
        QStringList expected;
        for (const char *kind : {"CP", "CR", "BP", "BR", "JV", "SI"})
            expected << QString(kind) + "|||NULL|N|NULL|NULL|NULL";
        for (const char *kind : {"PO", "QT", "DC"})
            expected << QString(kind) + "||NULL|NULL|NULL|NULL|NULL|NULL";
        expected << "TI|||NULL|NULL|||"
                 << "GI|||NULL|NULL|NULL|NULL|NULL"
                 << "IR|0||NULL|NULL|NULL|NULL|NULL"
                 << "RI|||NULL|N|NULL|NULL|NULL";
        QCOMPARE(office->rows(Sql(allColumns)), expected);
        open();
        QVERIFY(!ticked("optCPDr") && !ticked("optCPCr"));
    }

    void accountThatIsGone() {
        fill();
        office->execute("delete from Accounts where RowID=3");
        open();
        QCOMPARE(text(screen, "txtCPAcc"), "");
        QCOMPARE(tag("txtCPAcc"), "3");
        QCOMPARE(text(screen, "txtShortFLLAC"), "HILL BANK");
    }
};

ZEL_TEST_MAIN(TestVoucherSetup)

#include "tst_voucher_setup.moc"
