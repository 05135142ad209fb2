#include "host/engines/odbc/run/statement.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "host/engines/odbc/driver/wide_text.h"
#include "host/engines/rows/passed_value.h"
#include "host/engines/rows/refusal.h"

namespace QuorHost::Odbc {
namespace {

using Sql::Type;

/// Decimals of money. What has more is no money.
constexpr SQLSMALLINT kMoneyDecimals = 4;
/// The longest decimal number that a server writes, with room to spare.
constexpr std::size_t kDecimalWidth = 64;
/// Texts of columns that may hold more characters are fetched one by one.
constexpr SQLULEN kLongestBound = 1024;

/// The type of a column and the form in which it is fetched.
DrivenColumn columnOf(SQLSMALLINT type, SQLULEN size, SQLSMALLINT decimals) {
  switch (type) {
    case SQL_BIT:
      return {.type = Type::Boolean, .form = SQL_C_BIT, .width = sizeof(unsigned char)};
    case SQL_TINYINT:
    case SQL_SMALLINT:
      return {.type = Type::Integer, .form = SQL_C_SLONG, .width = sizeof(SQLINTEGER)};
    case SQL_INTEGER:
      return {.type = Type::Long, .form = SQL_C_SLONG, .width = sizeof(SQLINTEGER)};
    case SQL_BIGINT:
      return {.type = Type::Long, .form = SQL_C_SBIGINT, .width = sizeof(SQLBIGINT)};
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      if (decimals <= kMoneyDecimals) {
        return {.type = Type::Currency, .form = SQL_C_CHAR, .width = kDecimalWidth};
      }
      [[fallthrough]];
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return {.type = Type::Double, .form = SQL_C_DOUBLE, .width = sizeof(double)};
    case SQL_DATETIME:  // of ODBC 2, a day
    case SQL_TIMESTAMP:
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      return {
          .type = Type::Date, .form = SQL_C_TYPE_TIMESTAMP, .width = sizeof(SQL_TIMESTAMP_STRUCT)};
    default: {
      // A character may take two units, and one ends the text.
      const bool bounded = size > 0 && size <= kLongestBound;
      return {.type = Type::Text,
              .form = SQL_C_WCHAR,
              .width = bounded ? (2 * size + 1) * sizeof(SQLWCHAR) : 0};
    }
  }
}

}  // namespace

void requireWhole(const TextLook& look, std::size_t values) {
  if (look.several) {
    Rows::refuseStatement("The text holds several statements: run them one by one");
  }
  Rows::requireOneEach(look.markers, values);
}

Statement::Statement(std::shared_ptr<Session> session, std::string text)
    : session_(std::move(session)), text_(std::move(text)) {
  session_->requireSound();
  SQLHANDLE raw = nullptr;
  session_->check(SQLAllocHandle(SQL_HANDLE_STMT, session_->handle(), &raw), SQL_HANDLE_DBC,
                  session_->handle(), text_);
  handle_ = StatementHandle(raw);
}

void Statement::check(SQLRETURN result) {
  session_->check(result, SQL_HANDLE_STMT, handle(), text_, limit_);
}

void Statement::set(SQLINTEGER attribute, SQLPOINTER value) {
  check(SQLSetStmtAttrW(handle(), attribute, value, 0));
}

void Statement::set(SQLINTEGER attribute, SQLULEN value) {
  set(attribute, reinterpret_cast<SQLPOINTER>(value));  // NOLINT(performance-no-int-to-ptr)
}

void Statement::run(const std::vector<QuorDataLib::Value>& values, std::int32_t limit) {
  limit_ = limit;
  std::vector<Argument> arguments = argumentsOf(values);
  if (limit > 0) set(SQL_ATTR_QUERY_TIMEOUT, static_cast<SQLULEN>(limit));
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    check(arguments[i].bind(handle(), static_cast<SQLUSMALLINT>(i + 1)));
  }
  WideText wide(text_);
  const SQLRETURN result =
      SQLExecDirectW(handle(), wide.data(), static_cast<SQLINTEGER>(wide.size()));
  check(result);
  // The values go with this call.
  if (!arguments.empty()) SQLFreeStmt(handle(), SQL_RESET_PARAMS);
}

void Statement::askTables(std::string_view name) {
  WideText wide(name);
  WideText kinds("TABLE,VIEW,SYNONYM");
  check(SQLTablesW(handle(), nullptr, 0, nullptr, 0, wide.data(),
                   static_cast<SQLSMALLINT>(wide.size()), kinds.data(),
                   static_cast<SQLSMALLINT>(kinds.size())));
}

void Statement::askColumns(std::string_view table) {
  WideText wide(table);
  check(SQLColumnsW(handle(), nullptr, 0, nullptr, 0, wide.data(),
                    static_cast<SQLSMALLINT>(wide.size()), nullptr, 0));
}

std::size_t Statement::askPrimaryKey(std::string_view schema, std::string_view table) {
  WideText wideSchema(schema);
  WideText wide(table);
  SQLWCHAR* const schemaName = schema.empty() ? nullptr : wideSchema.data();
  const auto schemaLength = static_cast<SQLSMALLINT>(wideSchema.size());
  const auto length = static_cast<SQLSMALLINT>(wide.size());
  SQLUSMALLINT knowsKeys = SQL_FALSE;
  session_->check(SQLGetFunctions(session_->handle(), SQL_API_SQLPRIMARYKEYS, &knowsKeys),
                  SQL_HANDLE_DBC, session_->handle());
  if (knowsKeys == SQL_FALSE) {
    // Drivers of desktop files tell by what a row is found.
    check(SQLSpecialColumnsW(handle(), SQL_BEST_ROWID, nullptr, 0, schemaName, schemaLength,
                             wide.data(), length, SQL_SCOPE_CURROW, SQL_NULLABLE));
    return 1;
  }
  check(SQLPrimaryKeysW(handle(), nullptr, 0, schemaName, schemaLength, wide.data(), length));
  return 3;
}

std::int32_t Statement::rowsChanged() {
  SQLLEN rows = 0;
  check(SQLRowCount(handle(), &rows));
  // Drivers that do not know say so by less than nothing.
  return static_cast<std::int32_t>(
      std::clamp<SQLLEN>(rows, 0, std::numeric_limits<std::int32_t>::max()));
}

DrivenColumn Statement::describe(SQLUSMALLINT number) {
  std::array<SQLWCHAR, 256> name{};
  SQLSMALLINT length = 0;
  SQLSMALLINT type = 0;
  SQLULEN size = 0;
  SQLSMALLINT decimals = 0;
  SQLSMALLINT nullable = 0;
  check(SQLDescribeColW(handle(), number, name.data(), static_cast<SQLSMALLINT>(name.size()),
                        &length, &type, &size, &decimals, &nullable));
  DrivenColumn column = columnOf(type, size, decimals);
  const auto characters = static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0));
  column.name = narrow(name.data(), std::min(characters, name.size() - 1));
  return column;
}

std::vector<DrivenColumn> Statement::columns() {
  SQLSMALLINT count = 0;
  check(SQLNumResultCols(handle(), &count));
  std::vector<DrivenColumn> columns;
  for (SQLSMALLINT number = 1; number <= count; ++number) {
    columns.push_back(describe(static_cast<SQLUSMALLINT>(number)));
  }
  return columns;
}

}  // namespace QuorHost::Odbc
