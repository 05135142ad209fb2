#include "odbc/driver_objects.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "host/engines/odbc/driver/wide_text.h"

namespace QuorHost::Testing {
namespace {

using Odbc::narrow;
using Odbc::WideText;

template <class T>
T valueAt(const void* place) {
  T value{};
  std::memcpy(&value, place, sizeof value);
  return value;
}

template <class T>
SQLRETURN put(SQLPOINTER data, SQLLEN* length, T value) {
  std::memcpy(data, &value, sizeof value);
  *length = sizeof value;
  return SQL_SUCCESS;
}

}  // namespace

Recording theRecording;

SQLRETURN fail(Object& object, std::string state, std::string message) {
  object.state = std::move(state);
  object.message = std::move(message);
  return SQL_ERROR;
}

std::string textOf(const SQLWCHAR* text, SQLINTEGER length) {
  if (text == nullptr) return {};
  if (length == SQL_NTS)
    for (length = 0; text[length] != 0;) ++length;
  return narrow(text, static_cast<std::size_t>(length));
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

}  // namespace QuorHost::Testing
