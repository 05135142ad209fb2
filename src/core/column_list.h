// Column lists for the aging queries.
#pragma once

#include <source_location>
#include <string>
#include <string_view>

#include "core/error_trap.h"
#include "platform/data_library.h"

namespace QuorAccQueries {

/// Appends the columns of `rows` to `list`, each as "`table`.Name", separated by ", ", without
/// those named in `exclusions` (names separated by commas, blanks around them ignored, matched
/// letter by letter). Every name is a step of its own.
void listColumnsWithout(Steps& step, std::string& list,
                        const QuorDataLib::Ref<QuorDataLib::Recordset>& rows,
                        std::string_view table, std::string_view exclusions,
                        std::source_location where);

}  // namespace QuorAccQueries
