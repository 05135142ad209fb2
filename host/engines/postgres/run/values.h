// Values and columns as the server's texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/engines/postgres/server/link.h"
#include "host/engines/rows/cell.h"
#include "host/engines/write/translation_cache.h"
#include "host/sql/types.h"
#include "platform/values/value.h"

namespace QuorHost::Postgres {

/// `value`, converted to `type`, as the server reads it; Null and Empty are null. A value for
/// `Unknown` goes as it is, with its own type. Raises the conversion's error, and 5 or 6 for what
/// no company can hold.
[[nodiscard]] Argument argumentOf(const QuorDataLib::Value& value, Sql::Type type);

/// The values of a statement's markers. Raises a refused statement with both counts when there are
/// more or fewer values than markers; an error of a conversion names the marker.
[[nodiscard]] std::vector<Argument> argumentsOf(const Write::TranslatedStatement& statement,
                                                const std::vector<QuorDataLib::Value>& values);

/// The value in a row of a result as a cell of a column of `type`, whose text belongs to the result
/// itself.
[[nodiscard]] Rows::Cell cellOf(const Result& result, int row, int column, Sql::Type type);

}  // namespace QuorHost::Postgres
