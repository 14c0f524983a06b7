#pragma once

#include <string>

/// The accounts' reports of the year 2025 as statements: the procedure, then its rows.
namespace bench {

inline const std::string TrialBalance =
    "exec TrialBalance '2025-01-01','2025-12-31'\nselect * from rptTrialBalance";
inline const std::string TrialBalance3 =
    "exec TrialBalance3 '2025-01-01','2025-12-31'\nselect * from rptTrialBalance";
inline std::string ledgerOf(int account) {
    return "exec AcLedger " + std::to_string(account) +
           ",'2025-01-01','2025-12-31'\nselect * from rptAcLedger order by LineOrder, VouDate, DayOrder, "
           "VouNo, VouStatus, EntryNo";
}

} // namespace bench
