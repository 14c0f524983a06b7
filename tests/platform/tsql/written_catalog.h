#pragma once

#include "platform/tsql/front_end.h"

#include <QString>
#include <QStringList>

#include <map>
#include <string>

struct sqlite3;
struct sqlite3_value;

/// An engine in memory whose tables were all written by the front end, and the catalog read back from them.
class WrittenCatalog : public zel::tsql::Catalog {
public:
    /// Runs the batches, parted by GO, of a file below tests/.
    explicit WrittenCatalog(const char *script);
    ~WrittenCatalog() override;
    WrittenCatalog(const WrittenCatalog &) = delete;
    WrittenCatalog &operator=(const WrittenCatalog &) = delete;

    [[nodiscard]] const zel::tsql::Table *table(std::string_view name) const override;
    [[nodiscard]] bool indexed(const zel::tsql::Table &table, std::string_view first,
                               std::string_view second) const override;
    [[nodiscard]] const std::string *procedure(std::string_view name) const override;

    /// The engine's text of the statements, by "; ".
    [[nodiscard]] QString written(const zel::Sql &text) const;
    /// Error number of the refusal, 0 when there is none; its description goes to `description`.
    [[nodiscard]] int refusal(const zel::Sql &text, QString *description = nullptr) const;
    /// Runs all statements; the rows of the last as lines of cells parted by '|', or "NUMBER" of the failure.
    QStringList run(const zel::Sql &text);
    /// The engine's plan of the text's first statement, by "; ".
    [[nodiscard]] QString plan(const zel::Sql &text) const;

private:
    void readTables();
    /// Rows go to the targets too.
    [[nodiscard]] QStringList rows(const std::string &sql,
                                   const std::vector<zel::tsql::Slot> &parameters = {},
                                   const std::vector<zel::tsql::Slot> &targets = {}) const;

    sqlite3 *m_db = nullptr;
    mutable std::map<zel::tsql::Slot, sqlite3_value *> m_variables;
    std::map<std::string, zel::tsql::Table> m_tables;
    std::map<std::string, std::string> m_procedures;
};
