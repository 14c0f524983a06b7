#include "institute/application_search.h"

namespace zel::institute {

shell::SearchTable applicationSearch() {
    const Sql applications =
        "select AppID,RegNo,right('0' + rtrim(day(FixDate)),2) + '-' + right('0' + rtrim(month(FixDate)),2) "
        "+ '-' + rtrim(year(FixDate)) as FixDt,right('0' + rtrim(day(AppDate)),2) + '-' + right('0' + "
        "rtrim(month(AppDate)),2) + '-' + rtrim(year(AppDate)) as "
        "AppDate,StuName,FatherName,CellNo,TotAmt,CashReceive From tblMasApp";
    return {
        .criteria =
            {
                {"Student Name", applications + " where StuName like '%", "%' Order by AppID Desc"},
                {"Application ID", applications + " where AppID = ", " Order by AppID Desc"},
                {"Cell No.", applications + " where CellNo like '%", "%' Order by AppID Desc"},
                {"Reg.#", applications + " where RegNo like '%", "%' Order by AppID Desc"},
                {"Date", applications + " a where fixDate = '", "' order by AppID desc",
                 shell::Searched::PaddedDate},
                // These two say only what the list of students is printed by.
                {"Course Wise"},
                {"Subject Wise"},
            },
        .all = applications + "  Order by AppID Desc",
        .columns = {{"Application ID", 1500},
                    {"Reg #.", 1500},
                    {"Fix Date", 1500},
                    {"Date", 1500},
                    {"Student Name", 3000},
                    {"Father Name", 2500},
                    {"Cell No.", 3800},
                    {"Total Amount", 2200},
                    {"Cash Receive", 1800}},
        .headingsStay = true,
    };
}

shell::SearchTable applicationFinderSearch() {
    shell::SearchTable table = applicationSearch();
    table.criteria.resize(3);
    table.criterionSearches = true;
    return table;
}

} // namespace zel::institute
