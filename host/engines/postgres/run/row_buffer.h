// Rows on their way into a table.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/engines/postgres/server/database.h"
#include "host/engines/store.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Postgres {

/// Has rows sent to the server many at a time, and before every statement that could read them;
/// those that are left when the writer goes, too. What
/// is wrong with a row alone is raised when it is added; what only shows beside other rows, when
/// they are sent.
class RowBuffer final : public RowWriter {
 public:
  /// `order` is the table's place among those of the company. Raises a refused statement for a view
  /// and for an unknown column.
  RowBuffer(std::shared_ptr<Database> database, const Sql::Relation& table, std::size_t order,
            const std::vector<std::string>& columns);
  void add(std::span<const QuorDataLib::Value> values) override;

 private:
  void append(const QuorDataLib::Value& value, const Sql::Column& column);

  std::shared_ptr<Database> database_;
  std::string table_;
  std::vector<Sql::Column> columns_;
  std::shared_ptr<WaitingRows> rows_;
};

}  // namespace QuorHost::Postgres
