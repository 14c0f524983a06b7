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

void writeLine(PostedLine line, const Posting &posting) {
    gRs.AddNew();
    for (const Posted &posted : line)
        gRs.Fields(posted.column) = valueOf(posted, posting);
    gRs.Update();
}

} // namespace

QString nextNumber(const VoucherKind &kind, std::int64_t start) {
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
    gRs.Fields("VouDate") = header.date;
    gRs.Fields("PaidReceive") = header.paidTo;
    gRs.Fields("VouStatus") = std::string(kind.code.text());
    gRs.Fields("TotalAmount") = header.total;
    gRs.Fields("Login") = shell::gUserName;
    gRs.Update();
}

void replaceLines(const VoucherKind &kind, const VoucherHeader &header, const VoucherLines &lines) {
    gCon.Execute("Delete From DetJV Where VouNo = "_sql + header.number + " And VouStatus = '" + kind.code +
                 "' ");
    OpenRs("Select * From DetJV where 0=1");
    const int amount = columnOf(kind, Box::Amount);
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
           kind.code + "'");
}

void openSearch(const VoucherKind &kind, Criterion criterion, const QString &text, QDate date) {
    Sql statement =
        "Select VouNo,right('0' + rtrim(day(VouDate)),2) + '-' + right('0' + rtrim(month(VouDate)),2) + '-' "
        "+ "
        "rtrim(year(VouDate)) as VouDate,PaidReceive,TotalAmount,Multi=case When (select count(vouno) from "
        "detjv where voustatus='"_sql +
        kind.code + "' and vouno=a.vouno and DrAmt>0) > 1 then 'M' end  From MasJv a  Where VouStatus='" +
        kind.code + "' And ";
    switch (criterion) {
    case Criterion::Number:
        OpenRs(statement + "convert(varchar(8),VouNo) Like '%" + text + "%' order by VouNo desc");
        break;
    case Criterion::Date:
        OpenRs(statement + "VouDate = " + "'" + date.year() + "-" + date.month() + "-" + date.day() + "'" +
               " order by VouNo desc");
        break;
    case Criterion::PaidTo:
        OpenRs(statement + "PaidReceive Like '%" + text + "%' order by VouNo desc");
        break;
    }
}

} // namespace zel::vouchers
