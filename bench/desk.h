#pragma once

#include <QString>
#include <QTemporaryDir>

class QWidget;

/// What the measurements of screens and of the voucher store have in common.
namespace bench {

/// Opens the program's connection on the catalog of a folder, as a login of "sa" does.
void connect(const QString &folder);

/// A copy of a folder's catalog, beside it on the same disk; gone with the object.
class Copy {
public:
    explicit Copy(const QString &folder);
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    [[nodiscard]] QString database() const { return folder() + "/ZEL.db"; }

private:
    QTemporaryDir m_folder;
};

/// The screen of a voucher kind, shown on its own.
[[nodiscard]] QWidget *openVoucher(const char *kind);

} // namespace bench
