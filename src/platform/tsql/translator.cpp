#include "platform/tsql/front_end.h"

#include "platform/tsql/failure.h"
#include "platform/tsql/guard.h"
#include "platform/tsql/names.h"
#include "platform/tsql/parser.h"
#include "platform/tsql/resolver.h"
#include "platform/tsql/writer.h"

#include <array>
#include <deque>

namespace zel::tsql {

namespace {

constexpr int DeepestCalls = 32;

/// Procedures that the connection carries out itself.
constexpr std::array<std::string_view, 4> ServerProcedures = {"sp_addlogin", "sp_adduser",
                                                              "sp_addsrvrolemember", "sp_password"};

class Translation {
public:
    Translation(const Catalog &catalog, const Traits &engine)
        : m_catalog(catalog), m_engine(engine), m_resolver(catalog, m_arena) {}

    std::vector<Statement> run(std::string_view source, const std::vector<Token> &tokens) {
        m_resolver.setSource(source);
        for (const ActionNode *action = Parser(source, tokens, m_arena).statements(); action != nullptr;
             action = action->next) {
            const std::size_t first = m_statements.size();
            statement(*action);
            for (std::size_t further = first + 1; further < m_statements.size(); ++further)
                m_statements[further].continues = true;
        }
        return std::move(m_statements);
    }

private:
    void statements(const ActionNode *action) {
        for (; action != nullptr; action = action->next)
            statement(*action);
    }

    void statement(const ActionNode &action);
    void select(const ActionNode &action);
    void createTable(const ActionNode &action);
    void dropTable(const ActionNode &action);
    void createIndex(const ActionNode &action);
    void createProcedure(const ActionNode &action);
    void dropProcedure(const ActionNode &action);
    void execute(const ActionNode &action);
    void serverCall(const ActionNode &action, std::string_view name);
    void expand(const ActionNode &action, const std::string &text);
    std::vector<Expr *> bind(const ActionNode &action, const ActionNode &procedure, std::string_view body);
    void declare(const ActionNode &action);

    Statement &add(StatementKind kind, Writer *writer = nullptr) {
        Statement &made = m_statements.emplace_back();
        made.kind = kind;
        if (writer != nullptr)
            made.sql = writer->take();
        return made;
    }
    [[nodiscard]] Writer writer() const { return Writer(m_engine, m_resolver.source().size() * 2 + 128); }
    [[noreturn]] void fail(std::size_t at, int number, const std::string &message) const {
        tsql::fail(m_resolver.source(), at, number, message);
    }

    const Catalog &m_catalog;
    const Traits &m_engine;
    Arena m_arena;
    Resolver m_resolver;
    std::vector<Statement> m_statements;
    std::deque<std::vector<Token>> m_bodies; ///< tokens of the procedures' texts
    int m_calls = 0;
};

void Translation::statement(const ActionNode &action) {
    Writer out = writer();
    switch (action.kind) {
    case ActionKind::Select:
        return select(action);
    case ActionKind::Insert:
        out.insertion(*m_resolver.insertion(action));
        add(StatementKind::Insert, &out);
        return;
    case ActionKind::Update:
        out.update(*m_resolver.change(action));
        add(StatementKind::Update, &out);
        return;
    case ActionKind::Delete:
        out.deletion(*m_resolver.change(action));
        add(StatementKind::Delete, &out);
        return;
    case ActionKind::CreateTable:
        return createTable(action);
    case ActionKind::DropTable:
        return dropTable(action);
    case ActionKind::CreateIndex:
        return createIndex(action);
    case ActionKind::CreateProcedure:
        return createProcedure(action);
    case ActionKind::DropProcedure:
        return dropProcedure(action);
    case ActionKind::Execute:
        return execute(action);
    case ActionKind::Declare:
        return declare(action);
    case ActionKind::SetVariable:
        m_resolver.assign(action.assignments->name, action.assignments->at, *action.assignments->value);
        return;
    case ActionKind::Analyze:
        out.analyze(m_resolver.table(action.table));
        add(StatementKind::Analyze, &out);
        return;
    }
}

void Translation::select(const ActionNode &action) {
    const BoundSelect &rows = *m_resolver.topSelect(*action.select);
    Writer out = writer();
    out.topSelect(rows);
    Statement &made = add(StatementKind::Select, &out);
    if (rows.rowIdentity)
        made.baseTable = rows.sources->table->name;
    std::size_t count = 0;
    for (const BoundItem *item = rows.items; item != nullptr; item = item->next)
        ++count;
    made.columns.reserve(count);
    for (const BoundItem *item = rows.items; item != nullptr; item = item->next) {
        ResultColumn &column = made.columns.emplace_back();
        column.name = item->name;
        column.type = item->value->type;
        if (rows.rowIdentity && item->value->op == Op::ColumnValue)
            column.baseColumn = columnOf(*item->value).name;
    }
}

void Translation::createTable(const ActionNode &action) {
    if (m_resolver.findTable(action.table) != nullptr) {
        fail(action.table.at, 2714,
             "There is already an object named '" + std::string(action.table.name) + "' in the database.");
    }
    Table table;
    table.name = action.table.name;
    int identities = 0;
    for (const ColumnNode *column = action.columns; column != nullptr; column = column->next) {
        for (const Column &other : table.columns) {
            if (sameName(other.name, column->name)) {
                fail(column->at, 2705,
                     "Column names in each table must be unique. Column name '" + std::string(column->name) +
                         "' in table '" + table.name + "' is specified more than once.");
            }
        }
        identities += column->identity ? 1 : 0;
        if (identities > 1)
            fail(column->at, 2744, "Multiple identity columns specified for table '" + table.name + "'.");
        table.columns.push_back(
            {std::string(column->name), column->type, !column->notNull, column->identity});
    }
    for (const NameNode *key = action.names; key != nullptr; key = key->next) {
        bool found = false;
        for (Column &column : table.columns) {
            if (sameName(column.name, key->text)) {
                column.nullable = false;
                found = true;
            }
        }
        if (!found)
            fail(key->at, 1911,
                 "Column name '" + std::string(key->text) + "' does not exist in the target table.");
    }
    Writer out = writer();
    out.createTable(action);
    add(StatementKind::CreateTable, &out).name = table.name;
    m_resolver.created(std::move(table));
}

void Translation::dropTable(const ActionNode &action) {
    const Table *found = m_resolver.findTable(action.table);
    if (found == nullptr) {
        fail(action.table.at, 3701,
             "Cannot drop the table '" + std::string(action.table.name) +
                 "', because it does not exist or you do not have permission.");
    }
    Writer out = writer();
    out.dropTable(*found);
    add(StatementKind::DropTable, &out).name = found->name;
    m_resolver.dropped(*found);
}

void Translation::createIndex(const ActionNode &action) {
    const Table &table = m_resolver.table(action.indexed);
    for (const NameNode *name = action.names; name != nullptr; name = name->next) {
        bool found = false;
        for (const Column &column : table.columns)
            found = found || sameName(column.name, name->text);
        if (!found) {
            fail(name->at, 1911,
                 "Column name '" + std::string(name->text) + "' does not exist in the target table.");
        }
    }
    Writer out = writer();
    out.createIndex(action, table);
    add(StatementKind::CreateIndex, &out).name = action.table.name;
}

void Translation::createProcedure(const ActionNode &action) {
    if (m_catalog.procedure(action.table.name) != nullptr) {
        fail(action.table.at, 2714,
             "There is already an object named '" + std::string(action.table.name) + "' in the database.");
    }
    Statement &made = add(StatementKind::CreateProcedure);
    made.name = action.table.name;
    made.text = m_resolver.source();
}

void Translation::dropProcedure(const ActionNode &action) {
    if (m_catalog.procedure(action.table.name) == nullptr) {
        fail(action.table.at, 3701,
             "Cannot drop the procedure '" + std::string(action.table.name) +
                 "', because it does not exist or you do not have permission.");
    }
    add(StatementKind::DropProcedure).name = action.table.name;
}

void Translation::declare(const ActionNode &action) {
    for (const AssignmentNode *variable = action.assignments; variable != nullptr;
         variable = variable->next) {
        Expr *value = nullptr;
        if (variable->value != nullptr) {
            value = m_resolver.converter().convert(m_resolver.argument(*variable->value), variable->type,
                                                   Purpose::Cast);
        }
        m_resolver.declare(variable->name, variable->at, variable->type, value);
    }
}

void Translation::execute(const ActionNode &action) {
    const std::string_view name = action.table.name;
    for (const std::string_view server : ServerProcedures) {
        if (sameName(name, server))
            return serverCall(action, server);
    }
    const std::string *text = m_catalog.procedure(name);
    if (text == nullptr)
        fail(action.table.at, 2812, "Could not find stored procedure '" + std::string(name) + "'.");
    if (++m_calls > DeepestCalls) {
        fail(action.at, 217,
             "Maximum stored procedure, function, trigger, or view nesting level exceeded (limit 32).");
    }
    expand(action, *text);
    --m_calls;
}

void Translation::serverCall(const ActionNode &action, std::string_view name) {
    Statement &made = add(StatementKind::ServerCall);
    made.name = name;
    for (const AssignmentNode *argument = action.assignments; argument != nullptr;
         argument = argument->next) {
        if (!argument->name.empty() || argument->value == nullptr)
            fail(argument->at, 102, "Incorrect syntax near '" + std::string(argument->name) + "'.");
        const Expr *value = m_resolver.converter().asText(m_resolver.argument(*argument->value));
        if (value->op == Op::NullLiteral)
            made.arguments.emplace_back(std::nullopt);
        else
            made.arguments.emplace_back(std::string(value->text));
    }
}

std::vector<Expr *> Translation::bind(const ActionNode &action, const ActionNode &procedure,
                                      std::string_view body) {
    const std::string name(procedure.table.name);
    std::vector<const AssignmentNode *> parameters;
    for (const AssignmentNode *parameter = procedure.assignments; parameter != nullptr;
         parameter = parameter->next)
        parameters.push_back(parameter);
    std::vector<const AssignmentNode *> given(parameters.size(), nullptr);
    std::size_t place = 0;
    for (const AssignmentNode *argument = action.assignments; argument != nullptr;
         argument = argument->next, ++place) {
        std::size_t target = place;
        if (!argument->name.empty()) {
            target = 0;
            while (target < parameters.size() && !sameName(parameters[target]->name, argument->name))
                ++target;
            if (target == parameters.size()) {
                fail(argument->at, 8145,
                     std::string(argument->name) + " is not a parameter for procedure " + name + ".");
            }
        }
        if (target >= parameters.size())
            fail(argument->at, 8144, "Procedure or function " + name + " has too many arguments specified.");
        given[target] = argument;
    }
    std::vector<Expr *> values;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const AssignmentNode &parameter = *parameters[i];
        const bool supplied = given[i] != nullptr && given[i]->value != nullptr;
        if (!supplied && parameter.value == nullptr) {
            fail(action.at, 201,
                 "Procedure or function '" + name + "' expects parameter '" + std::string(parameter.name) +
                     "', which was not supplied.");
        }
        const std::string_view caller = m_resolver.source();
        if (!supplied)
            m_resolver.setSource(body);
        Expr *value = m_resolver.argument(supplied ? *given[i]->value : *parameter.value);
        values.push_back(m_resolver.converter().convert(value, parameter.type, Purpose::Argument));
        m_resolver.setSource(caller);
    }
    return values;
}

void Translation::expand(const ActionNode &action, const std::string &text) {
    const std::vector<Token> &tokens = m_bodies.emplace_back(tokenize(text));
    const ActionNode *procedure = Parser(text, tokens, m_arena).statements();
    if (procedure == nullptr || procedure->kind != ActionKind::CreateProcedure)
        fail(action.at, 2812, "Could not find stored procedure '" + std::string(action.table.name) + "'.");
    const std::vector<Expr *> values = bind(action, *procedure, text);
    const std::string_view caller = m_resolver.source();
    const std::size_t block = m_resolver.openVariables();
    m_resolver.setSource(text);
    std::size_t place = 0;
    for (const AssignmentNode *parameter = procedure->assignments; parameter != nullptr;
         parameter = parameter->next)
        m_resolver.declare(parameter->name, parameter->at, parameter->type, values[place++]);
    statements(procedure->body);
    m_resolver.setSource(caller);
    m_resolver.closeVariables(block);
}

} // namespace

std::vector<Statement> translate(const Sql &text, const Catalog &catalog, const Traits &engine) {
    const std::string_view source = text.text();
    const std::vector<Token> tokens = tokenize(source);
    if (!text.pieces().empty())
        checkPieces(text, tokens);
    return Translation(catalog, engine).run(source, tokens);
}

std::vector<std::string_view> batches(std::string_view script) {
    std::vector<std::string_view> found;
    std::size_t begin = 0;
    std::size_t line = 0;
    const auto add = [&](std::size_t end) {
        const std::string_view batch = script.substr(begin, end - begin);
        if (batch.find_first_not_of(" \t\r\n") != std::string_view::npos)
            found.push_back(batch);
    };
    while (line < script.size()) {
        const std::size_t end = std::min(script.find('\n', line), script.size());
        std::string_view word = script.substr(line, end - line);
        while (!word.empty() && (word.back() == ' ' || word.back() == '\r' || word.back() == '\t'))
            word.remove_suffix(1);
        while (!word.empty() && (word.front() == ' ' || word.front() == '\t'))
            word.remove_prefix(1);
        if (sameName(word, "go")) {
            add(line);
            begin = std::min(end + 1, script.size());
        }
        line = end + 1;
    }
    add(script.size());
    return found;
}

} // namespace zel::tsql
