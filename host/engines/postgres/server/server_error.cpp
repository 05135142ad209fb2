#include "host/engines/postgres/server/server_error.h"

#include <algorithm>

#include "host/engines/rows/sql_state.h"
#include "platform/data_library.h"
#include "platform/error.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Postgres {
namespace {

using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;

constexpr std::string_view kSource = "QuorDataLib";
constexpr std::int32_t kPathFileAccess = 75;
constexpr std::size_t kLongestMessage = 600;

/// One part of what the server says.
std::string_view part(const PGresult* result, int which) {
  const char* const text = result == nullptr ? nullptr : PQresultErrorField(result, which);
  return text == nullptr ? std::string_view() : std::string_view(text);
}

/// A table of the company with its columns, as its definitions spell them; what they do not know is
/// as the server says it.
class Spelled {
 public:
  Spelled(const Sql::Catalogue& catalogue, std::string_view table)
      : relation_(catalogue.find(table)), table_(relation_ == nullptr ? table : relation_->name) {}

  [[nodiscard]] const std::string& table() const { return table_; }

  [[nodiscard]] std::string column(std::string_view name) const {
    const Sql::Column* const column = relation_ == nullptr ? nullptr : relation_->find(name);
    return column == nullptr ? std::string(name) : column->name;
  }

  /// Of columns that are separated by commas. An index of texts tells the cast that it compares by.
  [[nodiscard]] std::string columns(std::string_view list) const {
    std::string spelled;
    while (!list.empty()) {
      std::string_view name = list.substr(0, list.find(','));
      list.remove_prefix(std::min(name.size() + 1, list.size()));
      name = name.substr(0, name.find("::"));
      const std::size_t begin = std::min(name.find_first_not_of(" (\""), name.size());
      name = name.substr(begin, name.find_last_not_of(" )\"") + 1 - begin);
      spelled += (spelled.empty() ? "" : ", ") + column(name);
    }
    return spelled;
  }

 private:
  const Sql::Relation* relation_;
  std::string table_;
};

/// `(a, b)=(1, 2)` of the server's detail about a key, in two.
struct Key {
  std::string_view columns;
  std::string values;
};

Key keyOf(std::string_view detail) {
  const std::size_t open = detail.find('(');
  const std::size_t middle = detail.find(")=(", open);
  const std::size_t close = detail.rfind(')');
  if (open == detail.npos || middle == detail.npos || close < middle + 3) return {};
  return {detail.substr(open + 1, middle - open - 1),
          QuorDataLib::shownText(detail.substr(middle + 3, close - middle - 3))};
}

std::string keyMessage(const PGresult* result, const Sql::Catalogue& catalogue) {
  const Key key = keyOf(part(result, PG_DIAG_MESSAGE_DETAIL));
  const Spelled spelled(catalogue, part(result, PG_DIAG_TABLE_NAME));
  return "Another row already has " + (key.values.empty() ? "this value" : key.values) + " in " +
         spelled.columns(key.columns) + " of table " + spelled.table() + ", which must be unique";
}

/// What stands behind `before` in a text, up to the quotes.
std::string_view quotedBehind(std::string_view text, std::string_view before) {
  const std::size_t at = text.find(before);
  if (at == text.npos) return {};
  text.remove_prefix(at + before.size());
  return text.substr(0, text.find('"'));
}

std::string referenceMessage(const PGresult* result, const Sql::Catalogue& catalogue) {
  constexpr std::string_view kTable = "table \"";
  const std::string_view detail = part(result, PG_DIAG_MESSAGE_DETAIL);
  const Key key = keyOf(detail);
  const Spelled named(catalogue, quotedBehind(detail, kTable));
  if (detail.find("still referenced") != detail.npos) {
    const Spelled goes(catalogue, quotedBehind(part(result, PG_DIAG_MESSAGE_PRIMARY), kTable));
    return "Rows of table " + named.table() + " point at " + key.values + " in " +
           goes.columns(key.columns) + " of the row of table " + goes.table() +
           " that would go (a foreign key)";
  }
  const Spelled pointing(catalogue, part(result, PG_DIAG_TABLE_NAME));
  return "Column " + pointing.columns(key.columns) + " of table " + pointing.table() +
         " would hold " + key.values + ", but table " + named.table() +
         " has no row with that (a foreign key)";
}

std::string missingMessage(const PGresult* result, const Sql::Catalogue& catalogue) {
  const Spelled spelled(catalogue, part(result, PG_DIAG_TABLE_NAME));
  return "A value is missing in " + spelled.column(part(result, PG_DIAG_COLUMN_NAME)) +
         " of table " + spelled.table() + ", which cannot be null";
}

}  // namespace

void refuseServer(const std::string& address, const std::string& what) {
  throw Error(kPathFileAccess, std::string(kSource), "'" + address + "' " + what);
}

void raiseConnectionError(PGconn* connection, const std::string& address) {
  std::string reason = connection == nullptr ? "out of memory" : PQerrorMessage(connection);
  // The last line says why; those before it where the library tried.
  while (!reason.empty() && reason.back() == '\n') reason.pop_back();
  std::ranges::replace(reason, '\n', ' ');
  refuseServer(address, "cannot be opened: " + QuorDataLib::shownText(reason, kLongestMessage) +
                            ". See that the server runs, that host, database and role are spelled "
                            "as they are there, that it has a connection left for the role, and "
                            "that a password is where the client looks for it (PGPASSFILE, "
                            "PGPASSWORD)");
}

void raiseServerError(PGconn* connection, const PGresult* result,
                      const Circumstances& circumstances) {
  const Sql::Catalogue& catalogue = *circumstances.catalogue;
  const std::string_view state = part(result, PG_DIAG_SQLSTATE);
  if (PQstatus(connection) == CONNECTION_BAD || Rows::isEndOfConnection(state)) {
    Rows::raiseConnectionLost(circumstances.mayChange);
  }
  const std::string where = inStatement(circumstances.statement);
  if (const std::string message = Rows::stateMessage(state, circumstances.limit);
      !message.empty()) {
    refuseStatement(message + where);
  }
  if (state == "22003") {
    QuorDataLib::raise(ErrorNumber::Overflow,
                       "Overflow: a sum or a product is too large for its type" + where);
  }
  if (state == "23505") refuseStatement(keyMessage(result, catalogue) + where);
  if (state == "23503") refuseStatement(referenceMessage(result, catalogue) + where);
  if (state == "23502") refuseStatement(missingMessage(result, catalogue) + where);
  const std::string_view said = part(result, PG_DIAG_MESSAGE_PRIMARY);
  const std::string message =
      QuorDataLib::shownText(said.empty() ? PQerrorMessage(connection) : said, kLongestMessage);
  refuseStatement("The statement failed: " + message + where);
}

}  // namespace QuorHost::Postgres
