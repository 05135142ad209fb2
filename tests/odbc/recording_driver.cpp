// A driver that records what it is given and answers what the test says. It knows what our engine
// calls, and no more of ODBC.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "host/engines/odbc/driver/api.h"
#include "host/engines/odbc/driver/wide_text.h"
#include "odbc/recording.h"

namespace {

using namespace QuorHost::Testing;
using QuorHost::Odbc::narrow;
using QuorHost::Odbc::WideText;

Recording recording;

struct Parameter {
  SQLSMALLINT form = 0;
  Bound bound;
  SQLPOINTER data = nullptr;
  SQLLEN* length = nullptr;
};

struct BoundColumn {
  SQLSMALLINT form = 0;
  char* data = nullptr;
  SQLLEN width = 0;
  SQLLEN* lengths = nullptr;
};

/// Any handle. The driver manager asks each statement for four descriptors, which are handles, too.
struct Object {
  std::string state;
  std::string message;
  std::map<SQLUSMALLINT, Parameter> parameters;
  std::map<SQLUSMALLINT, BoundColumn> columns;
  SQLULEN rowsAtOnce = 1;
  SQLULEN* fetched = nullptr;
  SQLUSMALLINT* states = nullptr;
  Answer answer;
  std::size_t next = 0;                     // row
  std::size_t first = 0;                    // row of the last batch
  std::size_t current = 0;                  // row that values are got of
  std::map<SQLUSMALLINT, std::size_t> got;  // units that were handed out, by column
  std::vector<std::unique_ptr<Object>> descriptors;
};

Object& objectOf(SQLHANDLE handle) { return *static_cast<Object*>(handle); }

SQLRETURN fail(Object& object, std::string state, std::string message) {
  object.state = std::move(state);
  object.message = std::move(message);
  return SQL_ERROR;
}

/// Counts a call, does it unless it is the one that is to fail.
template <class Call>
SQLRETURN counted(const char* name, SQLHANDLE handle, const Call& call) {
  const bool fails = ++recording.calls == recording.failAt || recording.failIn == name;
  if (fails) recording.failed = name;
  if (handle == nullptr) return fails ? SQL_ERROR : call();
  Object& object = objectOf(handle);
  object.state.clear();
  return fails ? fail(object, recording.failState, recording.failMessage) : call();
}

std::string textOf(const SQLWCHAR* text, SQLINTEGER length) {
  if (text == nullptr) return {};
  if (length == SQL_NTS)
    for (length = 0; text[length] != 0;) ++length;
  return narrow(text, static_cast<std::size_t>(length));
}

template <class T>
T valueAt(const void* place) {
  T value{};
  std::memcpy(&value, place, sizeof value);
  return value;
}

std::string boundText(const Parameter& parameter) {
  const void* const data = parameter.data;
  const auto length = static_cast<std::size_t>(*parameter.length);
  switch (parameter.form) {
    case SQL_C_BIT:
      return std::to_string(valueAt<unsigned char>(data));
    case SQL_C_SSHORT:
      return std::to_string(valueAt<SQLSMALLINT>(data));
    case SQL_C_SLONG:
      return std::to_string(valueAt<SQLINTEGER>(data));
    case SQL_C_DOUBLE: {
      std::string text(32, '\0');
      text.resize(static_cast<std::size_t>(
          std::to_chars(text.data(), text.data() + text.size(), valueAt<double>(data)).ptr -
          text.data()));
      return text;
    }
    case SQL_C_CHAR:
      return {static_cast<const char*>(data), length};
    case SQL_C_TYPE_TIMESTAMP: {
      const auto date = valueAt<SQL_TIMESTAMP_STRUCT>(data);
      char text[64];
      std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", date.year, date.month,
                    date.day, date.hour, date.minute, date.second);
      return text;
    }
    default:
      return narrow(static_cast<const SQLWCHAR*>(data), length / sizeof(SQLWCHAR));
  }
}

SQLRETURN answer(Object& object, const Received& received) {
  recording.received.push_back(received);
  object.answer = recording.answer ? recording.answer(received) : Answer{};
  object.next = object.first = object.current = 0;
  object.got.clear();
  if (object.answer.state.empty()) return SQL_SUCCESS;
  return fail(object, object.answer.state, object.answer.message);
}

template <class T>
SQLRETURN put(SQLPOINTER data, SQLLEN* length, T value) {
  std::memcpy(data, &value, sizeof value);
  *length = sizeof value;
  return SQL_SUCCESS;
}

/// Puts a value where it was asked for, in the form that was asked for. `from` units of a text
/// have gone before; those that go now are added.
SQLRETURN deliver(const std::optional<std::string>& value, SQLSMALLINT form, SQLPOINTER data,
                  SQLLEN width, SQLLEN* length, std::size_t& from) {
  if (!value) {
    *length = SQL_NULL_DATA;
    return SQL_SUCCESS;
  }
  const char* const text = value->c_str();
  switch (form) {
    case SQL_C_BIT:
      return put(data, length, static_cast<unsigned char>(*value == "0" ? 0 : 1));
    case SQL_C_SLONG:
      return put(data, length, static_cast<SQLINTEGER>(std::strtol(text, nullptr, 10)));
    case SQL_C_SBIGINT:
      return put(data, length, static_cast<SQLBIGINT>(std::strtoll(text, nullptr, 10)));
    case SQL_C_DOUBLE:
      return put(data, length, std::strtod(text, nullptr));
    case SQL_C_TYPE_TIMESTAMP: {
      int part[6] = {};
      std::sscanf(text, "%d-%d-%d %d:%d:%d", &part[0], &part[1], &part[2], &part[3], &part[4],
                  &part[5]);
      SQL_TIMESTAMP_STRUCT date{};
      date.year = static_cast<SQLSMALLINT>(part[0]);
      SQLUSMALLINT* const rest[] = {&date.month, &date.day, &date.hour, &date.minute, &date.second};
      for (int i = 0; i < 5; ++i) *rest[i] = static_cast<SQLUSMALLINT>(part[i + 1]);
      return put(data, length, date);
    }
    case SQL_C_CHAR:
      std::memcpy(data, text, std::min(value->size() + 1, static_cast<std::size_t>(width)));
      *length = static_cast<SQLLEN>(value->size());
      return SQL_SUCCESS;
    default:
      break;
  }
  WideText wide(*value);
  const std::size_t room = static_cast<std::size_t>(width) / sizeof(SQLWCHAR) - 1;
  const std::size_t left = wide.size() - from;
  const std::size_t now = std::min(left, room);
  std::memcpy(data, wide.data() + from, now * sizeof(SQLWCHAR));
  std::memset(static_cast<SQLWCHAR*>(data) + now, 0, sizeof(SQLWCHAR));
  *length = static_cast<SQLLEN>(left * sizeof(SQLWCHAR));
  from += now;
  if (left > room) return SQL_SUCCESS_WITH_INFO;
  return SQL_SUCCESS;
}

SQLRETURN numberInfo(SQLPOINTER value, std::size_t size, SQLUINTEGER number) {
  std::memcpy(value, &number, size);
  return SQL_SUCCESS;
}

SQLRETURN textInfo(SQLPOINTER value, SQLSMALLINT* length, const char* text) {
  WideText wide(text);
  std::memcpy(value, wide.data(), (wide.size() + 1) * sizeof(SQLWCHAR));
  if (length != nullptr) *length = static_cast<SQLSMALLINT>(wide.size() * sizeof(SQLWCHAR));
  return SQL_SUCCESS;
}

}  // namespace

extern "C" {

Recording* quorRecording() { return &recording; }

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT, SQLHANDLE parent, SQLHANDLE* handle) {
  return counted("SQLAllocHandle", parent, [&] {
    *handle = new Object;
    ++recording.handles;
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT kind, SQLHANDLE handle) {
  const auto free = [&]() -> SQLRETURN {
    delete static_cast<Object*>(handle);
    --recording.handles;
    return SQL_SUCCESS;
  };
  // The others are the driver manager's, which does not look whether they are gone.
  if (kind != SQL_HANDLE_STMT) return free();
  return counted("SQLFreeHandle", handle, free);
}

SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV handle, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
  return counted("SQLSetEnvAttr", handle, [] { return SQL_SUCCESS; });
}

SQLRETURN SQL_API SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT number, SQLWCHAR* state,
                                 SQLINTEGER* native, SQLWCHAR* message, SQLSMALLINT size,
                                 SQLSMALLINT* length) {
  const Object& object = objectOf(handle);
  if (number != 1 || object.state.empty()) return SQL_NO_DATA;
  WideText wideState(object.state);
  WideText wide("[maker][driver]" + object.message);
  std::copy_n(wideState.data(), SQL_SQLSTATE_SIZE + 1, state);
  if (native != nullptr) *native = 0;
  const auto room = static_cast<std::size_t>(std::max<SQLSMALLINT>(size, 1)) - 1;
  if (message != nullptr) std::copy_n(wide.data(), std::min(wide.size(), room) + 1, message);
  if (length != nullptr) *length = static_cast<SQLSMALLINT>(wide.size());
  return SQL_SUCCESS;
}

// The driver manager asks for records where there is this, too.
SQLRETURN SQL_API SQLGetDiagFieldW(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLSMALLINT, SQLPOINTER,
                                   SQLSMALLINT, SQLSMALLINT*) {
  return SQL_NO_DATA;
}

SQLRETURN SQL_API SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT length,
                                    SQLWCHAR*, SQLSMALLINT, SQLSMALLINT*, SQLUSMALLINT) {
  return counted("SQLDriverConnectW", handle, [&] {
    recording.events.push_back("connect " + textOf(text, length));
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLDisconnect(SQLHDBC handle) {
  return counted("SQLDisconnect", handle, [] { return SQL_SUCCESS; });
}

SQLRETURN SQL_API SQLGetFunctions(SQLHDBC handle, SQLUSMALLINT id, SQLUSMALLINT* supported) {
  return counted("SQLGetFunctions", handle, [&] {
    if (id == SQL_API_ODBC3_ALL_FUNCTIONS) {
      std::fill_n(supported, SQL_API_ODBC3_ALL_FUNCTIONS_SIZE, SQLUSMALLINT{0xFFFF});
    } else {
      *supported = SQL_TRUE;
    }
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLGetInfoW(SQLHDBC handle, SQLUSMALLINT what, SQLPOINTER value, SQLSMALLINT,
                              SQLSMALLINT* length) {
  return counted("SQLGetInfoW", handle, [&] {
    switch (what) {
      case SQL_TXN_CAPABLE:
        return numberInfo(value, sizeof(SQLUSMALLINT), SQL_TC_ALL);
      case SQL_IDENTIFIER_CASE:
        return numberInfo(value, sizeof(SQLUSMALLINT), SQL_IC_MIXED);
      case SQL_TXN_ISOLATION_OPTION:
        return numberInfo(value, sizeof(SQLUINTEGER), recording.isolations);
      case SQL_DEFAULT_TXN_ISOLATION:
        return numberInfo(value, sizeof(SQLUINTEGER), SQL_TXN_READ_COMMITTED);
      case SQL_GETDATA_EXTENSIONS:
        return numberInfo(value, sizeof(SQLUINTEGER), recording.getDataExtensions);
      case SQL_CURSOR_COMMIT_BEHAVIOR:
      case SQL_CURSOR_ROLLBACK_BEHAVIOR:
        return numberInfo(value, sizeof(SQLUSMALLINT), SQL_CB_PRESERVE);
      case SQL_IDENTIFIER_QUOTE_CHAR:
        return textInfo(value, length, recording.nameQuote.c_str());
      case SQL_DRIVER_ODBC_VER:
        return textInfo(value, length, "03.00");
      default:
        return textInfo(value, length, "Recorder");
    }
  });
}

SQLRETURN SQL_API SQLSetConnectAttrW(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value,
                                     SQLINTEGER) {
  return counted("SQLSetConnectAttrW", handle, [&] {
    const auto number = reinterpret_cast<SQLULEN>(value);
    if (attribute == SQL_ATTR_AUTOCOMMIT) {
      recording.events.push_back(number == SQL_AUTOCOMMIT_ON ? "autocommit on" : "autocommit off");
    } else if (attribute == SQL_ATTR_TXN_ISOLATION) {
      recording.events.push_back("isolation " + std::to_string(number));
    } else if (attribute == SQL_ATTR_ACCESS_MODE) {
      recording.events.emplace_back("read only");
    }
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLGetConnectAttrW(SQLHDBC handle, SQLINTEGER, SQLPOINTER value, SQLINTEGER,
                                     SQLINTEGER*) {
  // Asked behind every error: not a call of its own.
  std::memset(value, 0, sizeof(SQLUINTEGER));
  static_cast<void>(handle);
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLEndTran(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT how) {
  const char* const name = how == SQL_COMMIT ? "commit" : "rollback";
  return counted(name, handle, [&] {
    recording.events.emplace_back(name);
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value,
                                  SQLINTEGER) {
  return counted("SQLSetStmtAttrW", handle, [&] {
    Object& statement = objectOf(handle);
    const auto number = reinterpret_cast<SQLULEN>(value);
    if (attribute == SQL_ATTR_ROW_ARRAY_SIZE) statement.rowsAtOnce = number;
    if (attribute == SQL_ATTR_ROWS_FETCHED_PTR) statement.fetched = static_cast<SQLULEN*>(value);
    if (attribute == SQL_ATTR_ROW_STATUS_PTR) statement.states = static_cast<SQLUSMALLINT*>(value);
    if (attribute == SQL_ATTR_QUERY_TIMEOUT) {
      recording.events.push_back("timeout " + std::to_string(number));
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
    std::this_thread::sleep_for(recording.fetching);
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
