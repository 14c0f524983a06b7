#include "institute/fee_receipt.h"

namespace zel::institute {
namespace {

using shell::Box;
using shell::LineColumn;
using shell::Part;
using shell::Picture;
using shell::ReadColumn;
using shell::Searched;
using shell::Shown;
using vouchers::Focus;
using vouchers::From;
using vouchers::HeaderColumn;
using vouchers::HeaderFrom;
using vouchers::HeaderShown;
using vouchers::Posted;
using vouchers::PostedLine;
using vouchers::VoucherSearch;

constexpr Box DebitTag{"txtDrAc", Part::Tag};
constexpr Box DebitText{"txtDrAc"};
constexpr Box CreditTag{"txtCrAc", Part::Tag};
constexpr Box CreditText{"txtCrAc"};
constexpr Box Amount{"txtDRCR"};
constexpr Box Cheque{"txtChecque"};
constexpr Box Naration{"txtNaration"};
constexpr Box Session{"cboSession", Part::Bound};
constexpr Box Plot{"txtPlotNo"};
constexpr Box Category{"txtCata"};
constexpr Box Type{"txtTypes"};
constexpr Box Size{"txtSize"};
constexpr Box RegNo{"txtRegNo"};

constexpr LineColumn Entry[] = {
    {"", 0, DebitTag},
    {"Account Debit:", 4000, DebitText},
    {"Account Credit:", 4000, CreditText},
    {"Amount:", 1900, Amount, Picture::Amount},
    {"Checque No. :", 1900, Cheque},
    {"Naration:", 4000, Naration},
    {"CrAcCode:", 0, CreditTag},
    {"Session Name", 2000, Session},
    {"Catagory:", 0, Category, Picture::Plain, false},
    {"Types:", 0, Type, Picture::Plain, false},
    {"Size:", 0, Size, Picture::Plain, false},
    {"RegNo:", 0, RegNo, Picture::Plain, false},
    // Taken back only when the list has been filled for the line's student.
    {"Subject ID:", 0, {"cboSubject", Part::Bound}, Picture::Plain, false},
};
static_assert(std::size(Entry) == SubjectColumn + 1);

constexpr Box EmptiedByAdd[] = {CreditText, CreditTag, Amount, Cheque, Naration, Session,
                                Plot,       Category,  Type,   Size,   RegNo};
constexpr Box EmptiedByRemove[] = {DebitText, DebitTag, Amount, Naration, Session};
constexpr Box EmptiedByClearAll[] = {
    {"txtVoucher"}, Cheque,          {"txtPaidTo"},    CreditText, CreditTag, Amount,   Naration,
    Session,        {"txtBill"},     {"txtGrdRow"},    RegNo,      Plot,      Category, Type,
    Size,           {"txtReceived"}, {"txtRemaingAmt"}};

constexpr HeaderColumn Header[] = {
    {"VouDate", HeaderFrom::Date},
    {"PaidReceive", HeaderFrom::Text, "txtPaidTo"},
    {"SlipNo", HeaderFrom::TextOrNull, "txtSlipNo"},
    {"VouStatus", HeaderFrom::Kind},
    {"TotalAmount", HeaderFrom::Total},
    {"Login", HeaderFrom::User},
    {"IRStatus", HeaderFrom::Text},
};
constexpr HeaderShown HeaderBoxes[] = {
    {"ChecqNo", "txtChecque"}, {"PaidReceive", "txtPaidTo"}, {"SlipNo", "txtSlipNo"}, {"IRStatus"}};

constexpr Posted Debit[] = {
    {"VouNo", From::Number},
    {"EntryNo", From::GridRow},
    {"AcCode", From::Cell, 0},
    {"DrAmt", From::CellAmount, 3},
    {"CrAmt", From::Zero},
    {"ChecqNo", From::Cell, 4},
    {"Naration", From::Cell, 5},
    {"CrAc", From::Cell, 6},
    {"SessionID", From::CellOrNull, 7},
    {"SubID", From::Cell, SubjectColumn},
    {"VouStatus", From::Kind},
    {"VouDate", From::Date},
};
constexpr Posted Credit[] = {
    {"VouNo", From::Number},
    {"EntryNo", From::GridRow},
    {"AcCode", From::Cell, 6},
    {"DrAmt", From::Zero},
    {"CrAmt", From::CellAmount, 3},
    {"ChecqNo", From::Cell, 4},
    {"Naration", From::Cell, 5},
    {"CrAc", From::Cell, 0},
    {"SessionID", From::CellOrNull, 7},
    {"SubID", From::Cell, SubjectColumn},
    {"VouStatus", From::Kind},
    {"VouDate", From::Date},
};
constexpr PostedLine Lines[] = {Debit, Credit};

constexpr ReadColumn Read[] = {
    {"CrAc"},    {"AcNames"},  {"CrName"}, {"CrAmt", Shown::Amount},
    {"ChecqNo"}, {"Naration"}, {"AcCode"}, {"SessionID"},
    {},          {},           {},         {},
    {"SubID"},
};

constexpr VoucherSearch::Criterion Criteria[] = {
    {"Voucher #", "convert(varchar(8),VouNo) Like '%", "%' order by VouNo desc"},
    {"Date", "VouDate = '", "' order by VouNo desc", Searched::Date},
    {"Slip No.", "SlipNo Like '%", "%' order by VouNo desc"},
    {"Paid To", "PaidReceive Like '%", "%' order by VouNo desc"},
};
constexpr VoucherSearch::Column Found[] = {
    {"Voucher # ", 2000}, {"Voucher Date", 2000}, {"Slip No.", 2000}, {"Paid To", 4000},
    {"Amount", 2000},     {"Multi", 1000},        {"Status", 1000},
};
constexpr VoucherSearch Search{
    .list =
        "Select VouNo,right('0' + rtrim(day(VouDate)),2) + '-' + right('0' + rtrim(month(VouDate)),2) + '-' "
        "+ rtrim(year(VouDate)) as VouDate,slipNo,PaidReceive,TotalAmount,Multi=case When (select "
        "count(vouno) from detjv where voustatus='",
    .from = "' and vouno=a.vouno and DrAmt>0) >1  then 'M' end, IRSTATUS  From MasJv a  Where VouStatus='",
    .criteria = Criteria,
    .columns = Found,
};

constexpr vouchers::VoucherKind Kind{
    .code = "FR",
    .setting = "RI",
    .form = "frmInsRec",
    .menu = "mnuRecvVou",
    .report = "rptSlip.rpt",
    .printed = "' and {DetJv.CrAmt} > 0",
    .caption = "Fee Receive Voucher",
    .afterFoundDebit = Focus::SelectCr,
    .entry = {.grid = "MshEntry",
              .rowUnderEdit = "txtGrdRow",
              .takenBackBy = shell::TakenBackBy::Click,
              .columns = Entry,
              .emptiedByAdd = EmptiedByAdd,
              .emptiedByRemove = EmptiedByRemove},
    .accountKnownBy = Part::Text,
    .afterNoDebit = Focus::Stays,
    .afterNoCredit = Focus::SelectCr,
    .emptiedByClearAll = EmptiedByClearAll,
    .numbers = vouchers::Numbers::OfLines,
    .savedWhole = false,
    .plainTotal = true,
    .header = Header,
    .headerShown = HeaderBoxes,
    .lines = Lines,
    .readLines = "Select AcCode,CrAc,AcNames=(Select AcName From Accounts Where RowId = CrAc),"
                 "CrName=(Select AcName From Accounts Where RowId = AcCode),DrAmt,CrAmt,ChecqNo,Naration,"
                 "SessionID,FileNo,BillNo,SubID From DetJv Where VouNo = ",
    .readLinesTail = " And VouStatus = 'FR' and CrAmt>0 Order By EntryNo ",
    .keptWhenPositive = "CrAmt",
    .firstRowBox = vouchers::Side::Debit,
    .firstRowText = "AcNames",
    .firstRowTag = "CrAc",
    .read = Read,
    .search = &Search,
};
static_assert(vouchers::isSound(Kind));

} // namespace

const vouchers::VoucherKind &feeReceipt() {
    return Kind;
}

} // namespace zel::institute
