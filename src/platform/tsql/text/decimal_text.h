#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zel::tsql {

/// A decimal number of any length as its digits, for literals that must not go through a binary fraction.
struct DecimalText {
    bool negative = false;
    std::string whole;    ///< without leading zeros; '' for 0
    std::string fraction; ///< as written

    /// Blanks around, a sign, digits with at most one point; nullopt for anything else, '' too. With
    /// `grouped`, commas between the digits and one leading '$' are passed over.
    [[nodiscard]] static std::optional<DecimalText> parse(std::string_view text, bool grouped = false);
    /// Rounded half away from zero to `scale` decimals; exactly so many are kept.
    void round(std::size_t scale);
    void truncate();
    /// "-12.50", "0.5", "12".
    [[nodiscard]] std::string toString() const;
};

} // namespace zel::tsql
