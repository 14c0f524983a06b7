#include "platform/report/formula/amount_in_words.h"

#include <QStringList>

#include <array>
#include <span>

namespace zel::report {

namespace {

constexpr std::array<const char *, 20> small{"Zero",    "One",     "Two",       "Three",    "Four",
                                             "Five",    "Six",     "Seven",     "Eight",    "Nine",
                                             "Ten",     "Eleven",  "Twelve",    "Thirteen", "Fourteen",
                                             "Fifteen", "Sixteen", "Seventeen", "Eighteen", "Nineteen"};
constexpr std::array<const char *, 10> tens{"",      "",      "Twenty",  "Thirty", "Forty",
                                            "Fifty", "Sixty", "Seventy", "Eighty", "Ninety"};

struct Unit {
    std::uint64_t size;
    const char *word;
};

constexpr std::array<Unit, 5> thousands{{{1'000'000'000'000, "Trillion"},
                                         {1'000'000'000, "Billion"},
                                         {1'000'000, "Million"},
                                         {1'000, "Thousand"},
                                         {100, "Hundred"}}};
constexpr std::array<Unit, 4> lakhs{
    {{10'000'000, "Crore"}, {100'000, "Lakh"}, {1'000, "Thousand"}, {100, "Hundred"}}};

void appendWords(QStringList &words, std::uint64_t number, std::span<const Unit> units) {
    for (const Unit &unit : units) {
        if (number < unit.size)
            continue;
        appendWords(words, number / unit.size, units);
        words += QString::fromLatin1(unit.word);
        number %= unit.size;
    }
    if (number >= small.size()) {
        words += QString::fromLatin1(tens[number / 10]);
        number %= 10;
    }
    if (number > 0)
        words += QString::fromLatin1(small[number]);
}

} // namespace

QString amountInWords(Decimal amount, WordScale scale) {
    const std::int64_t hundredths = amount.rounded(2).tenThousandths() / 100;
    const std::uint64_t positive =
        hundredths < 0 ? 0 - static_cast<std::uint64_t>(hundredths) : static_cast<std::uint64_t>(hundredths);
    QStringList words;
    if (hundredths < 0)
        words += QStringLiteral("Minus");
    if (positive < 100)
        words += QString::fromLatin1(small[0]);
    else if (scale == WordScale::Thousands)
        appendWords(words, positive / 100, thousands);
    else
        appendWords(words, positive / 100, lakhs);
    if (positive % 100 != 0)
        words += QStringLiteral("and %1/100").arg(positive % 100, 2, 10, QLatin1Char('0'));
    words += QStringLiteral("Only");
    return words.join(QLatin1Char(' '));
}

} // namespace zel::report
