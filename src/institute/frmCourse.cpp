#include "institute/frmCourse.h"

#include "shell/module1.h"
#include "ui_frmCourse.h"

namespace zel::institute {

namespace {

const shell::MasterTable &courses() {
    static const shell::MasterTable table{
        .noun = "Course",
        .keyColumn = "CourseId",
        .keyBox = "txtCourseNo",
        .firstBox = "txtCourseName",
        .notSaved = {"txtCourseNo"},
        .nextNumber = "select isnull(max(CourseId),0) + 1 as CourseId from tblCourse",
        .none = "select * from tblCourse where 0 = 1",
        .byKey = "select * from tblCourse where CourseId =",
        .remove = "Delete From tblCourse Where CourseId = ",
        .search =
            {
                .criteria =
                    {
                        {"Course Name",
                         "select CourseId,CourseName,Coursedurration,MonthYear from tblCourse where "
                         "CourseName like '%",
                         "%' order by CourseId desc "},
                        {"Course No",
                         "select CourseId,CourseName,Coursedurration,MonthYear from tblCourse where "
                         "CourseId like '%",
                         "%' order by CourseId desc "},
                    },
                .all = "select CourseId,CourseName,Coursedurration,MonthYear from tblCourse order by "
                       "CourseId desc ",
                .columns = {{"COURSE NO", 1200},
                            {"COURSE NAME", 4000},
                            {"COURSE DURRATION", 2000},
                            {"MONTH/YEAR", 1500}},
            },
        .chosenHeading = "Course no",
        .filled = {{"txtCourseNo", 0}, {"txtCourseName", 1}, {"txtCourseDurr", 2}, {"cmbMYear", 3}},
        .unloadsOnLostFocus = true,
    };
    return table;
}

} // namespace

frmCourse::frmCourse() : shell::MasterScreen(courses()), ui(std::make_unique<Ui::frmCourse>()) {
    ui->setupUi(this);
    connectControls();
}

frmCourse::~frmCourse() = default;

void frmCourse::fillCombos() {
    ui->cmbMYear->addItems({"Month", "Year"});
}

void frmCourse::writeFields() {
    shell::gRs.Fields("MonthYear") = ui->cmbMYear->Text();
}

} // namespace zel::institute
