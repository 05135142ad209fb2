// Printing what a call has returned.
#pragma once

#include "cli/console.h"
#include "cli/words/invocation.h"
#include "cli/words/options.h"

namespace QuorCli {

/// Prints the answer of a call in the format of `options`: a recordset as rows, anything else as a
/// single value with the arguments by reference. Raises what reading the rows raises.
void printAnswer(const Answer& answer, const RunOptions& options, Console& console);

/// Prints a single value and the arguments by reference:
/// - table: the value on a line of its own (an object: a line for each property), then a line
///   `NAME = VALUE` for each output; nothing for a member that returns nothing;
/// - a collection in these two formats: a row for each value, as a query's rows are printed;
/// - CSV: a header row, `result` and the outputs' names, and one row (an object: its properties);
/// - JSON and JSON lines: one object, `{"result":{...},"outputs":{...}}`.
void printValue(const QuorDataLib::Value& result, std::span<const NamedValue> outputs,
                Format format, Console& console);

}  // namespace QuorCli
