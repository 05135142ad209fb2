// A company behind a driver.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/odbc/driver/database.h"
#include "host/engines/store.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Odbc {

/// Passes statements through. It knows nothing of the definitions of the company's tables, and
/// raises 5, with what to do, for all that needs them.
class OdbcStore final : public Store {
 public:
  explicit OdbcStore(std::shared_ptr<Database> database);

  [[nodiscard]] std::optional<Sql::Dialect> onlyDialect() const override {
    return database_->address().dialect;
  }
  [[nodiscard]] bool hasTable(std::string_view name) override;
  [[nodiscard]] const Sql::Catalogue& catalogue() const override;
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
  /// None: 0.
  [[nodiscard]] int schemaVersion() const override { return 0; }
  void setSchemaVersion(int version) override;

  [[nodiscard]] const std::shared_ptr<Database>& database() const noexcept { return database_; }

  /// Raises a refused statement, with what to do, when the company was opened for reading.
  void requireWritable() const;

 private:
  std::shared_ptr<Database> database_;
  std::map<std::string, bool, std::less<>> tables_;  // asked for so far, by name in lower case
};

}  // namespace QuorHost::Odbc
