// One call of a function from the engine: its arguments and its result.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace QuorHost::Sqlite {

/// Ends a call with a message of its own.
class CallError {
 public:
  explicit CallError(std::string message) : message_(std::move(message)) {}
  [[nodiscard]] const std::string& message() const noexcept { return message_; }

 private:
  std::string message_;
};

/// The arguments of a call, none of them null, and its result. Arguments have the stored form of
/// their types.
class Call {
 public:
  Call(sqlite3_context* context, int count, sqlite3_value** values)
      : context_(context), values_(values, static_cast<std::size_t>(count)) {}

  [[nodiscard]] std::size_t count() const noexcept { return values_.size(); }
  [[nodiscard]] bool isText(std::size_t i) const noexcept { return typeOf(i) == SQLITE_TEXT; }
  [[nodiscard]] bool isWhole(std::size_t i) const noexcept { return typeOf(i) == SQLITE_INTEGER; }
  [[nodiscard]] std::string_view text(std::size_t i) const;
  [[nodiscard]] double number(std::size_t i) const { return sqlite3_value_double(values_[i]); }
  /// A number stored as an integer. It is none any more when the engine's own arithmetic has
  /// overflowed; then the call ends with an overflow.
  [[nodiscard]] std::int64_t whole(std::size_t i) const;

  void returnWhole(std::int64_t value) const { sqlite3_result_int64(context_, value); }
  /// Ends with an overflow when `value` is not finite.
  void returnNumber(double value) const;
  void returnText(std::string_view value) const;

  [[nodiscard]] sqlite3_context* context() const noexcept { return context_; }

 private:
  [[nodiscard]] int typeOf(std::size_t i) const noexcept { return sqlite3_value_type(values_[i]); }

  sqlite3_context* context_;
  std::span<sqlite3_value*> values_;
};

/// Ends the call with an overflow.
[[noreturn]] void overflow();

/// A function as it is registered. A call with a null argument is null and does not reach `body`.
struct FunctionEntry {
  const char* name;
  int arguments;
  void (*body)(const Call& call);
};

/// The functions by area.
[[nodiscard]] std::span<const FunctionEntry> numberFunctions() noexcept;
[[nodiscard]] std::span<const FunctionEntry> dateFunctions() noexcept;
[[nodiscard]] std::span<const FunctionEntry> textFunctions() noexcept;

}  // namespace QuorHost::Sqlite
