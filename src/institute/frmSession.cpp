#include "institute/frmSession.h"
#include "ui_frmSession.h"

namespace zel::institute {

namespace {

const shell::MasterTable &sessions() {
    static const shell::MasterTable table{
        .noun = "Session",
        .keyColumn = "SessionId",
        .keyBox = "txtSessionNo",
        .firstBox = "txtSessionName",
        .focusAfterSave = true,
        .notSaved = {"txtSessionNo"},
        .nextNumber = "select isnull(max(SessionId),0) + 1 as SessionId from tblSession",
        .none = "select * from tblSession where 0 = 1",
        .byKey = "select * from tblSession where SessionId =",
        .remove = "Delete From tblSession Where SessionId = ",
        .search =
            {
                .criteria =
                    {
                        {"Session Name",
                         "select SessionId,SessionName from tblSession where SessionName like '%",
                         "%' order by SessionId desc "},
                        {"Session No", "select SessionId,SessionName from tblSession where SessionId like '%",
                         "%' order by SessionId desc "},
                    },
                .all = "select SessionId,SessionName from tblSession order by SessionId desc ",
                .columns = {{"SESSION NO", 1200}, {"SESSION NAME", 3000}},
            },
        .chosenHeading = "Session No",
        .filled = {{"txtSessionNo", 0}, {"txtSessionName", 1}},
        .unloadsOnLostFocus = true,
    };
    return table;
}

} // namespace

frmSession::frmSession() : shell::MasterScreen(sessions()), ui(std::make_unique<Ui::frmSession>()) {
    ui->setupUi(this);
    connectControls();
}

frmSession::~frmSession() = default;

} // namespace zel::institute
