#include "cli/print/value_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstdint>

#include "cli/print/display_text.h"
#include "platform/values/currency.h"
#include "platform/values/date.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Error;
using QuorDataLib::Object;
using QuorDataLib::Ref;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

template <class T>
std::optional<Value> parseNumber(std::string_view text) {
  T number{};
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const auto [stop, error] = std::from_chars(begin, end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  if constexpr (std::floating_point<T>) {
    if (!std::isfinite(number)) return std::nullopt;
  }
  return Value(number);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// A sign, digits, and up to four decimals after a point.
bool looksLikeAmount(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, point);
  const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
  const bool decimalsMissing = point < text.size() && decimals.empty();
  return !whole.empty() && std::ranges::all_of(whole, isDigit) && !decimalsMissing &&
         decimals.size() <= 4 && std::ranges::all_of(decimals, isDigit);
}

std::optional<Value> parseAmount(std::string_view text) {
  if (!looksLikeAmount(text)) return std::nullopt;
  try {
    if (const auto amount = Currency::parse(text)) return Value(*amount);
    return std::nullopt;
  } catch (const Error&) {
    // Too large for the type: as much a bad value as letters are.
    return std::nullopt;
  }
}

template <class T>
void appendNumber(std::string& out, T number) {
  char digits[32];
  const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), number);
  out.append(digits, end);
}

}  // namespace

std::optional<Value> parseValue(std::string_view text, ValueType type) {
  switch (type) {
    case ValueType::Boolean:
      if (text == "true") return Value(true);
      if (text == "false") return Value(false);
      return std::nullopt;
    case ValueType::Integer:
      return parseNumber<std::int16_t>(text);
    case ValueType::Long:
      return parseNumber<std::int32_t>(text);
    case ValueType::Double:
      return parseNumber<double>(text);
    case ValueType::Currency:
      return parseAmount(text);
    case ValueType::Date:
      if (const auto date = Date::parse(text)) return Value(*date);
      return std::nullopt;
    case ValueType::Text:
    case ValueType::Empty:
      if (!isUtf8(text)) return std::nullopt;
      return Value(text);
    case ValueType::Null:
    case ValueType::Object:
      return std::nullopt;
  }
  return std::nullopt;
}

Value emptyValue(ValueType type) {
  switch (type) {
    case ValueType::Boolean:
      return false;
    case ValueType::Integer:
      return std::int16_t{0};
    case ValueType::Long:
      return std::int32_t{0};
    case ValueType::Double:
      return 0.0;
    case ValueType::Currency:
      return Currency();
    case ValueType::Date:
      return Date();
    case ValueType::Text:
      return "";
    case ValueType::Object:
      return Ref<Object>();
    case ValueType::Empty:
    case ValueType::Null:
      return {};
  }
  return {};
}

std::string_view printedType(ValueType type) noexcept {
  return QuorDataLib::typeName(type == ValueType::Empty ? ValueType::Null : type);
}

void appendPlain(std::string& out, const Value& value) {
  switch (value.type()) {
    case ValueType::Boolean:
      out += value.toBoolean() ? "true" : "false";
      break;
    case ValueType::Integer:
    case ValueType::Long:
      appendNumber(out, value.toLong());
      break;
    case ValueType::Double:
      appendNumber(out, value.toDouble());
      break;
    case ValueType::Currency:
      out += value.toCurrency().toText(4);
      break;
    case ValueType::Date:
      if (const Date date = value.toDate(); !date.empty()) out += date.toText('T');
      break;
    case ValueType::Text:
      out += value.text();
      break;
    case ValueType::Empty:
    case ValueType::Null:
    case ValueType::Object:
      break;
  }
}

}  // namespace QuorCli
