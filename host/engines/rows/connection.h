// What connections have in common, whatever engine they lead to.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/sql/catalogue.h"
#include "host/sql/front_end.h"
#include "platform/data_library.h"

namespace QuorHost::Rows {

/// A connection that reads statements in one dialect. Modes 0, 2, 4 and 6 open a recordset for
/// reading, mode 1 one for update; `option` and `flag` mean nothing here.
class Connection : public QuorDataLib::Connection {
 public:
  QuorDataLib::Ref<QuorDataLib::Recordset> OpenRecordset(const std::string& sql, std::int32_t mode,
                                                         std::int32_t option,
                                                         const QuorDataLib::Parameters& parameters,
                                                         std::int32_t flag) final;
  void Execute(const std::string& sql, std::int32_t& recordsAffected, std::int32_t option,
               const QuorDataLib::Parameters& parameters) final;
  std::int32_t CommandTimeout() final { return timeout_; }
  /// Raises 5 for less than nothing.
  void SetCommandTimeout(std::int32_t seconds) final;

 protected:
  using Values = std::vector<QuorDataLib::Value>;

  /// Opens a query; where `forUpdate`, such that its rows can be changed if they are a table's own.
  virtual QuorDataLib::Ref<QuorDataLib::Recordset> open(const std::string& sql,
                                                        const Values& values, bool forUpdate) = 0;
  /// Runs a change and returns the number of rows that it changed.
  virtual std::int32_t change(const std::string& sql, const Values& values) = 0;

  /// Raises a refused statement for what is no query.
  static void requireQuery(const Sql::Translation& translation);
  /// The same for what is none of the changes that a connection makes.
  static void requireChange(const Sql::Translation& translation);
  /// Whether every one of the columns has its own name in the table.
  [[nodiscard]] static bool hasColumns(const Sql::Relation& table,
                                       const std::vector<Sql::ResultColumn>& columns);
  /// The table whose rows a query gives, when every column has its own name in the table; otherwise
  /// null.
  [[nodiscard]] static const Sql::Relation* updatableTable(const Sql::Translation& query,
                                                           const Sql::Catalogue& catalogue);

 private:
  std::int32_t timeout_ = 0;
};

}  // namespace QuorHost::Rows
