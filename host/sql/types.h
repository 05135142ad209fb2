// The column types that the SQL front end knows, and how the reference host stores them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/values/value.h"

namespace QuorHost::Sql {

/// The two dialects; the numbers are the engine types that the data services report.
enum class Dialect : std::int16_t { Server = 0, Desktop = 1 };

/// Type of a column or an expression. `Unknown` is the type of `NULL` and of a marker that stands
/// where nothing tells what it is.
///
/// Stored form: Boolean as 0 or 1; Integer (16 bits) and Long (32 bits) as integers; Double as a
/// floating number; Currency as an integer count of ten-thousandths; Date as ISO text, without the
/// time of day when it is midnight; Text as UTF-8 text.
enum class Type : std::uint8_t { Unknown, Boolean, Integer, Long, Double, Currency, Date, Text };

/// The type of values that a column of `type` holds.
[[nodiscard]] QuorDataLib::ValueType valueType(Type type) noexcept;

/// The type's name for messages: "a number of 32 bits" would be longer than it is helpful, so
/// "long", "currency" and so on, as `QuorDataLib::typeName`.
[[nodiscard]] std::string_view typeName(Type type) noexcept;

/// A place in a statement's text; line and column count from 1, columns in characters.
struct Position {
  int line = 1;
  int column = 1;
};

/// Raises the error of a refused statement: "<what> (line 1, column 8, near 'word')". `word` may be
/// empty (the end of the text).
[[noreturn]] void refuse(const std::string& what, Position where, std::string_view word);

}  // namespace QuorHost::Sql
