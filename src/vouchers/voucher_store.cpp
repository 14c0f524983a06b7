#include "vouchers/voucher_store.h"

#include "platform/base/number_text.h"
#include "platform/controls/grid.h"
#include "shell/module1.h"

namespace zel::vouchers {
namespace {

using shell::gCon;
using shell::gRs;
using shell::OpenRs;

struct Posting {
    const VoucherKind &kind;
    const VoucherHeader &header;
    const VoucherLines &lines;
    int row;
    Decimal sum;
};

Value valueOf(const Posted &posted, const Posting &posting) {
    const controls::Grid &grid = posting.lines.grid;
    const auto cell = [&](int row) { return grid.TextMatrix(row, posted.cell); };
    switch (posted.from) {
    case From::Number:
        return posting.header.number;
    case From::Kind:
        return std::string(posting.kind.code.text());
    case From::Date:
        return posting.header.date;
    case From::GridRow:
        return posting.row;
    case From::GridRows:
        return grid.Rows();
    case From::Cell:
        return cell(posting.row);
    case From::CellOrNull:
        return cell(posting.row).isEmpty() ? Value(Null()) : Value(cell(posting.row));
    case From::CellAmount:
        return format(cell(posting.row), "###0.00");
    case From::FirstRowCell:
        return cell(1);
    case From::Zero:
        return "0";
    case From::Sum:
        return posting.sum;
    case From::DebitTag:
        return posting.lines.debitTag;
    case From::CreditTag:
        return posting.lines.creditTag;
    }
    Q_UNREACHABLE();
}

/// `text` counts the texts that the header's columns have taken.
Value valueOf(const HeaderColumn &column, const VoucherKind &kind, const VoucherHeader &header,
              qsizetype &text) {
    switch (column.from) {
    case HeaderFrom::Date:
        return header.date;
    case HeaderFrom::Kind:
        return std::string(kind.code.text());
    case HeaderFrom::Total:
        return header.total;
    case HeaderFrom::User:
        return shell::gUserName;
    case HeaderFrom::Text:
        return header.texts.at(text++);
    case HeaderFrom::TextOrNull: {
        const QString given = header.texts.at(text++);
        return given.isEmpty() ? Value(Null()) : Value(given);
    }
    }
    Q_UNREACHABLE();
}

void writeLine(PostedLine line, const Posting &posting) {
    gRs.AddNew();
    for (const Posted &posted : line)
        gRs.Fields(posted.column) = valueOf(posted, posting);
    gRs.Update();
}

} // namespace

QString nextNumber(const VoucherKind &kind, std::int64_t start) {
    if (kind.numbers == Numbers::OfLines) {
        OpenRs("select isnull(max(VouNo),0)+1 as VouNo from DetJV Where VouStatus = '"_sql + kind.code + "'");
        return gRs.Fields("VouNo").text();
    }
    shell::OpenRsForOne("Select VouNo From MasJV Where Voustatus = '"_sql + kind.code + "'");
    if (gRs.RecordCount() == 0)
        return QString::number(start);
    OpenRs("select isnull(max(VouNo),0)+1 as VouNo from MasJV Where Voustatus = '"_sql + kind.code + "'");
    return gRs.Fields("VouNo").text();
}

void writeHeader(const VoucherKind &kind, const VoucherHeader &header, bool isNew) {
    if (isNew) {
        OpenRs("Select * From MasJV Where 0=1");
        gRs.AddNew();
        gRs.Fields("VouNo") = header.number;
    } else {
        OpenRs("Select * From MasJV Where VouNo = "_sql + header.number + " And VouStatus = '" + kind.code +
               "' ");
        if (gRs.RecordCount() > 0)
            gRs.MoveFirst();
    }
    qsizetype text = 0;
    for (const HeaderColumn &column : kind.header)
        gRs.Fields(column.column) = valueOf(column, kind, header, text);
    gRs.Update();
}

void replaceLines(const VoucherKind &kind, const VoucherHeader &header, const VoucherLines &lines) {
    gCon.Execute("Delete From DetJV Where VouNo = "_sql + header.number + " And VouStatus = '" + kind.code +
                 "' ");
    OpenRs("Select * From DetJV where 0=1");
    const int amount = amountColumn(kind);
    Posting posting{kind, header, lines, 0, Decimal()};
    for (posting.row = 1; posting.row < lines.grid.Rows(); ++posting.row) {
        if (lines.grid.TextMatrix(posting.row, 0).isEmpty())
            continue;
        for (const PostedLine line : kind.lines)
            writeLine(line, posting);
        posting.sum += leadingNumber(format(lines.grid.TextMatrix(posting.row, amount), "###0.00"));
    }
    if (!kind.summary.empty())
        writeLine(kind.summary, posting);
}

void deleteVoucher(const VoucherKind &kind, const QString &number) {
    gCon.Execute("Delete From DetJV where VouNo="_sql + number + " And VouStatus='" + kind.code + "'");
    gCon.Execute("Delete From MasJV where VouNo="_sql + number + " And VouStatus='" + kind.code + "'");
}

void openHeader(const VoucherKind &kind, const QString &number) {
    OpenRs("Select * From MasJv Where VouNo = "_sql + number + " And VouStatus = '" + kind.code + "' ");
}

void openLines(const VoucherKind &kind, const QString &number) {
    OpenRs(Sql(kind.readLines) + number + kind.readLinesTail);
}

void openSetting(const VoucherKind &kind) {
    OpenRs("Select VouNo,AcCode,Fix,AcStatus,AcTitle=(Select AcName From Accounts Where AcStatus='DD' and "
           "RowId=AcCode) From VouSetting Where VouStatus ='"_sql +
           kind.setting + "'");
}

namespace {
Sql listOf(const VoucherKind &kind) {
    return Sql(kind.search->list) + kind.code + kind.search->from + kind.code + "'";
}
} // namespace

RowsPtr listedVoucher(const VoucherKind &kind, const QString &number) {
    ado::Recordset own;
    own.Open(listOf(kind) + " And VouNo = " + number, gCon);
    return own.rows();
}

shell::SearchTable searchOf(const VoucherKind &kind) {
    const VoucherSearch &search = *kind.search;
    const Sql all = listOf(kind);
    shell::SearchTable table;
    table.all = all + " order by VouNo desc";
    for (const VoucherSearch::Criterion &known : search.criteria)
        table.criteria.push_back({known.caption, all + " And " + known.before, known.behind, known.searched});
    for (const VoucherSearch::Column &column : search.columns)
        table.columns.append({column.heading, column.twips});
    return table;
}

} // namespace zel::vouchers
