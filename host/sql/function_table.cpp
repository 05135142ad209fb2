#include "host/sql/function_table.h"

#include <array>

#include "host/sql/names.h"

namespace QuorHost::Sql {
namespace {

constexpr auto kBoth = Membership::Both;
constexpr auto kServer = Membership::Server;
constexpr auto kDesktop = Membership::Desktop;
constexpr auto kCommon = Type::Unknown;

constexpr std::string_view kNoOrder =
    "depends on an order of rows that nothing defines; use Min or Max";

// clang-format off
constexpr std::array kFunctions{
    FunctionRule{"abs", kBoth, Function::Absolute, 1, 1, "N", kCommon},
    FunctionRule{"avg", kBoth, Function::Average, 1, 1, "N", kCommon},
    FunctionRule{"ccur", kDesktop, Function::ConvertTo, 1, 1, "A", Type::Currency},
    FunctionRule{"cdbl", kDesktop, Function::ConvertTo, 1, 1, "A", Type::Double},
    FunctionRule{"ceiling", kServer, Function::Ceiling, 1, 1, "N", kCommon},
    FunctionRule{"charindex", kServer, Function::Find, 2, 3, "TTW", Type::Long},
    FunctionRule{"cint", kDesktop, Function::ConvertTo, 1, 1, "A", Type::Integer},
    FunctionRule{"clng", kDesktop, Function::ConvertTo, 1, 1, "A", Type::Long},
    FunctionRule{"coalesce", kServer, Function::Coalesce, 2, kManyArguments, "V", kCommon},
    FunctionRule{"count", kBoth, Function::Count, 1, 1, "A", Type::Long},
    FunctionRule{"cstr", kDesktop, Function::ConvertTo, 1, 1, "A", Type::Text},
    FunctionRule{"date", kDesktop, Function::Today, 0, 0, "", Type::Date},
    FunctionRule{"dateadd", kBoth, Function::AddToDate, 3, 3, "UWD", Type::Date},
    FunctionRule{"datediff", kBoth, Function::DateDifference, 3, 3, "UDD", Type::Long},
    FunctionRule{"dateserial", kDesktop, Function::DateOf, 3, 3, "WWW", Type::Date},
    FunctionRule{"day", kBoth, Function::Day, 1, 1, "D", Type::Long},
    FunctionRule{"first", kDesktop, Function::Refused, 1, 1, "A", kCommon, kNoOrder},
    FunctionRule{"fix", kDesktop, Function::Truncate, 1, 1, "N", kCommon},
    FunctionRule{"floor", kServer, Function::Floor, 1, 1, "N", kCommon},
    FunctionRule{"getdate", kServer, Function::Now, 0, 0, "", Type::Date},
    FunctionRule{"iif", kDesktop, Function::Choose, 3, 3, "CV", kCommon},
    FunctionRule{"instr", kDesktop, Function::FindFrom, 2, 3, "A", Type::Long},
    FunctionRule{"int", kDesktop, Function::Floor, 1, 1, "N", kCommon},
    FunctionRule{"isnull", kDesktop, Function::TestNull, 1, 1, "A", Type::Boolean},
    FunctionRule{"isnull", kServer, Function::ReplaceNull, 2, 2, "A", kCommon},
    FunctionRule{"isnumeric", kDesktop, Function::IsNumeric, 1, 1, "A", Type::Boolean},
    FunctionRule{"isnumeric", kServer, Function::IsNumeric, 1, 1, "A", Type::Long},
    FunctionRule{"last", kDesktop, Function::Refused, 1, 1, "A", kCommon, kNoOrder},
    FunctionRule{"lcase", kDesktop, Function::Lower, 1, 1, "T", Type::Text},
    FunctionRule{"left", kBoth, Function::Left, 2, 2, "TW", Type::Text},
    FunctionRule{"len", kDesktop, Function::Length, 1, 1, "T", Type::Long},
    FunctionRule{"len", kServer, Function::LengthTrimmed, 1, 1, "T", Type::Long},
    FunctionRule{"lower", kServer, Function::Lower, 1, 1, "T", Type::Text},
    FunctionRule{"ltrim", kBoth, Function::TrimLeft, 1, 1, "T", Type::Text},
    FunctionRule{"max", kBoth, Function::Maximum, 1, 1, "A", kCommon},
    FunctionRule{"mid", kDesktop, Function::Middle, 2, 3, "TWW", Type::Text},
    FunctionRule{"min", kBoth, Function::Minimum, 1, 1, "A", kCommon},
    FunctionRule{"month", kBoth, Function::Month, 1, 1, "D", Type::Long},
    FunctionRule{"now", kDesktop, Function::Now, 0, 0, "", Type::Date},
    FunctionRule{"nullif", kServer, Function::NullIf, 2, 2, "A", kCommon},
    FunctionRule{"nz", kDesktop, Function::NullToZero, 1, 2, "V", kCommon},
    FunctionRule{"right", kBoth, Function::Right, 2, 2, "TW", Type::Text},
    FunctionRule{"round", kDesktop, Function::RoundHalfEven, 1, 2, "NW", kCommon},
    FunctionRule{"round", kServer, Function::RoundHalfAway, 2, 2, "NW", kCommon},
    FunctionRule{"rtrim", kBoth, Function::TrimRight, 1, 1, "T", Type::Text},
    FunctionRule{"substring", kServer, Function::Substring, 3, 3, "TWW", Type::Text},
    FunctionRule{"sum", kBoth, Function::Sum, 1, 1, "N", kCommon},
    FunctionRule{"switch", kDesktop, Function::Switch, 2, kManyArguments, "A", kCommon},
    FunctionRule{"trim", kDesktop, Function::Trim, 1, 1, "T", Type::Text},
    FunctionRule{"ucase", kDesktop, Function::Upper, 1, 1, "T", Type::Text},
    FunctionRule{"upper", kServer, Function::Upper, 1, 1, "T", Type::Text},
    FunctionRule{"year", kBoth, Function::Year, 1, 1, "D", Type::Long},
};
// clang-format on

struct UnitName {
  std::string_view name;
  Membership membership;
  DateUnit unit;
};

constexpr std::array kUnitNames{
    UnitName{"yyyy", kBoth, DateUnit::Year},       UnitName{"yy", kServer, DateUnit::Year},
    UnitName{"year", kServer, DateUnit::Year},     UnitName{"q", kBoth, DateUnit::Quarter},
    UnitName{"qq", kServer, DateUnit::Quarter},    UnitName{"quarter", kServer, DateUnit::Quarter},
    UnitName{"m", kBoth, DateUnit::Month},         UnitName{"mm", kServer, DateUnit::Month},
    UnitName{"month", kServer, DateUnit::Month},   UnitName{"d", kBoth, DateUnit::Day},
    UnitName{"y", kBoth, DateUnit::Day},           UnitName{"dd", kServer, DateUnit::Day},
    UnitName{"dy", kServer, DateUnit::Day},        UnitName{"day", kServer, DateUnit::Day},
    UnitName{"dayofyear", kServer, DateUnit::Day}, UnitName{"w", kDesktop, DateUnit::Weekday},
    UnitName{"ww", kBoth, DateUnit::Week},         UnitName{"wk", kServer, DateUnit::Week},
    UnitName{"week", kServer, DateUnit::Week},     UnitName{"h", kDesktop, DateUnit::Hour},
    UnitName{"hh", kServer, DateUnit::Hour},       UnitName{"hour", kServer, DateUnit::Hour},
    UnitName{"n", kBoth, DateUnit::Minute},        UnitName{"mi", kServer, DateUnit::Minute},
    UnitName{"minute", kServer, DateUnit::Minute}, UnitName{"s", kBoth, DateUnit::Second},
    UnitName{"ss", kServer, DateUnit::Second},     UnitName{"second", kServer, DateUnit::Second},
};

}  // namespace

const FunctionRule* findFunction(std::string_view name, Dialect dialect) noexcept {
  const FunctionRule* other = nullptr;
  for (const FunctionRule& rule : kFunctions) {
    if (!sameName(rule.name, name)) continue;
    if (knows(rule.membership, dialect)) return &rule;
    other = &rule;
  }
  return other;
}

const DateUnit* findDateUnit(std::string_view name, Dialect dialect) noexcept {
  for (const UnitName& unit : kUnitNames) {
    if (knows(unit.membership, dialect) && sameName(unit.name, name)) return &unit.unit;
  }
  return nullptr;
}

}  // namespace QuorHost::Sql
