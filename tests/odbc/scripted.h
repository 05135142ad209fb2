// A driver that answers what a test says.
#pragma once

#include "host/engines/odbc/driver/api.h"
#include "host/small_company.h"
#include "odbc/driven.h"

namespace QuorHost::Testing {

class Scripted : public testing::Test {
 protected:
  Scripted() {
    driver = {};
    driver.isolations = SQL_TXN_REPEATABLE_READ;
    driver.answer = [this](const Received& received) {
      return received.text == "SELECT 1" ? Answer{} : answer;
    };
  }
  void TearDown() override {
    connection = {};
    store.reset();
    EXPECT_EQ(driver.handles, 0);
  }

  void connect(Access access = Access::Write) {
    store = openCompanyFile(driven(Sql::Dialect::Server), access);
    connection = store->connect(Sql::Dialect::Server);
    driver.events.clear();
  }

  /// A column of a type, with one value in it.
  void answerColumn(std::int16_t type, std::int16_t decimals, const std::string& value) {
    answer.columns.push_back({.name = "C" + std::to_string(answer.columns.size()),
                              .type = type,
                              .size = 20,
                              .decimals = decimals});
    if (answer.rows.empty()) answer.rows.emplace_back();
    answer.rows.front().emplace_back(value);
  }

  void answerNumbers(int count) {
    answer.columns = {{.name = "N", .type = SQL_INTEGER, .size = 10},
                      {.name = "T", .type = SQL_WVARCHAR, .size = 10}};
    for (int i = 1; i <= count; ++i) {
      answer.rows.push_back({std::to_string(i), "row " + std::to_string(i)});
    }
  }

  Recording& driver = recording();
  Answer answer;
  std::shared_ptr<Store> store;
  Ref<Connection> connection;
};

}  // namespace QuorHost::Testing
