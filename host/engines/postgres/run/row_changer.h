// How recordsets store rows on the server.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/engines/postgres/server/database.h"
#include "host/engines/rows/row_changer.h"
#include "host/sql/front_end.h"

namespace QuorHost::Postgres {

class ServerRowChanger final : public Rows::RowChanger {
 public:
  /// `columns` are those of the recordset, all of them columns of `table`.
  ServerRowChanger(std::shared_ptr<Database> database, std::string table,
                   const std::vector<Sql::ResultColumn>& columns);

  Rows::KeptRows insert(std::span<const Rows::FieldValue> fields) override;
  Rows::KeptRows update(std::span<const Rows::FieldValue> fields,
                        std::span<const Rows::FieldValue> key) override;

 private:
  [[nodiscard]] Rows::KeptRows store(const std::string& sql,
                                     const std::vector<Argument>& arguments) const;
  void addArguments(std::span<const Rows::FieldValue> fields,
                    std::vector<Argument>& arguments) const;

  std::shared_ptr<Database> database_;
  std::string table_;
  std::vector<Sql::ResultColumn> columns_;
  std::string returning_;
};

}  // namespace QuorHost::Postgres
