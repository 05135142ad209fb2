// A company's database in one file of the embedded storage engine.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/sqlite/database.h"
#include "host/engines/store.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Sqlite {

class SqliteStore final : public Store {
 public:
  /// Reads the catalogue of an open database.
  explicit SqliteStore(std::shared_ptr<Database> database);

  [[nodiscard]] const Sql::Catalogue& catalogue() const override { return catalogue_; }
  [[nodiscard]] std::vector<std::string> definitions() const override;
  [[nodiscard]] bool writable() const override { return database_->writable(); }
  QuorDataLib::Ref<QuorDataLib::Connection> connect(Sql::Dialect dialect) override;
  void define(std::string_view statement) override;
  void redefine(std::string_view table, std::string_view statement) override;
  std::unique_ptr<Transaction> begin() override;
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

  /// Brings the catalogue back to what the file holds, after a transaction was rolled back.
  void forgetDefinitions() noexcept;

 private:
  void know(Sql::Catalogue catalogue);

  std::shared_ptr<Database> database_;
  Sql::Catalogue catalogue_;
  bool definedInTransaction_ = false;
};

/// `openCompanyFile` of a file.
[[nodiscard]] std::shared_ptr<Store> openFile(const std::string& path, Access access);

/// `openChangedCopy` of a file.
[[nodiscard]] std::shared_ptr<Store> openFileCopy(const std::string& path,
                                                  const std::function<void(Store&)>& change);

/// `createCompanyFile` of a file.
[[nodiscard]] std::shared_ptr<Store> createFile(const std::string& path, Durability durability);

}  // namespace QuorHost::Sqlite
