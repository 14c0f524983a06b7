#pragma once

#include "platform/report/formula/expression.h"

#include <QDateTime>

namespace zel::report {

/// What a formula is evaluated in: the current row, its totals and its page.
class Scene {
public:
    virtual ~Scene() = default;
    [[nodiscard]] virtual Value column(int table, int column) const = 0;
    [[nodiscard]] virtual Value formula(int index) const = 0;
    [[nodiscard]] virtual Value total(int index) const = 0;
    [[nodiscard]] virtual Value parameter(int index) const = 0;
    /// What a formula of a sub-report says after its last row.
    [[nodiscard]] virtual Value fromSubreport(const QString &name, const QString &formula) const = 0;
    [[nodiscard]] virtual std::int64_t rowNumber() const = 0; ///< from 1
    [[nodiscard]] virtual int pageNumber() const = 0;         ///< from 1
    [[nodiscard]] virtual int pageCount() const = 0;
    /// In a group's header that stands again on a page.
    [[nodiscard]] virtual bool continued() const = 0;
    [[nodiscard]] virtual QDateTime printTime() const = 0;
    [[nodiscard]] virtual QString userName() const = 0;
};

/// Conditions are 1, 0 or Null. Texts compare without case and trailing blanks; in arithmetic Null counts as
/// 0, a quotient by 0 is Null. Error 8115 when a number leaves the range.
[[nodiscard]] Value evaluate(const Expression &expression, const Scene &scene);
/// Null is no.
[[nodiscard]] bool holds(const ExpressionPtr &condition, const Scene &scene);

/// A value as a column or a parameter of that kind.
[[nodiscard]] Value coerced(const Value &value, Kind kind);
/// Equal to the nearest ten-thousandth, half away from zero.
[[nodiscard]] Decimal product(Decimal left, Decimal right);
[[nodiscard]] Decimal quotient(Decimal left, Decimal right);
/// Case and trailing blanks ignored, `*` any letters, `?` one.
[[nodiscard]] bool isLike(const QString &text, const QString &pattern);
/// As `Value::text`, with the picture or the date format.
[[nodiscard]] QString shown(const Value &value, Kind kind, const QString &picture, const QString &dateFormat);

} // namespace zel::report
