// Values as JSON text, written straight into a string: rows go through here by the million.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/values/value.h"

namespace QuorCli {

/// A value with its name: an argument by reference after the call.
struct NamedValue {
  std::string_view name;
  QuorDataLib::Value value;
};

/// Appends a text as a JSON string; bytes that are not UTF-8 become the replacement character.
void appendJsonString(std::string& out, std::string_view text);

/// Appends a value: null and Empty as null, currency and dates as strings, a double that is no
/// finite number as null, a collection as an array, an object of the component as an object of its
/// readable properties.
/// Raises what reading a property raises.
void appendJson(std::string& out, const QuorDataLib::Value& value);

/// Appends a value with its type: `{"type":"currency","value":"15.0000"}`; a collection and an
/// object of the component as `appendJson` does, since their values speak for themselves.
void appendJsonTyped(std::string& out, const QuorDataLib::Value& value);

/// Appends an object of typed values by name.
void appendJsonTyped(std::string& out, std::span<const NamedValue> values);

}  // namespace QuorCli
