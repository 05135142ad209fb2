// The recording driver's statements.
#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <thread>

#include "host/engines/odbc/driver/wide_text.h"
#include "odbc/driver_objects.h"

namespace {

using namespace QuorHost::Testing;
using QuorHost::Odbc::WideText;

SQLRETURN answer(Object& object, const Received& received) {
  theRecording.received.push_back(received);
  object.answer = theRecording.answer ? theRecording.answer(received) : Answer{};
  object.next = object.first = object.current = 0;
  object.got.clear();
  if (object.answer.state.empty()) return SQL_SUCCESS;
  return fail(object, object.answer.state, object.answer.message);
}

}  // namespace

extern "C" {

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value,
                                  SQLINTEGER) {
  return counted("SQLSetStmtAttrW", handle, [&] {
    Object& statement = objectOf(handle);
    const auto number = reinterpret_cast<SQLULEN>(value);
    if (attribute == SQL_ATTR_ROW_ARRAY_SIZE) statement.rowsAtOnce = number;
    if (attribute == SQL_ATTR_ROWS_FETCHED_PTR) statement.fetched = static_cast<SQLULEN*>(value);
    if (attribute == SQL_ATTR_ROW_STATUS_PTR) statement.states = static_cast<SQLUSMALLINT*>(value);
    if (attribute == SQL_ATTR_QUERY_TIMEOUT) {
      theRecording.events.push_back("timeout " + std::to_string(number));
    }
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLGetStmtAttrW(SQLHSTMT handle, SQLINTEGER, SQLPOINTER value, SQLINTEGER,
                                  SQLINTEGER*) {
  return counted("SQLGetStmtAttrW", handle, [&] {
    auto& descriptors = objectOf(handle).descriptors;
    descriptors.push_back(std::make_unique<Object>());
    SQLHANDLE const descriptor = descriptors.back().get();
    std::memcpy(value, static_cast<const void*>(&descriptor), sizeof descriptor);
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLBindParameter(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT,
                                   SQLSMALLINT form, SQLSMALLINT type, SQLULEN size,
                                   SQLSMALLINT decimals, SQLPOINTER data, SQLLEN, SQLLEN* length) {
  return counted("SQLBindParameter", handle, [&] {
    objectOf(handle).parameters[number] = {form, {type, size, decimals, {}}, data, length};
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length) {
  return counted("SQLExecDirectW", handle, [&] {
    Object& statement = objectOf(handle);
    Received received{.text = textOf(text, length), .values = {}};
    for (const auto& [number, parameter] : statement.parameters) {
      Bound& bound = received.values.emplace_back(parameter.bound);
      if (*parameter.length != SQL_NULL_DATA) bound.text = boundText(parameter);
    }
    return answer(statement, received);
  });
}

SQLRETURN SQL_API SQLTablesW(SQLHSTMT handle, SQLWCHAR*, SQLSMALLINT, SQLWCHAR*, SQLSMALLINT,
                             SQLWCHAR* name, SQLSMALLINT length, SQLWCHAR*, SQLSMALLINT) {
  return counted("SQLTablesW", handle, [&] {
    return answer(objectOf(handle), {.text = "SQLTables " + textOf(name, length), .values = {}});
  });
}

SQLRETURN SQL_API SQLColumnsW(SQLHSTMT handle, SQLWCHAR*, SQLSMALLINT, SQLWCHAR*, SQLSMALLINT,
                              SQLWCHAR* table, SQLSMALLINT length, SQLWCHAR*, SQLSMALLINT) {
  return counted("SQLColumnsW", handle, [&] {
    return answer(objectOf(handle), {.text = "SQLColumns " + textOf(table, length), .values = {}});
  });
}

SQLRETURN SQL_API SQLPrimaryKeysW(SQLHSTMT handle, SQLWCHAR*, SQLSMALLINT, SQLWCHAR*, SQLSMALLINT,
                                  SQLWCHAR* table, SQLSMALLINT length) {
  return counted("SQLPrimaryKeysW", handle, [&] {
    return answer(objectOf(handle),
                  {.text = "SQLPrimaryKeys " + textOf(table, length), .values = {}});
  });
}

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* count) {
  return counted("SQLNumResultCols", handle, [&] {
    *count = static_cast<SQLSMALLINT>(objectOf(handle).answer.columns.size());
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLDescribeColW(SQLHSTMT handle, SQLUSMALLINT number, SQLWCHAR* name, SQLSMALLINT,
                                  SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size,
                                  SQLSMALLINT* decimals, SQLSMALLINT* nullable) {
  return counted("SQLDescribeColW", handle, [&] {
    const AnsweredColumn& column = objectOf(handle).answer.columns.at(number - 1U);
    WideText wide(column.name);
    std::copy_n(wide.data(), wide.size() + 1, name);
    *length = static_cast<SQLSMALLINT>(wide.size());
    *type = column.type;
    *size = column.size;
    *decimals = column.decimals;
    *nullable = SQL_NULLABLE_UNKNOWN;
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLRowCount(SQLHSTMT handle, SQLLEN* rows) {
  return counted("SQLRowCount", handle, [&] {
    *rows = objectOf(handle).answer.changed;
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLBindCol(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT form,
                             SQLPOINTER data, SQLLEN width, SQLLEN* lengths) {
  return counted("SQLBindCol", handle, [&] {
    objectOf(handle).columns[number] = {form, static_cast<char*>(data), width, lengths};
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT handle) {
  return counted("SQLFetch", handle, [&]() -> SQLRETURN {
    Object& statement = objectOf(handle);
    const auto& rows = statement.answer.rows;
    std::this_thread::sleep_for(theRecording.fetching);
    const std::size_t count =
        std::min<std::size_t>(statement.rowsAtOnce, rows.size() - statement.next);
    if (statement.fetched != nullptr) *statement.fetched = count;
    if (count == 0) return SQL_NO_DATA;
    statement.first = statement.current = statement.next;
    statement.got.clear();
    SQLRETURN result = SQL_SUCCESS;
    for (std::size_t i = 0; i < count; ++i, ++statement.next) {
      if (statement.states != nullptr) statement.states[i] = SQL_ROW_SUCCESS;
      for (const auto& [number, column] : statement.columns) {
        std::size_t from = 0;
        const auto width = static_cast<std::size_t>(column.width);
        const SQLRETURN one =
            deliver(rows[statement.next].at(number - 1U), column.form, column.data + i * width,
                    column.width, column.lengths + i, from);
        result = std::max(result, one);
      }
    }
    return result;
  });
}

SQLRETURN SQL_API SQLSetPos(SQLHSTMT handle, SQLSETPOSIROW row, SQLUSMALLINT, SQLUSMALLINT) {
  return counted("SQLSetPos", handle, [&] {
    Object& statement = objectOf(handle);
    statement.current = statement.first + row - 1;
    statement.got.clear();
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT form,
                             SQLPOINTER data, SQLLEN width, SQLLEN* length) {
  return counted("SQLGetData", handle, [&] {
    Object& statement = objectOf(handle);
    return deliver(statement.answer.rows[statement.current].at(number - 1U), form, data, width,
                   length, statement.got[number]);
  });
}

SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT handle, SQLUSMALLINT what) {
  return counted("SQLFreeStmt", handle, [&] {
    if (what == SQL_RESET_PARAMS) objectOf(handle).parameters.clear();
    return SQL_SUCCESS;
  });
}

}  // extern "C"
