#include "platform/tsql/translation.h"

#include "platform/tsql/reading/parser.h"
#include "platform/tsql/text/names.h"

#include <array>

namespace zel::tsql {

namespace {

constexpr int DeepestCalls = 32;

/// Procedures that the connection carries out itself.
constexpr std::array<std::string_view, 4> ServerProcedures = {"sp_addlogin", "sp_adduser",
                                                              "sp_addsrvrolemember", "sp_password"};

} // namespace

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

} // namespace zel::tsql
