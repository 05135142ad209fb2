// Exact money.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace QuorDataLib {

/// An amount of money (or a quantity) with four decimal places: a 64-bit count of ten-thousandths.
/// Every operation is exact or raises 6 (overflow); none passes through a floating number.
class Currency {
 public:
  static constexpr std::int64_t kUnitsPerOne = 10'000;

  constexpr Currency() = default;

  static constexpr Currency fromUnits(std::int64_t units) { return Currency(units); }

  /// A whole number. Raises 6 when it does not fit.
  static Currency fromInteger(std::int64_t whole);

  /// The nearest amount, halves to the even ten-thousandth, as automation converts. Raises 6 when
  /// it does not fit or is not finite.
  static Currency fromDouble(double number);

  /// An amount written as a decimal number with a point ("-1234.5678", blanks around it allowed).
  /// Digits after the fourth decimal round, halves to even. `std::nullopt` when the text is
  /// something else; raises 6 when it does not fit.
  static std::optional<Currency> parse(std::string_view text);

  /// The count of ten-thousandths.
  [[nodiscard]] constexpr std::int64_t units() const noexcept { return units_; }

  [[nodiscard]] double toDouble() const noexcept;

  /// The decimal number with exactly `decimals` (0 to 4) places, halves rounded away from zero.
  [[nodiscard]] std::string toText(int decimals = 4) const;

  [[nodiscard]] constexpr bool isZero() const noexcept { return units_ == 0; }

  Currency operator-() const;
  friend Currency operator+(Currency a, Currency b);
  friend Currency operator-(Currency a, Currency b);
  /// The product rounded to the ten-thousandth, halves to even, by way of 128 bits.
  friend Currency operator*(Currency a, Currency b);
  Currency& operator+=(Currency other) { return *this = *this + other; }
  Currency& operator-=(Currency other) { return *this = *this - other; }

  constexpr auto operator<=>(const Currency&) const = default;

 private:
  constexpr explicit Currency(std::int64_t units) : units_(units) {}

  std::int64_t units_ = 0;
};

}  // namespace QuorDataLib
