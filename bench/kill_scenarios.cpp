#include "kill_scenarios.h"

#include "institute/fee_receipt.h"
#include "platform/ado/statements.h"
#include "platform/controls/grid.h"
#include "schema/demo/institute.h"
#include "schema/demo/writer.h"
#include "schema/new_catalog.h"
#include "tests/demo/clerks.h"

#include <algorithm>
#include <map>

namespace bench {

namespace {

using namespace zel;
using namespace zel::test;
using controls::Grid;

constexpr int Students = 30;       ///< the first of the demonstration, whose accounts are 6925 and on
constexpr int FirstStudent = 6925; ///< RowID

/// The demonstration's beginning: its first students, five vouchers of each kind, what they carried.
const demo::Institute &begun() {
    static const demo::Institute made = [] {
        demo::Institute all = demo::makeInstitute();
        all.applications.resize(Students);
        const int accounts = all.student(Students) + 1;
        std::map<demo::Kind, int> kept;
        std::erase_if(all.vouchers, [&](demo::Voucher &voucher) {
            const bool later = std::ranges::any_of(voucher.lines, [&](const demo::Line &line) {
                return line.debit >= accounts || line.credit >= accounts ||
                       line.credit == all.student(4); // whose application is deleted
            });
            if (later || kept[voucher.kind] == 5)
                return true;
            voucher.number = ++kept[voucher.kind];
            return false;
        });
        std::erase_if(all.carried,
                      [](const demo::CarryForward &form) { return form.application > Students; });
        all.carried[0].lines[0].amount = 700'00;
        for (demo::SubjectLine &line : all.applications[3].lines)
            line.inactive = true; // they are carried
        all.applications[28].lines[2].inactive = true;
        return all;
    }();
    return made;
}

int rowId(demo::AccountAt account) {
    return FirstStudent - begun().student(1) + account;
}

RowIds rowIds() {
    RowIds ids;
    for (demo::AccountAt account = 0; account <= begun().student(Students); ++account)
        ids.push_back(rowId(account));
    return ids;
}

/// Both clicks of a mouse on a grid's row; a grid heeds one of them.
void clickOn(const Clerk &clerk, const char *grid, int row) {
    Q_EMIT clerk.the<Grid>(grid).rowClicked(row);
    Q_EMIT clerk.the<Grid>(grid).rowDoubleClicked(row);
}

/// Opens what has that number in the first column of a search list.
void open(const Clerk &clerk, const char *list, int number) {
    const Grid &grid = clerk.the<Grid>(list);
    for (int row = 1; row < grid.Rows(); ++row)
        if (grid.TextMatrix(row, 0) == QString::number(number))
            return clickOn(clerk, list, row);
    qFatal("%s has no %d", list, number);
}

void removeOpened(const Clerk &clerk) {
    textsOf([&] { clerk.the<QAbstractButton>("cmdDelete").click(); }, {QMessageBox::Yes});
}

demo::Voucher lastOf(demo::Kind kind) {
    const auto &all = begun().vouchers;
    return *std::find_if(all.rbegin(), all.rend(),
                         [kind](const demo::Voucher &voucher) { return voucher.kind == kind; });
}

/// The last voucher of the kind once more, with a second line and the next number.
demo::Voucher nextOf(demo::Kind kind) {
    demo::Voucher voucher = lastOf(kind);
    voucher.lines.resize(1);
    voucher.lines.push_back(voucher.lines.front());
    voucher.lines.back().amount = 77'70;
    ++voucher.number;
    return voucher;
}

Clerk openedVoucher(demo::Kind kind) {
    const vouchers::VoucherKind &of = kind == demo::Kind::FR
                                          ? institute::feeReceipt()
                                          : vouchers::voucherKind(demo::Codes[std::size_t(kind)]);
    Clerk clerk(of.menu, of.form);
    open(clerk, "mshSearch", lastOf(kind).number);
    return clerk;
}

/// Another amount on the first line, and another date.
void changeVoucher(demo::Kind kind) {
    const Clerk clerk = openedVoucher(kind);
    clickOn(clerk, "MshEntry", 1);
    clerk.put("txtDRCR", 12'345'60);
    clerk.push("cmdAdd");
    clerk.put("DTPicker", QDate(2024, 10, 1));
    clerk.push("cmdSave");
}

demo::Application newStudent(demo::Cents received = 5'000'50) {
    demo::Application application = begun().applications[0];
    application.name = QStringLiteral("SOMEBODY NEW");
    application.lines.resize(2);
    for (demo::SubjectLine &line : application.lines)
        line.received = received;
    return application;
}

Clerk openedApplication(int number) {
    Clerk clerk("mnuApp", "frmZelApplication");
    open(clerk, "Msh", number);
    return clerk;
}

void changeApplication() {
    const Clerk clerk = openedApplication(2);
    clickOn(clerk, "MshSubject", 1);
    clerk.put("txtDiscount", 500'00);
    clerk.put("txtNetAmt", 11'000'00);
    clerk.put("txtRecAmt", 4'100'50);
    clerk.push("cmd_ADD_1");
    clickOn(clerk, "MshSubject", 3);
    clerk.push("cmd_Delete_2");
    clerk.put("txtStuNm", QStringLiteral("ANOTHER NAME"));
    clerk.put("DtpFix", QDate(2024, 7, 30));
    clerk.push("cmdSave");
}

void carry(int application, const std::vector<int> &subjects) {
    demo::CarryForward form{QDate(2025, 9, 1), application, {}};
    for (const int subject : subjects)
        form.lines.push_back({subject, 2, 1'000'00 + subject * 10, {}});
    enterForm(form);
}

/// Another date and amount, and one more subject.
void changeCarried() {
    const Clerk clerk("mnuCarryFor", "frmCarryForward");
    open(clerk, "Msh", 1);
    clickOn(clerk, "MshSubject", 1);
    clerk.put("txtForAmt", 800'00);
    clerk.push("cmd_ADD_1", {"Add more subject in detail"});
    clerk.put("txtSubId", QStringLiteral("23"));
    clerk.pick("cboSession", 2);
    clerk.put("txtForAmt", 900'00);
    clerk.push("cmd_ADD_1", {"Add more subject in detail"});
    clerk.put("dtpForm", QDate(2025, 9, 2));
    clerk.push("cmdSave");
}

void addHandEntered(std::vector<Scenario> &all) {
    for (const demo::Kind kind :
         {demo::Kind::BP, demo::Kind::BR, demo::Kind::CP, demo::Kind::CR, demo::Kind::JV}) {
        const QString name = QLatin1String(demo::Codes[std::size_t(kind)]);
        all.push_back({name + ", new", [kind] { enterVoucher(nextOf(kind), rowIds()); }, {}});
        all.push_back({name + ", changed", [kind] { changeVoucher(kind); }, {}});
    }
    all.push_back({"a bank payment goes",
                   [] { removeOpened(openedVoucher(demo::Kind::BP)); },
                   {{"delete DetJV", "voucher-without-lines VouStatus=BP VouNo=5"}, {"delete MasJV", ""}}});
}

void addReceipts(std::vector<Scenario> &all) {
    all.push_back(
        {"a fee receipt, new",
         [] { enterReceipt(nextOf(demo::Kind::FR), rowIds()); },
         {{"insert MasJV", "voucher-without-lines VouStatus=FR VouNo=6"},
          {"delete DetJV", "voucher-without-lines VouStatus=FR VouNo=6"},
          {"insert DetJV", "voucher-balance VouStatus=FR VouNo=6; voucher-total VouStatus=FR VouNo=6"},
          {"insert DetJV", "voucher-total VouStatus=FR VouNo=6"},
          {"insert DetJV", "voucher-balance VouStatus=FR VouNo=6"},
          {"insert DetJV", ""}}});
    all.push_back({"a fee receipt, changed",
                   [] { changeVoucher(demo::Kind::FR); },
                   {{"update MasJV", "line-date VouStatus=FR VouNo=5; voucher-total VouStatus=FR VouNo=5"},
                    {"delete DetJV", "voucher-without-lines VouStatus=FR VouNo=5"},
                    {"insert DetJV", "voucher-balance VouStatus=FR VouNo=5"},
                    {"insert DetJV", ""}}});
    all.push_back({"a fee receipt goes",
                   [] { removeOpened(openedVoucher(demo::Kind::FR)); },
                   {{"delete DetJV", "voucher-without-lines VouStatus=FR VouNo=5"}, {"delete MasJV", ""}}});
}

void addApplications(std::vector<Scenario> &all) {
    all.push_back(
        {"an application, new",
         [] { enterApplication(newStudent()); },
         {{"insert tblMasApp", "application-without-account AppID=31; application-without-lines AppID=31"},
          {"delete tblDetApp", "application-without-account AppID=31; application-without-lines AppID=31"},
          {"insert tblDetApp", "application-received AppID=31; application-total AppID=31; "
                               "application-without-account AppID=31"},
          {"insert tblDetApp", "application-without-account AppID=31"},
          {"insert Accounts", "application-without-account AppID=31; student-without-application RowID=6955"},
          {"update tblMasApp", "receipt-missing AppID=31"},
          {"delete DetJV", "receipt-missing AppID=31"},
          {"insert DetJV", "voucher-balance VouStatus=AR VouNo=6955"},
          {"insert DetJV", ""}}});
    all.push_back(
        {"an application without cash",
         [] { enterApplication(newStudent(0)); },
         {{"insert tblMasApp", "application-without-account AppID=31; application-without-lines AppID=31"},
          {"delete tblDetApp", "application-without-account AppID=31; application-without-lines AppID=31"},
          {"insert tblDetApp", "application-total AppID=31; application-without-account AppID=31"},
          {"insert tblDetApp", "application-without-account AppID=31"},
          {"insert Accounts", "application-without-account AppID=31; student-without-application RowID=6955"},
          {"update tblMasApp", ""},
          {"delete DetJV", ""}}});
    // The receipt of the application that was opened before goes, and stays away.
    all.push_back(
        {"an application after another",
         [] {
             openedApplication(2);
             enterApplication(newStudent());
         },
         {{"insert tblMasApp", "application-without-account AppID=31; application-without-lines AppID=31"},
          {"delete tblDetApp", "application-without-account AppID=31; application-without-lines AppID=31"},
          {"insert tblDetApp", "application-received AppID=31; application-total AppID=31; "
                               "application-without-account AppID=31"},
          {"insert tblDetApp", "application-without-account AppID=31"},
          {"insert Accounts", "application-without-account AppID=31; student-without-application RowID=6955"},
          {"update tblMasApp", "receipt-missing AppID=31"},
          {"delete DetJV", "receipt-missing AppID=2; receipt-missing AppID=31"},
          {"insert DetJV", "receipt-missing AppID=2; voucher-balance VouStatus=AR VouNo=6955"},
          {"insert DetJV", "receipt-missing AppID=2"}}});
    all.push_back(
        {"an application, changed",
         changeApplication,
         {{"update tblMasApp",
           "application-received AppID=2; application-total AppID=2; receipt-amount AppID=2; "
           "receipt-date AppID=2; student-balance AppID=2; student-name AppID=2"},
          {"delete tblDetApp",
           "application-without-lines AppID=2; receipt-amount AppID=2; receipt-date AppID=2; "
           "student-balance AppID=2; student-name AppID=2"},
          {"insert tblDetApp",
           "application-received AppID=2; application-total AppID=2; receipt-amount AppID=2; "
           "receipt-date AppID=2; student-balance AppID=2; student-name AppID=2"},
          {"insert tblDetApp",
           "receipt-amount AppID=2; receipt-date AppID=2; student-balance AppID=2; student-name AppID=2"},
          {"update Accounts", "receipt-amount AppID=2; receipt-date AppID=2"},
          {"delete DetJV", "receipt-missing AppID=2"},
          {"insert DetJV", "voucher-balance VouStatus=AR VouNo=6926"},
          {"insert DetJV", ""}}});
    all.push_back(
        {"an application goes",
         [] { removeOpened(openedApplication(4)); },
         {{"delete tblDetApp", "application-without-lines AppID=4"},
          {"delete tblMasApp", "receipt-left-behind VouNo=6928; student-without-application RowID=6928"},
          {"delete Accounts", "receipt-left-behind VouNo=6928"}}});
}

void addForms(std::vector<Scenario> &all) {
    all.push_back({"a carry forward, new",
                   [] {
                       carry(4, {6, 7});
                   },
                   {{"insert tblMasCarryForw", "form-without-lines FormID=4"},
                    {"delete tblDetCarryForw", "form-without-lines FormID=4"},
                    {"insert tblDetCarryForw", "carry-not-credited FormID=4 SubjectID=6 SessionID=2"},
                    {"insert tblDetCarryForw", "carry-not-credited FormID=4 SubjectID=6 SessionID=2; "
                                               "carry-not-credited FormID=4 SubjectID=7 SessionID=2"},
                    {"delete DetJV", "carry-not-credited FormID=4 SubjectID=6 SessionID=2; "
                                     "carry-not-credited FormID=4 SubjectID=7 SessionID=2"},
                    {"insert DetJV", "carry-not-credited FormID=4 SubjectID=7 SessionID=2"},
                    {"insert DetJV", ""}}});
    all.push_back(
        {"a carry forward, changed",
         changeCarried,
         {{"update tblMasCarryForw", "form-date FormID=1"},
          {"delete tblDetCarryForw", "carry-credit-stray VouNo=1 SubID=24 SessionID=2; form-date FormID=1; "
                                     "form-without-lines FormID=1"},
          {"insert tblDetCarryForw", "carry-amount FormID=1 SubjectID=24 SessionID=2; form-date FormID=1"},
          {"insert tblDetCarryForw",
           "carry-amount FormID=1 SubjectID=24 SessionID=2; "
           "carry-not-credited FormID=1 SubjectID=23 SessionID=2; form-date FormID=1"},
          {"delete DetJV", "carry-not-credited FormID=1 SubjectID=23 SessionID=2; "
                           "carry-not-credited FormID=1 SubjectID=24 SessionID=2"},
          {"insert DetJV", "carry-not-credited FormID=1 SubjectID=23 SessionID=2"},
          {"insert DetJV", ""}}});
    all.push_back({"a carry forward goes",
                   [] {
                       const Clerk clerk("mnuCarryFor", "frmCarryForward");
                       open(clerk, "Msh", 1);
                       removeOpened(clerk);
                   },
                   {{"delete DetJV", "carry-not-credited FormID=1 SubjectID=24 SessionID=2"},
                    {"delete tblDetCarryForw", "form-without-lines FormID=1"},
                    {"delete tblMasCarryForw", ""}}});
}

} // namespace

void makeKillCatalog(const QString &folder) {
    schema::NewCatalog wanted;
    wanted.filled = [](ado::Driver &driver) { demo::write(driver, begun()); };
    schema::createCatalog(folder, wanted);
}

std::vector<Scenario> killScenarios() {
    std::vector<Scenario> all;
    addHandEntered(all);
    addReceipts(all);
    addApplications(all);
    addForms(all);
    return all;
}

} // namespace bench
