#include "host/company/csv/field_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "host/sql/utf8.h"
#include "platform/error.h"

namespace QuorHost::Csv {

namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

[[noreturn]] void refuse(std::string_view text, const std::string& what) {
  QuorDataLib::raise(ErrorNumber::TypeMismatch, "\"" + std::string(text) + "\" is " + what);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// A whole number of type `T`.
template <class T>
T parseWhole(std::string_view text) {
  T number = 0;
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const auto [rest, error] = std::from_chars(begin, end, number);
  if (error == std::errc::result_out_of_range) {
    refuse(text, "outside the range " + std::to_string(std::numeric_limits<T>::min()) + " to " +
                     std::to_string(std::numeric_limits<T>::max()));
  }
  if (error != std::errc() || rest != end) refuse(text, "no whole number");
  return number;
}

bool parseBoolean(std::string_view text) {
  const auto is = [text](std::string_view word) {
    return std::ranges::equal(
        text, word, [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; });
  };
  if (is("true") || text == "1") return true;
  if (is("false") || text == "0") return false;
  refuse(text, "no boolean (true, false, 1 or 0)");
}

/// Whether `text` is a decimal number written with digits, at most one point and a sign.
bool isDecimal(std::string_view text) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  const auto digits = std::ranges::count_if(text, isDigit);
  const auto points = std::ranges::count(text, '.');
  return digits > 0 && points <= 1 && static_cast<std::size_t>(digits + points) == text.size();
}

Currency parseAmount(std::string_view text) {
  constexpr std::size_t kDecimals = 4;
  if (!isDecimal(text)) refuse(text, "no decimal number");
  const std::size_t point = text.find('.');
  if (point != std::string_view::npos && text.size() - point - 1 > kDecimals) {
    refuse(text, "a number with more than four decimals");
  }
  try {
    if (const std::optional<Currency> amount = Currency::parse(text)) return *amount;
  } catch (const QuorDataLib::Error&) {
    refuse(text, "too large for an amount");
  }
  refuse(text, "no decimal number");
}

double parseDouble(std::string_view text) {
  double number = 0;
  const char* const end = text.data() + text.size();
  const char* const begin = text.starts_with('+') ? text.data() + 1 : text.data();
  const auto [rest, error] = std::from_chars(begin, end, number);
  if (error != std::errc() || rest != end || !std::isfinite(number)) refuse(text, "no number");
  return number;
}

Date parseDate(std::string_view text) {
  const std::optional<Date> date = text.empty() ? std::nullopt : Date::parse(text);
  if (!date) refuse(text, "no date (YYYY-MM-DD, with or without HH:MM:SS)");
  return *date;
}

}  // namespace

Value fieldValue(const Sql::Column& column, const Field& field) {
  const std::string_view text = field.text;
  if (text.empty() && !field.quoted) {
    if (!column.nullable && !column.identity) {
      QuorDataLib::raise(ErrorNumber::TypeMismatch, "a value is missing");
    }
    return Value::null();
  }
  switch (column.type) {
    case Sql::Type::Boolean:
      return parseBoolean(text);
    case Sql::Type::Integer:
      return parseWhole<std::int16_t>(text);
    case Sql::Type::Long:
      return parseWhole<std::int32_t>(text);
    case Sql::Type::Double:
      return parseDouble(text);
    case Sql::Type::Currency:
      return parseAmount(text);
    case Sql::Type::Date:
      return parseDate(text);
    case Sql::Type::Text:
    case Sql::Type::Unknown:
      break;
  }
  const auto size = static_cast<std::size_t>(column.size);
  if (size != 0 && text.size() > size && Sql::countCharacters(text) > size) {
    refuse(text, "longer than " + std::to_string(size) + " characters");
  }
  return Value(text);
}

void appendText(std::string& line, std::string_view text) {
  if (!text.empty() && text.find_first_of(",\"\r\n") == std::string_view::npos) {
    line += text;
    return;
  }
  line += '"';
  for (const char c : text) {
    if (c == '"') line += '"';
    line += c;
  }
  line += '"';
}

void appendField(std::string& line, const Value& value) {
  switch (value.type()) {
    case ValueType::Null:
    case ValueType::Empty:
      return;
    case ValueType::Boolean:
      line += value.toBoolean() ? "true" : "false";
      return;
    case ValueType::Currency: {
      constexpr std::int64_t kUnitsPerCent = Currency::kUnitsPerOne / 100;
      const Currency amount = value.toCurrency();
      line += amount.toText(amount.units() % kUnitsPerCent == 0 ? 2 : 4);
      return;
    }
    case ValueType::Text:
      appendText(line, value.text());
      return;
    default:
      line += value.toText();
  }
}

}  // namespace QuorHost::Csv
