#include "institute/frmZelApplication.h"

#include "institute/application_search.h"
#include "institute/frmSearchSub.h"
#include "platform/base/number_text.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "shell/status_words.h"

#include "ui_frmZelApplication.h"

#include <utility>

using namespace zel::shell;

namespace zel::institute {

using controls::Button;
using controls::DateBox;
using controls::SetFocus;
using controls::TextBox;

namespace {

constexpr LineColumn Columns[] = {
    {"Sub ID", 0, {"txtSubId"}},
    {"Course", 1500, {"txtCourse"}},
    {"Subjects", 4000, {"txtSubName"}},
    {"Subject Amount", 1500, {"txt_rate"}, Picture::Number},
    {"Discount", 1200, {"txtDiscount"}, Picture::Number},
    {"Narration", 3000, {"txtNarration"}},
    {"Net Amount", 1500, {"txtNetAmt"}, Picture::Number},
    {"Rec. Amount", 1500, {"txtRecAmt"}, Picture::Number},
    {"InActive", 700, {"ChkInactive", Part::Ticked}},
};
constexpr int NetAmount = 6;
constexpr int RecAmount = 7;

constexpr ReadColumn Read[] = {{"subID"},     {"Course"},    {"subName"},   {"SubAmt"},  {"Discount"},
                               {"Nerration"}, {"NetAmount"}, {"RecAmount"}, {"InActive"}};
static_assert(std::size(Read) == std::size(Columns));

constexpr Box LineBoxes[] = {{"txtCourse"},    {"txtSubId"},  {"txtSubName"},
                             {"txtNarration"}, {"txt_rate"},  {"txtDiscount"},
                             {"txtNetAmt"},    {"txtRecAmt"}, {"ChkInactive", Part::Ticked},
                             {"txtEditRow"},   {"txtCourDur"}};

constexpr LineTable Lines{.grid = "MshSubject",
                          .rowUnderEdit = "txtEditRow",
                          .takenBackBy = TakenBackBy::Click,
                          .columns = Columns,
                          .countsWithoutCode = true,
                          // The course's duration stays until another subject comes.
                          .emptiedByAdd = std::span(LineBoxes).first(std::size(LineBoxes) - 1),
                          .emptiedByRemove = LineBoxes};

/// What the list of students is printed for, by criterion: a text of the search, or its date.
struct Printed {
    const char *criterion = nullptr;
    Literal before;
    Literal behind;
    Searched searched = Searched::Text;
};
constexpr Printed PrintedBy[] = {
    {"Student Name", "{tblMasApp.StuName} like '*", "*'"},
    {"Application ID", "{tblMasApp.AppId} =  ", ""},
    {"Cell No.", "{tblMasApp.CellNo} like '*", "*'"},
    {"Reg.#", "{tblMasApp.RegNo} like '*", "*'"},
    {"Course Wise", "{tblCourse.CourseName} = '", "'"},
    {"Subject Wise", "{tblSubject.SubName} like '*", "*'"},
    {"Date", "{tblMasApp.FixDate} = #", "#", Searched::PaddedDate},
};

Decimal valueOf(const TextBox *box) {
    return leadingNumber(box->text());
}

void showNumber(TextBox *box, Decimal number) {
    box->setText(QString::fromStdString(number.toString()));
}

} // namespace

frmZelApplication::frmZelApplication() : ui(std::make_unique<Ui::frmZelApplication>()) {
    ui->setupUi(this);
    m_lines = std::make_unique<LineGrid>(*this, Lines);
    m_lineBoxes = screenBoxes(*this, LineBoxes);
    connectEntry();
    connectLine();
    connectSearch();
}

frmZelApplication::~frmZelApplication() = default;

void frmZelApplication::connectEntry() {
    const auto handsFocusOn = [this](auto *box, QWidget *next) {
        connect(box, &std::remove_pointer_t<decltype(box)>::gotFocus, this, [next] { SetFocus(next); });
    };
    handsFocusOn(ui->txtAppId, ui->dtpDate);
    handsFocusOn(ui->DtpFix, ui->dtpDate);
    handsFocusOn(ui->txtTotAmount, ui->cmdFindsubject);
    handsFocusOn(ui->txtReceive, ui->cmdFindsubject);
    connect(ui->txtReceive, &TextBox::keyReleased, this, &frmZelApplication::txtReceive_KeyUp);
    connect(ui->txtAppId, &TextBox::changed, this, [this] {
        const QString number = ui->txtAppId->text();
        setUnderWay(*this, number.isEmpty() ? QString() : "correcting application " + number);
    });
    connect(ui->cmdSave, &Button::clicked, this, &frmZelApplication::cmdSave_Click);
    connect(ui->cmdCancel, &Button::clicked, this, &frmZelApplication::ClearAll);
    connect(ui->cmdDelete, &Button::clicked, this, &frmZelApplication::cmdDelete_Click);
    connect(ui->cmdPrint, &Button::clicked, this, &frmZelApplication::cmdPrint_Click);
    connect(ui->cmdExit, &Button::clicked, this, &frmZelApplication::cmdExit_Click);
    connectKeys(*this, keys());
}

void frmZelApplication::connectLine() {
    const auto leadsTo = [this](TextBox *box, QWidget *next) {
        connect(box, &TextBox::enterPressed, this, [next] { SetFocus(next); });
    };
    leadsTo(ui->txtDiscount, ui->txtNarration);
    leadsTo(ui->txtNarration, ui->txtRecAmt);
    leadsTo(ui->txtRecAmt, ui->cmd_ADD_1);
    connect(ui->txtDiscount, &TextBox::keyReleased, this, &frmZelApplication::txtDiscount_KeyUp);
    connect(ui->txtRecAmt, &TextBox::keyReleased, this, &frmZelApplication::txtRecAmt_KeyUp);
    connect(ui->txt_rate, &TextBox::keyReleased, this, &frmZelApplication::showNetAmount);
    connect(ui->cmdFindsubject, &Button::clicked, this, [] { frmSearchSub::reference->Show(); });
    connect(ui->cmd_ADD_1, &Button::clicked, this, &frmZelApplication::cmd_ADD_1_Click);
    connect(ui->cmd_Delete_2, &Button::clicked, this, &frmZelApplication::cmd_Delete_2_Click);
}

void frmZelApplication::connectSearch() {
    m_search = std::make_unique<Search>(
        applicationSearch(), SearchControls{ui->cmb_s_cri, ui->txt_s_value, ui->Msh, ui->DTPicker1});
    connect(ui->DTPicker1, &DateBox::calendarClosed, this, &frmZelApplication::FillGrid);
    connect(ui->Msh, &controls::Grid::rowDoubleClicked, this, &frmZelApplication::Msh_DblClick);
    connect(ui->Msh, &controls::Grid::enterPressed, this, &frmZelApplication::Msh_DblClick);
    connect(ui->cmdPrintStuRecord, &Button::clicked, this, &frmZelApplication::cmdPrintStuRecord_Click);
}

void frmZelApplication::Form_Load() {
    ui->lblLogin->setText("User Name : " + gUserName);
    bindCombo(*ui->cboSession, "Select SessionId,SessionName From tblSession Order By SessionName",
              "SessionName", "SessionId", Picked::Last);
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        ui->cmbAtoZ->addItem(QChar::fromLatin1(letter));
    ui->cmbAtoZ->setText("A");
    FixAccount();
    ui->SSTab1->setCurrentIndex(0);
    m_search->load();
    setGrid();
    FillGrid();
    SetMaxLenght();
    ui->dtpDate->setValue(QDate::currentDate());
    ui->DtpFix->setValue(QDate::currentDate());
}

void frmZelApplication::Form_Activate() {
    if (gSubID == 0)
        return;
    const QString amount = Value(std::exchange(gSubAmount, 0)).text();
    ui->txtCourse->setText(std::exchange(gCourseName, {}));
    ui->txtSubId->setText(QString::number(std::exchange(gSubID, 0)));
    ui->txtSubName->setText(std::exchange(gSubName, {}));
    ui->txtCourDur->setText(std::exchange(gCourseDur, {}));
    ui->txt_rate->setText(amount);
    ui->txtNetAmt->setText(amount);
    SetFocus(ui->txtDiscount);
}

void frmZelApplication::Form_Unload() {
    gAddSubject = false;
    ApplyMenus();
}

void frmZelApplication::setGrid() {
    m_lines->reset();
}

void frmZelApplication::SetMaxLenght() {
    OpenRs("Select * From tblDetApp Where 0=1");
    ui->txtNarration->setMaxTyped(gRs.Fields("Nerration").DefinedSize());
}

void frmZelApplication::FillGrid() {
    m_search->run();
}

void frmZelApplication::OpenData() {
    OpenRs("select * from tblMasApp where AppID = "_sql + ui->txtAppId->text());
    ui->txtEditRow->clear();
    if (gRs.RecordCount() < 1)
        return ClearAll();
    gRs.MoveFirst();
    loadTagged(*this, gRs);
    ui->txtStuNm->setText(gRs.Fields("StuName").text());
    ui->txtStuNm->setTag(gRs.Fields("CusCode").text());
    OldStuName = ui->txtStuNm->text();
    ui->cboSession->setBoundText(gRs.Fields("SessionId").text());
    ui->cmbAtoZ->setText(gRs.Fields("SectionAtoZ").text());
    ui->dtpDate->setValue(gRs.Fields("AppDate").value().date());
    const ado::Field fixed = gRs.Fields("FixDate");
    ui->DtpFix->setValue(fixed.isNull() ? QDate::currentDate() : fixed.value().date());
    if (gRs.Fields("NIC").isNull())
        ui->mskNIC->reset();
    else
        ui->mskNIC->setText(gRs.Fields("NIC").text());
    showLines();
    totAmount();
}

void frmZelApplication::showLines() {
    OpenRs("select a.*,Course=(select CourseName From tblCourse Where CourseId = (select CourseId From "
           "tblSubject Where subID = a.subID)),subName=(Select SubName from tblSubject where subID = "
           "a.subID) from tblDetApp a where a.AppID = "_sql +
           ui->txtAppId->text());
    gRs.MoveFirst(); // an application that has lost its lines fails here
    setGrid();
    for (; !gRs.atEnd(); gRs.MoveNext())
        m_lines->append(gRs, Read);
}

void frmZelApplication::ClearAll() {
    shell::ClearAll(*this);
    empty(m_lineBoxes);
    ui->txtStuNm->clear();
    ui->mskNIC->reset();
    OldStuName.clear();
    setGrid();
    ui->dtpDate->setValue(QDate::currentDate());
    SetFocus(ui->dtpDate);
}

void frmZelApplication::totAmount() {
    showNumber(ui->txtTotAmount, m_lines->total(NetAmount));
    showNumber(ui->txtReceive, m_lines->total(RecAmount));
    showNumber(ui->txtBalance, valueOf(ui->txtTotAmount) - valueOf(ui->txtReceive));
}

void frmZelApplication::txtDiscount_KeyUp() {
    // Against the net amount as it was before this key.
    if (valueOf(ui->txtNetAmt) < valueOf(ui->txtDiscount))
        ui->txtDiscount->clear();
    showNetAmount();
}

void frmZelApplication::showNetAmount() {
    showNumber(ui->txtNetAmt, valueOf(ui->txt_rate) - valueOf(ui->txtDiscount));
}

void frmZelApplication::txtRecAmt_KeyUp() {
    if (valueOf(ui->txtNetAmt) < valueOf(ui->txtRecAmt))
        ui->txtRecAmt->clear();
}

void frmZelApplication::txtReceive_KeyUp() {
    if (valueOf(ui->txtTotAmount) >= valueOf(ui->txtReceive))
        return;
    controls::MsgBox("Cash Receive equal or less then Total Amount", controls::vbInformation);
    ui->txtReceive->clear();
}

void frmZelApplication::cmd_ADD_1_Click() {
    const auto refuse = [](const char *message, TextBox *box) {
        controls::MsgBox(message, controls::vbInformation);
        SetFocus(box);
    };
    if (ui->txtSubName->text().isEmpty())
        return refuse("Please select Subject Name ", ui->txtSubName);
    if (valueOf(ui->txt_rate) == Decimal())
        return refuse("please enter Amount ", ui->txt_rate);
    if (m_lines->isRepeated())
        return refuse("This Subject Name is already exitis in detail", ui->txtSubName);
    m_lines->add();
    SetFocus(ui->cmdFindsubject);
    totAmount();
}

void frmZelApplication::cmd_Delete_2_Click() {
    m_lines->remove();
    totAmount();
}

void frmZelApplication::cmdPrint_Click() {
    if (ui->txtAppId->text().isEmpty()) {
        controls::MsgBox("Please select Student", controls::vbInformation);
        return;
    }
    ReportSettings settings;
    settings.logon = Logon::Fixed;
    settings.selection = "{tblMasApp.AppId} = "_sql + ui->txtAppId->text();
    m_report.print("rptApplication.rpt", settings);
}

void frmZelApplication::cmdPrintStuRecord_Click() {
    ReportSettings settings;
    for (const Printed &printed : PrintedBy) {
        if (ui->cmb_s_cri->Text() != QLatin1String(printed.criterion))
            continue;
        const QString value =
            printed.searched == Searched::Text ? ui->txt_s_value->text() : sqlDate(ui->DTPicker1->Value());
        settings.selection = Sql(printed.before) + value + printed.behind;
    }
    m_report.print("rptAdmissionDetail.rpt", settings);
}

void frmZelApplication::cmdExit_Click() {
    Unload();
    reference.clear();
}

void frmZelApplication::Msh_DblClick(int row) {
    if (row < 1 || ui->Msh->TextMatrix(row, 0).isEmpty())
        return;
    const QString number = ui->Msh->TextMatrix(row, 0);
    ClearAll();
    ui->txtAppId->setText(number);
    OpenData();
    ui->SSTab1->setCurrentIndex(0);
}

} // namespace zel::institute
