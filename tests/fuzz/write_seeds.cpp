// Writes what the fuzz targets start from, made by the program itself: write_seeds FOLDER.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "cli/print/value_text.h"
#include "host/company/company.h"
#include "host/company/csv/field_text.h"
#include "sql/component_statements.h"

namespace {

namespace fs = std::filesystem;
using QuorDataLib::Value;
using QuorDataLib::ValueType;
using QuorHost::Store;

class Seeds {
 public:
  Seeds(const fs::path& folder, const std::string& target) : folder_(folder / target) {
    fs::create_directories(folder_);
  }
  void add(const std::string& name, std::string_view bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
  }

 private:
  fs::path folder_;
};

/// The value as it stands in a criterion.
std::string literal(const Value& value) {
  if (value.type() == ValueType::Date) return "#" + value.toText() + "#";
  if (value.type() != ValueType::Text) return value.toText();
  std::string text = "'";
  for (const char c : value.text()) text.append(c == '\'' ? 2 : 1, c);
  return text + "'";
}

/// The first rows of a table: as CSV, each value of the first as a criterion and as a word.
void writeTable(Store& store, const std::string& table, const fs::path& folder) {
  constexpr std::size_t kRows = 20;
  std::ostringstream csv;
  QuorHost::exportCsv(store, table, csv);
  const std::string text = csv.str();
  std::size_t end = 0;
  for (std::size_t line = 0; line < kRows && end != std::string::npos; ++line) {
    end = text.find('\n', end + 1);
  }
  Seeds(folder, "csv_fuzz").add(table, std::string_view(text).substr(0, end));

  const auto row = store.connect(QuorHost::Sql::Dialect::Server)
                       ->OpenRecordset("SELECT * FROM [" + table + "]", 4, 0, {}, 0);
  for (std::int32_t i = 0; !row->AtEnd() && i < row->FieldCount(); ++i) {
    const Value value = row->Field(i);
    if (value.isNull()) continue;
    const std::string name = table + "-" + row->FieldName(i);
    Seeds(folder, "find_fuzz").add(name, row->FieldName(i) + " = " + literal(value));
    std::string word;
    QuorCli::appendPlain(word, value);
    Seeds(folder, "words_fuzz").add(name, word);
  }
}

/// A statement without its numbers, dates and texts, and lists of them: those of one form teach a
/// target the same.
std::string formOf(const std::string& statement) {
  static const std::regex kValue("'[^']*'|#[^#]*#|[0-9]+(, ?[0-9]+)*");
  return std::regex_replace(statement, kValue, "0");
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: write_seeds FOLDER\n";
    return 2;
  }
  const fs::path folder = arguments[1];
  const std::string path = (folder / "sample").string();
  fs::create_directories(folder);
  QuorHost::createCompany(path, {.sample = true, .force = true});
  {
    const auto store = QuorHost::openCompany(path, QuorHost::Access::Read);
    for (const auto& relation : store->catalogue().relations()) {
      if (relation.kind == QuorHost::Sql::Relation::Kind::Table) {
        writeTable(*store, relation.name, folder);
      }
    }
  }
  {
    const Seeds statements(folder, "sql_fuzz");
    std::set<std::string> forms;
    const auto store = QuorHost::openCompany(path, QuorHost::Access::Write);
    for (const auto& sent : QuorHost::Sql::Testing::componentStatements(store)) {
      if (!forms.insert(formOf(sent.text)).second) continue;
      statements.add("statement-" + std::to_string(forms.size()), sent.text);
    }
  }
  fs::remove(path);
  const Seeds words(folder, "words_fuzz");
  words.add("option", "Company.SessionDate=2025-03-31");
  words.add("buckets", "30,60,90");
  words.add("statement", "-- a comment\n(SELECT 1)");
  // One byte toggled in the header, the schema's page, a table's page; and a cut.
  const Seeds changes(folder, "company_fuzz");
  changes.add("header", std::string_view("\0\0\x1C\x01", 4));
  changes.add("schema", std::string_view("\0\x0E\x10\x20", 4));
  changes.add("table", std::string_view("\x01\x20\x30\x04", 4));
  changes.add("cut", std::string_view("\xFF\xF0\0\0", 4));
  return 0;
}
