// A company's database in one schema of a server.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/postgres/server/database.h"
#include "host/engines/store.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Postgres {

class ServerStore final : public Store {
 public:
  /// Reads the catalogue.
  explicit ServerStore(std::shared_ptr<Database> database);
  /// Makes the company with the first transaction.
  ServerStore(std::shared_ptr<Database> database, OnServer making);

  [[nodiscard]] const Sql::Catalogue& catalogue() const override { return database_->catalogue(); }
  [[nodiscard]] std::vector<std::string> definitions() const override { return definitions_; }
  [[nodiscard]] bool writable() const override { return database_->writable(); }
  QuorDataLib::Ref<QuorDataLib::Connection> connect(Sql::Dialect dialect) override;
  void define(std::string_view statement) override;
  void redefine(std::string_view table, std::string_view statement) override;
  std::unique_ptr<Transaction> begin() override;
  std::unique_ptr<Transaction> beginToDefine() override;
  std::unique_ptr<Snapshot> hold() override;
  std::unique_ptr<RowWriter> writer(const std::string& table,
                                    const std::vector<std::string>& columns) override;
  std::unique_ptr<ChangeLog> watch(const WatchedTable& watched) override;
  std::vector<std::string> integrityFindings() override;
  void copyTo(const std::string& path,
              const std::function<void(std::int64_t done, std::int64_t total)>& progress) override;
  [[nodiscard]] std::string engineName() const override;
  [[nodiscard]] std::int64_t sizeInBytes() const override;
  [[nodiscard]] int schemaVersion() const override;
  void setSchemaVersion(int version) override;

  [[nodiscard]] const std::shared_ptr<Database>& database() const noexcept { return database_; }

  /// Raises a refused statement, with what to do, when the company was opened for reading.
  void requireWritable() const;

  /// The transaction is to be kept: what was defined in it is for all who may read the company.
  void beforeCommit();
  /// The transaction was kept, or all of it was undone.
  void afterCommit();
  void afterRollBack() noexcept;

 private:
  void readDefinitions();
  /// Makes what every company has, in the open transaction.
  void make(const OnServer& how);

  std::shared_ptr<Database> database_;
  std::optional<OnServer> making_;  // until the company is there
  std::vector<std::string> definitions_;
  bool definedInTransaction_ = false;
};

}  // namespace QuorHost::Postgres
