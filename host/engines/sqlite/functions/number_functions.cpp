// Exact arithmetic, rounding, and conversions between numbers and texts.
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "host/engines/sqlite/functions/function_call.h"
#include "host/engines/sqlite/functions/functions.h"
#include "platform/values/currency.h"
#include "platform/values/date.h"
#include "platform/values/value.h"
#include "platform/values/wide_integer.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;
using QuorDataLib::WideInteger;

/// How the rounding functions round; the numbers are written into statements.
enum class Mode : std::uint8_t { HalfToEven, HalfAway, Down, Up, TowardsZero };

Mode modeOf(std::int64_t number) { return static_cast<Mode>(number); }

std::int64_t narrow(WideInteger value) {
  if (value > std::numeric_limits<std::int64_t>::max() ||
      value < std::numeric_limits<std::int64_t>::min()) {
    overflow();
  }
  return static_cast<std::int64_t>(value);
}

void requireDivisor(bool isZero) {
  if (isZero) throw CallError(kDivisionByZero);
}

/// The quotient rounded to a whole number; the divisor is positive.
WideInteger divideRounded(WideInteger dividend, WideInteger divisor, Mode mode) {
  const WideInteger quotient = dividend / divisor;
  const WideInteger rest = dividend % divisor;
  if (rest == 0) return quotient;
  const WideInteger away = dividend < 0 ? -1 : 1;
  const WideInteger twice = (rest < 0 ? -rest : rest) * 2;
  switch (mode) {
    case Mode::HalfToEven:
      return quotient + (twice > divisor || (twice == divisor && quotient % 2 != 0) ? away : 0);
    case Mode::HalfAway:
      return quotient + (twice >= divisor ? away : 0);
    case Mode::Down:
      return quotient - (dividend < 0 ? 1 : 0);
    case Mode::Up:
      return quotient + (dividend > 0 ? 1 : 0);
    case Mode::TowardsZero:
      break;
  }
  return quotient;
}

double roundWhole(double value, Mode mode) {
  switch (mode) {
    case Mode::HalfToEven:
      return std::nearbyint(value);
    case Mode::HalfAway:
      return std::round(value);
    case Mode::Down:
      return std::floor(value);
    case Mode::Up:
      return std::ceil(value);
    case Mode::TowardsZero:
      break;
  }
  return std::trunc(value);
}

/// `value` times a power of ten, taken on its decimal digits: 2.675 is 267.5 hundredths, although
/// the double is a little less.
double shiftDecimals(double value, int decimals) {
  std::array<char, 40> digits{};
  char* const end = digits.data() + digits.size();
  const auto written = std::to_chars(digits.data(), end, value, std::chars_format::scientific);
  const std::string_view text(digits.data(), static_cast<std::size_t>(written.ptr - digits.data()));
  const std::size_t e = text.find('e');
  int exponent = 0;
  const std::size_t sign = text[e + 1] == '+' ? 2 : 1;
  std::from_chars(text.data() + e + sign, text.data() + text.size(), exponent);
  const std::string shifted =
      std::string(text.substr(0, e + 1)) + std::to_string(exponent + decimals);
  double result = 0;
  std::from_chars(shifted.data(), shifted.data() + shifted.size(), result);
  return result;
}

void multiply(const Call& call) {
  const Currency product = Currency::fromUnits(call.whole(0)) * Currency::fromUnits(call.whole(1));
  call.returnWhole(product.units());
}

/// Money by money, cut to the ten-thousandth.
void ratio(const Call& call) {
  const std::int64_t divisor = call.whole(1);
  requireDivisor(divisor == 0);
  call.returnWhole(narrow(WideInteger{call.whole(0)} * Currency::kUnitsPerOne / divisor));
}

/// Floating division, of doubles or of two amounts of money.
void divide(const Call& call) {
  const double divisor = call.number(1);
  requireDivisor(divisor == 0);
  call.returnNumber(call.number(0) / divisor);
}

void quotient(const Call& call) {
  const std::int64_t divisor = call.whole(1);
  requireDivisor(divisor == 0);
  call.returnWhole(narrow(WideInteger{call.whole(0)} / divisor));
}

void modulo(const Call& call) {
  const std::int64_t divisor = call.whole(1);
  requireDivisor(divisor == 0);
  call.returnWhole(narrow(WideInteger{call.whole(0)} % divisor));
}

/// Sum by count, halves to even.
void mean(const Call& call) {
  call.returnWhole(narrow(divideRounded(call.whole(0), call.whole(1), Mode::HalfToEven)));
}

/// (number, decimals, mode)
void roundNumber(const Call& call) {
  constexpr std::int64_t kFarDecimals = 400;
  const double value = call.number(0);
  const std::int64_t decimals = call.whole(1);
  const Mode mode = modeOf(call.whole(2));
  if (decimals == 0) return call.returnNumber(roundWhole(value, mode));
  if (value == 0 || decimals > kFarDecimals) return call.returnNumber(value);
  if (decimals < -kFarDecimals) return call.returnNumber(0);
  const int places = static_cast<int>(decimals);
  const double shifted = shiftDecimals(value, places);
  // So many decimals that there is nothing to round.
  constexpr double kWholeFrom = 4503599627370496.0;  // 2 to the 52nd
  if (std::abs(shifted) >= kWholeFrom) return call.returnNumber(value);
  const double rounded = roundWhole(shifted, mode);
  call.returnNumber(rounded == 0 ? 0 : shiftDecimals(rounded, -places));
}

/// (units, decimals of the units, decimals to keep, mode)
void roundUnits(const Call& call) {
  constexpr std::int64_t kMostPlaces = 18;
  const std::int64_t places = call.whole(1) - std::min<std::int64_t>(call.whole(2), call.whole(1));
  if (places <= 0) return call.returnWhole(call.whole(0));
  if (places > kMostPlaces) return call.returnWhole(0);
  std::int64_t factor = 1;
  for (std::int64_t i = 0; i < places; ++i) factor *= 10;
  const Mode mode = modeOf(call.whole(3));
  call.returnWhole(narrow(divideRounded(call.whole(0), factor, mode) * factor));
}

Value textNumber(std::string_view text) {
  Value value(text);
  if (!value.isNumeric()) throw CallError("'" + std::string(text) + "' is not a number");
  return value;
}

/// (number or text, mode) as a whole number of the type `Whole`. A text that is to be cut must be a
/// whole number.
template <class Whole>
void wholeNumber(const Call& call) {
  const Mode mode = call.whole(1) == 0 ? Mode::HalfToEven : Mode::TowardsZero;
  double number = 0;
  if (call.isText(0)) {
    number = textNumber(call.text(0)).toDouble();
    if (mode == Mode::TowardsZero && number != std::trunc(number)) {
      throw CallError("'" + std::string(call.text(0)) + "' is not a whole number");
    }
  } else {
    number = call.number(0);
  }
  number = roundWhole(number, mode);
  // The negated form also catches what is not a number.
  if (!(number >= std::numeric_limits<Whole>::min() &&
        number <= std::numeric_limits<Whole>::max())) {
    overflow();
  }
  call.returnWhole(static_cast<std::int64_t>(number));
}

void money(const Call& call) {
  const Currency amount =
      call.isText(0) ? textNumber(call.text(0)).toCurrency() : Currency::fromDouble(call.number(0));
  call.returnWhole(amount.units());
}

void number(const Call& call) { call.returnNumber(textNumber(call.text(0)).toDouble()); }

void moneyText(const Call& call) {
  call.returnText(Value(Currency::fromUnits(call.whole(0))).toText());
}

void numberText(const Call& call) { call.returnText(Value(call.number(0)).toText()); }

void isNumeric(const Call& call) { call.returnWhole(Value(call.text(0)).isNumeric() ? 1 : 0); }

constexpr std::array kFunctions{
    FunctionEntry{"quor_multiply", 2, multiply},
    FunctionEntry{"quor_ratio", 2, ratio},
    FunctionEntry{"quor_divide", 2, divide},
    FunctionEntry{"quor_quotient", 2, quotient},
    FunctionEntry{"quor_modulo", 2, modulo},
    FunctionEntry{"quor_mean", 2, mean},
    FunctionEntry{"quor_round", 3, roundNumber},
    FunctionEntry{"quor_round_units", 4, roundUnits},
    FunctionEntry{"quor_long", 2, wholeNumber<std::int32_t>},
    FunctionEntry{"quor_integer", 2, wholeNumber<std::int16_t>},
    FunctionEntry{"quor_money", 1, money},
    FunctionEntry{"quor_number", 1, number},
    FunctionEntry{"quor_money_text", 1, moneyText},
    FunctionEntry{"quor_number_text", 1, numberText},
    FunctionEntry{"quor_is_numeric", 1, isNumeric},
};

}  // namespace

std::span<const FunctionEntry> numberFunctions() noexcept { return kFunctions; }

}  // namespace QuorHost::Sqlite
