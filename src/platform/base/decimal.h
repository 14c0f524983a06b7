#pragma once

#include <QString>

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zel {

/// An exact decimal number: a 64-bit count of ten-thousandths. Range about +-922,337,203,685,477.
/// Addition and subtraction are exact; what does not fit raises Error 8115 (arithmetic overflow).
class Decimal {
public:
    static constexpr std::int64_t Scale = 10'000;

    constexpr Decimal() = default;
    /// A whole number; overflow raises Error 8115.
    static Decimal fromInteger(std::int64_t whole);
    static constexpr Decimal fromTenThousandths(std::int64_t count) { return Decimal(count); }
    /// Nearest ten-thousandth, half away from zero, of the double's shortest decimal text (so 1.005
    /// is 1.005).
    static Decimal fromDouble(double value);
    /// A whole text of the form blanks, sign, digits, one point, digits, blanks; further digits than four
    /// round half away from zero. Nothing else is accepted ('' neither).
    static std::optional<Decimal> parse(std::string_view text);

    [[nodiscard]] constexpr std::int64_t tenThousandths() const { return m_count; }
    [[nodiscard]] double toDouble() const;
    [[nodiscard]] bool isWhole() const { return m_count % Scale == 0; }
    /// Rounded half away from zero to `digits` decimals (0 to 4).
    [[nodiscard]] Decimal rounded(int digits) const;
    /// Plain text without grouping and without trailing zeros: "1234.5", "-0.25", "0".
    [[nodiscard]] std::string toString() const;

    Decimal operator-() const { return Decimal(-m_count); }
    friend Decimal operator+(Decimal a, Decimal b);
    friend Decimal operator-(Decimal a, Decimal b);
    Decimal &operator+=(Decimal other) { return *this = *this + other; }
    friend constexpr auto operator<=>(Decimal, Decimal) = default; // NOLINT(modernize-use-nullptr)

private:
    constexpr explicit Decimal(std::int64_t count) : m_count(count) {}
    std::int64_t m_count = 0;
};

} // namespace zel
