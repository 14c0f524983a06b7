#include "platform/tsql/translation.h"

#include "platform/tsql/reading/parser.h"
#include "platform/tsql/text/names.h"

#include <array>
#include <utility>

namespace zel::tsql {

namespace {

constexpr int DeepestCalls = 32;
/// Of one text: procedures that call others several times would fill all memory.
constexpr int MostCalls = 100'000;

/// Procedures that the connection carries out itself.
constexpr std::array<std::string_view, 4> ServerProcedures = {"sp_addlogin", "sp_adduser",
                                                              "sp_addsrvrolemember", "sp_password"};

} // namespace

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
    Statement made;
    made.kind = StatementKind::ServerCall;
    made.name = name;
    for (const AssignmentNode *argument = action.assignments; argument != nullptr;
         argument = argument->next) {
        if (!argument->name.empty() || argument->value == nullptr)
            fail(argument->at, 102, "Incorrect syntax near '" + std::string(argument->name) + "'.");
        Expr *value = m_resolver.converter().asText(m_resolver.argument(*argument->value));
        made.targets.push_back(0);
        if (isLiteral(*value) && value->op != Op::NullLiteral) {
            made.arguments.emplace_back(std::string(value->text));
            continue;
        }
        made.arguments.emplace_back(std::nullopt);
        if (value->op == Op::NullLiteral)
            continue;
        made.targets.back() = newSlot();
        assign(value, made.targets.back()).keepsRowCount = true;
    }
    m_statements.push_back(std::move(made));
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

const Translation::Procedure &Translation::procedure(const ActionNode &action, const std::string &text) {
    if (m_procedures == nullptr)
        m_procedures = std::make_unique<Procedures>();
    const auto [found, isNew] = m_procedures->byText.try_emplace(&text);
    Procedure &procedure = found->second;
    if (!isNew)
        return procedure;
    const std::vector<Token> tokens = tokenize(text);
    Parser parser(text, tokens, m_procedures->arena);
    procedure.action = parser.next();
    if (procedure.action == nullptr || procedure.action->kind != ActionKind::CreateProcedure)
        fail(action.at, 2812, "Could not find stored procedure '" + std::string(action.table.name) + "'.");
    procedure.variables = parser.variables();
    return procedure;
}

/// Literals that the procedure does not change stand in its statements; other arguments are worked out first.
void Translation::declareParameters(const Procedure &procedure, const std::vector<Expr *> &values) {
    BoundSelect row;
    BoundItem **last = &row.items;
    std::vector<Slot> targets;
    std::size_t place = 0;
    for (const AssignmentNode *parameter = procedure.action->assignments; parameter != nullptr;
         parameter = parameter->next, ++place) {
        Expr *value = values[place];
        if (isLiteral(*value) && !procedure.variables[place].assigned) {
            m_resolver.declare(parameter->type, value);
            continue;
        }
        targets.push_back(newSlot());
        m_resolver.declare(parameter->type, targets.back());
        *last = m_arena.make<BoundItem>({value, {}, nullptr});
        last = &(*last)->next;
    }
    if (!targets.empty())
        assign(row, std::move(targets)).keepsRowCount = true;
}

void Translation::expand(const ActionNode &action, const std::string &text) {
    if (++m_scopes > MostCalls)
        fail(action.at, 701, "There is not enough memory for this statement.");
    const Procedure &called = procedure(action, text);
    const std::vector<Expr *> values = bind(action, *called.action, text);
    const std::size_t enter = m_statements.size();
    add(StatementKind::Enter);
    const std::string_view caller = m_resolver.source();
    const Resolver::Scopes scopes = m_resolver.openScope(newSlot(), m_scopes);
    m_resolver.setSource(text);
    const Procedure *const outer = std::exchange(m_procedure, &called);
    const int choices = std::exchange(m_choices, 0);
    std::vector<std::size_t> returns = std::exchange(m_returns, {});
    declareParameters(called, values);
    statements(called.action->body);
    m_returns.swap(returns);
    m_procedure = outer;
    m_choices = choices;
    m_resolver.setSource(caller);
    for (const std::size_t jump : returns)
        m_statements[jump].next = m_statements.size();
    for (const Table &table : m_resolver.closeScope(scopes)) {
        Writer out = writer();
        out.dropTable(table, true);
        Statement &drop = add(StatementKind::DropTable, &out);
        drop.name = table.name;
        drop.keepsRowCount = true;
    }
    m_statements[enter].next = m_statements.size();
    add(StatementKind::Leave);
}

} // namespace zel::tsql
