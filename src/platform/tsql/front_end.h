#pragma once

#include "platform/base/sql.h"
#include "platform/tsql/meaning/catalog.h"
#include "platform/tsql/meaning/slot.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zel::tsql {

struct ResultColumn {
    std::string name; ///< '' for an unnamed expression
    Type type;
    std::string baseColumn; ///< the column of baseTable that it shows; '' for a computed one
};

enum class StatementKind {
    Select,
    Insert,
    Update,
    Delete,
    CreateTable,
    DropTable,
    CreateIndex,
    CreateProcedure, ///< `name` and `text` are to be stored by the connection
    DropProcedure,
    ServerCall, ///< sp_addlogin and the like: `name` and `arguments`
    Analyze,
    // What asks nothing of an engine, or only for values.
    Assign,     ///< the cells of the last row go to `targets`, which stay as they are when there is none
    EachRow,    ///< an Assign for each row; behind each come the Assigns up to `next`
    Jump,       ///< on to `next`
    JumpUnless, ///< as an Assign of one cell, then on to `next` unless that is true
    Enter,      ///< a procedure's statements follow, up to the Leave at `next`
    Leave,
    SetOption, ///< without effect but on @@rowcount
};

/// One statement, ready for the engine. A text's statements run in their order; jumps lead forward only.
struct Statement {
    StatementKind kind = StatementKind::Select;
    std::string sql; ///< text for the engine; '' for CreateProcedure, DropProcedure and ServerCall
    std::string
        tooDeep; ///< description of error 191 for an engine that can't take the nesting; '' if all can
    std::vector<ResultColumn> columns; ///< what a Select shows, without the hidden row identity
    /// The one table that a Select can be edited through; '' when it can't. Then the engine's own row
    /// identity is the last column of the engine's result, behind `columns`.
    std::string baseTable;
    std::string name; ///< what it makes, drops or calls; the table that it changes
    std::string text;
    std::vector<std::optional<std::string>> arguments; ///< of a ServerCall, as texts; nullopt for NULL
    std::vector<Slot> parameters;                      ///< whose values the parameters 1, 2 ... of `sql` take
    std::vector<Slot> targets; ///< of an Assign; of a ServerCall, by argument: whose text it is, if above 0
    std::size_t next = 0;      ///< of jumps and an Enter: a place among the text's statements
    Slot scopeIdentity = ScopeIdentitySlot; ///< of an Insert: what takes the new identity beside @@identity
    bool makesIdentity = false;             ///< an Insert into a table with an identity
    bool keepsRowCount = false;             ///< @@rowcount stays as it is
};

/// What differs between the engines: a table of names and of writers of single nodes.
struct Traits;
[[nodiscard]] const Traits &sqlite();

/// Reads `text` (any number of statements), checks its foreign pieces, resolves it against `catalog` and
/// writes it for the engine; `exec` of a stored procedure is expanded to the procedure's statements. Throws
/// Error with the server's number; the description names line and column and shows the line with a caret
/// under it, and stars for what is secret.
[[nodiscard]] std::vector<Statement> translate(const Sql &text, const Catalog &catalog, const Traits &engine);

/// The batches of a script: the texts between lines that hold only the word GO. Empty batches are left out.
[[nodiscard]] std::vector<std::string_view> batches(std::string_view script);

} // namespace zel::tsql
