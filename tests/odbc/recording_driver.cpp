// A driver that records what it is given and answers what the test says: what concerns connections.
// It knows what our engine calls, and no more of ODBC.
#include <algorithm>
#include <cstring>
#include <string>

#include "host/engines/odbc/driver/wide_text.h"
#include "odbc/driver_objects.h"

namespace {

using namespace QuorHost::Testing;
using QuorHost::Odbc::WideText;

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

Recording* quorRecording() { return &theRecording; }

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT, SQLHANDLE parent, SQLHANDLE* handle) {
  return counted("SQLAllocHandle", parent, [&] {
    *handle = new Object;
    ++theRecording.handles;
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT kind, SQLHANDLE handle) {
  const auto free = [&]() -> SQLRETURN {
    delete static_cast<Object*>(handle);
    --theRecording.handles;
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
    theRecording.events.push_back("connect " + textOf(text, length));
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
        return numberInfo(value, sizeof(SQLUINTEGER), theRecording.isolations);
      case SQL_DEFAULT_TXN_ISOLATION:
        return numberInfo(value, sizeof(SQLUINTEGER), SQL_TXN_READ_COMMITTED);
      case SQL_GETDATA_EXTENSIONS:
        return numberInfo(value, sizeof(SQLUINTEGER), theRecording.getDataExtensions);
      case SQL_CURSOR_COMMIT_BEHAVIOR:
      case SQL_CURSOR_ROLLBACK_BEHAVIOR:
        return numberInfo(value, sizeof(SQLUSMALLINT), SQL_CB_PRESERVE);
      case SQL_IDENTIFIER_QUOTE_CHAR:
        return textInfo(value, length, theRecording.nameQuote.c_str());
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
      theRecording.events.push_back(number == SQL_AUTOCOMMIT_ON ? "autocommit on"
                                                                : "autocommit off");
    } else if (attribute == SQL_ATTR_TXN_ISOLATION) {
      theRecording.events.push_back("isolation " + std::to_string(number));
    } else if (attribute == SQL_ATTR_ACCESS_MODE) {
      theRecording.events.emplace_back("read only");
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
    theRecording.events.emplace_back(name);
    return SQL_SUCCESS;
  });
}

}  // extern "C"
