#pragma once

#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"

#include <QString>

namespace zel::shell {

/// The one connection. Opened by each login, closed only by the next one.
extern ado::Connection gCon;
/// The shared recordsets. Their rows live until the next OpenRs on them: no code may hold gRs across a call
/// that opens another query.
extern ado::Recordset gRs;
extern ado::Recordset gRs1;
extern ado::Recordset gRs2;
/// Never opened and never read.
extern ado::Recordset gRsSpare;

/// The login's name and password, from one login to the next.
extern QString gUserName;
extern QString gPassword;

/// What the account finder is to list: "B", "S", "SUB", anything else for all subsidiary accounts.
extern QString gFindFilter;
/// The account chosen in the finder; gFoundRowID is 0 for none. Emptied by the caller that took it.
extern int gFoundRowID;
extern QString gFoundName;
extern QString gFoundContact;
extern QString gFoundFax;
extern QString gFoundAddr;
extern QString gFoundAddr2;
/// A finder is up: a screen reached from it closes after a row is chosen, or hides instead of unloading.
extern bool gFinderOpen;

/// Where the lock prompt leads, asked in the order gAddAccount, gLockSpare, gOpenSetMenus, gOpenRemoveData.
/// gLockSpare is never set, gOpenSetMenus never cleared.
extern bool gAddAccount;
extern bool gLockSpare;
extern bool gOpenSetMenus;
extern bool gOpenRemoveData;

/// frmSubject was opened from the subject finder.
extern bool gAddSubject;
/// The subject chosen in the subject finder.
extern int gSubID;
extern QString gSubName;
extern QString gCourseDur;
extern double gSubAmount;
extern QString gCourseName;
/// AppID chosen in the application finder; 0 for none.
extern int gFoundAppID;
/// Nothing assigns it and nothing depends on it.
extern QString gAppMode;

/// Closes the recordset if it is open, then opens the statement on gCon, keyset and optimistic. Whoever calls
/// reads RecordCount next, and calls MoveFirst before reading a row.
void OpenRs(const Sql &statement);
/// As OpenRs, for callers that ask only whether there is any row: reads one at most.
void OpenRsForOne(const Sql &statement);
/// As OpenRs, for callers that bind a list to the rows: they are read on demand, and can't be edited.
void OpenRsForList(const Sql &statement);
void OpenRs1(const Sql &statement);
void OpenRs2(const Sql &statement);
/// As OpenRs2, for callers that only add rows, however many there are: reads one at most.
void OpenRs2ForAdding(const Sql &statement);

/// Run by each screen as it unloads: shows the main window's panel and sets the menu items' visibility from
/// the table Menus, matched by caption. Error 91 when no row of Menus is active. Uses gRs.
void ApplyMenus();

/// The folder of the executable, without a slash at its end: Server.txt and the report files lie there. Where
/// the program is installed, they lie where the link "office" beside the executable leads.
[[nodiscard]] QString applicationPath();
/// For tests, which keep Server.txt and the reports elsewhere; an empty path goes back to the executable's.
void setApplicationPath(const QString &path);

/// The program's entry, once the application object stands: prepares the shared state and shows the login.
void Main();

} // namespace zel::shell
