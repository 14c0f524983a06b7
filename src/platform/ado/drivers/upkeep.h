#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a catalog is made of, told so that any engine can give it and take it: for backups, and copies from
/// one engine to another.
namespace zel::ado {

/// A row as texts by column, NULL as nullopt. Numbers are plain ("1000.5", a whole one without a point),
/// dates as base/date_text.h stores them: every engine gives the same texts for the same values.
using Cells = std::span<const std::optional<std::string_view>>;

/// Takes the rows of one table, identities included.
class RowSink {
public:
    RowSink() = default;
    virtual ~RowSink() = default;
    RowSink(const RowSink &) = delete;
    RowSink &operator=(const RowSink &) = delete;
    virtual void add(Cells row) = 0;
    /// After the last row.
    virtual void finish() = 0;
};

struct TableDefinition {
    std::string name;
    std::vector<std::string> columns;
    std::string statement;                    ///< "create table ..." in the program's dialect
    std::vector<std::string> indexes;         ///< "create index ..." in the same
    std::optional<std::int64_t> lastIdentity; ///< the last that was given out, its row may be gone
    std::int64_t rows = 0;
};

struct Login {
    std::string name;
    std::string hash; ///< of the password, Argon2id
    std::string database;
    bool user = false; ///< of this catalog
    std::vector<std::string> roles;
};

struct Inventory {
    std::string engine;
    std::int64_t version = 0;
    std::vector<TableDefinition> tables; ///< in the order in which they were made
    std::vector<std::string> procedures; ///< "create procedure ..."
    std::vector<Login> logins;
    /// What another program made in the catalog and the dialect has no words for, such as "view X".
    std::vector<std::string> leftOut;
};

} // namespace zel::ado
