#include "platform/report/formula/evaluate.h"

#include "platform/base/date_text.h"
#include "platform/base/number_text.h"
#include "platform/base/scaled_number.h"
#include "platform/report/formula/functions.h"

namespace zel::report {

namespace {

Decimal narrowed(ScaledCount count) {
    if (count != ScaledCount(static_cast<std::int64_t>(count)))
        throw Error(8115, QStringLiteral("Arithmetic overflow error in a report's formula."));
    return Decimal::fromTenThousandths(static_cast<std::int64_t>(count));
}

Value condition(bool holds) {
    return Value(holds ? 1 : 0);
}

QString trimmedEnd(const QString &text) {
    auto length = text.size();
    while (length > 0 && text[length - 1] == QLatin1Char(' '))
        --length;
    return text.left(length);
}

/// Less than, equal to or greater than 0, as the left value is to the right; neither is Null.
int compared(const Value &left, const Value &right) {
    if (const auto *moment = std::get_if<DateTime>(&left.storage())) {
        const auto *other = std::get_if<DateTime>(&right.storage());
        const QDateTime one(moment->date, moment->time);
        const QDateTime two =
            other ? QDateTime(other->date, other->time) : QDateTime(right.date(), QTime(0, 0));
        return one < two ? -1 : (two < one ? 1 : 0);
    }
    if (std::holds_alternative<std::string>(left.storage()))
        return trimmedEnd(left.text()).compare(trimmedEnd(right.text()), Qt::CaseInsensitive);
    const Decimal one = left.decimal();
    const Decimal two = right.decimal();
    return one < two ? -1 : (two < one ? 1 : 0);
}

Value comparison(Op op, const Value &left, const Value &right) {
    if (left.isNull() || right.isNull())
        return {};
    const int order = compared(left, right);
    switch (op) {
    case Op::Equal:
        return condition(order == 0);
    case Op::NotEqual:
        return condition(order != 0);
    case Op::Less:
        return condition(order < 0);
    case Op::LessEqual:
        return condition(order <= 0);
    case Op::Greater:
        return condition(order > 0);
    default:
        return condition(order >= 0);
    }
}

/// And with `decisive` 0, or with 1: the decisive value wins, else Null, else the other value.
Value joined(const Expression &expression, const Scene &scene, std::int64_t decisive) {
    bool unknown = false;
    for (const auto &operand : expression.operands) {
        const Value value = evaluate(*operand, scene);
        if (value.isNull())
            unknown = true;
        else if (value.integer() == decisive)
            return Value(decisive);
    }
    return unknown ? Value() : Value(std::int64_t(1) - decisive);
}

Value range(const Expression &expression, const Scene &scene) {
    const Value tested = evaluate(*expression.operands[0], scene);
    const Value from = evaluate(*expression.operands[1], scene);
    const Value to = evaluate(*expression.operands[2], scene);
    if (tested.isNull() || from.isNull() || to.isNull())
        return {};
    return condition(compared(tested, from) >= 0 && compared(tested, to) <= 0);
}

Value called(const Expression &expression, const Scene &scene) {
    const Function &target = function(expression.index);
    Value arguments[2];
    for (std::size_t i = 0; i < expression.operands.size(); ++i)
        arguments[i] = evaluate(*expression.operands[i], scene);
    return target.evaluate(std::span(arguments, expression.operands.size()), scene);
}

Value binary(const Expression &expression, const Scene &scene) {
    const Value left = evaluate(*expression.operands[0], scene);
    const Value right = evaluate(*expression.operands[1], scene);
    switch (expression.op) {
    case Op::Add:
        return left.decimal() + right.decimal();
    case Op::Subtract:
        return left.decimal() - right.decimal();
    case Op::Multiply:
        return product(left.decimal(), right.decimal());
    case Op::Divide:
        return right.decimal() == Decimal() ? Value() : quotient(left.decimal(), right.decimal());
    case Op::Concatenate:
        return left.text() + right.text();
    case Op::Like:
        return left.isNull() || right.isNull() ? Value() : condition(isLike(left.text(), right.text()));
    default:
        return comparison(expression.op, left, right);
    }
}

} // namespace

Value evaluate(const Expression &expression, const Scene &scene) {
    switch (expression.op) {
    case Op::Literal:
        return expression.literal;
    case Op::Column:
        return scene.column(expression.table, expression.index);
    case Op::Formula:
        return scene.formula(expression.index);
    case Op::Total:
        return scene.total(expression.index);
    case Op::Parameter:
        return scene.parameter(expression.index);
    case Op::Negate:
        return -evaluate(*expression.operands[0], scene).decimal();
    case Op::Not: {
        const Value value = evaluate(*expression.operands[0], scene);
        return value.isNull() ? Value() : condition(value.integer() == 0);
    }
    case Op::And:
        return joined(expression, scene, 0);
    case Op::Or:
        return joined(expression, scene, 1);
    case Op::InRange:
        return range(expression, scene);
    case Op::If:
        return evaluate(*expression.operands[holds(expression.operands[0], scene) ? 1 : 2], scene);
    case Op::Call:
        return called(expression, scene);
    default:
        return binary(expression, scene);
    }
}

bool holds(const ExpressionPtr &condition, const Scene &scene) {
    return evaluate(*condition, scene).integer() != 0;
}

Value coerced(const Value &value, Kind kind) {
    if (value.isNull())
        return value;
    switch (kind) {
    case Kind::Number:
        return std::holds_alternative<std::int64_t>(value.storage()) ? value : Value(value.decimal());
    case Kind::Text:
        return std::holds_alternative<std::string>(value.storage()) ? value : Value(value.text());
    case Kind::Date:
        if (std::holds_alternative<DateTime>(value.storage()))
            return value;
        return value.date().isValid() ? Value(value.date()) : Value();
    default:
        return value;
    }
}

Decimal product(Decimal left, Decimal right) {
    return narrowed(
        roundedQuotient(ScaledCount(left.tenThousandths()) * right.tenThousandths(), Decimal::Scale));
}

Decimal quotient(Decimal left, Decimal right) {
    return narrowed(
        roundedQuotient(ScaledCount(left.tenThousandths()) * Decimal::Scale, right.tenThousandths()));
}

bool isLike(const QString &text, const QString &pattern) {
    const QString letters = text.toCaseFolded();
    const QString wanted = pattern.toCaseFolded();
    qsizetype at = 0;
    qsizetype in = 0;
    qsizetype star = -1;
    qsizetype retry = 0;
    while (at < letters.size()) {
        if (in < wanted.size() && wanted[in] == QLatin1Char('*')) {
            star = in++;
            retry = at;
        } else if (in < wanted.size() && (wanted[in] == QLatin1Char('?') || wanted[in] == letters[at])) {
            ++at;
            ++in;
        } else if (star >= 0) {
            in = star + 1;
            at = ++retry;
        } else {
            return false;
        }
    }
    while (in < wanted.size() && wanted[in] == QLatin1Char('*'))
        ++in;
    return in == wanted.size();
}

QString shown(const Value &value, Kind kind, const QString &picture, const QString &dateFormat) {
    if (value.isNull())
        return {};
    if (kind == Kind::Number)
        return picture.isEmpty() ? value.text() : format(value.decimal(), picture);
    if (kind != Kind::Date || dateFormat.isEmpty())
        return value.text();
    const auto *moment = std::get_if<DateTime>(&value.storage());
    if (!moment)
        return value.text();
    static const QString everyday = QStringLiteral("dd/MM/yyyy");
    return dateFormat == everyday ? dayText(moment->date)
                                  : QDateTime(moment->date, moment->time).toString(dateFormat);
}

} // namespace zel::report
