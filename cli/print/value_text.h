// Values as the command line reads and prints them: one form in every output format.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/values/value.h"

namespace QuorCli {

/// The value that `text` writes, strictly as one of `type`: a date in ISO form (an empty text is no
/// date), an amount as a decimal number with a point and at most four decimals, a boolean as `true`
/// or `false`, a whole number within the type's range, a text as it stands as long as it is UTF-8.
/// `Empty` stands for any type and takes the text as a text. `std::nullopt` for anything else, and
/// always for objects, which no text can name.
[[nodiscard]] std::optional<QuorDataLib::Value> parseValue(std::string_view text,
                                                           QuorDataLib::ValueType type);

/// The value of an argument that is left out: 0, the empty text, no date, false, no object.
[[nodiscard]] QuorDataLib::Value emptyValue(QuorDataLib::ValueType type);

/// A column's or a value's type in the output: the type's own name, with "null" where there is
/// none.
[[nodiscard]] std::string_view printedType(QuorDataLib::ValueType type) noexcept;

/// Appends a value as plain text: currency with exactly four decimals, dates as `YYYY-MM-DD` or
/// `YYYY-MM-DDTHH:MM:SS`, booleans as `true` or `false`, doubles so that they read back exactly.
/// Null, Empty, no date and objects append nothing.
void appendPlain(std::string& out, const QuorDataLib::Value& value);

}  // namespace QuorCli
