#include "host/company/schema.h"

#include <algorithm>
#include <utility>

#include "host/sql/front_end.h"

namespace QuorHost {

namespace {

/// Whether a statement, after the comments before it, makes an index.
bool makesIndex(std::string_view statement) {
  constexpr std::string_view kBlanks = " \t\r\n";
  for (;;) {
    const std::size_t start = statement.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return false;
    statement.remove_prefix(start);
    if (!statement.starts_with("--")) return statement.starts_with("CREATE INDEX");
    statement.remove_prefix(std::min(statement.find('\n'), statement.size()));
  }
}

/// The statements that make indexes, or those that do not.
std::vector<std::string> statements(bool indexes) {
  std::vector<std::string> chosen;
  for (const std::string_view text : schemaTexts()) {
    for (std::string& statement : Sql::splitStatements(text)) {
      if (makesIndex(statement) == indexes) chosen.push_back(std::move(statement));
    }
  }
  return chosen;
}

}  // namespace

void defineRelations(Store& store) {
  for (const std::string& statement : statements(false)) store.define(statement);
}

void defineIndexes(Store& store, const std::function<void(int done, int total)>& done) {
  const std::vector<std::string> indexes = statements(true);
  const int total = static_cast<int>(indexes.size());
  int count = 0;
  for (const std::string& statement : indexes) {
    done(count++, total);
    store.define(statement);
  }
  done(total, total);
}

}  // namespace QuorHost
