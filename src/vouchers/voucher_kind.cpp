#include "vouchers/voucher_kind.h"

#include <QtGlobal>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace zel::vouchers {
namespace {

constexpr EntryColumn PairEntry[] = {
    {"", 0, Box::DebitTag},
    {"Account Debit:", 4000, Box::DebitText},
    {"Account Credit:", 4000, Box::CreditText},
    {"Amount:", 1900, Box::Amount},
    {"Checque No. :", 1900, Box::Cheque},
    {"Naration:", 4000, Box::Naration},
    {"CrAcCode:", 0, Box::CreditTag},
    {"File No:", 1200, Box::File},
    {"Bill No:", 1200, Box::Bill},
};

constexpr EntryColumn CashPaymentEntry[] = {
    {"", 0, Box::DebitTag},
    {"Account Title:", 5000, Box::DebitText},
    {"Debit:", 1900, Box::Amount},
    {"Checque No. :", 1900, Box::Cheque},
    {"Naration:", 5000, Box::Naration},
    {"File No:", 1200, Box::File},
    {"Bill No:", 1200, Box::Bill},
};

constexpr EntryColumn CashReceiveEntry[] = {
    {"", 0, Box::CreditTag},
    {"Account Title:", 5000, Box::CreditText},
    {"Credit:", 1900, Box::Amount},
    {"Checque No. :", 1900, Box::Cheque},
    {"Naration:", 5000, Box::Naration},
    {"File No:", 1200, Box::File},
    {"Bill No:", 1200, Box::Bill},
};

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
        .form = "frmBP",
        .menu = "mnuBPVouc",
        .report = "rptBP.rpt",
        .caption = "Bank Payment Voucher",
        .paidToLabel = "Paid To :",
        .fileBeforeBill = false,
        .amountTurnsYellow = false,
        .statusHandsFocusOn = true,
        .bankSide = Side::Credit,
        .emptiesFinderFilter = true,
        .afterFoundDebit = Focus::Amount,
        .afterFoundCredit = Focus::Amount,
        .entry = PairEntry,
        .afterNoDebit = Focus::SelectDr,
        .afterNoCredit = Focus::SelectCr,
        .afterSameAccount = Focus::Stays,
        .emptiedByAdd = {.debit = true, .credit = false},
        .emptiedByRemove = {.debit = true, .credit = false},
        .emptiedByClearAll = {.debit = true, .credit = true},
        .lines = PairLines,
        .summary = {},
        .readLines = "Select AcCode,CrAc,AcNames=(Select AcName From Accounts Where RowId = AcCode),"
                     "CrName=(Select AcName From Accounts Where RowId = CrAc),DrAmt,CrAmt,checqno,Naration,"
                     "FileNo,BillNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'BP' and DrAmt>0 Order By EntryNo ",
        .keptWhenPositive = "DrAmt",
        .readsHeaderCheque = false,
        .firstRowBox = Side::Credit,
        .firstRowText = "CrName",
        .firstRowTag = "CrAc",
        .read = PairRead,
    },
    {
        .code = "BR",
        .form = "frmBR",
        .menu = "mnuBRVouc",
        .report = "rptBR.rpt",
        .caption = "Bank Receive Voucher",
        .paidToLabel = "Receive From :",
        .fileBeforeBill = false,
        .amountTurnsYellow = false,
        .statusHandsFocusOn = true,
        .bankSide = Side::Debit,
        .emptiesFinderFilter = true,
        .afterFoundDebit = Focus::Amount,
        .afterFoundCredit = Focus::Amount,
        .entry = PairEntry,
        .afterNoDebit = Focus::SelectDr,
        .afterNoCredit = Focus::SelectCr,
        .afterSameAccount = Focus::Stays,
        .emptiedByAdd = {.debit = false, .credit = true},
        .emptiedByRemove = {.debit = true, .credit = false},
        .emptiedByClearAll = {.debit = true, .credit = true},
        .lines = PairLines,
        .summary = {},
        .readLines = "Select AcCode,CrAc,AcNames=(Select AcName From Accounts Where RowId = CrAc),"
                     "CrName=(Select AcName From Accounts Where RowId = AcCode),DrAmt,CrAmt,ChecqNo,Naration,"
                     "FileNo,BillNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'BR' and CrAmt>0 Order By EntryNo ",
        .keptWhenPositive = "CrAmt",
        .readsHeaderCheque = true,
        .firstRowBox = Side::Debit,
        .firstRowText = "AcNames",
        .firstRowTag = "CrAc",
        .read = BankReceiveRead,
    },
    {
        .code = "CP",
        .form = "frmCP",
        .menu = "mnuCPVou",
        .report = "rptCP.rpt",
        .caption = "Cash Payment Voucher",
        .paidToLabel = "Paid To :",
        .fileBeforeBill = false,
        .amountTurnsYellow = false,
        .statusHandsFocusOn = false,
        .bankSide = Side::None,
        .emptiesFinderFilter = false,
        .afterFoundDebit = Focus::Amount,
        .afterFoundCredit = Focus::Amount,
        .entry = CashPaymentEntry,
        .afterNoDebit = Focus::SelectDr,
        .afterNoCredit = Focus::Stays,
        .afterSameAccount = Focus::Stays,
        .emptiedByAdd = {.debit = true, .credit = false},
        .emptiedByRemove = {.debit = true, .credit = false},
        .emptiedByClearAll = {.debit = true, .credit = false},
        .lines = CashPaymentLines,
        .summary = CashPaymentSummary,
        .readLines = "Select AcCode,AcNames=(Select AcName From Accounts Where RowId = AcCode),DrAmt,CrAmt,"
                     "ChecqNo,Naration,BillNo,FileNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'CP' Order By EntryNo ",
        .keptWhenPositive = "DrAmt",
        .readsHeaderCheque = false,
        .firstRowBox = Side::None,
        .firstRowText = nullptr,
        .firstRowTag = nullptr,
        .read = CashPaymentRead,
    },
    {
        .code = "CR",
        .form = "frmCR",
        .menu = "mnuCRVou",
        .report = "rptCR.rpt",
        .caption = "Cash Receive Voucher",
        .paidToLabel = "Receive From :",
        .fileBeforeBill = false,
        .amountTurnsYellow = false,
        .statusHandsFocusOn = true,
        .bankSide = Side::None,
        .emptiesFinderFilter = false,
        .afterFoundDebit = Focus::Amount,
        .afterFoundCredit = Focus::Amount,
        .entry = CashReceiveEntry,
        .afterNoDebit = Focus::Stays,
        .afterNoCredit = Focus::SelectCr,
        .afterSameAccount = Focus::Stays,
        .emptiedByAdd = {.debit = false, .credit = true},
        .emptiedByRemove = {.debit = false, .credit = true},
        .emptiedByClearAll = {.debit = false, .credit = true},
        .lines = CashReceiveLines,
        .summary = CashReceiveSummary,
        .readLines = "Select AcCode,AcNames=(Select AcName From Accounts Where RowId = AcCode),DrAmt,CrAmt,"
                     "ChecqNo,Naration,FileNo,BillNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'CR' Order By EntryNo ",
        .keptWhenPositive = "CrAmt",
        .readsHeaderCheque = false,
        .firstRowBox = Side::None,
        .firstRowText = nullptr,
        .firstRowTag = nullptr,
        .read = CashReceiveRead,
    },
    {
        .code = "JV",
        .form = "frmJV",
        .menu = "mnuJVVouc",
        .report = "rptJV.rpt",
        .caption = "Journal Voucher",
        .paidToLabel = "Paid To :",
        .fileBeforeBill = true,
        .amountTurnsYellow = true,
        .statusHandsFocusOn = true,
        .bankSide = Side::None,
        .emptiesFinderFilter = true,
        .afterFoundDebit = Focus::SelectCr,
        .afterFoundCredit = Focus::Amount,
        .entry = PairEntry,
        .afterNoDebit = Focus::SelectDr,
        .afterNoCredit = Focus::SelectCr,
        .afterSameAccount = Focus::SelectDr,
        .emptiedByAdd = {.debit = false, .credit = false},
        .emptiedByRemove = {.debit = true, .credit = false},
        .emptiedByClearAll = {.debit = true, .credit = true},
        .lines = PairLines,
        .summary = {},
        .readLines = "Select AcCode,CrAc,AcNames=(Select AcName From Accounts Where RowId = AcCode),"
                     "CrName=(Select AcName From Accounts Where RowId = CrAc),DrAmt,CrAmt,ChecqNo,Naration,"
                     "FileNo,BillNo From DetJv Where VouNo = ",
        .readLinesTail = " And VouStatus = 'JV' and DrAmt>0 Order By EntryNo ",
        .keptWhenPositive = "DrAmt",
        .readsHeaderCheque = false,
        .firstRowBox = Side::None,
        .firstRowText = nullptr,
        .firstRowTag = nullptr,
        .read = PairRead,
    },
};

/// Each kind reads back as many columns as it shows, and posts only cells that it has.
constexpr bool sound(const VoucherKind &kind) {
    const auto fits = [&](PostedLine line) {
        return std::ranges::all_of(
            line, [&](const Posted &posted) { return posted.cell < int(kind.entry.size()); });
    };
    return kind.entry.size() == kind.read.size() && std::ranges::all_of(kind.lines, fits) &&
           fits(kind.summary);
}
static_assert(std::ranges::all_of(Kinds, sound));

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

int columnOf(const VoucherKind &kind, Box box) {
    const auto found = std::ranges::find(kind.entry, box, &EntryColumn::box);
    return found == kind.entry.end() ? -1 : int(found - kind.entry.begin());
}

} // namespace zel::vouchers
