// The text of a column's values in CSV, both ways.
#pragma once

#include <string>

#include "host/company/csv/reader.h"
#include "host/sql/catalogue.h"
#include "platform/values/value.h"

namespace QuorHost::Csv {

/// The value of a field in a column: null where the field is empty and not quoted. Raises 13,
/// saying what is wrong with the text, when the column cannot hold it. Numbers are decimal with a
/// point, dates `YYYY-MM-DD[ HH:MM:SS]`, booleans `true`, `false`, `1` or `0`; none may have
/// blanks.
QuorDataLib::Value fieldValue(const Sql::Column& column, const Field& field);

/// Appends a value as a field that `fieldValue` reads back.
void appendField(std::string& line, const QuorDataLib::Value& value);

/// Appends a text as a field, in quotes where it needs them.
void appendText(std::string& line, std::string_view text);

}  // namespace QuorHost::Csv
