// Column lists for the aging queries.
#pragma once

#include <string>
#include <string_view>

#include "platform/data_library.h"

namespace QuorAccQueries {

/// The columns of `rows`, each as "`table`.Name", separated by ", ", without those named in
/// `exclusions` (names separated by commas, blanks around them ignored, matched letter by letter).
std::string columnsWithout(const QuorDataLib::Ref<QuorDataLib::Recordset>& rows,
                           std::string_view table, std::string_view exclusions);

}  // namespace QuorAccQueries
