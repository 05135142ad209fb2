#include "host/company/schema.h"

#include <algorithm>
#include <utility>

#include "host/sql/front_end.h"

namespace QuorHost {

namespace {

/// What a `CREATE` statement makes.
struct Made {
  std::string_view name;
  /// It is made of the rows of a table: an index, or totals that are kept.
  bool holdsRows = false;
};

/// Takes the first word off `text`, which goes on with the next.
std::string_view takeWord(std::string_view& text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
  text.remove_prefix(word.size());
  return word;
}

/// What stands behind the comments and the CREATE.
Made madeBy(std::string_view statement) {
  while (takeWord(statement).starts_with("--")) {
    statement.remove_prefix(std::min(statement.find('\n'), statement.size()));
  }
  std::string_view kind = takeWord(statement);
  if (kind == "UNIQUE") kind = takeWord(statement);
  const std::string_view name = takeWord(statement);
  return {name, kind == "INDEX" || takeWord(statement) == "WITH"};
}

/// The statements that make what is made of rows, or the others.
std::vector<std::string> statements(bool ofRows) {
  std::vector<std::string> chosen;
  forEachDefinition([&](std::string_view, const std::string& statement) {
    if (madeBy(statement).holdsRows == ofRows) chosen.push_back(statement);
  });
  return chosen;
}

}  // namespace

void forEachDefinition(
    const std::function<void(std::string_view name, const std::string& statement)>& visit) {
  for (const std::string_view text : schemaTexts()) {
    for (const std::string& statement : Sql::splitStatements(text)) {
      visit(madeBy(statement).name, statement);
    }
  }
}

bool holdsRows(std::string_view statement) { return madeBy(statement).holdsRows; }

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
