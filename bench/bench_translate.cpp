// Translating the program's statements, against the engine's own preparing of the text that comes out.
#include "measure.h"

#include "platform/ado/drivers/sqlite_functions.h"
#include "platform/tsql/front_end.h"

#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>

using namespace zel::tsql;
using zel::Sql;

namespace {

constexpr const char *Statements[] = {
    "Select Menus,Active From Menus",
    "Select * From LctPswd Where Pswd= 'LOCK123'",
    "select SessionId,SessionName from tblSession where SessionName like '%SPRING%' order by SessionId desc ",
    "select SessionId,SessionName from tblSession where SessionId like '%1%' order by SessionId desc ",
    "select isnull(max(SessionId),0) + 1 as SessionId from tblSession",
    "select * from tblSession where 0 = 1",
    "Delete From tblSession Where SessionId = 3 ",
    "Select isnull(max(dcode),0)+1 as Dcode from  accounts where rtrim(parentid)='1.1'",
    "Select AcName From Accounts where replace(acname,' ', '') = 'CASHINHAND'",
    "Update Accounts set AcName = 'ASSETS', OrderStatus = 5 where rowid = 1",
    "Select * from accounts order by acnodes",
    "select count(dcode) as chkNod from accounts where acnodes like '1.1.%'",
    "Select RowID,AcNodes,AcName,Location,Contact,Fax,Email,OpenBal,Addr,Addr2,ParentID,AcNodes From "
    "Accounts Where "
    "acStatus='DD' and AcName Like '%BANK%' order by AcName",
    "Select vouNo,AcTitle=(Select AcName From Accounts Where AcStatus <> 'HH' and "
    "rowid=AcCode),OthAC=(Select AcName From "
    "Accounts Where AcStatus='DD' and rowid=OthAcCode),AcStatus,AcCode,Fix,VouStatus From VouSetting",
    "Select * From MasJV Where VouNo = 1 And VouStatus = 'BP' ",
    "Delete From DetJV Where VouNo = 1 And VouStatus = 'BP' ",
    "Select AcCode,CrAc,AcNames=(Select AcName From Accounts Where RowId = AcCode),CrName=(Select AcName "
    "From Accounts "
    "Where RowId = CrAc),DrAmt,CrAmt,checqno,Naration,FileNo,BillNo From DetJv Where VouNo = 1 And VouStatus "
    "= 'BP' and "
    "DrAmt>0 Order By EntryNo ",
    "Select VouNo,right('0' + rtrim(day(VouDate)),2) + '-' + right('0' + rtrim(month(VouDate)),2) + '-' + "
    "rtrim(year(VouDate)) as VouDate,PaidReceive,TotalAmount,Multi=case When (select count(vouno) from detjv "
    "where "
    "voustatus='BP' and vouno=a.vouno and DrAmt>0) > 1 then 'M' end  From MasJv a  Where VouStatus='BP' And "
    "PaidReceive "
    "Like '%LAND%' order by VouNo desc",
    "select a.*,Course=(select CourseName From tblCourse Where CourseId = (select CourseId From tblSubject "
    "Where subID = "
    "a.subID)),subName=(Select SubName from tblSubject where subID = a.subID) from tblDetApp a where a.AppID "
    "= 1",
    "select subid,subname from tblsubject where subid in (select subid from tbldetapp where appid in (select "
    "appid from "
    "tblmasapp where cuscode = 7))",
    "select isnull((NetAmount - (isnull(RecAmount,0) +  ISNULL((select isnull(sum(CrAmt),0) As Recevied From "
    "DetJv Where "
    "Voustatus = 'FR' And AcCode = 7  And SubID = 1 or Voustatus = 'CF'  And AcCode = 7 And SubID = "
    "1),0))),0) As "
    "RemainingAmt FROM tblDetApp Where AppID = 1 And SubID = 1",
    "Delete From MasJV Where VouDate Between '2024-06-01' And '2024-12-31'",
};

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    return lower;
}

class FileCatalog : public Catalog {
public:
    explicit FileCatalog(sqlite3 *db) {
        sqlite3_stmt *rows = nullptr;
        sqlite3_prepare_v2(db,
                           "SELECT m.name,c.name,c.type,c.\"notnull\",c.pk FROM sqlite_master m, "
                           "pragma_table_info(m.name) c WHERE m.type='table'",
                           -1, &rows, nullptr);
        const auto text = [&](int column) {
            return std::string(reinterpret_cast<const char *>(sqlite3_column_text(rows, column)));
        };
        while (sqlite3_step(rows) == SQLITE_ROW) {
            Table &table = m_tables[lowered(text(0))];
            table.name = text(0);
            const bool identity = sqlite3_column_int(rows, 4) != 0;
            table.columns.push_back({text(1), parseType(text(2)).value_or(Type{}),
                                     sqlite3_column_int(rows, 3) == 0 && !identity, identity});
        }
        sqlite3_finalize(rows);
    }
    [[nodiscard]] const Table *table(std::string_view name) const override {
        const auto found = m_tables.find(lowered(name));
        return found == m_tables.end() ? nullptr : &found->second;
    }
    [[nodiscard]] const std::string *procedure(std::string_view) const override { return nullptr; }

private:
    std::map<std::string, Table> m_tables;
};

} // namespace

int main(int, char **argv) {
    sqlite3 *db = nullptr;
    sqlite3_open_v2((std::string(argv[1]) + "/ZEL.db").c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    zel::ado::registerFunctions(db);
    const FileCatalog catalog(db);
    std::vector<Sql> texts;
    std::vector<std::string> written;
    for (const char *statement : Statements) {
        texts.push_back(Sql::trusted(statement));
        written.push_back(translate(texts.back(), catalog, sqlite()).front().sql);
    }
    std::size_t bytes = 0;
    int failed = 0;
    const bool within = bench::compare(
        "translating the program's statements", 0.25, 21,
        [&] {
            for (int i = 0; i < 100; ++i) {
                for (const Sql &text : texts)
                    bytes += translate(text, catalog, sqlite()).front().sql.size();
            }
        },
        [&] {
            for (int i = 0; i < 100; ++i) {
                for (const std::string &text : written) {
                    sqlite3_stmt *statement = nullptr;
                    failed += sqlite3_prepare_v2(db, text.c_str(), int(text.size()), &statement, nullptr) !=
                              SQLITE_OK;
                    sqlite3_finalize(statement);
                }
            }
        });
    std::printf("    %zu statements a hundred times a turn, %zu bytes written, %d not prepared\n",
                texts.size(), bytes, failed);
    sqlite3_close(db);
    return within && failed == 0 ? 0 : 1;
}
