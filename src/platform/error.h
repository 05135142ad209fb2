// The error that crosses every boundary of the component: a number, a source and a description.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace QuorDataLib {

/// Error numbers of the automation runtime, as every host of the component knows them.
enum class ErrorNumber : std::int32_t {
  InvalidArgument = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  DivisionByZero = 11,
  TypeMismatch = 13,
  InternalError = 51,
  ObjectNotSet = 91,
  InvalidUseOfNull = 94,
  UnknownMember = 438,
  WrongArgumentCount = 450,
  UnknownItem = 3265,
  NoCurrentRow = 3021,
  ObjectClosed = 3704,
  /// Base of the errors that objects define themselves (0x80040000; 2147745792 read as unsigned).
  ObjectDefined = static_cast<std::int32_t>(0x80040000),
};

/// An error with the three parts that the application's error service reports.
class Error : public std::exception {
 public:
  /// `source` names who raised it, in dotted form ("QuorDataLib.Connection"); it may be empty.
  Error(std::int32_t number, std::string source, std::string description);
  Error(ErrorNumber number, std::string source, std::string description);

  /// The automation number, signed; numbers of object-defined errors are negative.
  [[nodiscard]] std::int32_t number() const noexcept { return number_; }
  [[nodiscard]] bool is(ErrorNumber number) const noexcept {
    return number_ == static_cast<std::int32_t>(number);
  }
  [[nodiscard]] const std::string& source() const noexcept { return source_; }
  [[nodiscard]] const std::string& description() const noexcept { return description_; }

  /// The description alone, for code that knows only `std::exception`.
  [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string source_;
  std::string description_;
};

/// The exception being handled as an `Error`: an `Error` as it is, exhausted memory as 7, any other
/// standard exception as 51 with its text, anything else that was thrown as 51, too. Call it only
/// inside a `catch` block.
[[nodiscard]] Error currentError();

/// Raises `number` with `description` and the source "QuorDataLib".
[[noreturn]] void raise(ErrorNumber number, std::string description);

}  // namespace QuorDataLib
