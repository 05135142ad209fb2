#include "host/engines/rows/criterion.h"

#include <bit>
#include <charconv>
#include <cmath>

#include "platform/error.h"
#include "platform/values/currency.h"
#include "platform/values/date.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Rows {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::ErrorNumber;
using Sql::Type;

[[noreturn]] void refuseCriterion(const std::string& text) {
  QuorDataLib::raise(ErrorNumber::InvalidArgument,
                     "Cannot search for \"" + QuorDataLib::shownText(text) +
                         "\": write Column = 12.5, Column = 'text' or Column = #2024-12-31#");
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

/// A name may hold any letter of any alphabet, digits and underscores.
bool isName(std::string_view text) {
  constexpr std::string_view kOther = " \t\r\n!\"#$%&'()*+,-./:;<=>?@[\\]^`{|}~";
  return !text.empty() && text.find_first_of(kOther) == std::string_view::npos;
}

std::optional<std::string> columnName(std::string_view text) {
  if (text.size() > 2 && text.front() == '[' && text.find(']') == text.size() - 1) {
    return std::string(text.substr(1, text.size() - 2));
  }
  if (!isName(text)) return std::nullopt;
  return std::string(text);
}

/// The text of a literal in single quotes, in which a quote is doubled.
std::optional<std::string> quotedText(std::string_view literal) {
  if (literal.size() < 2 || literal.back() != '\'') return std::nullopt;
  literal = literal.substr(1, literal.size() - 2);
  std::string text;
  while (!literal.empty()) {
    const std::size_t length = literal.front() == '\'' ? 2 : 1;
    if (length == 2 && !literal.starts_with("''")) return std::nullopt;
    text += literal.front();
    literal.remove_prefix(length);
  }
  return text;
}

std::optional<double> number(std::string_view text) {
  const std::string_view unsignedText = text.substr(text.starts_with('-') ? 1 : 0);
  // Names of numbers ("inf", "nan") are none here.
  if (unsignedText.find_first_of("0123456789.") != 0) return std::nullopt;
  double value = 0;
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const auto [stop, error] = std::from_chars(begin, end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

std::int64_t doubleKey(double value) {
  return std::bit_cast<std::int64_t>(value == 0 ? 0.0 : value);  // minus zero is zero
}

/// The count of ten-thousandths of `text`, whose number is `value`, when it has no finer part.
std::optional<std::int64_t> currencyKey(const std::string& text, double value) {
  constexpr double kLargest = 922'337'203'685'477.5807;
  if (std::abs(value) > kLargest) return std::nullopt;
  const Currency amount = Currency::parse(text).value_or(Currency::fromDouble(value));
  if (amount.toDouble() != value) return std::nullopt;
  return amount.units();
}

std::optional<std::int64_t> wholeKey(double value) {
  constexpr double kLargest = 2'147'483'648.0;
  if (std::abs(value) > kLargest || value != std::trunc(value)) return std::nullopt;
  return static_cast<std::int64_t>(value);
}

std::optional<std::int64_t> numberKey(const std::string& text, Type type) {
  const double value = number(text).value_or(0);
  switch (type) {
    case Type::Boolean:
      return value != 0 ? 1 : 0;
    case Type::Currency:
      return currencyKey(text, value);
    case Type::Double:
      return doubleKey(value);
    default:
      return wholeKey(value);
  }
}

bool goesWith(Criterion::Kind kind, Type type) {
  switch (type) {
    case Type::Unknown:
      return true;
    case Type::Text:
      return kind == Criterion::Kind::Text;
    case Type::Date:
      return kind == Criterion::Kind::Date;
    default:
      return kind == Criterion::Kind::Number;
  }
}

}  // namespace

Criterion parseCriterion(const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) refuseCriterion(text);
  const std::string_view literal = trimmed(std::string_view(text).substr(equals + 1));
  const std::optional<std::string> column =
      columnName(trimmed(std::string_view(text).substr(0, equals)));
  if (!column || literal.empty()) refuseCriterion(text);

  if (literal.front() == '\'') {
    const std::optional<std::string> value = quotedText(literal);
    if (!value) refuseCriterion(text);
    return {*column, Criterion::Kind::Text, *value};
  }
  if (literal.front() == '#') {
    const std::string_view date = literal.substr(1, literal.size() - 2);
    if (literal.size() < 3 || literal.back() != '#' || !Date::parse(date)) refuseCriterion(text);
    return {*column, Criterion::Kind::Date, std::string(date)};
  }
  if (!number(literal)) refuseCriterion(text);
  return {*column, Criterion::Kind::Number, std::string(literal)};
}

std::optional<FindKey> keyOf(const Criterion& criterion, Type type) {
  if (!goesWith(criterion.kind, type)) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument,
                       "Cannot search for " + QuorDataLib::shownText(criterion.value) +
                           " in column " + criterion.column + ", whose type is " +
                           std::string(Sql::typeName(type)));
  }
  switch (type) {
    case Type::Unknown:
      return std::nullopt;  // a column of nothing but nulls
    case Type::Text:
      return criterion.value;
    case Type::Date:
      return Date::parse(criterion.value).value_or(Date()).seconds();
    default:
      return numberKey(criterion.value, type);
  }
}

std::optional<std::int64_t> numericKeyOf(const Cell& cell, Type type) {
  switch (cell.kind) {
    case Cell::Kind::Null:
      return std::nullopt;
    case Cell::Kind::Integer:
      if (type == Type::Boolean) return cell.integer != 0 ? 1 : 0;
      if (type == Type::Double) return doubleKey(static_cast<double>(cell.integer));
      return cell.integer;
    case Cell::Kind::Real:
      // A number that has overflowed its column equals nothing.
      if (type == Type::Double) return doubleKey(cell.real);
      return std::nullopt;
    case Cell::Kind::Text:
      break;
  }
  const std::optional<Date> date = Date::parse(cell.text);
  if (!date) return std::nullopt;
  return date->seconds();
}

}  // namespace QuorHost::Rows
