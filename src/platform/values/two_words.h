#pragma once

#include <compare>
#include <concepts>
#include <cstdint>
#include <limits>

namespace QuorDataLib {

/// A whole number of 128 bits with a sign, for compilers that have none of their own. Like theirs,
/// it divides towards zero and shifts its sign along; results that do not fit wrap around.
class TwoWords {
 public:
  constexpr TwoWords() = default;

  template <std::integral T>
  constexpr TwoWords(T value) noexcept  // NOLINT: every whole number is one of these
      : low_(static_cast<std::uint64_t>(value)), high_(value < T{0} ? ~std::uint64_t{0} : 0) {}

  template <std::integral T>
  constexpr explicit operator T() const noexcept {
    return static_cast<T>(low_);
  }

  constexpr TwoWords operator-() const noexcept { return {0 - low_, ~high_ + (low_ == 0 ? 1 : 0)}; }

  friend constexpr TwoWords operator+(TwoWords a, TwoWords b) noexcept {
    const std::uint64_t low = a.low_ + b.low_;
    return {low, a.high_ + b.high_ + (low < a.low_ ? 1 : 0)};
  }
  friend constexpr TwoWords operator-(TwoWords a, TwoWords b) noexcept { return a + -b; }
  friend constexpr TwoWords operator*(TwoWords a, TwoWords b) noexcept {
    const std::uint64_t aLow = a.low_ & kHalf;
    const std::uint64_t aHigh = a.low_ >> 32U;
    const std::uint64_t bLow = b.low_ & kHalf;
    const std::uint64_t bHigh = b.low_ >> 32U;
    const std::uint64_t first = aLow * bLow;
    const std::uint64_t second = aHigh * bLow + (first >> 32U);
    const std::uint64_t third = aLow * bHigh + (second & kHalf);
    return {third << 32U | (first & kHalf),
            aHigh * bHigh + (second >> 32U) + (third >> 32U) + a.high_ * b.low_ + a.low_ * b.high_};
  }
  /// The divisor is not 0.
  friend constexpr TwoWords operator/(TwoWords a, TwoWords b) noexcept {
    const TwoWords quotient = quotientOf(a.magnitude(), b.magnitude());
    return a.isNegative() == b.isNegative() ? quotient : -quotient;
  }
  friend constexpr TwoWords operator%(TwoWords a, TwoWords b) noexcept { return a - a / b * b; }

  friend constexpr TwoWords operator&(TwoWords a, TwoWords b) noexcept {
    return {a.low_ & b.low_, a.high_ & b.high_};
  }
  friend constexpr TwoWords operator|(TwoWords a, TwoWords b) noexcept {
    return {a.low_ | b.low_, a.high_ | b.high_};
  }
  /// By 0 to 127 bits.
  friend constexpr TwoWords operator<<(TwoWords a, int bits) noexcept {
    if (bits >= kWord) return {0, a.low_ << (bits - kWord)};
    return bits == 0 ? a : TwoWords(a.low_ << bits, a.high_ << bits | a.low_ >> (kWord - bits));
  }
  friend constexpr TwoWords operator>>(TwoWords a, int bits) noexcept {
    const std::uint64_t sign = a.isNegative() ? ~std::uint64_t{0} : 0;
    if (bits == 0) return a;
    if (bits == kWord) return {a.high_, sign};
    if (bits > kWord) {
      return {a.high_ >> (bits - kWord) | sign << (2 * kWord - bits), sign};
    }
    return {a.low_ >> bits | a.high_ << (kWord - bits), a.high_ >> bits | sign << (kWord - bits)};
  }

  constexpr TwoWords& operator+=(TwoWords other) noexcept { return *this = *this + other; }
  constexpr TwoWords& operator-=(TwoWords other) noexcept { return *this = *this - other; }
  constexpr TwoWords& operator*=(TwoWords other) noexcept { return *this = *this * other; }

  friend constexpr bool operator==(TwoWords a, TwoWords b) noexcept = default;
  friend constexpr std::strong_ordering operator<=>(TwoWords a, TwoWords b) noexcept {
    if (a.high_ == b.high_) return a.low_ <=> b.low_;
    return static_cast<std::int64_t>(a.high_) <=> static_cast<std::int64_t>(b.high_);
  }

 private:
  static constexpr int kWord = 64;
  static constexpr std::uint64_t kHalf = std::numeric_limits<std::uint32_t>::max();

  constexpr TwoWords(std::uint64_t low, std::uint64_t high) noexcept : low_(low), high_(high) {}

  [[nodiscard]] constexpr bool isNegative() const noexcept {
    return static_cast<std::int64_t>(high_) < 0;
  }
  [[nodiscard]] constexpr TwoWords magnitude() const noexcept {
    return isNegative() ? -*this : *this;
  }

  /// Whether it is not above `other`, both without a sign.
  [[nodiscard]] constexpr bool isWithin(TwoWords other) const noexcept {
    return high_ != other.high_ ? high_ < other.high_ : low_ <= other.low_;
  }

  /// Of numbers without a sign.
  static constexpr TwoWords quotientOf(TwoWords dividend, TwoWords divisor) noexcept {
    if (dividend.high_ == 0 && divisor.high_ == 0) return dividend.low_ / divisor.low_;
    TwoWords quotient;
    TwoWords rest;
    for (int bit = 2 * kWord - 1; bit >= 0; --bit) {
      rest = rest << 1 | (dividend >> bit & 1);
      if (!divisor.isWithin(rest)) continue;
      rest -= divisor;
      quotient = quotient | TwoWords(1) << bit;
    }
    return quotient;
  }

  std::uint64_t low_ = 0;
  std::uint64_t high_ = 0;
};

}  // namespace QuorDataLib
