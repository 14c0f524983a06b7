#include "tests/vouchers/voucher_desk.h"

#include "platform/base/error.h"

#include <QPushButton>

using namespace zel;
using namespace zel::test;
using namespace zel::vouchers;

namespace {

constexpr HeaderColumn Header[] = {
    {"VouDate", HeaderFrom::Date},
    {"PaidReceive", HeaderFrom::Text, "txtPaidTo"},
    {"SlipNo", HeaderFrom::TextOrNull, "txtSlipNo"},
    {"VouStatus", HeaderFrom::Kind},
    {"TotalAmount", HeaderFrom::Total},
    {"Login", HeaderFrom::User},
    {"IRStatus", HeaderFrom::Text},
};
constexpr HeaderShown Shown[] = {{"SlipNo", "txtSlipNo"}, {"IRStatus"}};
constexpr VoucherSearch::Criterion Criteria[] = {
    {"Voucher #", "convert(varchar(8),VouNo) Like '%", "%' order by VouNo desc"},
    {"Slip No.", "SlipNo Like '%", "%' order by VouNo desc"}};
constexpr VoucherSearch::Column Found[] = {{"Voucher # ", 2000}, {"Slip No.", 2000}, {"Status", 1000}};
constexpr VoucherSearch Search{.list = "Select VouNo,slipNo,IRSTATUS From MasJv a Where '",
                               .from = "' = VouStatus and VouStatus='",
                               .criteria = Criteria,
                               .columns = Found};

/// The bank receipt with another header, numbers, checks and search: what a kind of its own says otherwise.
VoucherKind slipKind() {
    VoucherKind kind = voucherKind("BR");
    kind.code = "FR";
    kind.setting = "CR";
    kind.form = "frmSlip";
    kind.entry.takenBackBy = shell::TakenBackBy::Click;
    kind.accountKnownBy = shell::Part::Text;
    kind.numbers = Numbers::OfLines;
    kind.savedWhole = false;
    kind.header = Header;
    kind.headerShown = Shown;
    kind.readLinesTail = " And VouStatus = 'FR' and CrAmt>0 Order By EntryNo ";
    kind.search = &Search;
    return kind;
}

class Slip : public Voucher {
public:
    explicit Slip(const VoucherKind &kind) : Voucher(kind) {
        (new controls::TextBox(this))->setObjectName("txtSlipNo");
        Show();
    }
    QString payment = "CASH";
    int found = 0, added = 0, takenBack = 0;

protected:
    void accountFound(Side) override { ++found; }
    bool lineMayBeAdded() override { return payment != "NONE"; }
    void lineAdded() override { ++added; }
    void lineTakenBack(int row) override { takenBack = row; }
    void cleared() override { payment = "CASH"; }
    QString headerText(const HeaderColumn &column) override {
        return column.box ? Voucher::headerText(column) : payment;
    }
    void showHeaderText(const HeaderShown &column, const QString &text) override {
        if (column.box)
            Voucher::showHeaderText(column, text);
        else
            payment = text;
    }
};

} // namespace

class tst_voucher_own_kind : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void anotherHeaderNumberAndSearch() {
        Desk desk(nullptr,
                  "insert into MasJV (VouNo, VouStatus) values (40, 'FR') "
                  "update VouSetting set VouNo = '70', AcCode = '1', AcStatus = 'DR' where VouStatus = 'CR'");
        static const VoucherKind kind = slipKind();
        auto *slip = new Slip(kind);
        desk.show(slip);
        desk.expect("txtDrAc=BANK ONE; txtVoucher=1"); // headers without lines don't count
        slip->payment = "NONE";
        desk.add({"", "FEES", "5"});
        QCOMPARE(slip->added, 0);
        slip->payment = "BANK";
        QVERIFY(desk.push("cmdAdd").empty());
        QCOMPARE(slip->found, 1);
        QCOMPARE(slip->added, 1);
        desk.grid("MshEntry")->setRow(1);
        Q_EMIT desk.grid("MshEntry")->rowClicked(1);
        QCOMPARE(slip->takenBack, 1);
        desk.expect("txtDRCR=5.00");
        QVERIFY(desk.push("cmdAdd").empty());
        desk.box("txtSlipNo")->setText("S-9");
        desk.push("cmdSave");
        desk.add({"BANK TWO", "FEES", "6"});
        desk.box("txtSlipNo")->setText("");
        desk.push("cmdSave");
        compare(desk.rows("select VouNo, SlipNo, IRStatus, TotalAmount from MasJV where VouNo < 40"),
                {"1|S-9|BANK|5", "2|NULL|CASH|6"});
        desk.expect("said=FR 2 saved, 6.00 (F12 prints it)");

        control(desk.screen(), "cboSearch")->setFocus();
        press(Qt::Key_Down);
        desk.expect("lblSearch=Slip No.");
        typeInto(desk.screen(), "txtSearch", "9");
        compare(desk.seen("mshSearch"), {"1|S-9|BANK"});
        desk.openFromSearch(1);
        desk.expect("txtSlipNo=S-9; underWay=correcting FR 1");
        QCOMPARE(slip->payment, "BANK");
        compare(desk.seen("MshEntry"), {"BANK ONE|FEES|5.00||||"});
    }

    /// A kind that isn't saved whole leaves what it wrote before a failure.
    void failedSaveLeavesItsHeader() {
        for (const bool whole : {true, false}) {
            Desk desk;
            VoucherKind kind = slipKind();
            kind.savedWhole = whole;
            auto *slip = new Slip(kind);
            desk.show(slip);
            desk.add({"BANK ONE", "FEES", "5"});
            desk.grid("MshEntry")->setTextMatrix(1, 0, "no account");
            QVERIFY_EXCEPTION_THROWN(control<QPushButton>(slip, "cmdSave")->click(), Error);
            compare(desk.rows("select VouNo from MasJV"), whole ? QStringList() : QStringList{"1"});
            slip->Unload();
            settle();
        }
    }
};

ZEL_TEST_MAIN(tst_voucher_own_kind)

#include "tst_voucher_own_kind.moc"
