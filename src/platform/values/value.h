// The variant that crosses the data library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/ref.h"
#include "platform/values/currency.h"
#include "platform/values/date.h"

namespace QuorDataLib {

enum class ValueType : std::uint8_t {
  Empty,
  Null,
  Boolean,
  Integer,
  Long,
  Double,
  Currency,
  Date,
  Text,
  Object
};

/// The type's name as the command line and the documentation write it: "empty", "null", "boolean",
/// "integer" (16 bits), "long" (32 bits), "double", "currency", "date", "text", "object".
[[nodiscard]] std::string_view typeName(ValueType type) noexcept;

/// One value of any of the automation types. `Empty` is a variable that was never given a value,
/// `Null` a missing database value.
///
/// The conversions follow the automation rules: Null to anything but a test raises 94; a text that
/// is no number (or no date) raises 13; a fraction to an integer rounds half to even; what does not
/// fit raises 6; an empty object reference raises 91 when it is used, an object to a number raises
/// 13; Empty is zero, false, no date or the empty text. True is -1.
class Value {
 public:
  Value() = default;
  Value(bool value) : data_(value) {}                           // NOLINT
  Value(std::int16_t value) : data_(value) {}                   // NOLINT
  Value(std::int32_t value) : data_(value) {}                   // NOLINT
  Value(double value) : data_(value) {}                         // NOLINT
  Value(Currency value) : data_(value) {}                       // NOLINT
  Value(Date value) : data_(value) {}                           // NOLINT
  Value(std::string value) : data_(std::move(value)) {}         // NOLINT
  Value(std::string_view value) : data_(std::string(value)) {}  // NOLINT
  Value(const char* value) : data_(std::string(value)) {}       // NOLINT
  template <class T>
  Value(const Ref<T>& object) : data_(Ref<Object>(object)) {}  // NOLINT
  static Value null() { return Value(NullTag{}); }

  [[nodiscard]] ValueType type() const noexcept { return static_cast<ValueType>(data_.index()); }
  [[nodiscard]] bool isNull() const noexcept { return type() == ValueType::Null; }
  [[nodiscard]] bool isEmpty() const noexcept { return type() == ValueType::Empty; }

  /// True for a number, a boolean, Empty, and a text that reads as a number (with an exponent,
  /// too); false for Null, dates, objects.
  [[nodiscard]] bool isNumeric() const noexcept;

  [[nodiscard]] bool toBoolean() const;
  [[nodiscard]] std::int16_t toInteger() const;
  [[nodiscard]] std::int32_t toLong() const;
  [[nodiscard]] double toDouble() const;
  /// A text is read as `Currency::parse` reads it, exactly and therefore without an exponent.
  [[nodiscard]] Currency toCurrency() const;
  [[nodiscard]] Date toDate() const;
  /// Numbers in their shortest decimal form with a point, dates in ISO form, booleans "True" or
  /// "False".
  [[nodiscard]] std::string toText() const;
  /// The object, which may be an empty reference; Empty gives an empty reference, anything else 13.
  [[nodiscard]] Ref<Object> toObject() const;

  /// The value as one of `type`, by the conversions above.
  [[nodiscard]] Value convertedTo(ValueType type) const;

  /// The text held by a value of type `Text`, without a copy; empty for every other type.
  [[nodiscard]] const std::string& text() const noexcept;

  /// Equal type and equal content; texts letter by letter.
  bool operator==(const Value&) const = default;

 private:
  struct NullTag {
    bool operator==(const NullTag&) const = default;
  };
  explicit Value(NullTag tag) : data_(tag) {}

  // The order of the alternatives is the order of `ValueType`.
  std::variant<std::monostate, NullTag, bool, std::int16_t, std::int32_t, double, Currency, Date,
               std::string, Ref<Object>>
      data_;
};

/// What a statement's markers are filled with: nothing, one bare value, or an array of values.
class Parameters {
 public:
  enum class Form : std::uint8_t { None, Single, Array };

  /// No values.
  Parameters() = default;
  static Parameters single(Value value) { return {Form::Single, {std::move(value)}}; }
  static Parameters array(std::vector<Value> values) { return {Form::Array, std::move(values)}; }

  [[nodiscard]] Form form() const noexcept { return form_; }
  /// The values in marker order.
  [[nodiscard]] const std::vector<Value>& values() const noexcept { return values_; }

 private:
  Parameters(Form form, std::vector<Value> values) : form_(form), values_(std::move(values)) {}

  Form form_ = Form::None;
  std::vector<Value> values_;
};

}  // namespace QuorDataLib
