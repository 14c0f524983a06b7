#pragma once

#include "platform/tsql/front_end.h"
#include "platform/tsql/text/names.h"

#include <map>
#include <string>
#include <string_view>

struct sqlite3;

namespace zel::fuzz {

/// The catalog's tables and procedures in an engine in memory, without rows.
class WrittenTables final : public tsql::Catalog {
public:
    static WrittenTables &institute();

    [[nodiscard]] const tsql::Table *table(std::string_view name) const override;
    [[nodiscard]] const std::string *procedure(std::string_view name) const override;

    void store(std::string_view procedure, const std::string &text);
    void drop(std::string_view procedure);

    /// A text is refused by an Error or written as statements that the engine takes.
    void check(const Sql &text) const;

private:
    WrittenTables();
    ~WrittenTables() override;
    void run(std::string_view script);
    /// The engine's refusal of a statement that it can't prepare; "" when it can.
    [[nodiscard]] std::string refusal(const std::string &statement) const;

    sqlite3 *m_db = nullptr;
    std::map<std::string, tsql::Table> m_tables;
    std::map<std::string, std::string> m_procedures;
};

} // namespace zel::fuzz
