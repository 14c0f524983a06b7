#include "vouchers/voucher_kind.h"

#include <QtGlobal>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace zel::vouchers {
namespace {

using shell::Box;
using shell::LineColumn;
using shell::Part;
using shell::Picture;
using shell::ReadColumn;
using shell::Searched;
using shell::Shown;

constexpr Box DebitTag{"txtDrAc", Part::Tag};
constexpr Box DebitText{"txtDrAc"};
constexpr Box CreditTag{"txtCrAc", Part::Tag};
constexpr Box CreditText{"txtCrAc"};
constexpr Box Amount{"txtDRCR"};
constexpr Box Cheque{"txtChecque"};
constexpr Box Naration{"txtNaration"};
constexpr Box File{"txtFile"};
constexpr Box Bill{"txtBill"};

constexpr LineColumn PairEntry[] = {
    {"", 0, DebitTag},
    {"Account Debit:", 4000, DebitText},
    {"Account Credit:", 4000, CreditText},
    {"Amount:", 1900, Amount, Picture::Amount},
    {"Checque No. :", 1900, Cheque},
    {"Naration:", 4000, Naration},
    {"CrAcCode:", 0, CreditTag},
    {"File No:", 1200, File},
    {"Bill No:", 1200, Bill},
};

constexpr LineColumn CashPaymentEntry[] = {
    {"", 0, DebitTag},
    {"Account Title:", 5000, DebitText},
    {"Debit:", 1900, Amount, Picture::Amount},
    {"Checque No. :", 1900, Cheque},
    {"Naration:", 5000, Naration},
    {"File No:", 1200, File},
    {"Bill No:", 1200, Bill},
};

constexpr LineColumn CashReceiveEntry[] = {
    {"", 0, CreditTag},
    {"Account Title:", 5000, CreditText},
    {"Credit:", 1900, Amount, Picture::Amount},
    {"Checque No. :", 1900, Cheque},
    {"Naration:", 5000, Naration},
    {"File No:", 1200, File},
    {"Bill No:", 1200, Bill},
};

constexpr Box EmptiedWithDebit[] = {DebitText, DebitTag, Amount, Cheque, Bill, File};
constexpr Box EmptiedWithCredit[] = {CreditText, CreditTag, Amount, Cheque, Bill, File};
constexpr Box EmptiedAlone[] = {Amount, Cheque, Bill, File};

constexpr Box RemovedWithDebit[] = {DebitText, DebitTag, Amount, Naration};
constexpr Box RemovedWithCredit[] = {CreditText, CreditTag, Amount, Naration};

constexpr Box Voucher{"txtVoucher"};
constexpr Box PaidTo{"txtPaidTo"};
constexpr Box GridRow{"txtGrdRow"};
constexpr Box ClearedWithBoth[] = {Voucher,   Cheque, PaidTo,   DebitText, DebitTag, CreditText,
                                   CreditTag, Amount, Naration, Bill,      GridRow};
constexpr Box ClearedWithDebit[] = {Voucher, Cheque,   PaidTo, DebitText, DebitTag,
                                    Amount,  Naration, Bill,   GridRow};
constexpr Box ClearedWithCredit[] = {Voucher, Cheque,   PaidTo, CreditText, CreditTag,
                                     Amount,  Naration, Bill,   GridRow};

/// The lines of a kind in the grid and boxes that all five have.
constexpr shell::LineTable linesOf(std::span<const LineColumn> columns, std::span<const Box> emptiedByAdd,
                                   std::span<const Box> emptiedByRemove) {
    return {.grid = "MshEntry",
            .rowUnderEdit = "txtGrdRow",
            .columns = columns,
            .emptiedByAdd = emptiedByAdd,
            .emptiedByRemove = emptiedByRemove};
}

constexpr HeaderColumn Header[] = {
    {"VouDate", HeaderFrom::Date},   {"PaidReceive", HeaderFrom::Text, "txtPaidTo"},
    {"VouStatus", HeaderFrom::Kind}, {"TotalAmount", HeaderFrom::Total},
    {"Login", HeaderFrom::User},
};
constexpr HeaderShown ShownPaidTo[] = {{"PaidReceive", "txtPaidTo"}};
constexpr HeaderShown ShownChequeAndPaidTo[] = {{"ChecqNo", "txtChecque"}, {"PaidReceive", "txtPaidTo"}};

constexpr VoucherSearch::Criterion Criteria[] = {
    {"Voucher #", "convert(varchar(8),VouNo) Like '%", "%' order by VouNo desc"},
    {"Date", "VouDate = '", "' order by VouNo desc", Searched::Date},
    {"Paid To", "PaidReceive Like '%", "%' order by VouNo desc"},
};
constexpr VoucherSearch::Column Found[] = {
    {"Voucher # ", 2000}, {"Voucher Date", 2000}, {"Paid To", 5000}, {"Amount", 2000}, {"Multi", 1000}};
constexpr VoucherSearch Search{
    .list =
        "Select VouNo,right('0' + rtrim(day(VouDate)),2) + '-' + right('0' + rtrim(month(VouDate)),2) + '-' "
        "+ rtrim(year(VouDate)) as VouDate,PaidReceive,TotalAmount,Multi=case When (select count(vouno) from "
        "detjv where voustatus='",
    .from = "' and vouno=a.vouno and DrAmt>0) > 1 then 'M' end  From MasJv a  Where VouStatus='",
    .criteria = Criteria,
    .columns = Found,
};

constexpr Literal Printed = "' and {Company.comActive} = 'Y'";

constexpr Posted PairDebit[] = {
    {"VouNo", From::Number},         {"EntryNo", From::GridRow}, {"AcCode", From::Cell, 0},
    {"DrAmt", From::CellAmount, 3},  {"CrAmt", From::Zero},      {"ChecqNo", From::Cell, 4},
    {"Naration", From::Cell, 5},     {"CrAc", From::Cell, 6},    {"FileNo", From::CellOrNull, 7},
    {"BillNo", From::CellOrNull, 8}, {"VouStatus", From::Kind},  {"VouDate", From::Date},
};

constexpr Posted PairCredit[] = {
    {"VouNo", From::Number},         {"EntryNo", From::GridRow},     {"AcCode", From::Cell, 6},
    {"DrAmt", From::Zero},           {"CrAmt", From::CellAmount, 3}, {"ChecqNo", From::Cell, 4},
    {"Naration", From::Cell, 5},     {"CrAc", From::Cell, 0},        {"FileNo", From::CellOrNull, 7},
    {"BillNo", From::CellOrNull, 8}, {"VouStatus", From::Kind},      {"VouDate", From::Date},
};

constexpr Posted CashPaymentLine[] = {
    {"VouNo", From::Number},         {"EntryNo", From::GridRow}, {"AcCode", From::Cell, 0},
    {"DrAmt", From::CellAmount, 2},  {"CrAmt", From::Zero},      {"ChecqNo", From::Cell, 3},
    {"Naration", From::Cell, 4},     {"CrAc", From::CreditTag},  {"FileNo", From::CellOrNull, 5},
    {"BillNo", From::CellOrNull, 6}, {"VouStatus", From::Kind},  {"VouDate", From::Date},
};

constexpr Posted CashReceiveLine[] = {
    {"VouNo", From::Number},         {"EntryNo", From::GridRow},     {"AcCode", From::Cell, 0},
    {"DrAmt", From::Zero},           {"CrAmt", From::CellAmount, 2}, {"ChecqNo", From::Cell, 3},
    {"Naration", From::Cell, 4},     {"CrAc", From::DebitTag},       {"FileNo", From::CellOrNull, 5},
    {"BillNo", From::CellOrNull, 6}, {"VouStatus", From::Kind},      {"VouDate", From::Date},
};

constexpr Posted CashPaymentSummary[] = {
    {"VouNo", From::Number},   {"EntryNo", From::GridRows}, {"AcCode", From::CreditTag},
    {"DrAmt", From::Zero},     {"CrAmt", From::Sum},        {"Naration", From::FirstRowCell, 4},
    {"VouStatus", From::Kind}, {"VouDate", From::Date},
};

constexpr Posted CashReceiveSummary[] = {
    {"VouNo", From::Number},   {"EntryNo", From::GridRows}, {"AcCode", From::DebitTag},
    {"DrAmt", From::Sum},      {"CrAmt", From::Zero},       {"Naration", From::FirstRowCell, 4},
    {"VouStatus", From::Kind}, {"VouDate", From::Date},
};

constexpr PostedLine PairLines[] = {PairDebit, PairCredit};
constexpr PostedLine CashPaymentLines[] = {CashPaymentLine};
constexpr PostedLine CashReceiveLines[] = {CashReceiveLine};

constexpr ReadColumn PairRead[] = {
    {"AcCode", Shown::Text},  {"AcNames", Shown::TextOrBlank}, {"CrName", Shown::TextOrBlank},
    {"DrAmt", Shown::Amount}, {"ChecqNo", Shown::TextOrBlank}, {"Naration", Shown::Text},
    {"CrAc", Shown::Text},    {"FileNo", Shown::TextOrBlank},  {"BillNo", Shown::TextOrBlank},
};

constexpr ReadColumn BankReceiveRead[] = {
    {"CrAc", Shown::Text},    {"AcNames", Shown::TextOrBlank}, {"CrName", Shown::TextOrBlank},
    {"CrAmt", Shown::Amount}, {"ChecqNo", Shown::TextOrBlank}, {"Naration", Shown::TextOrBlank},
    {"AcCode", Shown::Text},  {"FileNo", Shown::TextOrBlank},  {"BillNo", Shown::TextOrBlank},
};

constexpr ReadColumn CashPaymentRead[] = {
    {"AcCode", Shown::Text},         {"AcNames", Shown::TextOrBlank}, {"DrAmt", Shown::Amount},
    {"ChecqNo", Shown::TextOrBlank}, {"Naration", Shown::Text},       {"FileNo", Shown::TextOrBlank},
    {"BillNo", Shown::TextOrBlank},
};

constexpr ReadColumn CashReceiveRead[] = {
    {"AcCode", Shown::Text},         {"AcNames", Shown::TextOrBlank}, {"CrAmt", Shown::Amount},
    {"ChecqNo", Shown::TextOrBlank}, {"Naration", Shown::Text},       {"FileNo", Shown::TextOrBlank},
    {"BillNo", Shown::TextOrBlank},
};

constexpr VoucherKind Kinds[] = {
    {
        .code = "BP",
        .setting = "BP",
        .form = "frmBP",
        .menu = "mnuBPVouc",
        .report = "rptBP.rpt",
        .printed = Printed,
        .caption = "Bank Payment Voucher",
        .paidToLabel = "Paid To :",
        .bankSide = Side::Credit,
        .entry = linesOf(PairEntry, EmptiedWithDebit, RemovedWithDebit),
        .afterNoDebit = Focus::SelectDr,
        .afterNoCredit = Focus::SelectCr,
        .emptiedByClearAll = ClearedWithBoth,
        .header = Header,
        .headerShown = ShownPaidTo,
        .lines = PairLines,
        .readLines = "Select AcCode,CrAc,AcNames=(Select AcName From Accounts Where RowId = AcCode),"
                     "CrName=(Select AcName From Accounts Where RowId = CrAc),DrAmt,CrAmt,checqno,Naration,"
                     "FileNo,BillNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'BP' and DrAmt>0 Order By EntryNo ",
        .keptWhenPositive = "DrAmt",
        .firstRowBox = Side::Credit,
        .firstRowText = "CrName",
        .firstRowTag = "CrAc",
        .read = PairRead,
        .search = &Search,
    },
    {
        .code = "BR",
        .setting = "BR",
        .form = "frmBR",
        .menu = "mnuBRVouc",
        .report = "rptBR.rpt",
        .printed = Printed,
        .caption = "Bank Receive Voucher",
        .paidToLabel = "Receive From :",
        .bankSide = Side::Debit,
        .entry = linesOf(PairEntry, EmptiedWithCredit, RemovedWithDebit),
        .afterNoDebit = Focus::SelectDr,
        .afterNoCredit = Focus::SelectCr,
        .emptiedByClearAll = ClearedWithBoth,
        .header = Header,
        .headerShown = ShownChequeAndPaidTo,
        .lines = PairLines,
        .readLines = "Select AcCode,CrAc,AcNames=(Select AcName From Accounts Where RowId = CrAc),"
                     "CrName=(Select AcName From Accounts Where RowId = AcCode),DrAmt,CrAmt,ChecqNo,Naration,"
                     "FileNo,BillNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'BR' and CrAmt>0 Order By EntryNo ",
        .keptWhenPositive = "CrAmt",
        .firstRowBox = Side::Debit,
        .firstRowText = "AcNames",
        .firstRowTag = "CrAc",
        .read = BankReceiveRead,
        .search = &Search,
    },
    {
        .code = "CP",
        .setting = "CP",
        .form = "frmCP",
        .menu = "mnuCPVou",
        .report = "rptCP.rpt",
        .printed = Printed,
        .caption = "Cash Payment Voucher",
        .paidToLabel = "Paid To :",
        .statusHandsFocusOn = false,
        .emptiesFinderFilter = false,
        .entry = linesOf(CashPaymentEntry, EmptiedWithDebit, RemovedWithDebit),
        .afterNoDebit = Focus::SelectDr,
        .afterNoCredit = Focus::Stays,
        .emptiedByClearAll = ClearedWithDebit,
        .header = Header,
        .headerShown = ShownPaidTo,
        .lines = CashPaymentLines,
        .summary = CashPaymentSummary,
        .readLines = "Select AcCode,AcNames=(Select AcName From Accounts Where RowId = AcCode),DrAmt,CrAmt,"
                     "ChecqNo,Naration,BillNo,FileNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'CP' Order By EntryNo ",
        .keptWhenPositive = "DrAmt",
        .read = CashPaymentRead,
        .search = &Search,
    },
    {
        .code = "CR",
        .setting = "CR",
        .form = "frmCR",
        .menu = "mnuCRVou",
        .report = "rptCR.rpt",
        .printed = Printed,
        .caption = "Cash Receive Voucher",
        .paidToLabel = "Receive From :",
        .emptiesFinderFilter = false,
        .entry = linesOf(CashReceiveEntry, EmptiedWithCredit, RemovedWithCredit),
        .afterNoDebit = Focus::Stays,
        .afterNoCredit = Focus::SelectCr,
        .emptiedByClearAll = ClearedWithCredit,
        .header = Header,
        .headerShown = ShownPaidTo,
        .lines = CashReceiveLines,
        .summary = CashReceiveSummary,
        .readLines = "Select AcCode,AcNames=(Select AcName From Accounts Where RowId = AcCode),DrAmt,CrAmt,"
                     "ChecqNo,Naration,FileNo,BillNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'CR' Order By EntryNo ",
        .keptWhenPositive = "CrAmt",
        .read = CashReceiveRead,
        .search = &Search,
    },
    {
        .code = "JV",
        .setting = "JV",
        .form = "frmJV",
        .menu = "mnuJVVouc",
        .report = "rptJV.rpt",
        .printed = Printed,
        .caption = "Journal Voucher",
        .paidToLabel = "Paid To :",
        .fileBeforeBill = true,
        .amountTurnsYellow = true,
        .afterFoundDebit = Focus::SelectCr,
        .entry = linesOf(PairEntry, EmptiedAlone, RemovedWithDebit),
        .afterNoDebit = Focus::SelectDr,
        .afterNoCredit = Focus::SelectCr,
        .afterSameAccount = Focus::SelectDr,
        .emptiedByClearAll = ClearedWithBoth,
        .header = Header,
        .headerShown = ShownPaidTo,
        .lines = PairLines,
        .readLines = "Select AcCode,CrAc,AcNames=(Select AcName From Accounts Where RowId = AcCode),"
                     "CrName=(Select AcName From Accounts Where RowId = CrAc),DrAmt,CrAmt,ChecqNo,Naration,"
                     "FileNo,BillNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'JV' and DrAmt>0 Order By EntryNo ",
        .keptWhenPositive = "DrAmt",
        .read = PairRead,
        .search = &Search,
    },
};
static_assert(std::ranges::all_of(Kinds, isSound));

} // namespace

std::span<const VoucherKind> voucherKinds() {
    return Kinds;
}

const VoucherKind &voucherKind(const char *code) {
    const auto found =
        std::ranges::find_if(Kinds, [&](const VoucherKind &kind) { return kind.code.text() == code; });
    Q_ASSERT(found != std::end(Kinds));
    return *found;
}

} // namespace zel::vouchers
