// Foundation values that stand over what the company file says.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/values/date.h"

namespace QuorHost {

/// The first day of a fiscal year, which is the same every year.
struct MonthAndDay {
  int month = 1;
  int day = 1;
};

/// The overrides of a host, read and checked. Names in the maps are in lower case.
struct Overrides {
  std::optional<std::int32_t> accountTypeChart;
  std::optional<QuorDataLib::Date> sessionDate;
  std::optional<MonthAndDay> fiscalYearStart;
  std::optional<bool> foreignCurrencyUsed;
  std::optional<std::int32_t> homeCurrencyId;
  /// Company parameters by name.
  std::map<std::string, std::string> companyParams;
  /// Application settings by number.
  std::map<std::int16_t, std::int32_t> settings;
  /// Rows of the parameter tables, by "table.name".
  std::map<std::string, std::string> params;

  /// The override of a parameter table's row, or null.
  [[nodiscard]] const std::string* param(std::string_view table, std::string_view name) const;
};

/// Reads `values` by key, matched without regard to case. Raises 5, with the list of keys, for an
/// unknown key and for a value that a key cannot hold.
[[nodiscard]] Overrides readOverrides(const std::map<std::string, std::string>& values);

}  // namespace QuorHost
