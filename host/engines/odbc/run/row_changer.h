// How recordsets store rows over a driver.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/engines/odbc/driver/database.h"
#include "host/engines/rows/row_changer.h"
#include "host/sql/catalogue.h"
#include "host/sql/front_end.h"

namespace QuorHost::Odbc {

/// Changes a row and reads it back by its primary key, both in one transaction. The number of a new
/// row that the database gives is asked for as both dialects do (`SELECT @@IDENTITY`).
class OdbcRowChanger final : public Rows::RowChanger {
 public:
  /// `columns` are those of the recordset, all of them columns of `table`.
  OdbcRowChanger(std::shared_ptr<Database> database, Sql::Relation table,
                 const std::vector<Sql::ResultColumn>& columns);

  Rows::KeptRows insert(std::span<const Rows::FieldValue> fields) override;
  Rows::KeptRows update(std::span<const Rows::FieldValue> fields,
                        std::span<const Rows::FieldValue> key) override;

 private:
  using Values = std::vector<QuorDataLib::Value>;

  /// Runs `store` on the connection for changes, in a transaction of its own unless one is open.
  Rows::KeptRows inTransaction(
      const std::function<Rows::KeptRows(const std::shared_ptr<Session>&)>& store) const;
  /// The row with these values of the primary key.
  [[nodiscard]] Rows::KeptRows read(const std::shared_ptr<Session>& session,
                                    const Values& key) const;
  /// The primary key of a row that was just added with `fields`.
  [[nodiscard]] Values keyOf(const std::shared_ptr<Session>& session,
                             std::span<const Rows::FieldValue> fields) const;
  /// The first rows of a query.
  [[nodiscard]] Rows::KeptRows rowsOf(const std::shared_ptr<Session>& session,
                                      const std::string& text, const Values& values) const;
  std::int32_t change(const std::shared_ptr<Session>& session, const std::string& text,
                      const Values& values) const;
  /// The name of the table or of a column of it, quoted as the driver says.
  [[nodiscard]] std::string tableName(Session& session) const;
  [[nodiscard]] std::string columnName(Session& session, std::string_view name) const;
  /// " WHERE" and the columns of the primary key.
  [[nodiscard]] std::string byKey(Session& session) const;
  [[nodiscard]] std::vector<const Sql::Column*> keyColumns() const;

  std::shared_ptr<Database> database_;
  Sql::Relation table_;
  std::vector<Sql::ResultColumn> columns_;
};

}  // namespace QuorHost::Odbc
