#include "written_catalog.h"

#include "platform/ado/drivers/sqlite_functions.h"
#include "platform/base/error.h"
#include "tests/support/facts.h"

#include <sqlite3.h>

#include <algorithm>

using namespace zel;
using namespace zel::tsql;

namespace {

std::string key(std::string_view name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    return lower;
}

QString cell(sqlite3_stmt *statement, int column) {
    if (sqlite3_column_type(statement, column) == SQLITE_NULL)
        return QStringLiteral("NULL");
    return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, column)));
}

} // namespace

WrittenCatalog::WrittenCatalog(const char *script) {
    const std::string text = test::fileText(script).toStdString();
    sqlite3_open(":memory:", &m_db);
    ado::registerFunctions(m_db);
    for (const std::string_view batch : batches(text)) {
        for (const Statement &statement : translate(Sql::trusted(batch), *this, sqlite())) {
            if (statement.kind == StatementKind::CreateProcedure)
                m_procedures[key(statement.name)] = statement.text;
            else
                (void)rows(statement.sql);
        }
        readTables();
    }
}

WrittenCatalog::~WrittenCatalog() {
    for (const auto &[slot, value] : m_variables)
        sqlite3_value_free(value);
    sqlite3_close(m_db);
}

void WrittenCatalog::readTables() {
    m_tables.clear();
    for (const QString &name :
         rows("SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%'")) {
        Table table;
        table.name = name.toStdString();
        for (const QString &line :
             rows("SELECT name,type,\"notnull\",pk FROM pragma_table_info('" + table.name + "')")) {
            const QStringList cells = line.split(u'|');
            const bool identity = cells[3] != u"0";
            table.columns.push_back({cells[0].toStdString(), *parseType(cells[1].toStdString()),
                                     cells[2] == u"0" && !identity, identity});
        }
        m_tables[key(table.name)] = table;
    }
}

const Table *WrittenCatalog::table(std::string_view name) const {
    const auto found = m_tables.find(key(name));
    return found == m_tables.end() ? nullptr : &found->second;
}

bool WrittenCatalog::indexed(const Table &table, std::string_view first, std::string_view second) const {
    const QStringList begins =
        rows("SELECT (SELECT group_concat(name) FROM pragma_index_info(i.name) WHERE seqno < 2) FROM"
             " pragma_index_list('" +
             table.name + "') i WHERE NOT partial");
    return begins.contains(QString::fromStdString(std::string(first) + ',' + std::string(second)));
}

const std::string *WrittenCatalog::procedure(std::string_view name) const {
    const auto found = m_procedures.find(key(name));
    return found == m_procedures.end() ? nullptr : &found->second;
}

QString WrittenCatalog::written(const Sql &text) const {
    QStringList all;
    for (const Statement &statement : translate(text, *this, sqlite()))
        all << QString::fromStdString(statement.sql);
    return all.join(QStringLiteral("; "));
}

int WrittenCatalog::refusal(const Sql &text, QString *description) const {
    try {
        (void)translate(text, *this, sqlite());
    } catch (const Error &error) {
        if (description != nullptr)
            *description = error.description();
        return error.number();
    }
    return 0;
}

QStringList WrittenCatalog::rows(const std::string &sql, const std::vector<Slot> &parameters,
                                 const std::vector<Slot> &targets) const {
    sqlite3_stmt *statement = nullptr;
    QStringList lines;
    if (sqlite3_prepare_v2(m_db, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        throw Error(102, std::string(sqlite3_errmsg(m_db)) + ": " + sql);
    for (std::size_t i = 0; i < parameters.size(); ++i)
        sqlite3_bind_value(statement, int(i) + 1, m_variables[parameters[i]]);
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
        for (std::size_t i = 0; i < targets.size(); ++i) {
            sqlite3_value *&held = m_variables[targets[i]];
            sqlite3_value_free(held);
            held = sqlite3_value_dup(sqlite3_column_value(statement, int(i)));
        }
        QStringList cells;
        for (int i = 0; i < sqlite3_column_count(statement); ++i)
            cells << cell(statement, i);
        lines << cells.join(u'|');
    }
    const QString message = QString::fromUtf8(sqlite3_errmsg(m_db));
    sqlite3_finalize(statement);
    if (step != SQLITE_DONE)
        throw Error(message.section(u'|', 0, 0).toInt(), message);
    return lines;
}

QStringList WrittenCatalog::run(const Sql &text) {
    try {
        QStringList last;
        for (const Statement &statement : translate(text, *this, sqlite())) {
            if (statement.sql.empty())
                continue;
            last = rows(statement.sql, statement.parameters, statement.targets);
            if (statement.baseTable.empty())
                continue;
            for (QString &line : last) // the row identity behind the columns
                line.truncate(line.lastIndexOf(u'|'));
        }
        readTables();
        return last;
    } catch (const Error &error) {
        return {QString::number(error.number())};
    }
}

QString WrittenCatalog::plan(const Sql &text) const {
    const auto statements = translate(text, *this, sqlite());
    QStringList steps;
    for (const QString &line : rows("EXPLAIN QUERY PLAN " + statements.front().sql))
        steps << line.section(u'|', 3);
    return steps.join(QStringLiteral("; "));
}
