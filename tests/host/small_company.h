// A small company in a temporary folder, and short ways to ask it things.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/engines/store.h"
#include "platform/data_library.h"
#include "platform/error.h"

namespace QuorHost::Testing {

using QuorDataLib::Connection;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Parameters;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

/// A folder of its own, removed with everything in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "company-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, error);
    std::filesystem::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] std::string file(const std::string& name) const { return (path_ / name).string(); }
  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

inline void defineSmallSchema(Store& store) {
  store.define(
      "CREATE TABLE Currency (InCurrencyId INT NOT NULL PRIMARY KEY, Code VARCHAR(3) NOT NULL)");
  store.define(R"(
    CREATE TABLE Account (
      InAcctId INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
      AcctNo VARCHAR(20) NOT NULL UNIQUE,
      Descr VARCHAR(10) NULL,
      Balance MONEY NOT NULL DEFAULT 0,
      Rate FLOAT NULL,
      Opened DATETIME NULL,
      Active BIT NOT NULL DEFAULT 1,
      Kind SMALLINT NULL,
      ExCurrencyId INT NULL REFERENCES Currency (InCurrencyId)))");
  store.define("CREATE TABLE Entry (EntryNo INT NOT NULL PRIMARY KEY, Amnt MONEY NULL)");
  store.define("CREATE VIEW OpenAccount AS SELECT AcctNo, Balance FROM Account WHERE Balance <> 0");
  store.define("CREATE INDEX AccountByDescr ON Account (Descr)");
}

/// Adds `count` entries numbered from 1, of as many units of money.
inline void addEntries(Store& store, int count) {
  const auto transaction = store.begin();
  const auto writer = store.writer("Entry", {"EntryNo", "Amnt"});
  for (int i = 1; i <= count; ++i) {
    writer->add(std::vector<Value>{i, Currency::fromInteger(i)});
  }
  transaction->commit();
}

inline Ref<Recordset> open(const Ref<Connection>& connection, const std::string& sql,
                           std::vector<Value> values = {}, std::int32_t mode = 4) {
  return connection->OpenRecordset(sql, mode, 0, Parameters::array(std::move(values)), 0);
}

inline std::int32_t execute(const Ref<Connection>& connection, const std::string& sql,
                            std::vector<Value> values = {}) {
  std::int32_t affected = -1;
  connection->Execute(sql, affected, -1, Parameters::array(std::move(values)));
  return affected;
}

/// The first field of every row from the current one on, as text, separated by blanks.
inline std::string rest(const Ref<Recordset>& rows) {
  std::string text;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const Value value = rows->Field(0);
    text += (text.empty() ? "" : " ") + (value.isNull() ? "null" : value.toText());
  }
  return text;
}

/// The only value of a query's first row.
inline Value only(const Ref<Connection>& connection, const std::string& sql,
                  std::vector<Value> values = {}) {
  return open(connection, sql, std::move(values))->Field(0);
}

/// Runs `action`, which must raise `number`; gives the description.
template <class Action>
std::string raised(std::int32_t number, Action&& action) {
  try {
    action();
  } catch (const Error& error) {
    EXPECT_EQ(error.number(), number) << error.description();
    return error.description();
  }
  ADD_FAILURE() << "nothing was raised";
  return {};
}

template <class Action>
std::string raised(ErrorNumber number, Action&& action) {
  return raised(static_cast<std::int32_t>(number), std::forward<Action>(action));
}

/// A company with the small schema, open for writing.
class SmallCompany : public testing::Test {
 protected:
  SmallCompany() {
    store = createCompanyFile(path(), Durability::Full);
    defineSmallSchema(*store);
    connection = store->connect(Sql::Dialect::Server);
    desktop = store->connect(Sql::Dialect::Desktop);
  }

  [[nodiscard]] std::string path() const { return folder.file("company.quor"); }

  TemporaryFolder folder;
  std::shared_ptr<Store> store;
  Ref<Connection> connection;
  Ref<Connection> desktop;
};

}  // namespace QuorHost::Testing
