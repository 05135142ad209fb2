// A statement on its way to the connection: text and marker values, in text order.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/values/value.h"

namespace QuorAccQueries {

/// How a statement's values go to the connection. Each query keeps its own way.
enum class Pass : std::uint8_t { Array, Single, Nothing };

/// Joins fixed pieces, pasted numbers and the caller's fragments into one text, and keeps the
/// values of the `?` markers beside it. Nothing is put between pieces.
class Statement {
 public:
  Statement() = default;
  explicit Statement(std::string_view fixedText) { text(fixedText); }

  /// Appends text of the component's own. Its markers count.
  Statement& text(std::string_view piece);

  /// Appends the caller's text as it stands. Markers in it are the caller's affair.
  Statement& fragment(std::string_view callersText);

  /// Appends a number in plain decimal form, with a minus sign where negative.
  Statement& number(std::int32_t value);

  /// Adds the value of the next marker.
  Statement& bind(QuorDataLib::Value value);

  [[nodiscard]] const std::string& sql() const noexcept { return sql_; }
  [[nodiscard]] const std::vector<QuorDataLib::Value>& values() const noexcept { return values_; }

  /// Raises 51 when there are not as many values as markers in the component's own text: a fault
  /// of the method that built the statement, or of an error that it was told to ignore.
  void checkComplete() const;

 private:
  std::string sql_;
  std::vector<QuorDataLib::Value> values_;
  std::size_t markers_ = 0;
};

/// Adds conditions to a statement: the first after " WHERE ", every further one after " AND ".
class Conditions {
 public:
  explicit Conditions(Statement& statement) : statement_(statement) {}

  /// A condition with one marker, and its value.
  void add(std::string_view condition, QuorDataLib::Value value);

 private:
  Statement& statement_;
  bool any_ = false;
};

}  // namespace QuorAccQueries
