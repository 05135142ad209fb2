// The functions of both dialects, in one table.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

#include "host/sql/dialect.h"
#include "host/sql/types.h"

namespace QuorHost::Sql {

/// What a call means, whatever the dialect calls it. A storage engine's writer knows how each is
/// written; the ones under "resolved away" never reach it.
enum class Function : std::uint8_t {
  // Numbers.
  Absolute,       // (number)
  Ceiling,        // (number)
  Floor,          // (number)
  Truncate,       // (number): towards zero
  RoundHalfAway,  // (number, decimals): halves away from zero
  RoundHalfEven,  // (number, decimals): halves to even
  // Texts; places and lengths count characters from 1.
  Left,           // (text, length)
  Right,          // (text, length)
  Middle,         // (text, start[, length]): start must be 1 or more
  Substring,      // (text, start, length): what lies before the text counts in the length
  Length,         // (text)
  LengthTrimmed,  // (text): without the blanks at the end
  TrimLeft,       // (text)
  TrimRight,      // (text)
  Trim,           // (text)
  Lower,          // (text)
  Upper,          // (text)
  Find,           // (text, found, start): place of `found`, or 0
  IsNumeric,      // (value)
  // Dates.
  AddToDate,       // (unit, number, date)
  DateDifference,  // (unit, from, to)
  DateOf,          // (year, month, day)
  AddDays,         // (date, days): of `date + number`
  DaysBetween,     // (later, earlier): of `date - date`
  Year,            // (date)
  Month,           // (date)
  Day,             // (date)
  Today,           // ()
  Now,             // ()
  // Choices.
  Coalesce,  // (value, value, ...)
  // Aggregates.
  Count,
  Sum,
  Average,
  Minimum,
  Maximum,
  // Resolved away.
  Choose,  // IIf
  Switch,
  TestNull,     // one-argument IsNull
  ReplaceNull,  // two-argument ISNULL
  NullToZero,   // Nz
  NullIf,
  FindFrom,   // InStr, whose optional start stands first
  ConvertTo,  // CLng and its like: `result` is the type
  Refused,    // `reason` says why
};

/// The units of date arithmetic.
enum class DateUnit : std::uint8_t {
  Year,
  Quarter,
  Month,
  Day,
  Weekday,
  Week,
  Hour,
  Minute,
  Second
};

/// One function of one or both dialects.
struct FunctionRule {
  std::string_view name;  // lower case
  Membership membership;
  Function function;
  std::uint8_t minimum;
  std::uint8_t maximum;
  /// One letter for each argument, the last one for all that follow: T text, N number, W whole
  /// number, D date, U unit of a date, A anything, C condition, V values of one common type.
  std::string_view arguments;
  /// Type of the result; `Unknown` for the type of the first number, or the common type.
  Type result;
  /// Why the function is refused.
  std::string_view reason = {};

  [[nodiscard]] bool isAggregate() const noexcept {
    return function >= Function::Count && function <= Function::Maximum;
  }
};

/// The most arguments that a call may have.
inline constexpr std::uint8_t kManyArguments = 100;

/// The function called `name` in `dialect`; failing that, of the other dialect; or null.
[[nodiscard]] const FunctionRule* findFunction(std::string_view name, Dialect dialect) noexcept;

/// The unit called `name` in `dialect`, or null.
[[nodiscard]] const DateUnit* findDateUnit(std::string_view name, Dialect dialect) noexcept;

}  // namespace QuorHost::Sql
