#pragma once

#include "platform/base/rows.h"
#include "platform/base/sql.h"

#include "platform/ado/connection.h"

#include <memory>

namespace zel::ado {

enum CursorLocation { adUseClient = 3 };
enum CursorType { adOpenKeyset = 1 };
enum LockType { adLockReadOnly = 1, adLockOptimistic = 3 };
/// adCmdText alone, or with adAsyncFetch: the rows may be read as they are asked for, and can't be edited.
/// For the lists of searches and finders. While a transaction is open all are read at once.
enum Options { adCmdText = 1, adAsyncFetch = 0x20 };
[[nodiscard]] constexpr Options operator|(Options one, Options other) {
    return Options(int(one) | int(other));
}

class Recordset;

/// One column of a recordset's current row, by name. Reads and writes go to the recordset.
class Field {
public:
    [[nodiscard]] Value value() const;
    [[nodiscard]] QString text() const { return value().text(); }
    [[nodiscard]] bool isNull() const { return value().isNull(); }
    /// Sets the field in the row under edit. Refuses what the column can't hold (8152 for a text too long,
    /// 245/8114 for a text that is no number, 241/242 for no such date); a text date dd/MM/yyyy is read day
    /// first.
    Field &operator=(const Value &value);
    /// An integer column's are 11 and 10; a text's both its width.
    [[nodiscard]] int DefinedSize() const;
    [[nodiscard]] int Precision() const;

private:
    friend class Recordset;
    Field(Recordset &recordset, int column) : m_recordset(recordset), m_column(column) {}
    Recordset &m_recordset;
    int m_column;
};

/// A client-side recordset, edited in place row by row. To everybody it is whole when Open returns: rows that
/// come on demand are those that stood then, and who asks for the last one or for their number has them read.
class Recordset {
public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset &) = delete;
    Recordset &operator=(const Recordset &) = delete;

    zel::ado::CursorLocation CursorLocation = adUseClient;
    qsizetype MaxRecords = 0; ///< the most rows that Open reads; 0 for all

    /// Opens the rows of the first statement that gives any. Closed connection: Error 3704.
    void Open(const Sql &source, Connection &activeConnection, CursorType cursorType = adOpenKeyset,
              LockType lockType = adLockOptimistic, Options options = adCmdText);
    void Close();
    [[nodiscard]] ObjectState State() const;

    [[nodiscard]] qsizetype RecordCount() const;
    void MoveFirst();
    void MoveNext();
    [[nodiscard]] bool atEnd() const; ///< past the last row, or no rows at all

    void AddNew();
    /// The field of that name, case ignored; Error 3265 when the rows have none.
    [[nodiscard]] Field Fields(const QString &name);
    [[nodiscard]] Field Fields(const char *name);
    /// Writes the columns that were set. Error 3021 without a current row or when the row is gone.
    void Update();

    /// The rows as opened; they outlive Close and the next Open for whoever holds them.
    [[nodiscard]] RowsPtr rows() const;

private:
    friend class Field;
    [[nodiscard]] Field fieldAt(int column);
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace zel::ado
