#include "shell/module1.h"

#include "shell/MDIForm1.h"
#include "shell/frmLogin.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QScopedValueRollback>

namespace zel::shell {

ado::Connection gCon;
ado::Recordset gRs;
ado::Recordset gRs1;
ado::Recordset gRs2;
ado::Recordset gRsSpare;

QString gUserName;
QString gPassword;

QString gFindFilter;
int gFoundRowID = 0;
QString gFoundName;
QString gFoundContact;
QString gFoundFax;
QString gFoundAddr;
QString gFoundAddr2;
bool gFinderOpen = false;

bool gAddAccount = false;
bool gLockSpare = false;
bool gOpenSetMenus = false;
bool gOpenRemoveData = false;

bool gAddSubject = false;
int gSubID = 0;
QString gSubName;
QString gCourseDur;
double gSubAmount = 0;
QString gCourseName;
int gFoundAppID = 0;
QString gAppMode;

namespace {

QString theApplicationPath;

void open(ado::Recordset &recordset, const Sql &statement, ado::Options options = ado::adCmdText) {
    if (recordset.State() == ado::adStateOpen)
        recordset.Close();
    recordset.Open(statement, gCon, ado::adOpenKeyset, ado::adLockOptimistic, options);
}

} // namespace

void OpenRs(const Sql &statement) {
    open(gRs, statement);
}

void OpenRsForOne(const Sql &statement) {
    const QScopedValueRollback most(gRs.MaxRecords, qsizetype(1));
    OpenRs(statement);
}

void OpenRsForList(const Sql &statement) {
    open(gRs, statement, ado::adCmdText | ado::adAsyncFetch);
}

void OpenRs1(const Sql &statement) {
    open(gRs1, statement);
}

void OpenRs2(const Sql &statement) {
    open(gRs2, statement);
}

void OpenRs2ForAdding(const Sql &statement) {
    const QScopedValueRollback most(gRs2.MaxRecords, qsizetype(1));
    OpenRs2(statement);
}

QString applicationPath() {
    if (!theApplicationPath.isEmpty())
        return theApplicationPath;
    const QString folder = QCoreApplication::applicationDirPath();
    const QString office = QFileInfo(folder + "/office").canonicalFilePath();
    return office.isEmpty() ? folder : office;
}

void setApplicationPath(const QString &path) {
    theApplicationPath = path;
}

void Main() {
    for (ado::Recordset *recordset : {&gRs, &gRs2, &gRsSpare, &gRs1})
        recordset->CursorLocation = ado::adUseClient;
    frmLogin::reference->Show();
}

} // namespace zel::shell
