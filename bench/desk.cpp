#include "desk.h"

#include "shell/module1.h"
#include "vouchers/voucher.h"

#include <QApplication>
#include <QFile>

namespace bench {

void connect(const QString &folder) {
    using namespace zel::shell;
    if (gCon.State() == zel::ado::adStateOpen)
        gCon.Close();
    gCon.setProperty("User ID", "sa");
    gCon.setProperty("Data Source", folder);
    gCon.setProperty("Initial Catalog", "ZEL");
    gCon.Open();
    gUserName = "sa";
}

Copy::Copy(const QString &folder) : m_folder(folder + "/copy-XXXXXX") {
    for (const QString file : {"/ZEL.db", "/ZEL.db-wal"})
        if (QFile::exists(folder + file) && !QFile::copy(folder + file, m_folder.path() + file))
            qFatal("%s can't be copied", qPrintable(folder + file));
}

QWidget *openVoucher(const char *kind) {
    const zel::vouchers::VoucherKind &wanted = zel::vouchers::voucherKind(kind);
    zel::vouchers::showVoucher(wanted);
    for (QWidget *top : QApplication::topLevelWidgets())
        if (top->objectName() == wanted.form)
            return top;
    qFatal("no screen %s", wanted.form);
}

} // namespace bench
