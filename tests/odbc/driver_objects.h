// What the handles of the recording driver hold, and values as it takes and gives them.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/engines/odbc/driver/api.h"
#include "odbc/recording.h"

namespace QuorHost::Testing {

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

[[nodiscard]] inline Object& objectOf(SQLHANDLE handle) { return *static_cast<Object*>(handle); }

extern Recording theRecording;

/// Has the last call on an object fail.
SQLRETURN fail(Object& object, std::string state, std::string message);

/// Counts a call, does it unless it is the one that is to fail.
template <class Call>
SQLRETURN counted(const char* name, SQLHANDLE handle, const Call& call) {
  const bool fails = ++theRecording.calls == theRecording.failAt || theRecording.failIn == name;
  if (fails) theRecording.failed = name;
  if (handle == nullptr) return fails ? SQL_ERROR : call();
  Object& object = objectOf(handle);
  object.state.clear();
  return fails ? fail(object, theRecording.failState, theRecording.failMessage) : call();
}

/// A text that was passed, of so many units, or up to its zero.
[[nodiscard]] std::string textOf(const SQLWCHAR* text, SQLINTEGER length);

/// What a parameter holds that is not null.
[[nodiscard]] std::string boundText(const Parameter& parameter);

/// Puts a value where it was asked for, in the form that was asked for. `from` units of a text
/// have gone before; those that go now are added.
SQLRETURN deliver(const std::optional<std::string>& value, SQLSMALLINT form, SQLPOINTER data,
                  SQLLEN width, SQLLEN* length, std::size_t& from);

}  // namespace QuorHost::Testing
