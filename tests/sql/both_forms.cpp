#include "sql/both_forms.h"

#include <algorithm>
#include <cctype>
#include <regex>

#include "platform/error.h"
#include "platform/values/date.h"

namespace QuorHost::Sql::Testing {
namespace {

using Rows = std::vector<std::string>;

std::string lower(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

/// Those columns of a result that the statement's last ORDER BY names. Rows that are alike in its
/// other keys, too, may come in any order; in these they then are alike as well.
std::vector<std::size_t> sortedColumns(const std::string& statement, const Translation& result) {
  const std::size_t order = statement.rfind("ORDER BY ");
  if (order == std::string::npos) return {};
  const std::string keys = lower(statement.substr(order));
  // That of a select inside says nothing.
  if (std::ranges::count(keys, ')') > std::ranges::count(keys, '(')) return {};
  std::vector<std::size_t> columns;
  for (std::size_t i = 0; i < result.columns.size(); ++i) {
    const std::string name = lower(result.columns[i].name);
    if (name.empty() || !std::ranges::all_of(name, [](unsigned char c) { return std::isalnum(c); }))
      continue;
    if (std::regex_search(keys, std::regex("[., ]" + name + "( desc)?\\s*(,|$)"))) {
      columns.push_back(i);
    }
  }
  return columns;
}

Rows only(const Rows& rows, const std::vector<std::size_t>& columns) {
  Rows cut;
  for (const std::string& row : rows) {
    std::vector<std::string> fields(1);
    for (const char c : row) {
      if (c == '|') {
        fields.emplace_back();
      } else {
        fields.back() += c;
      }
    }
    std::string rest;
    for (const std::size_t column : columns) rest += fields.at(column) + "|";
    cut.push_back(rest);
  }
  return cut;
}

std::string firstDifference(const Rows& expected, const Rows& found) {
  const auto [one, other] = std::ranges::mismatch(expected, found);
  const auto told = [](const Rows& rows, Rows::const_iterator row) {
    return row == rows.end() ? std::to_string(rows.size()) + " rows" : "'" + *row + "'";
  };
  if (one == expected.end() && other == found.end()) return {};
  return told(expected, one) + ", faster " + told(found, other);
}

/// The rows, or the error that the engine ends with.
Rows rowsOf(Database& database, const Translation& translation, const Values& values,
            std::string& error) {
  try {
    return database.rows(translation, values);
  } catch (const QuorDataLib::Error& raised) {
    error = raised.description();
    return {};
  }
}

}  // namespace

BothForms runBoth(Database& database, const std::string& statement, Dialect dialect,
                  const Values& values) {
  BothForms forms;
  const Translation plain = database.translate(statement, dialect, Rewriting::None);
  const Translation faster = database.translate(statement, dialect);
  forms.fasterSql = faster.sql;
  forms.plain = rowsOf(database, plain, values, forms.plainError);
  forms.faster = rowsOf(database, faster, values, forms.fasterError);
  return forms;
}

std::string difference(const BothForms& forms, const std::string& statement,
                       const Translation& translation) {
  const std::vector<std::size_t> keys = sortedColumns(statement, translation);
  std::string found = firstDifference(only(forms.plain, keys), only(forms.faster, keys));
  if (found.empty()) {
    Rows plain = forms.plain;
    Rows faster = forms.faster;
    std::ranges::sort(plain);
    std::ranges::sort(faster);
    found = firstDifference(plain, faster);
  }
  return found;
}

Values markerValues(const Translation& translation) {
  Values values;
  for (const Type type : translation.markers) {
    if (type == Type::Date) {
      values.emplace_back(QuorDataLib::Date::of(2024, 1, 20));
    } else {
      values.emplace_back(42);
    }
  }
  return values;
}

}  // namespace QuorHost::Sql::Testing
