// What the recording driver is told, and what it has seen. The test loads the driver as the driver
// manager does, by its path, so that both have the same one.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace QuorHost::Testing {

/// A value that was bound to a marker, as text; nothing for null. Types are those of ODBC.
struct Bound {
  std::int16_t type = 0;
  std::uint64_t size = 0;
  std::int16_t decimals = 0;
  std::optional<std::string> text;
};

/// A statement as it reached the driver, or "SQLTables", "SQLColumns" or "SQLPrimaryKeys" with a
/// name behind it.
struct Received {
  std::string text;
  std::vector<Bound> values;
};

struct AnsweredColumn {
  std::string name;
  std::int16_t type = 0;
  std::uint64_t size = 0;
  std::int16_t decimals = 0;
};

/// What the driver answers: rows, a number of changed rows, or an error.
struct Answer {
  std::vector<AnsweredColumn> columns;
  std::vector<std::vector<std::optional<std::string>>> rows;
  std::int64_t changed = 0;
  std::string state;
  std::string message;
};

struct Recording {
  std::function<Answer(const Received&)> answer;
  /// What `SQLGetInfo` says.
  std::uint32_t isolations = 0;
  std::uint32_t getDataExtensions = 0;
  std::string nameQuote = "\"";
  /// How long each fetch takes.
  std::chrono::milliseconds fetching{};

  std::vector<Received> received;
  /// "connect ...", "autocommit off", "commit", "rollback", "timeout 3" and so on, in their order.
  std::vector<std::string> events;
  /// Handles that are not freed yet.
  int handles = 0;

  /// Calls so far, and the one that fails (none for 0) with this state and message.
  int calls = 0;
  int failAt = 0;
  /// Or every call of this function does.
  std::string failIn;
  std::string failState = "HY000";
  std::string failMessage = "it failed on purpose";
  /// The function that failed.
  std::string failed;
};

}  // namespace QuorHost::Testing
