#include "host/engines/sqlite/engine_error.h"

#include <string>

#include "host/engines/sqlite/functions/functions.h"
#include "platform/error.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Sqlite {
namespace {

using QuorDataLib::ErrorNumber;

constexpr std::size_t kLongestMessage = 600;

/// What follows the first ": " of the engine's message.
std::string_view detail(std::string_view message) {
  const std::size_t colon = message.find(": ");
  return colon == std::string_view::npos ? message : message.substr(colon + 2);
}

/// "Table.A, Table.B" as "A, B of table Table".
std::string columnsOfTable(std::string_view names) {
  const std::size_t dot = names.find('.');
  if (dot == std::string_view::npos) return std::string(names);
  const std::string_view table = names.substr(0, dot);
  std::string columns;
  for (std::size_t from = 0; from < names.size();) {
    std::size_t to = names.find(", ", from);
    if (to == std::string_view::npos) to = names.size();
    std::string_view name = names.substr(from, to - from);
    if (name.size() > table.size() && name.starts_with(table)) name.remove_prefix(table.size() + 1);
    if (!columns.empty()) columns += ", ";
    columns += name;
    from = to + 2;
  }
  return columns.append(" of table ").append(table);
}

std::string constraintMessage(int extendedCode, std::string_view message) {
  switch (extendedCode) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
      return "Another row already has this value in " + columnsOfTable(detail(message)) +
             ", which must be unique";
    case SQLITE_CONSTRAINT_NOTNULL:
      return "A value is missing in " + columnsOfTable(detail(message)) + ", which cannot be null";
    case SQLITE_CONSTRAINT_FOREIGNKEY:
      return "A row would point at a row that does not exist in another table (a foreign key)";
    case SQLITE_CONSTRAINT_CHECK:
      return "A value is outside what its column allows (constraint " +
             std::string(detail(message)) + ")";
    default:
      return "A value cannot be stored in its column: " + std::string(message);
  }
}

/// The message for errors of the file and of what surrounds it; empty for all others.
std::string fileMessage(int code, const std::string& file) {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "The company file " + file +
             " is in use by another program; try again when that has finished";
    case SQLITE_READONLY:
      return "The company file " + file +
             " cannot be changed; open it for writing and see that the file and its folder are "
             "not write-protected";
    case SQLITE_FULL:
      return "The disk of the company file " + file + " is full; make room and try again";
    case SQLITE_IOERR:
      return "Reading or writing the company file " + file + " failed; check its disk";
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return "The company file " + file + " is damaged; restore it from a copy";
    case SQLITE_CANTOPEN:
      return "The company file " + file + " or a file beside it cannot be opened; check its folder";
    default:
      return {};
  }
}

}  // namespace

void raiseEngineError(sqlite3* database, int code, std::string_view statement) {
  const std::string message = QuorDataLib::shownText(sqlite3_errmsg(database), kLongestMessage);
  if ((code & 0xFF) == SQLITE_NOMEM) {
    QuorDataLib::raise(ErrorNumber::OutOfMemory, "Out of memory");
  }
  const char* const path = sqlite3_db_filename(database, "main");
  const std::string description =
      fileMessage(code, path == nullptr || *path == '\0' ? "" : "'" + std::string(path) + "'");
  if (!description.empty()) refuseStatement(description);

  const std::string where = inStatement(statement);
  if ((code & 0xFF) == SQLITE_CONSTRAINT) {
    refuseStatement(constraintMessage(sqlite3_extended_errcode(database), message) + where);
  }
  if (message == kIntegerOverflow) {
    QuorDataLib::raise(ErrorNumber::Overflow,
                       "Overflow: a sum or a product is too large for its type" + where);
  }
  refuseStatement("The statement failed: " + message + where);
}

}  // namespace QuorHost::Sqlite
