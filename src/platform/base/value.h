#pragma once

#include "platform/base/decimal.h"

#include <QDate>
#include <QString>
#include <QTime>

#include <cstdint>
#include <string>
#include <variant>

namespace zel {

/// A date with a time of day, in the institute's local time; no zone.
struct DateTime {
    QDate date;
    QTime time{0, 0};
    friend bool operator==(const DateTime &, const DateTime &) = default;
};

struct Null {
    friend bool operator==(Null, Null) { return true; }
};

/// One value of a column, a parameter or a formula.
class Value {
public:
    using Storage = std::variant<Null, std::int64_t, Decimal, double, std::string, DateTime>;

    Value() = default;
    Value(Null) {}
    Value(int value) : m_storage(std::int64_t(value)) {}
    Value(std::int64_t value) : m_storage(value) {}
    Value(long long value) : m_storage(std::int64_t(value)) {}
    Value(Decimal value) : m_storage(value) {}
    Value(double value) : m_storage(value) {}
    Value(std::string utf8) : m_storage(std::move(utf8)) {}
    Value(const char *utf8) : m_storage(std::string(utf8)) {}
    Value(const QString &text);
    Value(QDate date) : m_storage(DateTime{date, QTime(0, 0)}) {}
    Value(DateTime moment) : m_storage(moment) {}
    Value(bool) = delete;

    [[nodiscard]] bool isNull() const { return std::holds_alternative<Null>(m_storage); }
    [[nodiscard]] const Storage &storage() const { return m_storage; }

    /// As a text for the screen: numbers plain, without trailing zeros; dates dd/MM/yyyy (with HH:mm:ss when
    /// the time is not midnight); Null as ''.
    [[nodiscard]] QString text() const;
    /// As a number: '' and Null are 0, a text counts as the number at its start, a date as 0.
    [[nodiscard]] Decimal decimal() const;
    /// decimal() rounded to a whole number, half away from zero.
    [[nodiscard]] std::int64_t integer() const;
    /// The date of a date-time, or of a text as a field reads it (day first); otherwise an invalid date.
    [[nodiscard]] QDate date() const;

    friend bool operator==(const Value &, const Value &) = default;

private:
    Storage m_storage;
};

} // namespace zel
