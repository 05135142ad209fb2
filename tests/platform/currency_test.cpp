#include "platform/values/currency.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include "platform/raised.h"
#include "platform/values/rounding.h"
#include "platform/values/wide_integer.h"

namespace QuorDataLib {
namespace {

using QuorTest::raisedBy;

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

Currency units(std::int64_t count) { return Currency::fromUnits(count); }

/// Whole numbers of all sizes, small and large alike.
class RandomIntegers {
 public:
  std::int64_t next(int mostBits = 64) {
    const int bits = std::uniform_int_distribution(1, mostBits)(random_);
    return static_cast<std::int64_t>(random_()) >> (64 - bits);
  }

 private:
  std::mt19937_64 random_{19'991'231};
};

/// Whether `whole` is `numerator` / `denominator` rounded, halves to even.
bool isNearest(std::int64_t whole, WideInteger numerator, WideInteger denominator) {
  WideInteger twiceOff = (WideInteger{whole} * denominator - numerator) * 2;
  if (twiceOff < 0) twiceOff = -twiceOff;
  return twiceOff < denominator || (twiceOff == denominator && whole % 2 == 0);
}

TEST(Currency, ArithmeticIsExactOrOverflows) {
  RandomIntegers random;
  int overflows = 0;
  for (int i = 0; i < 50'000; ++i) {
    const std::int64_t a = random.next();
    const std::int64_t b = random.next();
    const auto expect = [&](WideInteger numerator, WideInteger denominator, auto operation) {
      Currency result;
      const int raised = raisedBy([&] { return result = operation(units(a), units(b)); });
      if (raised == 0) return isNearest(result.units(), numerator, denominator);
      ++overflows;
      const WideInteger size = numerator < 0 ? -numerator : numerator;
      return raised == 6 && size >= WideInteger{kMost} * denominator;
    };
    ASSERT_TRUE(expect(WideInteger{a} + b, 1, std::plus())) << a << ' ' << b;
    ASSERT_TRUE(expect(WideInteger{a} - b, 1, std::minus())) << a << ' ' << b;
    ASSERT_TRUE(expect(WideInteger{a} * b, 10'000, std::multiplies())) << a << ' ' << b;
  }
  EXPECT_GT(overflows, 0);
}

TEST(Currency, OverflowsExactlyBeyondTheEnds) {
  EXPECT_EQ(units(kMost - 1) + units(1), units(kMost));
  EXPECT_EQ(units(kLeast + 1) - units(1), units(kLeast));
  EXPECT_EQ(raisedBy([] { return units(kMost) + units(1); }), 6);
  EXPECT_EQ(raisedBy([] { return units(kLeast) - units(1); }), 6);
  EXPECT_EQ(raisedBy([] { return -units(kLeast); }), 6);
  EXPECT_EQ(-units(kMost), units(kLeast + 1));
  EXPECT_EQ(Currency::fromInteger(-922'337'203'685'477).toText(0), "-922337203685477");
  EXPECT_EQ(raisedBy([] { return Currency::fromInteger(922'337'203'685'478); }), 6);
  EXPECT_EQ(raisedBy([] { return Currency::fromInteger(kLeast); }), 6);
}

TEST(Currency, TextIsTheDecimalNumber) {
  RandomIntegers random;
  for (int i = 0; i < 20'000; ++i) {
    const std::int64_t count = random.next();
    const Currency amount = units(count);
    std::string digits = std::to_string(count);
    const std::size_t sign = count < 0 ? 1 : 0;
    if (digits.size() < sign + 5) digits.insert(sign, sign + 5 - digits.size(), '0');
    digits.insert(digits.size() - 4, 1, '.');
    ASSERT_EQ(amount.toText(), digits);
    ASSERT_EQ(Currency::parse(amount.toText()), amount);

    int step = 1;
    for (int decimals = 4; decimals >= 0 && std::abs(count / 2) < kMost / 4; --decimals) {
      const std::int64_t rounded =
          Currency::parse(amount.toText(decimals)).value_or(Currency()).units();
      const std::int64_t outward = std::abs(rounded) - std::abs(count);
      ASSERT_EQ(rounded % step, 0);
      ASSERT_TRUE(-step < 2 * outward && 2 * outward <= step) << count << ' ' << decimals;
      step *= 10;
    }
  }
  EXPECT_EQ(units(-49).toText(2), "0.00") << "zero has no sign";
  EXPECT_EQ(units(-50).toText(2), "-0.01");
  EXPECT_EQ(units(kLeast).toText(3), "-922337203685477.581");
  EXPECT_EQ(raisedBy([] { return units(1).toText(5); }), 5);
  EXPECT_EQ(raisedBy([] { return units(1).toText(-1); }), 5);
}

TEST(Currency, FurtherDecimalsRoundHalvesToEven) {
  const std::pair<const char*, std::int64_t> cases[] = {
      {"0.00005", 0},
      {"0.00015", 2},
      {"-0.00015", -2},
      {"0.000050000001", 1},
      {"0.0000499999", 0},
      {"0.00025000", 2},
      {"12.99995", 130'000},
      {"922337203685477.580749", kMost},
      {" \t+7. ", 70'000},
      {".5", 5'000},
      {"-.0001", -1},
      {"-922337203685477.5808", kLeast},
      {"-0", 0},
      {"000000000000000000000000001.5", 15'000},
  };
  for (const auto& [text, count] : cases) EXPECT_EQ(Currency::parse(text), units(count)) << text;
  for (const char* text :
       {"922337203685477.5808", "922337203685477.58075", "-922337203685477.58085001",
        "1000000000000000", "340282366920938463463374607431768211456"}) {
    EXPECT_EQ(raisedBy([&] { return Currency::parse(text); }), 6) << text;
  }
}

TEST(Currency, OtherTextsAreNoAmount) {
  for (const char* text : {"", " ", ".", "-", "+", "--1", "+-1", "1e3", "1,5", "1 000", "1.2.3",
                           "$1", "0x1", "- 1", "1-", "nan", "inf", "99999999999999999999x"}) {
    EXPECT_EQ(Currency::parse(text), std::nullopt) << text;
  }
  EXPECT_EQ(Currency::parse(std::string_view("1\0", 2)), std::nullopt);
}

TEST(Currency, DoublesRoundToTheNearestAmount) {
  RandomIntegers random;
  for (int i = 0; i < 50'000; ++i) {
    const std::int64_t mantissa = random.next(54);
    const int shift = 4 + i % 56;
    const double number = std::ldexp(static_cast<double>(mantissa), -shift);
    ASSERT_TRUE(isNearest(Currency::fromDouble(number).units(), WideInteger{mantissa} * 10'000,
                          WideInteger{1} << shift))
        << number;
    const WideInteger away =
        (WideInteger{std::abs(mantissa)} * 20'000 + (WideInteger{1} << shift)) >> (shift + 1);
    ASSERT_EQ(roundedToCurrency(number).units(), mantissa < 0 ? -away : away) << number;
  }
  EXPECT_EQ(Currency::fromDouble(0.03125), units(312));
  EXPECT_EQ(Currency::fromDouble(-0.09375), units(-938));
  EXPECT_EQ(Currency::fromDouble(-5e-324), units(0));
  EXPECT_EQ(Currency::fromDouble(-922'337'203'685'477.5), units(-9'223'372'036'854'775'000));
  for (const double number : {922'337'203'685'478.0, -922'337'203'685'478.0, 1e15, -1e300,
                              std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(raisedBy([&] { return Currency::fromDouble(number); }), 6) << number;
  }
}

TEST(Currency, IsTheDoubleThatItsTextReadsAs) {
  RandomIntegers random;
  for (int i = 0; i < 20'000; ++i) {
    const Currency amount = units(random.next(53));
    const std::string text = amount.toText();
    double expected = 0;
    std::from_chars(text.data(), text.data() + text.size(), expected);
    ASSERT_EQ(amount.toDouble(), expected) << text;
    ASSERT_EQ(Currency::fromDouble(amount.toDouble()), amount) << text;
  }
}

}  // namespace
}  // namespace QuorDataLib
