#include "platform/values/value.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

#include "platform/values/blanks.h"
#include "platform/values/shown_text.h"

namespace QuorDataLib {
namespace {

std::string quoted(std::string_view text) { return '"' + shownText(text) + '"'; }

/// How a text reads as a number: `std::errc()` when `number` holds it, `result_out_of_range` when
/// it is a number that a double cannot hold, `invalid_argument` when it is none.
std::errc readNumber(std::string_view text, double& number) noexcept {
  text = withoutBlanks(text);
  const std::size_t sign = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  // Infinity and "not a number" have a spelling, too, but are no numbers here.
  if (text.find_first_of("0123456789.", sign) != sign) return std::errc::invalid_argument;
  if (text.starts_with('+')) text.remove_prefix(1);
  const char* const first = text.data();
  const char* const end = first + text.size();
  const auto [rest, error] = std::from_chars(first, end, number);
  return rest == end ? error : std::errc::invalid_argument;
}

/// The number that `text` reads as; `refusal` ends the message for a text that is none.
double numberOf(std::string_view text, std::string_view refusal = " is no number") {
  double number = 0;
  const std::errc error = readNumber(text, number);
  if (error == std::errc::result_out_of_range) {
    raise(ErrorNumber::Overflow, quoted(text) + " does not fit into a double");
  }
  if (error != std::errc()) raise(ErrorNumber::TypeMismatch, quoted(text).append(refusal));
  return number;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lower) noexcept {
  if (text.size() != lower.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if ((c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) != lower[i]) return false;
  }
  return true;
}

bool truthOf(std::string_view text) {
  const std::string_view word = withoutBlanks(text);
  if (equalsIgnoringCase(word, "true")) return true;
  if (equalsIgnoringCase(word, "false")) return false;
  return numberOf(text, " is neither True nor False nor a number") != 0;
}

template <class Integer>
std::string textOfInteger(Integer number) {
  std::array<char, std::numeric_limits<Integer>::digits10 + 2> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return {buffer.data(), result.ptr};
}

/// Numbers of ordinary size are written out, since "1e+05" is shorter but not what people expect of
/// 100000.
std::string textOfDouble(double number) {
  constexpr double kSmallest = 1e-5;
  constexpr double kLargest = 1e15;
  if (number == 0) return "0";  // also the negative zero
  std::array<char, 32> buffer;
  char* const end = buffer.data() + buffer.size();
  const double magnitude = std::abs(number);
  const bool ordinary = magnitude >= kSmallest && magnitude < kLargest;
  const auto result = ordinary ? std::to_chars(buffer.data(), end, number, std::chars_format::fixed)
                               : std::to_chars(buffer.data(), end, number);
  return {buffer.data(), result.ptr};
}

/// An amount with as many decimals as it needs.
std::string textOfCurrency(Currency amount) {
  int decimals = 4;
  for (std::int64_t units = amount.units(); decimals > 0 && units % 10 == 0; units /= 10) {
    --decimals;
  }
  return amount.toText(decimals);
}

/// `number` rounded to a whole number, halves to even.
template <class Integer>
Integer wholeNumber(double number, ValueType type) {
  using Limits = std::numeric_limits<Integer>;
  const double whole = std::nearbyint(number);
  if (!(whole >= Limits::min() && whole <= Limits::max())) {
    raise(ErrorNumber::Overflow,
          textOfDouble(number) + " does not fit into " + std::string(typeName(type)) + " (" +
              textOfInteger(Limits::min()) + " to " + textOfInteger(Limits::max()) + ")");
  }
  return static_cast<Integer>(whole);
}

/// Raises what the use of a value without content meets: of Null, or of an object.
[[noreturn]] void raiseNoContent(const Value& value) {
  if (value.isNull()) raise(ErrorNumber::InvalidUseOfNull, "Invalid use of Null");
  if (!value.toObject()) raise(ErrorNumber::ObjectNotSet, "Object variable not set");
  raise(ErrorNumber::TypeMismatch, "An object is no number, no date and no text");
}

}  // namespace

std::string_view typeName(ValueType type) noexcept {
  static constexpr std::array<std::string_view, 10> kNames = {
      "empty",  "null",     "boolean", "integer", "long",
      "double", "currency", "date",    "text",    "object"};
  return kNames[static_cast<std::size_t>(type)];
}

bool Value::isNumeric() const noexcept {
  switch (type()) {
    case ValueType::Null:
    case ValueType::Date:
    case ValueType::Object:
      return false;
    case ValueType::Text: {
      double number = 0;
      return readNumber(text(), number) != std::errc::invalid_argument;
    }
    default:
      return true;
  }
}

bool Value::toBoolean() const {
  if (const bool* truth = std::get_if<bool>(&data_)) return *truth;
  if (type() == ValueType::Text) return truthOf(text());
  return toDouble() != 0;
}

std::int16_t Value::toInteger() const {
  if (const auto* number = std::get_if<std::int16_t>(&data_)) return *number;
  return wholeNumber<std::int16_t>(toDouble(), ValueType::Integer);
}

std::int32_t Value::toLong() const {
  if (const auto* number = std::get_if<std::int32_t>(&data_)) return *number;
  return wholeNumber<std::int32_t>(toDouble(), ValueType::Long);
}

double Value::toDouble() const {
  switch (type()) {
    case ValueType::Empty:
      return 0;
    case ValueType::Boolean:
      return std::get<bool>(data_) ? -1 : 0;
    case ValueType::Integer:
      return std::get<std::int16_t>(data_);
    case ValueType::Long:
      return std::get<std::int32_t>(data_);
    case ValueType::Double:
      return std::get<double>(data_);
    case ValueType::Currency:
      return std::get<Currency>(data_).toDouble();
    case ValueType::Date:
      return std::get<Date>(data_).serial();
    case ValueType::Text:
      return numberOf(text());
    case ValueType::Null:
    case ValueType::Object:
      break;
  }
  raiseNoContent(*this);
}

Currency Value::toCurrency() const {
  switch (type()) {
    case ValueType::Currency:
      return std::get<Currency>(data_);
    case ValueType::Integer:
    case ValueType::Long:
      return Currency::fromInteger(toLong());
    case ValueType::Text: {
      const std::optional<Currency> amount = Currency::parse(text());
      if (!amount) raise(ErrorNumber::TypeMismatch, quoted(text()) + " is no amount");
      return *amount;
    }
    default:
      return Currency::fromDouble(toDouble());
  }
}

Date Value::toDate() const {
  if (const Date* date = std::get_if<Date>(&data_)) return *date;
  if (type() != ValueType::Text) return Date::fromSerial(toDouble());
  const std::optional<Date> date = Date::parse(text());
  if (!date) {
    raise(ErrorNumber::TypeMismatch,
          quoted(text()) + " is no date: write YYYY-MM-DD or YYYY-MM-DD HH:MM:SS");
  }
  return *date;
}

std::string Value::toText() const {
  switch (type()) {
    case ValueType::Empty:
      return {};
    case ValueType::Boolean:
      return std::get<bool>(data_) ? "True" : "False";
    case ValueType::Integer:
      return textOfInteger(std::get<std::int16_t>(data_));
    case ValueType::Long:
      return textOfInteger(std::get<std::int32_t>(data_));
    case ValueType::Double:
      return textOfDouble(std::get<double>(data_));
    case ValueType::Currency:
      return textOfCurrency(std::get<Currency>(data_));
    case ValueType::Date:
      return std::get<Date>(data_).toText();
    case ValueType::Text:
      return text();
    case ValueType::Null:
    case ValueType::Object:
      break;
  }
  raiseNoContent(*this);
}

Ref<Object> Value::toObject() const {
  if (const auto* object = std::get_if<Ref<Object>>(&data_)) return *object;
  if (isEmpty()) return nullptr;
  raise(ErrorNumber::TypeMismatch,
        "A value of type " + std::string(typeName(type())) + " is no object");
}

Value Value::convertedTo(ValueType wanted) const {
  if (wanted == type()) return *this;
  switch (wanted) {
    case ValueType::Boolean:
      return toBoolean();
    case ValueType::Integer:
      return toInteger();
    case ValueType::Long:
      return toLong();
    case ValueType::Double:
      return toDouble();
    case ValueType::Currency:
      return toCurrency();
    case ValueType::Date:
      return toDate();
    case ValueType::Text:
      return toText();
    case ValueType::Object:
      return toObject();
    case ValueType::Empty:
    case ValueType::Null:
      break;
  }
  raise(ErrorNumber::TypeMismatch, "A value of type " + std::string(typeName(type())) +
                                       " cannot become " + std::string(typeName(wanted)));
}

const std::string& Value::text() const noexcept {
  static const std::string kNone;
  const auto* held = std::get_if<std::string>(&data_);
  return held != nullptr ? *held : kNone;
}

}  // namespace QuorDataLib
