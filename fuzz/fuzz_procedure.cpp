// Texts of stored procedures: what can be stored can be called, by the arguments behind a line of dashes.

#include "fuzzing.h"
#include "written_tables.h"

using namespace zel;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view whole = fuzz::textOf(data, size);
    const std::size_t line = std::min(whole.find("\n---\n"), whole.size());
    const std::string text = "create procedure P " + std::string(whole.substr(0, line));
    const std::string_view arguments = line == whole.size() ? "" : whole.substr(line + 5);
    fuzz::WrittenTables &tables = fuzz::WrittenTables::institute();
    tables.drop("P");
    const bool stored = fuzz::accepted([&] {
        for (const tsql::Statement &statement : tsql::translate(Sql::trusted(text), tables, tsql::sqlite()))
            if (statement.kind == tsql::StatementKind::CreateProcedure && tsql::sameName(statement.name, "P"))
                tables.store("P", statement.text);
    });
    if (stored)
        tables.check(Sql::trusted("exec P " + std::string(arguments)));
    return 0;
}
