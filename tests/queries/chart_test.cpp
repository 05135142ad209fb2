// New accounts: their numbers under the three charts, their groups, and several processes that make
// accounts at a time or are killed while they do.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/another_process.h"
#include "ledger/account_numbers.h"
#include "ledger/general_ledger_helper.h"
#include "queries/company_fixture.h"

namespace {

using fixture::lines;
using QuorAccQueries::accountNumber;
using QuorAccQueries::CGeneralLedgerHelper;
using QuorDataLib::Error;
using QuorDataLib::Value;
using QuorHost::Testing::inAnotherProcess;
using QuorHost::Testing::statusOf;
using testing::ElementsAre;

class Chart : public testing::Test {
 protected:
  void SetUp() override {
    company_.load("AccountType",
                  "ID,AcctPrefix,Description,ExAcctTypeDefId,ReverseBalance\n1,1,Assets,1,\n"
                  "2,2,Liabilities,1,true\n4,4,Revenue,2,true\n41,41,Clients,1,\n7,X,Other,2,\n");
    company_.load("TaxCode", "InTaxCodeId,TaxCodeId,TaxRate,ExAcctId\n3,TVQ,9.975,1410\n");
  }

  /// Accounts as "number,type,group".
  void load(std::initializer_list<const char*> accounts) {
    std::string csv = "GLAcctId,AcctType,GroupType\n";
    for (const char* const account : accounts) csv += std::string(account) + "\n";
    company_.load("GLAcct", csv);
  }

  [[nodiscard]] auto host(const char* chart, fixture::Dialect dialect = fixture::Dialect::Server) {
    return company_.host(dialect, {{"Company.CieAccountTypeChart", chart}});
  }

  fixture::CompanyFile company_;
};

TEST_F(Chart, TheFixedChartFillsTheFirstGap) {
  load({"1000,1,", "1001,1,", "1003,1,", "2000,2,", "2001,2,"});
  for (const auto dialect : fixture::kDialects) {
    const auto installed = host("1", dialect);
    CGeneralLedgerHelper helper;
    EXPECT_EQ(helper.FindNextGLAcctId("1", "1"), "1002");
    EXPECT_EQ(helper.FindNextGLAcctId("2", "2"), "2002");
    EXPECT_EQ(helper.FindNextGLAcctId("1,2", "1"), "1002");
    EXPECT_EQ(helper.FindNextGLAcctId("4", "4"), "4000");
    EXPECT_EQ(helper.FindNextGLAcctId("4,7", "47"), "47000");
  }
  const auto six =
      company_.host(fixture::Dialect::Server, {{"Param.QuorCastriaParams.Use6DigitAccounts", "1"}});
  EXPECT_EQ(CGeneralLedgerHelper().FindNextGLAcctId("4", "4"), "400000");
}

TEST_F(Chart, OtherChartsCountFromThePrefix) {
  load({"4000,4,", "4001,4,", "4003,4,", "410000,41,", "X000,7,"});
  const auto own = host("3");
  EXPECT_EQ(CGeneralLedgerHelper().FindNextGLAcctId("4", ""), "4002");
  EXPECT_EQ(CGeneralLedgerHelper().FindNextGLAcctId("7,4", ""), "X001");
  const auto french = host("2");
  EXPECT_EQ(CGeneralLedgerHelper().FindNextGLAcctId("41", ""), "410001");
  EXPECT_EQ(CGeneralLedgerHelper().FindNextGLAcctId("7", ""), "X00000");
  EXPECT_EQ(accountNumber("4111111", 9, true), "4111120");
  EXPECT_EQ(accountNumber("4", 1000, false), "41000");
}

TEST_F(Chart, NewAccountsBelongToTheGroupBefore) {
  // The last account before the new one decides; by value where numbers are numbers.
  const std::pair<const char*, const char*> kRules[] = {
      {"-2", "6"}, {"5", "6"}, {"6", "6"}, {"1", "2"}, {"2", "2"},  {"3", "4"},
      {"4", "4"},  {"7", "4"}, {"0", "-"}, {"8", "-"}, {"-1", "-"}, {"", "-"}};
  int number = 1000;
  for (const auto dialect : fixture::kDialects) {
    const auto installed = host("1", dialect);
    for (const auto& [before, group] : kRules) {
      load({(std::to_string(number) + ",1," + before).c_str()});
      number += 2;
      CGeneralLedgerHelper helper;
      const std::int32_t key = helper.CreateGLAccount("1", true, 1, "2", "", true);
      EXPECT_THAT(lines(installed->connection()->OpenRecordset(
                      "SELECT GLAcctId, Descr, ChqAcct, ExCurrencyId, CreatedByUser, "
                      "GroupType FROM GLAcct WHERE InGLAcctId = " +
                          std::to_string(key),
                      4, 0, {}, 0)),
                  ElementsAre(std::to_string(number - 1) + "|Assets (" +
                              std::to_string(number - 1) + ")|True|2|True|" + group));
    }
  }
}

TEST_F(Chart, ALetteredChartGoesByTheOrderOfTexts) {
  load({"X000,7,1", "X001,7,3", "4000,4,5"});
  for (const auto dialect : fixture::kDialects) {
    const auto installed = host("3", dialect);
    CGeneralLedgerHelper helper;
    const std::string long51 = std::string(49, 'a') + "éé";
    helper.CreateGLAccount("7", false, 7, "none", long51, false);
  }
  const auto installed = host("3");
  EXPECT_THAT(
      lines(installed->connection()->OpenRecordset(
          "SELECT GLAcctId, GroupType, ExCurrencyId, Descr FROM GLAcct WHERE GLAcctId > 'X001' "
          "ORDER BY GLAcctId",
          4, 0, {}, 0)),
      ElementsAre("X002|4|-|" + std::string(49, 'a') + "é",
                  "X003|4|-|" + std::string(49, 'a') + "é"));
}

TEST_F(Chart, SmallQuestions) {
  load({"1000,1,", "X000,7,"});
  const auto installed = host("3");
  CGeneralLedgerHelper helper;
  EXPECT_EQ(helper.FindGLAcctTypeId("4199"), 41);
  EXPECT_EQ(helper.FindGLAcctTypeId("4099"), 4);
  EXPECT_EQ(helper.FindGLAcctTypeId("x1"), 7);
  EXPECT_EQ(helper.FindGLAcctTypeId("9"), 0);
  EXPECT_TRUE(helper.IsAccountIdAndAccountTypeMatch("4199", 41));
  EXPECT_FALSE(helper.IsAccountIdAndAccountTypeMatch("4199", 4));
  EXPECT_EQ(helper.ConvertAccountTypeIds(" 4; 5,6 7"), "4,5,6,7");
  EXPECT_EQ(helper.ConvertAccountTypeIds(
                Value(QuorDataLib::make<QuorDataLib::Collection>(std::vector<Value>{4, "5"}))),
            "4,5");
  EXPECT_THROW(helper.ConvertAccountTypeIds("4,x"), Error);
  EXPECT_EQ(helper.GetAccountTypeIds(2, true), "4");
  EXPECT_EQ(helper.GetAccountTypeIds(1, "false"), "1,41");
  EXPECT_EQ(helper.GetAccountTypeIds(1, {}), "1,2,41");
  helper.ChangeAccountDescription(1, "Caisse");
  helper.ChangeAccountDescription(99, "Nobody's");
  EXPECT_EQ(helper.GetAccountCodeDesc(1), "1000 - Caisse");
  EXPECT_EQ(helper.GetAccountCodeDesc(99), "");
  EXPECT_THROW(helper.ChangeAccountDescription(1, std::string(51, 'x')), Error);
  std::int32_t account = 1;
  std::string code = "?";
  double rate = 1;
  helper.FindInfoForTaxCode(3, account, code, rate);
  EXPECT_EQ(code + " " + std::to_string(account), "TVQ 1410");
  EXPECT_EQ(rate, 9.975);
  helper.FindInfoForTaxCode(4, account, code, rate);
  EXPECT_EQ(code + std::to_string(account), "0");
  EXPECT_EQ(rate, 0);
}

/// Makes an account, again where somebody else was faster.
std::int32_t create(CGeneralLedgerHelper& helper, int& collisions) {
  while (true) {
    try {
      return helper.CreateGLAccount("1", false, 1, 0, "New", true);
    } catch (const Error&) {
      if (++collisions > 1000) throw;
    }
  }
}

TEST_F(Chart, EightProcessesNeverGiveANumberTwice) {
  constexpr int kEach = 6;
  pid_t children[8];
  for (pid_t& child : children) {
    child = inAnotherProcess([&] {
      const auto store = QuorHost::openCompany(company_.path(), QuorHost::Access::Write);
      QuorHost::Host own({.store = store, .overrides = {{"Company.CieAccountTypeChart", "3"}}});
      own.install();
      CGeneralLedgerHelper helper;
      int collisions = 0;
      for (int i = 0; i < kEach; ++i) create(helper, collisions);
      return true;
    });
  }
  for (const pid_t child : children) EXPECT_EQ(statusOf(child), 0);
  const auto installed = host("3");
  // Nobody left a gap either.
  EXPECT_THAT(
      lines(installed->connection()->OpenRecordset(
          "SELECT COUNT(*) AS N, MIN(GLAcctId) AS A, MAX(GLAcctId) AS Z FROM GLAcct", 4, 0, {}, 0)),
      ElementsAre("48|1000|1047"));
}

TEST_F(Chart, AKillLeavesAnAccountOrNothing) {
  int before = 0;
  for (const int milliseconds : {0, 2, 5, 11}) {
    std::unique_ptr<QuorHost::Host> own;
    const int turns = QuorHost::Testing::turnsUntilKilled(milliseconds, [&](int) {
      if (!own) {
        own = std::make_unique<QuorHost::Host>(QuorHost::HostOptions{
            .store = QuorHost::openCompany(company_.path(), QuorHost::Access::Write),
            .overrides = {{"Company.CieAccountTypeChart", "3"}}});
        own->install();
      }
      CGeneralLedgerHelper().CreateGLAccount("1", false, 1, 0, "New", true);
    });
    const auto installed = host("3");
    const auto count = [&](const std::string& condition) {
      return installed->connection()
          ->OpenRecordset("SELECT COUNT(*) AS N FROM GLAcct" + condition, 4, 0, {}, 0)
          ->Field(0)
          .toLong();
    };
    const int after = count("");
    EXPECT_TRUE(after == before + turns || after == before + turns + 1) << after;
    EXPECT_EQ(count(" WHERE Descr = 'New' AND AcctType = 1"), after);
    before = after;
  }
}

}  // namespace
