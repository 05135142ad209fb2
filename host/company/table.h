// A table being filled, row by row.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "host/engines/store.h"

namespace QuorHost {

/// Adds rows to some columns of a table; it needs a transaction, as its writer does.
class Table {
 public:
  Table(Store& store, const std::string& name, const std::vector<std::string>& columns)
      : writer_(store.writer(name, columns)) {}

  /// Adds a row: one value for each column. The values of a braced list are made in their order,
  /// which matters where they come from a source of chance.
  void add(std::initializer_list<QuorDataLib::Value> row) {
    writer_->add({row.begin(), row.size()});
  }

 private:
  std::unique_ptr<RowWriter> writer_;
};

/// A key, or null for 0.
inline QuorDataLib::Value keyOrNull(std::int32_t key) {
  return key == 0 ? QuorDataLib::Value::null() : QuorDataLib::Value(key);
}

}  // namespace QuorHost
