#pragma once

#include "platform/base/sql.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace zel::tool {

enum class Severity { Error, Note };

/// A rule of sound books: a query that lists what breaks it. One file of rules/ each, whose head says what
/// people read of it:
///
///     -- title: Vouchers without lines
///     -- why: what it does to the books, and how it comes about
///     -- severity: error, or note for what may be so
///     -- do: what sets it right
///     -- finding: Voucher {VouStatus} {VouNo} has a header but no lines.
///     -- table: the table of the keys
///     -- keys: VouStatus VouNo
///     select VouStatus, VouNo from ...
///
/// Each {column} of the finding and each key is a column of the query. A longer line goes on as
/// "--     more". What the engine itself finds in its file has no query, and is {What}.
struct Rule {
    QString name; ///< the file's
    QString title;
    QString why;
    QString advice;
    QString finding;
    QString table;
    QStringList keys;
    Severity severity = Severity::Error;
    Sql statement; ///< '' of what the engine finds
};

/// All rules, in the order of their names.
[[nodiscard]] const std::vector<Rule> &rules();

/// "error" or "note".
[[nodiscard]] QString severityName(Severity severity);

} // namespace zel::tool
