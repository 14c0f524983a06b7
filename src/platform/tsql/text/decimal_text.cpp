#include "platform/tsql/text/decimal_text.h"

namespace zel::tsql {

std::optional<DecimalText> DecimalText::parse(std::string_view text, bool grouped) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    DecimalText decimal;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        decimal.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (grouped && !text.empty() && text.front() == '$')
        text.remove_prefix(1);
    bool point = false;
    bool digits = false;
    for (const char c : text) {
        if (c == '.' && !point) {
            point = true;
        } else if (c >= '0' && c <= '9') {
            digits = true;
            if (point)
                decimal.fraction += c;
            else if (c != '0' || !decimal.whole.empty())
                decimal.whole += c;
        } else if (c != ',' || !grouped || point || !digits) {
            return std::nullopt;
        }
    }
    return digits ? std::optional(decimal) : std::nullopt;
}

void DecimalText::round(std::size_t scale) {
    const bool up = fraction.size() > scale && fraction[scale] >= '5';
    fraction.resize(scale, '0');
    if (!up)
        return;
    std::string digits = '0' + whole + fraction;
    std::size_t i = digits.size();
    while (digits[--i] == '9')
        digits[i] = '0';
    ++digits[i];
    fraction = digits.substr(digits.size() - scale);
    whole = digits.substr(0, digits.size() - scale);
    whole.erase(0, whole.find_first_not_of('0'));
}

void DecimalText::truncate() {
    fraction.clear();
}

std::string DecimalText::toString() const {
    const bool zero = whole.empty() && fraction.find_first_not_of('0') == std::string::npos;
    std::string text = negative && !zero ? "-" : "";
    text += whole.empty() ? "0" : whole;
    if (!fraction.empty())
        text += '.' + fraction;
    return text;
}

} // namespace zel::tsql
