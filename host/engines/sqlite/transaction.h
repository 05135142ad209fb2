// A transaction, the writer of rows inside it, and a snapshot.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/engines/sqlite/database.h"
#include "host/engines/sqlite/store.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Sqlite {

class SqliteTransaction final : public Transaction {
 public:
  /// Begins. Raises 5 when a transaction is open already.
  explicit SqliteTransaction(std::shared_ptr<SqliteStore> store);
  ~SqliteTransaction() override;
  SqliteTransaction(const SqliteTransaction&) = delete;
  SqliteTransaction& operator=(const SqliteTransaction&) = delete;

  void commit() override;

 private:
  std::shared_ptr<SqliteStore> store_;  // empty once committed
};

class SqliteSnapshot final : public Snapshot {
 public:
  /// Begins. Raises 5 when a snapshot is held already.
  explicit SqliteSnapshot(std::shared_ptr<Database> database);
  ~SqliteSnapshot() override;
  SqliteSnapshot(const SqliteSnapshot&) = delete;
  SqliteSnapshot& operator=(const SqliteSnapshot&) = delete;

 private:
  void end() noexcept;

  std::shared_ptr<Database> database_;
};

class SqliteRowWriter final : public RowWriter {
 public:
  /// `table` is the relation to write to, `columns` are some of its columns. Raises a refused
  /// statement for a view and for an unknown column.
  SqliteRowWriter(std::shared_ptr<Database> database, const Sql::Relation& table,
                  const std::vector<std::string>& columns);

  /// Raises 5 outside a transaction, and when there is not one value for each column.
  void add(std::span<const QuorDataLib::Value> values) override;

 private:
  void prepare();

  std::shared_ptr<Database> database_;
  std::string table_;
  std::vector<Sql::Column> columns_;
  std::shared_ptr<Session> session_;  // of the statement
  Statement insert_;
};

}  // namespace QuorHost::Sqlite
