#include "platform/base/value.h"

#include "platform/base/date_text.h"
#include "platform/base/number_text.h"

namespace zel {

namespace {

template <class... Ts>
struct Overloaded : Ts... {
    using Ts::operator()...;
};
template <class... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

} // namespace

Value::Value(const QString &text) {
    // Nearly all texts are ASCII, which goes over without a second text between the two.
    std::string &ascii = m_storage.emplace<std::string>(static_cast<std::size_t>(text.size()), '\0');
    char16_t all = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text.at(i).unicode();
        all |= unit;
        ascii[static_cast<std::size_t>(i)] = static_cast<char>(unit);
    }
    if (all >= 0x80)
        ascii = text.toStdString();
}

QString Value::text() const {
    return std::visit(
        Overloaded{[](Null) { return QString(); }, [](std::int64_t v) { return QString::number(v); },
                   [](Decimal v) { return QString::fromStdString(v.toString()); },
                   [](double v) { return QString::fromStdString(plainText(v)); },
                   [](const std::string &v) { return QString::fromStdString(v); },
                   [](const DateTime &v) {
                       const QString day = dayText(v.date);
                       return v.time == QTime(0, 0) ? day
                                                    : day + v.time.toString(QStringLiteral(" HH:mm:ss"));
                   }},
        m_storage);
}

Decimal Value::decimal() const {
    return std::visit(
        Overloaded{[](Null) { return Decimal(); }, [](std::int64_t v) { return Decimal::fromInteger(v); },
                   [](Decimal v) { return v; }, [](double v) { return Decimal::fromDouble(v); },
                   [](const std::string &v) { return leadingNumber(QString::fromStdString(v)); },
                   [](const DateTime &) { return Decimal(); }},
        m_storage);
}

std::int64_t Value::integer() const {
    if (const auto *whole = std::get_if<std::int64_t>(&m_storage))
        return *whole;
    return decimal().rounded(0).tenThousandths() / Decimal::Scale;
}

QDate Value::date() const {
    if (const auto *moment = std::get_if<DateTime>(&m_storage))
        return moment->date;
    const auto *text = std::get_if<std::string>(&m_storage);
    if (text == nullptr)
        return {};
    const auto moment = fromStoredDate(parseDate(*text, DateTarget::Date, DateOrder::DayFirst).date.text());
    return moment ? moment->date : QDate();
}

} // namespace zel
