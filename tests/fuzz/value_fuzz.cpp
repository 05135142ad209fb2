// Any text through the conversions of the value types, and any eight bytes as a number: what reads
// must lead back to itself, and what does not must raise one of the documented errors.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <string_view>

#include "platform/values/value.h"

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

/// What `conversion` gives, or nothing when it overflows or finds another type.
template <class Conversion>
auto attempt(const Conversion& conversion) -> std::optional<decltype(conversion())> {
  try {
    return conversion();
  } catch (const Error& error) {
    require(error.is(ErrorNumber::Overflow) || error.is(ErrorNumber::TypeMismatch));
    return std::nullopt;
  }
}

void checkDate(Date date) {
  require(Date::parse(date.toText()) == date);
  require(Date::parse(date.toText('T')) == date);
  require(Date::fromSerial(date.serial()) == date);
}

void checkCurrency(Currency amount) {
  require(Currency::parse(amount.toText()) == amount);
  require(Value(Value(amount).toText()).toCurrency() == amount);
}

void checkConversions(const Value& value) {
  for (const ValueType type : {ValueType::Boolean, ValueType::Integer, ValueType::Long,
                               ValueType::Double, ValueType::Currency, ValueType::Date}) {
    const std::optional<Value> converted = attempt([&] { return value.convertedTo(type); });
    if (!converted) continue;
    require(converted->type() == type);
    require(Value(converted->toText()).convertedTo(type) == *converted);
  }
}

void checkText(std::string_view text) {
  if (const std::optional<Date> date = Date::parse(text)) checkDate(*date);
  const auto amount = attempt([&] { return Currency::parse(text); });
  if (amount && *amount) checkCurrency(**amount);

  const Value value(text);
  require(value.toText() == text);
  checkConversions(value);
  if (attempt([&] { return value.toDouble(); })) require(value.isNumeric());
  if (amount && *amount) require(value.isNumeric());
}

void checkNumber(double number) {
  if (const auto date = attempt([&] { return Date::fromSerial(number); })) checkDate(*date);
  if (const auto amount = attempt([&] { return Currency::fromDouble(number); })) {
    checkCurrency(*amount);
  }
  if (std::isfinite(number)) checkConversions(number);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  checkText({reinterpret_cast<const char*>(data), size});
  double number = 0;
  if (size >= sizeof number) {
    std::memcpy(&number, data, sizeof number);
    checkNumber(number);
  }
  return 0;
}
