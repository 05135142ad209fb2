#include "host/engines/sqlite/file/file_check.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/engines/sqlite/run/binding.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

/// One look at the file. `{0}`, `{1}` and so on in `finding` stand for the fields of a row.
struct Look {
  std::string_view subject;
  std::string_view query;
  std::string_view finding;
};

// What the definitions do not know could change rows or answers behind everybody's back; the
// engine's own tables and automatic indexes are named "sqlite_...".
constexpr std::array kLooks{
    Look{"the structure of the file", "PRAGMA integrity_check(1000000)", "{0}"},
    Look{"references between tables", "SELECT * FROM pragma_foreign_key_check",
         "row {1} of table {0} points at a row that is missing in table {2}"},
    Look{"objects in the file",
         "SELECT type, name, tbl_name FROM sqlite_schema AS Object"
         " WHERE name <> 'QuorCatalogue' AND (type = 'trigger' OR name NOT GLOB 'sqlite_*')"
         " AND NOT EXISTS (SELECT 1 FROM QuorCatalogue AS Known WHERE Known.Kind = Object.type"
         " AND Known.Name = Object.name COLLATE NOCASE)",
         "the {0} {1} on {2} is none of the company's own: remove it, or restore the file from a "
         "copy"},
    Look{"definitions in the file",
         "SELECT Kind, Name FROM QuorCatalogue AS Known WHERE Position > 0 AND NOT EXISTS"
         " (SELECT 1 FROM sqlite_schema AS Object WHERE Known.Kind = Object.type"
         " AND Known.Name = Object.name COLLATE NOCASE)",
         "the {0} {1} is missing: restore the file from a copy"},
};

std::string textOf(const Statement& row, int column) {
  const Rows::Cell cell = cellOf(row, column);
  if (cell.kind == Rows::Cell::Kind::Integer) return std::to_string(cell.integer);
  return std::string(cell.text);
}

std::string findingOf(const Look& look, const Statement& row) {
  std::string text;
  for (std::size_t i = 0; i < look.finding.size(); ++i) {
    if (look.finding[i] == '{') {
      text += textOf(row, look.finding[i + 1] - '0');
      i += 2;
    } else {
      text += look.finding[i];
    }
  }
  return text;
}

/// Lets the engine pass over the columns' checks while it lives: they raise for a value that does
/// not fit, and which values do not is told one by one by whoever reads them.
class WithoutChecks {
 public:
  explicit WithoutChecks(Database& database) : database_(database) {
    database_.run("PRAGMA ignore_check_constraints=ON");
  }
  ~WithoutChecks() {
    sqlite3_exec(database_.handle(), "PRAGMA ignore_check_constraints=OFF", nullptr, nullptr,
                 nullptr);
  }
  WithoutChecks(const WithoutChecks&) = delete;
  WithoutChecks& operator=(const WithoutChecks&) = delete;

 private:
  Database& database_;
};

}  // namespace

std::vector<std::string> fileFindings(Database& database) {
  std::vector<std::string> findings;
  const WithoutChecks withoutChecks(database);
  for (const Look& look : kLooks) {
    try {
      Statement rows(database.handle(), look.query);
      while (rows.step()) {
        std::string finding = findingOf(look, rows);
        if (finding != "ok") findings.push_back(std::move(finding));
      }
    } catch (const QuorDataLib::Error& error) {
      findings.push_back("The check of " + std::string(look.subject) +
                         " did not come to its end: " + error.description());
    }
  }
  return findings;
}

}  // namespace QuorHost::Sqlite
