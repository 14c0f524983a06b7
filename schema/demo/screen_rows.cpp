#include "schema/demo/screen_rows.h"

#include "platform/ado/column_rules.h"
#include "platform/ado/drivers/driver.h"

#include <algorithm>

namespace zel::demo {

Value money(Cents amount) {
    return Decimal::fromTenThousandths(amount * 100);
}

Value orNull(const QString &text) {
    return text.isEmpty() ? Value(Null()) : Value(text);
}

Value orNull(std::optional<Cents> amount) {
    return amount ? money(*amount) : Value(Null());
}

Value typed(Cents amount) {
    return amount == 0 ? Value(Null()) : money(amount);
}

std::int64_t ScreenRows::add(const char *table, std::initializer_list<Cell> cells) {
    const std::vector<tsql::Column> &columns = m_driver.table(table)->columns;
    std::vector<Value> values;
    std::vector<ado::Assignment> row;
    values.reserve(cells.size()); // so that none moves
    for (const Cell &cell : cells) {
        const auto column = std::ranges::find(columns, cell.column, &tsql::Column::name);
        values.push_back(ado::fitted(cell.value, column->type));
        row.push_back({cell.column, values.back()});
    }
    return m_driver.insertRow(table, row);
}

std::int64_t ScreenRows::writeAccount(const Account &account) {
    const auto point = account.nodes.lastIndexOf(u'.');
    const QString parent = account.nodes.left(point); // all of it where there is no point
    switch (account.nodes.count(u'.')) {
    case 0:
        return add("Accounts", {{"ParentID", account.nodes},
                                {"Dcode", 0},
                                {"AcNodes", account.nodes},
                                {"AcName", account.name},
                                {"AcStatus", "HH"},
                                {"OrderStatus", orNull(account.order)}});
    case 1:
        return add("Accounts", {{"ParentID", parent},
                                {"Dcode", account.nodes.mid(point + 1)},
                                {"AcNodes", account.nodes},
                                {"AcStatus", "HD"},
                                {"AcName", account.name}});
    default:
        return add("Accounts", {{"ParentID", parent},
                                {"Dcode", account.nodes.mid(point + 1)},
                                {"AcNodes", account.nodes},
                                {"AcStatus", "DD"},
                                {"openDate", account.opened},
                                {"AcName", account.name},
                                {"OpenBal", orNull(account.opening)},
                                {"BStatus", orNull(account.mark)},
                                {"ContactPer", orNull(account.contactPerson)},
                                {"Addr", orNull(account.address)},
                                {"Contact", orNull(account.contact)},
                                {"Email", orNull(account.email)},
                                {"Addr2", orNull(account.address2)},
                                {"Fax", orNull(account.fax)},
                                {"WebSite", orNull(account.website)},
                                {"Location", orNull(account.location)},
                                {"GST", orNull(account.gst)},
                                {"NTN", orNull(account.ntn)}});
    }
}

std::int64_t ScreenRows::writeApplication(const Application &application, const Registered &as) {
    const std::int64_t student = add("Accounts", {{"ParentID", as.head},
                                                  {"Dcode", as.place},
                                                  {"AcNodes", as.head + u'.' + QString::number(as.place)},
                                                  {"AcStatus", "DD"},
                                                  {"AcName", application.name},
                                                  {"Addr", application.address},
                                                  {"Contact", application.residence},
                                                  {"OpenBal", money(application.total())}});
    add("tblMasApp", {{"AppID", as.number},
                      {"CusCode", student},
                      {"SessionID", application.session},
                      {"RegNo", orNull(application.regNo)},
                      {"StuName", application.name},
                      {"FatherName", orNull(application.father)},
                      {"NIC", application.nic},
                      {"CellNo", application.cell},
                      {"Contact", orNull(application.residence)},
                      {"Office", orNull(application.office)},
                      {"Email", orNull(application.email)},
                      {"MailAdd", orNull(application.address)},
                      {"LastQulS", orNull(application.education)},
                      {"AudCompany", orNull(application.firm)},
                      {"ExamAtt", orNull(application.attempt)},
                      {"ModPart", orNull(application.part)},
                      {"SectionAtoZ", QString(application.section)},
                      {"AppDate", application.date},
                      {"FixDate", application.date},
                      {"RegFee", typed(application.registrationFee)},
                      {"TotAmt", money(application.total())},
                      {"CashReceive", money(application.received())},
                      {"User_Name", m_login}});
    for (const SubjectLine &line : application.lines)
        add("tblDetApp", {{"AppID", as.number},
                          {"SubID", line.subject},
                          {"SubAmt", money(line.amount)},
                          {"Discount", money(line.discount)},
                          {"NetAmount", money(line.net())},
                          {"RecAmount", typed(line.received)},
                          {"Nerration", orNull(line.narration)},
                          {"InActive", line.inactive ? Value("1") : Value(Null())}});
    if (application.received() > 0)
        writeReceipt(application, student, as.cash);
    return student;
}

void ScreenRows::writeReceipt(const Application &application, std::int64_t student, std::int64_t cash) {
    for (const bool debit : {true, false})
        add("DetJV", {{"VouNo", student},
                      {"VouStatus", "AR"},
                      {"VouDate", application.date},
                      {"EntryNo", debit ? 1 : 2},
                      {"AcCode", debit ? cash : student},
                      {"DrAmt", money(debit ? application.received() : 0)},
                      {"CrAmt", money(debit ? 0 : application.received())},
                      {"Naration", debit ? QStringLiteral("App. Rec Amount (%1)").arg(application.name)
                                         : QStringLiteral("App. Rec Amount ")},
                      {"CrAc", debit ? student : cash}});
}

} // namespace zel::demo
