#include "host/engines/write/call_names.h"

namespace QuorHost::Write {

using Sql::DateUnit;
using Sql::Function;

std::string_view callName(Function function) noexcept {
  switch (function) {
    case Function::Absolute:
      return "abs";
    case Function::Left:
      return "quor_left";
    case Function::Right:
      return "quor_right";
    case Function::Middle:
      return "quor_middle";
    case Function::Substring:
      return "quor_substring";
    case Function::Length:
      return "length";
    case Function::TrimLeft:
      return "ltrim";
    case Function::TrimRight:
      return "rtrim";
    case Function::Trim:
      return "trim";
    case Function::Lower:
      return "quor_lower";
    case Function::Upper:
      return "quor_upper";
    case Function::Find:
      return "quor_find";
    case Function::FindFrom:
      return "quor_find_from";
    case Function::IsNumeric:
      return "quor_is_numeric";
    case Function::AddToDate:
      return "quor_date_add";
    case Function::DateDifference:
      return "quor_date_diff";
    case Function::DateOf:
      return "quor_date_of";
    case Function::AddDays:
      return "quor_add_days";
    case Function::DaysBetween:
      return "quor_days_between";
    case Function::Coalesce:
      return "coalesce";
    default:
      return {};
  }
}

std::string_view unitLiteral(DateUnit unit) noexcept {
  switch (unit) {
    case DateUnit::Year:
      return "'year'";
    case DateUnit::Quarter:
      return "'quarter'";
    case DateUnit::Month:
      return "'month'";
    case DateUnit::Day:
      return "'day'";
    case DateUnit::Weekday:
      return "'weekday'";
    case DateUnit::Week:
      return "'week'";
    case DateUnit::Hour:
      return "'hour'";
    case DateUnit::Minute:
      return "'minute'";
    case DateUnit::Second:
      break;
  }
  return "'second'";
}

std::string_view datePart(Function function) noexcept {
  switch (function) {
    case Function::Year:
      return "1, 4";
    case Function::Month:
      return "6, 2";
    default:
      return "9, 2";
  }
}

std::string_view roundingMode(Function function) noexcept {
  switch (function) {
    case Function::RoundHalfEven:
      return "0";
    case Function::RoundHalfAway:
      return "1";
    case Function::Floor:
      return "2";
    case Function::Ceiling:
      return "3";
    default:
      return "4";
  }
}

}  // namespace QuorHost::Write
