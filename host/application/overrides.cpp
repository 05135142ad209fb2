#include "host/application/overrides.h"

#include <array>
#include <charconv>
#include <limits>

#include "host/application/company_tables.h"
#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::Date;
using Sql::lowerName;
using Sql::sameName;

template <class T>
std::optional<T> whole(std::string_view text) {
  T number = 0;
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const auto [stop, error] = std::from_chars(begin, end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::optional<bool> truth(std::string_view text) {
  if (sameName(text, "true") || text == "1" || text == "-1") return true;
  if (sameName(text, "false") || text == "0") return false;
  return std::nullopt;
}

std::optional<Date> dateGiven(std::string_view text) {
  return text.empty() ? std::nullopt : Date::parse(text);
}

/// "MM-DD", a day that every year has.
std::optional<MonthAndDay> monthAndDay(std::string_view text) {
  constexpr int kOrdinaryYear = 2023;
  if (text.size() != 5 || text[2] != '-') return std::nullopt;
  const std::optional<int> month = whole<int>(text.substr(0, 2));
  const std::optional<int> day = whole<int>(text.substr(3));
  if (!month || !day || *month < 1 || *month > 12 || *day < 1 ||
      *day > QuorDataLib::daysInMonth(kOrdinaryYear, *month)) {
    return std::nullopt;
  }
  return MonthAndDay{*month, *day};
}

/// Stores what was read; false when nothing could be.
template <class T>
bool take(std::optional<T>& target, std::optional<T> read) {
  target = read;
  return read.has_value();
}

bool takeSetting(Overrides& overrides, std::string_view number, std::string_view value) {
  const std::optional<std::int16_t> key = whole<std::int16_t>(number);
  std::optional<std::int32_t> setting = whole<std::int32_t>(value);
  if (const std::optional<bool> on = truth(value); on && !setting) setting = *on ? -1 : 0;
  if (!key || !setting) return false;
  overrides.settings[*key] = *setting;
  return true;
}

bool takeParam(Overrides& overrides, std::string_view tableAndName, std::string_view value) {
  const std::size_t dot = tableAndName.find('.');
  if (dot == std::string_view::npos || dot + 1 == tableAndName.size() ||
      !isParameterTable(tableAndName.substr(0, dot))) {
    return false;
  }
  overrides.params[lowerName(tableAndName)] = value;
  return true;
}

/// A key, or the beginning of the keys that end in a name of the user's.
struct KeyRule {
  std::string_view key;
  std::string_view rest;  // what follows the key, for the list of keys; empty for a whole key
  std::string_view value;
  bool (*take)(Overrides& overrides, std::string_view rest, std::string_view value);
};

constexpr std::array kRules{
    KeyRule{"Company.CieAccountTypeChart", "", "a whole number",
            [](Overrides& o, std::string_view, std::string_view value) {
              return take(o.accountTypeChart, whole<std::int32_t>(value));
            }},
    KeyRule{"Company.SessionDate", "", "YYYY-MM-DD",
            [](Overrides& o, std::string_view, std::string_view value) {
              return take(o.sessionDate, dateGiven(value));
            }},
    KeyRule{"Company.FiscalYearStart", "", "MM-DD",
            [](Overrides& o, std::string_view, std::string_view value) {
              return take(o.fiscalYearStart, monthAndDay(value));
            }},
    KeyRule{"Company.Param.", "NAME", "a text",
            [](Overrides& o, std::string_view rest, std::string_view value) {
              o.companyParams[lowerName(rest)] = value;
              return true;
            }},
    KeyRule{"CurrencyInfo.CieIsForeignCurrencyUsed", "", "true or false",
            [](Overrides& o, std::string_view, std::string_view value) {
              return take(o.foreignCurrencyUsed, truth(value));
            }},
    KeyRule{"CurrencyInfo.CieHomeCurrencyId", "", "a whole number",
            [](Overrides& o, std::string_view, std::string_view value) {
              return take(o.homeCurrencyId, whole<std::int32_t>(value));
            }},
    KeyRule{"Settings.", "NUMBER", "a whole number, true or false", &takeSetting},
    KeyRule{"Param.", "TABLE.NAME", "a text; the table is QuorAcctParams or QuorCastriaParams",
            &takeParam},
};

const KeyRule* ruleOf(std::string_view key) {
  for (const KeyRule& rule : kRules) {
    const bool whole = rule.rest.empty();
    if (whole
            ? sameName(key, rule.key)
            : key.size() > rule.key.size() && sameName(key.substr(0, rule.key.size()), rule.key)) {
      return &rule;
    }
  }
  return nullptr;
}

/// `before` and `after` stand around the key.
[[noreturn]] void refuse(std::string_view before, const std::string& key, std::string_view after) {
  std::string text(before);
  text.append("'").append(key).append("'").append(after).append(". The keys are:");
  for (const KeyRule& rule : kRules) {
    text.append("\n  ").append(rule.key).append(rule.rest).append(" (").append(rule.value) += ')';
  }
  QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument, text);
}

}  // namespace

const std::string* Overrides::param(std::string_view table, std::string_view name) const {
  const auto found = params.find(lowerName(table) + "." + lowerName(name));
  return found == params.end() ? nullptr : &found->second;
}

Overrides readOverrides(const std::map<std::string, std::string>& values) {
  Overrides overrides;
  for (const auto& [key, value] : values) {
    const KeyRule* const rule = ruleOf(key);
    if (rule == nullptr) refuse("There is no foundation value ", key, "");
    if (!rule->take(overrides, std::string_view(key).substr(rule->key.size()), value)) {
      refuse("", key, " cannot be '" + value + "'");
    }
  }
  return overrides;
}

}  // namespace QuorHost
