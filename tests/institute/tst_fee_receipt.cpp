#include "institute/frmInsRec.h"
#include "platform/controls/button.h"
#include "platform/controls/data_combo.h"
#include "platform/report/viewer/cr_viewer.h"
#include "shell/module1.h"
#include "tests/vouchers/voucher_desk.h"

using namespace zel;
using namespace zel::test;

namespace {

/// The cash box is fixed on the debit side; 7 to 10 are students, 8 with two applications, 9 carried forward
/// twice, 10 of a session that is gone.
const Sql Institute =
    "insert into Accounts (ParentID, Dcode, AcName, AcStatus) values ('1.1', 7, 'HIRA', 'DD'), "
    "('1.1', 8, 'ZOYA', 'DD'), ('1.1', 9, 'TAHA', 'DD'), ('1.1', 10, 'O''NEIL حرا', 'DD')\n"
    "insert into tblSession (SessionId, SessionName) values (1, 'SPRING'), (2, 'AUTUMN'), (3, 'WINTER')\n"
    "insert into tblSubject (SubId, SubName) values (1, 'LAW'), (2, 'TAX'), (3, 'AUDIT')\n"
    "insert into tblMasApp (AppID, CusCode, SessionID) values (71, 7, 2), (81, 8, 1), (82, 8, 3), (91, 9, "
    "2), "
    "(101, 10, 99)\n"
    "insert into tblDetApp (AppID, SubID, NetAmount, RecAmount) values (71, 1, 5000, 500), "
    "(71, 2, 9999999999.99, null), (81, 1, 100, 0), (82, 2, 200, 0), (91, 3, null, 40), (101, 1, 70, 0)\n"
    "insert into tblDetCarryForw (FormID, AppID, SessionID) values (1, 91, 3), (2, 91, 1)\n"
    "update VouSetting set AcCode = '3', AcStatus = 'DR', Fix = 'Y' where VouStatus = 'RI'";

class Counter : public Desk {
public:
    explicit Counter(const Sql &more = {}) : Desk(nullptr, Institute + "\n" + more) {
        shell::setScreens({{"mnuRecvVou", shell::shows(institute::frmInsRec::reference)}});
        show(openByMenu("mnuRecvVou", "frmInsRec"));
    }
    [[nodiscard]] QString balance() const { return text("txtReceived") + '|' + text("txtRemaingAmt"); }
    [[nodiscard]] QStringList lines() {
        return office.rows("select VouNo, EntryNo, AcCode, DrAmt, CrAmt, ChecqNo, Naration, CrAc, SessionID, "
                           "SubID from DetJV where VouStatus = 'FR'");
    }
    [[nodiscard]] QStringList headers() {
        return office.rows("select VouNo, PaidReceive, SlipNo, TotalAmount, Login, IRStatus from MasJV");
    }
    [[nodiscard]] controls::DataCombo *subject() const {
        return control<controls::DataCombo>(screen(), "cboSubject");
    }
    void payAt(const char *option) const {
        control<controls::OptionButton>(screen(), option)->setChecked(true);
    }
    void line(const char *student, const char *amount) {
        choose("cmdSelectCr", student);
        replace("txtDRCR", amount);
        QVERIFY(push("cmdAdd").empty());
    }
};

const Scenes scenes = {
    {"a line of a student with two applications",
     [] {
         Counter counter;
         counter.line("ZOYA", "5");
         Q_EMIT counter.grid("MshEntry")->rowClicked(1);
     }},
};

} // namespace

class tst_fee_receipt : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// From the empty screen to a receipt that is saved, and the next; then the last one's slip.
    void keysOfAQueue() {
        Counter counter;
        counter.office.addReports(ZEL_SOURCE_DIR "/rpt");
        int keys = 0;
        const auto key = [&](Qt::Key pressed, Qt::KeyboardModifiers modifiers = {}) {
            press(pressed, modifiers);
            settle();
            ++keys;
        };
        for (const char *number : {"1", "2"}) {
            QCOMPARE(counter.text("txtVoucher") + '|' + focused(), QString(number) + "|DTPicker");
            key(Qt::Key_F7);
            type("hira");
            key(Qt::Key_Down);
            key(Qt::Key_Return);
            type("1500");
            key(Qt::Key_A, Qt::AltModifier);
            key(Qt::Key_F9);
            QCOMPARE(said(), QString("FR %1 saved, 1,500.00 (F12 prints it)").arg(number));
        }
        QVERIFY2(keys <= 2 * 25, qPrintable(QString::number(keys)));
        compare(counter.headers(), {"1||NULL|1500|sa|CASH", "2||NULL|1500|sa|CASH"});
        compare(counter.lines().mid(2), {"2|1|3|1500|0|||7|2|1", "2|1|7|0|1500|||3|2|1"});
        key(Qt::Key_F12);
        const QString slip = control<viewer::CRViewer91>(form("frmVeiwer"), "CRViewer91")->plainText();
        QVERIFY2(slip.contains("FR - 2\n"), qPrintable(slip));
    }

    void balances() {
        const QString insert =
            "insert into DetJV (VouNo, VouStatus, AcCode, SubID, CrAmt, SessionID) values ";
        const struct {
            const char *rows, *student, *subject, *balance;
        } fees[] = {
            {"", "HIRA", "LAW", "500|4500"},
            // Receipts and carried, whatever the session; no other kind, subject or account.
            {"(1,'FR',7,1,100.5,1), (1,'CF',7,1,400,3), (1,'AR',7,1,9,1), (1,'FR',7,2,9,1), (1,'FR',8,1,9,1)",
             "HIRA", "LAW", "1000.5|3999.5"},
            {"(1,'FR',7,1,5000,1)", "HIRA", "LAW", "5500|-500"},
            {"", "HIRA", "TAX", "0|9999999999.99"},
            {"", "TAHA", "AUDIT", "40|0"}, // without a net amount
            {"", "ZOYA", "TAX", "0|100"},  // on the second application: LAW of the first one stays
        };
        for (const auto &fee : fees) {
            Counter counter(*fee.rows ? Sql::trusted((insert + fee.rows).toStdString()) : Sql());
            counter.choose("cmdSelectCr", fee.student);
            counter.subject()->setText(fee.subject);
            QCOMPARE(counter.balance(), fee.balance);
            // What another clerk has changed shows with a click that changes nothing.
            counter.office.execute("update tblDetApp set NetAmount = 7, RecAmount = 7 delete from DetJV");
            settle();
            Q_EMIT counter.subject()->clicked();
            QCOMPARE(counter.balance(), fee.student == QString("ZOYA") ? fee.balance : "7|0");
        }
    }

    /// The subject is asked for before anything else.
    void noSubject() {
        Counter counter("update VouSetting set Fix = 'N', AcCode = '' where VouStatus = 'RI'");
        for (const char *account : {"RENT", "HIRA"}) {
            counter.choose("cmdSelectCr", account);
            const bool student = account == QString("HIRA");
            QCOMPARE(counter.push("cmdAdd").at(0),
                     student ? "Please Select Debit Account" : "please select subject ");
            QCOMPARE(focused(), student ? "cmdAdd" : "cboSubject");
        }
    }

    /// Paid at the bank for several students in one receipt; then opened, corrected and deleted.
    void manyLines() {
        Counter counter;
        QVERIFY(!control(counter.screen(), "txtChecque")->isVisible());
        counter.replace("txtSlipNo", "s 12");
        counter.payAt("OptBank");
        counter.choose("cmdSelectCr", "HIRA");
        counter.subject()->setText("TAX");
        counter.replace("txtChecque", "c-9");
        counter.replace("txtNaration", "half");
        counter.replace("txtDRCR", "99999999999.99");
        QVERIFY(counter.push("cmdAdd").empty());
        QCOMPARE(counter.text("txtDrAc") + counter.text("txtCrAc") + counter.subject()->Text() + '|' +
                     focused(),
                 "CASH BOX|cmdSelectCr");
        counter.line("TAHA", "2");
        counter.line("NEIL", "3");
        counter.push("cmdSave");
        compare(counter.headers(), {"1||S12|100000000004.99|sa|BANK"});
        compare(counter.lines(),
                {"1|1|3|99999999999.99|0|c-9|HALF|7|2|2", "1|1|7|0|99999999999.99|c-9|HALF|3|2|2",
                 "1|2|3|2|0|||9|1|3", "1|2|9|0|2|||3|1|3", "1|3|3|3|0|||10|99|1", "1|3|10|0|3|||3|99|1"});

        typeInto(counter.screen(), "txtSearch", "1");
        QCOMPARE(counter.seen("mshSearch").at(0).section('|', 2), "S12||100000000004.99|M|BANK");
        counter.openFromSearch(1);
        QVERIFY(control(counter.screen(), "txtChecque")->isVisible() &&
                control(counter.screen(), "cmdDelete")->isEnabled());
        Q_EMIT counter.grid("MshEntry")->rowClicked(1);
        QCOMPARE(counter.subject()->Text() + counter.balance(), "TAX|");
        counter.replace("txtDRCR", "1");
        counter.push("cmdAdd");
        counter.grid("MshEntry")->setRow(2);
        counter.push("acmRemove");
        QCOMPARE(counter.text("txtDrAc"), "");
        counter.push("cmdSave");
        compare(counter.headers() + counter.lines(),
                {"1||S12|4|sa|BANK", "1|1|3|1|0|c-9|HALF|7|2|2", "1|1|7|0|1|c-9|HALF|3|2|2",
                 "1|2|3|3|0|||10|99|1", "1|2|10|0|3|||3|99|1"});
        counter.openFromSearch(1);
        counter.push("cmdDelete", QMessageBox::Yes);
        QCOMPARE(counter.lines() + counter.headers(), QStringList());
        QCOMPARE(counter.text("txtVoucher") + counter.text("txtSlipNo"), "1S12");
    }

    void findsBanksWhilePaidAtTheBank() {
        Counter counter("update VouSetting set Fix = 'N' where VouStatus = 'RI'");
        for (const auto &[option, listed] : {std::pair{"OptBank", 2}, {"OptCash", 10}}) {
            counter.payAt(option);
            press(Qt::Key_F8);
            settle();
            QCOMPARE(cells(form("frmFindAC"), "mshSearch").size(), 1 + listed);
            QVERIFY(control(form("frmFindAC"), "chkAll")->isVisible());
            press(Qt::Key_Down);
            press(Qt::Key_Return);
            settle();
            QCOMPARE(focused() + shell::gFindFilter, "cmdSelectCr");
        }
    }

    void endsProgram() { expectEnd("a line of a student with two applications", "Error 512:"); }
};

ZEL_TEST_MAIN(tst_fee_receipt, scenes)

#include "tst_fee_receipt.moc"
