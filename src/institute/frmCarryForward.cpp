// The screen and its lines; what a save and a deletion write stands in frmCarryForward_save.cpp.

#include "institute/frmCarryForward.h"

#include "institute/frmFindApp.h"
#include "institute/frmSearchSub.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "shell/status_words.h"

#include "ui_frmCarryForward.h"

#include <utility>

using namespace zel::shell;

namespace zel::institute {

using controls::Button;
using controls::MsgBox;
using controls::SetFocus;
using controls::TextBox;
using controls::vbInformation;

namespace {

constexpr LineColumn Columns[] = {
    {"Sub ID", 0, {"txtSubId"}},
    {"Course", 1000, {"txtCourse"}},
    {"Subjects", 3000, {"txtSubName"}},
    {"Narration", 3000, {"txtNarration"}},
    {.heading = "Session", .twips = 1500, .box = {"cboSession"}, .takenBack = false},
    {"Forward Amt.", 2000, {"txtForAmt"}, Picture::Number},
    {"SessionID", 2000, {"cboSession", Part::Bound}, Picture::Number},
};

constexpr ReadColumn Read[] = {{"SubjectID"}, {"Course"}, {"subName"},  {"Naration"},
                               {"SessName"},  {"ForAmt"}, {"SessionID"}};
static_assert(std::size(Read) == std::size(Columns));

constexpr Box LineBoxes[] = {{"txtCourse"},    {"txtSubId"},  {"txtSubName"},
                             {"txtNarration"}, {"txtForAmt"}, {"txtCourDur"}};

constexpr LineTable Lines{.grid = "MshSubject",
                          .rowUnderEdit = "txtEditRow",
                          .takenBackBy = TakenBackBy::Click,
                          .columns = Columns,
                          // The course's duration is none of a new line's boxes.
                          .emptiedByAdd = std::span(LineBoxes).first(std::size(LineBoxes) - 1),
                          .emptiedByRemove = LineBoxes};

SearchTable forms() {
    const Sql all =
        "select FormID,right('0' + rtrim(day(FormDate)),2) + '-' + right('0' + "
        "rtrim(month(FormDate)),2) + '-' + rtrim(year(FormDate)) as FrmDate,AppID,Student=(select "
        "StuName From tblMasApp Where AppId = a.Appid) From tblMasCarryForw a";
    return {
        .criteria =
            {
                {"Student Name", all + " where AppID In (select AppId From tblMasApp Where StuName like '%",
                 "%')  Order by a.FormDate Desc"},
                {"Student ID", all + " where AppID =  ", "  Order by a.FormDate Desc"},
                {"Form ID", all + " where FormID = ", " Order by a.FormDate Desc"},
                {"Form Date", all + " where FormDate = '", "' Order by a.FormDate Desc",
                 Searched::PaddedDate},
            },
        .all = all + " Order by a.FormDate Desc",
        .columns = {{"Form ID", 1500}, {"Form Date", 2000}, {"Student ID", 1500}, {"Student Name", 4000}},
        .criterionSearches = true,
    };
}

} // namespace

frmCarryForward::frmCarryForward() : ui(std::make_unique<Ui::frmCarryForward>()) {
    ui->setupUi(this);
    m_lines = std::make_unique<LineGrid>(*this, Lines);
    m_search = std::make_unique<Search>(forms(), SearchControls{.criterion = ui->cboCriteria,
                                                                .value = ui->txt_s_value,
                                                                .list = ui->Msh,
                                                                .date = ui->DTPicker1});
    connectEntry();
    connect(ui->Msh, &controls::Grid::rowDoubleClicked, this, &frmCarryForward::Msh_DblClick);
    connect(ui->Msh, &controls::Grid::enterPressed, this, &frmCarryForward::Msh_DblClick);
}

frmCarryForward::~frmCarryForward() = default;

/// Two captions ask for F and two for D.
Shortcuts frmCarryForward::keys() {
    static constexpr controls::Shortcut Keys[] = {
        {Qt::Key_F6, "Takes the line out", "cmd_Delete_2"},
        {Qt::Key_F7, "Finds the student", "cmdFindApplication"},
        {Qt::Key_F8, "Finds the subject", "cmdFindsubject"},
        SaveKey,
    };
    return Keys;
}

void frmCarryForward::connectEntry() {
    connect(ui->txtStudent, &TextBox::gotFocus, this, [this] { SetFocus(ui->cmdFindApplication); });
    connect(ui->cmdFindApplication, &Button::clicked, this, [] { frmFindApp::reference->Show(); });
    connect(ui->cmdFindsubject, &Button::clicked, this, &frmCarryForward::cmdFindsubject_Click);
    connect(ui->cmd_ADD_1, &Button::clicked, this, &frmCarryForward::cmd_ADD_1_Click);
    connect(ui->cmd_Delete_2, &Button::clicked, m_lines.get(), &LineGrid::remove);
    connect(ui->cmdSave, &Button::clicked, this, &frmCarryForward::cmdSave_Click);
    connect(ui->cmdDelete, &Button::clicked, this, &frmCarryForward::cmdDelete_Click);
    connect(ui->cmdCancel, &Button::clicked, this, &frmCarryForward::ClearAll);
    connect(ui->cmdExit, &Button::clicked, this, &frmCarryForward::cmdExit_Click);
    connectKeys(*this, keys());
}

void frmCarryForward::Form_Load() {
    bindCombo(*ui->cboSession, "Select SessionId,SessionName From tblSession Order By SessionName",
              "SessionName", "SessionId", Picked::Last);
    ui->cboMasSession->setRowSource(ui->cboSession->RowSource());
    ui->cboMasSession->setCurrentIndex(ui->cboMasSession->count() - 1);
    m_lines->reset();
    m_search->load();
    NewNo();
    FillGrid();
    FixAccount();
}

void frmCarryForward::Form_Activate() {
    if (!std::exchange(m_shownBefore, true))
        SetFocus(ui->cmdFindApplication);
    if (gFoundAppID < 1) {
        ui->txtSubId->clear();
    } else {
        ui->txtStudent->setText(QString::number(gFoundAppID));
        OpenData();
    }
    if (gSubID == 0)
        return;
    ui->txtCourse->setText(std::exchange(gCourseName, {}));
    ui->txtSubId->setText(QString::number(std::exchange(gSubID, 0)));
    ui->txtSubName->setText(std::exchange(gSubName, {}));
    gCourseDur.clear();
    gSubAmount = 0;
    SetFocus(ui->txtNarration);
}

void frmCarryForward::Form_Unload() {
    gFoundAppID = 0;
    ApplyMenus();
}

void frmCarryForward::FixAccount() {
    OpenRs("Select VouNo,AcCode From VouSetting Where VouStatus ='CR'");
    if (gRs.RecordCount() > 0)
        CashAc = gRs.Fields("AcCode").value().integer();
}

void frmCarryForward::NewNo() {
    OpenRs("select isnull(max(FormID),0) +1 as FormID From tblMasCarryForw ");
    ui->txtFormID->setText(gRs.Fields("FormID").text());
    IsNewForm = true;
}

void frmCarryForward::FillGrid() {
    m_search->run();
}

void frmCarryForward::OpenData() {
    OpenRs("select * from tblMasApp where AppID = "_sql + ui->txtStudent->text());
    if (gRs.RecordCount() < 1)
        return ClearAll();
    gRs.MoveFirst();
    const QDate fixed = gRs.Fields("FixDate").value().date();
    ui->dtpStudent->setValue(fixed.isValid() ? fixed : QDate::currentDate());
    loadTagged(*this, gRs);
    ui->txtStuNm->setText(gRs.Fields("StuName").text());
    ui->txtStuNm->setTag(gRs.Fields("CusCode").text());
    ui->cboMasSession->setBoundText(gRs.Fields("SessionID").text());
    if (gRs.Fields("NIC").isNull())
        ui->mskNIC->reset();
    else
        ui->mskNIC->setText(gRs.Fields("NIC").text());
}

void frmCarryForward::openFormData() {
    OpenRs("Select * From tblMasCarryForw Where FormID = "_sql + ui->txtFormID->text());
    if (gRs.RecordCount() > 0) {
        gRs.MoveFirst();
        ui->dtpForm->setValue(gRs.Fields("FormDate").value().date());
        ui->txtStudent->setText(gRs.Fields("AppID").text());
        OpenData();
    }
    OpenRs("select *,SessName=(Select SessionName From tblSession Where SessionID = a.SessionID),"
           "Course=(select CourseName From tblCourse Where CourseId = (select CourseId From tblSubject Where "
           "subID = a.SubjectID)),subName=(Select SubName from tblSubject where subID = a.SubjectID) from "
           "tblDetCarryForw a Where a.FormId = "_sql +
           ui->txtFormID->text());
    if (gRs.RecordCount() < 1)
        return;
    m_lines->reset();
    for (gRs.MoveFirst(); !gRs.atEnd(); gRs.MoveNext())
        m_lines->append(gRs, Read);
}

void frmCarryForward::ClearAll() {
    setUnderWay(*this, {});
    shell::ClearAll(*this);
    ui->txtStuNm->clear();
    ui->txtStudent->clear();
    ui->mskNIC->reset();
    NewNo();
    m_lines->reset();
    SetFocus(ui->cmdFindApplication);
}

void frmCarryForward::cmdFindsubject_Click() {
    if (ui->txtStudent->text().isEmpty())
        refuse("please select Student", ui->cmdFindApplication);
    else
        frmSearchSub::reference->Show();
}

bool frmCarryForward::refuse(const char *message, QWidget *next) {
    MsgBox(message, vbInformation);
    SetFocus(next);
    return false;
}

bool frmCarryForward::lineIsComplete() {
    if (ui->txtSubId->text().isEmpty())
        return refuse("Please select Subject Name ", ui->txtSubName);
    if (ui->cboSession->BoundText() == ui->cboMasSession->BoundText())
        return refuse("this Subject is already in this session ", ui->cboSession);
    if (m_lines->isRepeated())
        return refuse("This Subject Name is already exitis in detail", ui->txtSubName);
    return true;
}

void frmCarryForward::cmd_ADD_1_Click() {
    if (!lineIsComplete())
        return;
    m_lines->add();
    if (MsgBox("Add more subject in detail", controls::vbYesNo + vbInformation) == controls::vbYes)
        SetFocus(ui->cmdFindsubject);
    else
        controls::focusNext(ui->cmd_ADD_1);
}

void frmCarryForward::cmdExit_Click() {
    Unload();
    reference.clear();
}

void frmCarryForward::Msh_DblClick(int row) {
    if (row < 1 || ui->Msh->TextMatrix(row, 0).isEmpty())
        return;
    ui->txtFormID->setText(ui->Msh->TextMatrix(row, 0));
    setUnderWay(*this, "correcting " + shownName().toLower());
    openFormData();
    ui->SSTab1->setCurrentIndex(0);
    SetFocus(ui->cmdFindApplication);
    IsNewForm = false;
}

QString frmCarryForward::shownName() const {
    return "Carry forward " + ui->txtFormID->text();
}

} // namespace zel::institute
