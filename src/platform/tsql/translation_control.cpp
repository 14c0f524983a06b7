#include "platform/tsql/translation.h"

#include "platform/tsql/meaning/row_values.h"

namespace zel::tsql {

Statement &Translation::assign(const BoundSelect &values, std::vector<Slot> targets) {
    Writer out = writer();
    out.assignment(values);
    Statement &made = add(StatementKind::Assign, &out);
    made.targets = std::move(targets);
    return made;
}

Statement &Translation::assign(Expr *value, Slot target) {
    BoundItem item;
    item.value = value;
    BoundSelect row;
    row.items = &item;
    return assign(row, {target});
}

/// In a procedure a variable that nothing else is assigned to is the literal that it begins with, unless
/// its declaration may be passed by.
void Translation::declare(const ActionNode &action) {
    for (const AssignmentNode *variable = action.assignments; variable != nullptr;
         variable = variable->next) {
        Expr *value = nullptr;
        if (variable->value != nullptr) {
            value = m_resolver.converter().convert(m_resolver.argument(*variable->value), variable->type,
                                                   Purpose::Cast);
        }
        if (value != nullptr && m_procedure != nullptr && m_choices == 0 && isLiteral(*value) &&
            !m_procedure->variables[static_cast<std::size_t>(variable->variable)].assigned) {
            m_resolver.declare(variable->type, value);
            continue;
        }
        const Slot slot = newSlot();
        m_resolver.declare(variable->type, slot);
        if (value != nullptr)
            assign(value, slot);
    }
}

void Translation::setVariable(const ActionNode &action) {
    const AssignmentNode &set = *action.assignments;
    assign(m_resolver.assigned(set.variable, *set.value), m_resolver.slotOf(set.variable));
}

void Translation::selectVariables(const SelectNode &select) {
    std::vector<Slot> targets;
    for (const ItemNode *item = select.items; item != nullptr; item = item->next)
        targets.push_back(m_resolver.slotOf(item->variable));
    BoundSelect &rows = *m_resolver.assignment(select);
    RowValues values(m_arena, targets, [this] { return newSlot(); });
    bool reads = false;
    for (const BoundItem *item = rows.items; item != nullptr; item = item->next)
        reads = reads || values.reads(item->value);
    if (!reads)
        assign(rows, std::move(targets));
    else if (rows.sources == nullptr && rows.where == nullptr)
        assignInTurn(rows.items, targets);
    else
        assignEachRow(rows, targets, values);
}

std::size_t Translation::assignInTurn(const BoundItem *item, const std::vector<Slot> &targets) {
    for (const Slot target : targets) {
        assign(item->value, target);
        item = item->next;
    }
    return m_statements.size();
}

void Translation::assignEachRow(BoundSelect &rows, const std::vector<Slot> &targets, RowValues &values) {
    for (BoundItem *item = rows.items; item != nullptr; item = item->next) {
        const std::uint32_t at = item->value->at;
        item->value = values.part(item->value);
        if (item->value == nullptr)
            fail(at, 102,
                 "Incorrect syntax near a sub-select that reads a variable which its select assigns.");
    }
    BoundSelect asked = rows;
    BoundItem one; // rows count even where nothing of theirs is asked
    one.value = m_resolver.converter().number("1", {TypeKind::Int, 0, 0}, 0);
    asked.items = values.asked() != nullptr ? values.asked() : &one;
    const std::size_t each = m_statements.size();
    assign(asked, values.slots()).kind = StatementKind::EachRow;
    m_statements[each].next = assignInTurn(rows.items, targets);
}

void Translation::choice(const ActionNode &action) {
    Writer out = writer();
    out << "SELECT " << *m_resolver.test(*action.where);
    const std::size_t unless = m_statements.size();
    add(StatementKind::JumpUnless, &out).targets = {newSlot()};
    ++m_choices;
    statements(action.body);
    if (action.otherwise != nullptr) {
        const std::size_t jump = m_statements.size();
        add(StatementKind::Jump);
        m_statements[unless].next = m_statements.size();
        statements(action.otherwise);
        m_statements[jump].next = m_statements.size();
    } else {
        m_statements[unless].next = m_statements.size();
    }
    --m_choices;
}

/// The value is worked out, since that may fail, and dropped.
void Translation::returning(const ActionNode &action) {
    if (action.where != nullptr) {
        assign(m_resolver.converter().convert(m_resolver.argument(*action.where), {TypeKind::Int, 0, 0},
                                              Purpose::Cast),
               newSlot());
    }
    m_returns.push_back(m_statements.size());
    add(StatementKind::Jump);
}

} // namespace zel::tsql
