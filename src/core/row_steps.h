// Statements that read rows, each a step of its own.
#pragma once

#include <source_location>
#include <string>

#include "core/error_trap.h"
#include "platform/automation.h"
#include "platform/data_library.h"

namespace QuorAccQueries {

/// A field's value, or Empty (zero, no date, no text) where it is null.
QuorDataLib::Value valueOrEmpty(const QuorDataLib::Ref<QuorDataLib::Recordset>& rows,
                                const std::string& column);

/// Whether there is a current row, for an `if` before it is read. Where the test fails and the
/// service says to go on, the row is read, as if there were one: what is then missing is reported,
/// and what is there is not lost.
bool hasRow(Steps& step, const QuorDataLib::Ref<QuorDataLib::Recordset>& rows,
            std::source_location where = std::source_location::current());

/// Whether there is a current row, for a loop over rows. A test that fails ends the loop.
bool moreRows(Steps& step, const QuorDataLib::Ref<QuorDataLib::Recordset>& rows,
              std::source_location where = std::source_location::current());

/// Moves to the next row; whether there is one. It is none, too, after an error that the method
/// goes on from, so that a walk through rows always ends:
///
///   for (bool more = moreRows(step, rows); more; more = moveOn(step, rows))
bool moveOn(Steps& step, const QuorDataLib::Ref<QuorDataLib::Recordset>& rows,
            std::source_location where = std::source_location::current());

/// Puts a field's value into `target`; null becomes the type's empty value. A field that cannot be
/// read leaves `target` as it is.
template <class T>
void readField(Steps& step, const QuorDataLib::Ref<QuorDataLib::Recordset>& rows,
               const std::string& column, T& target,
               std::source_location where = std::source_location::current()) {
  step([&] { target = QuorDataLib::Automation<T>::from(valueOrEmpty(rows, column)); }, where);
}

}  // namespace QuorAccQueries
