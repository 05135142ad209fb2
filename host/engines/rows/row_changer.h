// How a recordset stores rows.
#pragma once

#include <span>
#include <string_view>

#include "host/engines/rows/kept_rows.h"
#include "host/sql/types.h"
#include "platform/values/value.h"

namespace QuorHost::Rows {

/// A value for one column of a table. Both are the caller's.
struct FieldValue {
  std::string_view column;
  Sql::Type type = Sql::Type::Unknown;
  QuorDataLib::Value value;
};

/// Stores rows of one table, each with one statement. Both operations give back the row as it was
/// stored, in the columns of the recordset that the changer was made for, and raise the engine's
/// error when nothing was stored.
class RowChanger {
 public:
  RowChanger() = default;
  virtual ~RowChanger() = default;
  RowChanger(const RowChanger&) = delete;
  RowChanger& operator=(const RowChanger&) = delete;

  /// Adds a row; columns without a field get their default.
  [[nodiscard]] virtual KeptRows insert(std::span<const FieldValue> fields) = 0;

  /// Changes the row whose primary key is `key`. Raises a refused statement when it is gone.
  [[nodiscard]] virtual KeptRows update(std::span<const FieldValue> fields,
                                        std::span<const FieldValue> key) = 0;
};

}  // namespace QuorHost::Rows
