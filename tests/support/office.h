#pragma once

#include "platform/ado/connection.h"
#include "platform/base/sql.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace zel::test {

/// A fresh catalog as `zeldb create` makes it, in a folder of its own with a Server.txt, which is the
/// application path while the object lives. The program's shared state starts as at the program's start. The
/// destructor unloads every screen.
///
/// The catalog has one lock password "ZEL", one active company, all nineteen menu rights on, the login "sa"
/// with an empty password. With `demoChart` it also has the small chart of accounts.
class Office {
public:
    enum class Chart { None, Demo };
    explicit Office(Chart chart = Chart::None);
    ~Office();
    Office(const Office &) = delete;
    Office &operator=(const Office &) = delete;

    [[nodiscard]] QString folder() const { return m_folder.path(); }

    /// Shows the login and logs in by keys; the main window stands and is active when it returns.
    void logIn(const QString &user = "sa", const QString &password = {});

    /// Copies a folder's report definitions, with the parts that they include, beside the program, over those
    /// there.
    void addReports(const QString &from) const;

    /// Statements of the test's own, past the program's connection.
    void execute(const Sql &statements);
    /// The rows of a statement, each one text: the cells as the screen would show them, joined by "|", Null
    /// as "NULL".
    [[nodiscard]] QStringList rows(const Sql &statement);

private:
    QTemporaryDir m_folder;
    ado::Connection m_own;
};

} // namespace zel::test
