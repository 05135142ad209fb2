// Stores the rows of a recordset that was opened for update.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/engines/rows/row_changer.h"
#include "host/engines/sqlite/database.h"
#include "host/sql/front_end.h"

namespace QuorHost::Sqlite {

class SqliteRowChanger final : public Rows::RowChanger {
 public:
  /// `columns` are the recordset's, all of them the table's own.
  SqliteRowChanger(std::shared_ptr<Database> database, std::string table,
                   const std::vector<Sql::ResultColumn>& columns);

  [[nodiscard]] Rows::KeptRows insert(std::span<const Rows::FieldValue> fields) override;
  [[nodiscard]] Rows::KeptRows update(std::span<const Rows::FieldValue> fields,
                                      std::span<const Rows::FieldValue> key) override;

 private:
  /// Runs `text`, whose markers are for `fields` and after them `key`.
  [[nodiscard]] Rows::KeptRows store(const std::string& text,
                                     std::span<const Rows::FieldValue> fields,
                                     std::span<const Rows::FieldValue> key) const;

  std::shared_ptr<Database> database_;
  std::string table_;
  std::size_t columns_;
  /// The clause by which a statement gives back the row as it was stored.
  std::string returning_;
};

}  // namespace QuorHost::Sqlite
