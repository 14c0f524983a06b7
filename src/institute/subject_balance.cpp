#include "institute/subject_balance.h"

namespace zel::institute {

Sql subjectBalance(const QString &account, const QString &subject, int application) {
    return "select "_sql + "isnull((NetAmount - (isnull(RecAmount,0) + " +
           " ISNULL((select isnull(sum(CrAmt),0) As Recevied From DetJv Where " +
           " Voustatus = 'FR' And AcCode = " + account + "  And SubID = " + subject +
           " or Voustatus = 'CF' " + " And AcCode = " + account + " And SubID = " + subject +
           "),0))),0) As RemainingAmt, " +
           " isnull(RecAmount,0) + isnull((select isnull(sum(CrAmt),0) From DetJv Where " +
           " AcCode = " + account + " And SubID = " + subject +
           " And Voustatus = 'FR' And AcCode = " + account + " And SubID = " + subject +
           " or Voustatus = 'CF'" + " And AcCode = " + account + " And SubID = " + subject +
           "),0) As Received" + " FROM tblDetApp Where AppID = " + application + " And SubID = " + subject;
}

} // namespace zel::institute
