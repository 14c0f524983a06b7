#include "institute/frmSearchSub.h"

#include "institute/frmSubject.h"
#include "platform/base/number_text.h"
#include "platform/controls/focus.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "ui_frmSearchSub.h"

using namespace zel::shell;

namespace zel::institute {

namespace {

QList<controls::Grid::Column> columns() {
    return {{"Subject ID", 1200},
            {"Course", 3000},
            {"Subject Name", 4000},
            {"Course Durration", 1800},
            {"TotAmt", 1500}};
}

} // namespace

frmSearchSub::frmSearchSub() : Form(Kind::OwnSize), ui(std::make_unique<Ui::frmSearchSub>()) {
    ui->setupUi(this);
    // As on the screen that asks; else the key would be the menu's, which leaves them all.
    ui->txtExit->setShortcut(controls::keys::Leave.key);
    ui->txtExit->setToolTip("Exit (Alt+X)");
    connect(ui->DataCboCourse, &controls::DataCombo::changed, this, &frmSearchSub::FillGrid);
    connect(ui->txtFind, &controls::TextBox::changed, this, &frmSearchSub::FillGrid);
    connect(ui->txtFind, &controls::TextBox::upOrDown, this, [this] { controls::SetFocus(ui->Msh); });
    connect(ui->Msh, &controls::Grid::rowDoubleClicked, this, &frmSearchSub::Msh_DblClick);
    connect(ui->Msh, &controls::Grid::enterPressed, this, &frmSearchSub::Msh_DblClick);
    connect(ui->cmdSubject, &controls::Button::clicked, this, &frmSearchSub::cmdSubject_Click);
    connect(ui->txtExit, &controls::Button::clicked, this, &frmSearchSub::txtExit_Click);
}

frmSearchSub::~frmSearchSub() = default;

void frmSearchSub::Form_Load() {
    const QSignalBlocker quiet(ui->DataCboCourse);
    bindCombo(*ui->DataCboCourse, "Select CourseId,CourseName From tblCourse Order By CourseName",
              "CourseName", "CourseId", Picked::First);
    FillGrid();
    setGrid();
}

void frmSearchSub::Form_Activate() {
    FillGrid();
    setGrid();
    controls::SetFocus(ui->txtFind);
}

void frmSearchSub::Form_Unload() {
    gFinderOpen = false;
}

void frmSearchSub::Form_LostFocus() {
    txtExit_Click();
}

void frmSearchSub::FillGrid() {
    const Sql subjects =
        "Select SubId,Course=(Select CourseName From tblCourse Where CourseId = "
        "a.CourseId),SubName,CourseDurration=(Select Coursedurration From tblCourse Where CourseId = "
        "a.CourseId),TotAmt from tblSubject a where ";
    const bool byCourse = gFoundAppID < 1;
    ui->DataCboCourse->setEnabled(byCourse);
    const Sql which = byCourse ? "CourseId = "_sql + ui->DataCboCourse->BoundText()
                               : "SubID in (select SubID From tblDetApp where AppID = "_sql + gFoundAppID +
                                     " And not InActive  is null)";
    fillGrid(*ui->Msh,
             subjects + which + " and subName Like '%" + ui->txtFind->text() + "%' order by subName",
             columns());
}

void frmSearchSub::setGrid() {
    ui->Msh->setColumns(columns());
}

void frmSearchSub::Msh_DblClick(int row) {
    const controls::Grid &list = *ui->Msh;
    if (row < 1 || list.TextMatrix(row, 0).isEmpty())
        return;
    gSubID = list.TextMatrix(row, 0).toInt();
    gCourseName = list.TextMatrix(row, 1);
    gSubName = list.TextMatrix(row, 2);
    gCourseDur = list.TextMatrix(row, 3);
    gSubAmount = leadingNumber(list.TextMatrix(row, 4)).toDouble();
    Unload();
    reference.clear();
}

void frmSearchSub::cmdSubject_Click() {
    gAddSubject = true;
    frmSubject::reference->Show();
}

void frmSearchSub::txtExit_Click() {
    Unload();
    reference.clear();
}

} // namespace zel::institute
