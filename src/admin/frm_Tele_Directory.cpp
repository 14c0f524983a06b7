#include "admin/frm_Tele_Directory.h"

#include "shell/module1.h"
#include "ui_frm_Tele_Directory.h"

namespace zel::admin {

namespace {

const Sql Entries =
    "select Row_No,Code_No,Client_Name,Company,Contact_Per,Tele_No,Mob_No,Fax_NO,Email,WebSite,Location,City,"
    "Country,Address from tbl_Tele_Directory";

const shell::MasterTable &directory() {
    static const shell::MasterTable table{
        .noun = "Entry",
        .tag = "D",
        .keyColumn = "Row_No",
        .keyBox = "txt_Row_No",
        .firstBox = "txtCName",
        .notSaved = {"txtCodeNo"},
        .required = {{"txtCName", "please enter Client Name"},
                     {"txtComName", "please enter Company Name"},
                     {"txtTeleNo", "please enter Telephone No"},
                     {"txtAdd", "please enter Address"}},
        .nextNumber = "select isnull(max(Row_No),0)+1 as row_no from tbl_Tele_Directory",
        .none = "select * from tbl_Tele_Directory where 0 = 1",
        .byKey = "select * from tbl_Tele_Directory where Row_No =",
        .remove = "Delete From tbl_Tele_Directory Where Row_no = ",
        .search =
            {
                .criteria = {{"Client Name", Entries + " where Client_Name like '%",
                              "%' order by Code_No desc"},
                             {"Company Name", Entries + " where Company like '%", "%' order by Code_No desc"},
                             {"TelePhone No.", Entries + " where Tele_No like '%",
                              "%' order by Code_No desc"}},
                .all = Entries + " order by Code_No desc",
                .columns = {{"Row No", 900},
                            {"Code No", 1200},
                            {"Client Name", 3000},
                            {"Company", 3000},
                            {"Contact Person", 2400},
                            {"TelePhone No", 1800},
                            {"Mobile No", 1800},
                            {"Fax NO", 1800},
                            {"Email", 2400},
                            {"WebSite", 2400},
                            {"Location", 1800},
                            {"City", 1500},
                            {"Country", 1500},
                            {"Address", 4000}},
            },
        .criterionOnLoad = true,
        .choice = shell::Choice::FromRecord,
        .enter = shell::EnterInList::Closes,
        .report = {"rptTelePhone.rpt", "{tbl_Tele_Directory.row_no} = "},
    };
    return table;
}

} // namespace

frm_Tele_Directory::frm_Tele_Directory()
    : shell::MasterScreen(directory()), ui(std::make_unique<Ui::frm_Tele_Directory>()) {
    ui->setupUi(this);
    connectControls();
}

frm_Tele_Directory::~frm_Tele_Directory() = default;

/// Another "TD-" with each save of an entry.
void frm_Tele_Directory::writeFields() {
    shell::gRs.Fields("Code_No") = "TD-" + ui->txtCodeNo->text();
}

} // namespace zel::admin
