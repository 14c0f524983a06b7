#include "institute/frmSubject.h"

#include "platform/controls/msg_box.h"
#include "shell/module1.h"
#include "ui_frmSubject.h"

using namespace zel::shell;

namespace zel::institute {

namespace {

const MasterTable &subjects() {
    static const MasterTable table{
        .noun = "Subject",
        .keyColumn = "SubId",
        .keyBox = "txtCodeNo",
        .firstBox = "txtSubName",
        .notSaved = {"txtCodeNo"},
        .nextNumber = "select isnull(max(SubId),0)+1 as SubId from tblSubject",
        .none = "select * from tblSubject where 0 = 1",
        .byKey = "select * from tblSubject where SubId =",
        .remove = "Delete From tblSubject Where SubId = ",
        .search =
            {
                .criteria =
                    {
                        {"Subject Name",
                         "select SubId,Course=(Select CourseName From tblCourse Where CourseId = "
                         "a.CourseId),SubName,TotAmt,a.CourseId from tblSubject a where SubName like '%",
                         "%' order by SubId desc "},
                        {"Code No",
                         "select SubId,Course=(Select CourseName From tblCourse Where CourseId = "
                         "a.CourseId),SubName,TotAmt,a.CourseId from tblSubject a where SubId like '%",
                         "%' order by SubId desc "},
                    },
                .all = "select SubId,Course=(Select CourseName From tblCourse Where CourseId = "
                       "a.CourseId),SubName,TotAmt,a.CourseId from tblSubject a order by SubId desc ",
                .columns = {{"CODE NO", 1200},
                            {"COURSE", 4000},
                            {"SUBJECTS", 4000},
                            {"TOTAL AMOUNT", 1500},
                            {"", 0}},
            },
        .chosenHeading = "Code no",
        .filled = {{"txtCodeNo", 0}, {"txtSubName", 2}, {"cboCource", 4, Part::Bound}, {"txtTotAmt", 3}},
        .unloadsOnLostFocus = true,
    };
    return table;
}

} // namespace

frmSubject::frmSubject() : MasterScreen(subjects()), ui(std::make_unique<Ui::frmSubject>()) {
    ui->setupUi(this);
    connectControls();
}

frmSubject::~frmSubject() = default;

void frmSubject::Form_Unload() {
    if (!gAddSubject)
        MasterScreen::Form_Unload();
}

void frmSubject::fillCombos() {
    bindCombo(*ui->cboCource, "Select CourseId,CourseName From tblCourse Order By CourseName", "CourseName",
              "CourseId", Picked::First);
}

bool frmSubject::beginSave() {
    if (!ui->cboCource->Text().isEmpty())
        return true;
    controls::MsgBox("Please Select Cource", controls::vbInformation);
    return false;
}

void frmSubject::writeFields() {
    gRs.Fields("CourseId") = ui->cboCource->BoundText();
}

void frmSubject::cmdExit_Click() {
    if (gAddSubject)
        Hide();
    else
        Unload();
}

} // namespace zel::institute
