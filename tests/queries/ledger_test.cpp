// The ledger's members on a small company whose answers are worked out by hand, in both dialects.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/fake_platform.h"
#include "ledger/general_ledger_helper.h"
#include "queries/company_fixture.h"

namespace {

using fixture::lines;
using QuorAccQueries::CGeneralLedgerHelper;
using QuorAccQueries::CGeneralLedgerQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Error;
using QuorDataLib::Value;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

const Date kEnd = Date::of(2025, 12, 31);

Currency money(const char* text) { return *Currency::parse(text); }

/// Two fiscal years from April. Bank 1, dollar bank 2 (kept in currency 2), revenue 4, expense 5,
/// current earnings 31, retained earnings 32; account 9 is named by a parameter only.
class LedgerCompany : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<fixture::CompanyFile>();
    company_->load("CieInfo",
                   "InCieId,HomeCurrencyId,ForeignCurrencyUsed,AccountTypeChart,SessionDate\n"
                   "1,1,true,1,2025-12-31\n");
    company_->load("FiscalYearHdr",
                   "ID,BegDate,EndDate\n1,2024-04-01,2025-03-31\n2,2025-04-01,2026-03-31\n");
    company_->load("FiscalYearDet",
                   "ID,ExID,BegDate,EndDate\n1,1,2025-02-01,2025-02-28\n2,1,2025-03-01,2025-03-31\n"
                   "3,2,2025-04-01,2025-04-30\n");
    company_->load("AccountType",
                   "ID,AcctPrefix,Description,ExAcctTypeDefId,ReverseBalance\n"
                   "1,1,Assets,1,\n3,3,Equity,1,true\n4,4,Revenue,2,true\n5,5,Expenses,2,false\n"
                   "6,55,Other,2,\n");
    company_->load(
        "GLAcct",
        "InGLAcctId,GLAcctId,Descr,AcctType,ChqAcct,ExCurrencyId\n1,1010,Bank {2},1,true,"
        "\n2,1020,Dollars,1,true,2\n4,4010,Sales,4,false,\n5,5010,Wages,5,false,\n"
        "9,1900,Spare,1,false,\n31,3100,Current,3,false,\n32,3200,Retained,3,false,\n");
    company_->load("GLDet",
                   "InGLDetId,SeqNo,DetDate,Source,ExSrcKeyVal,DetRef,ExAcctId,DetAmnt,ForeignAmnt,"
                   "ExProjId,ExSegmentId,Conciliated,Unconciliated\n"
                   "1,1,2025-02-10,DEP,7,D7,1,100,100,,1,true,false\n"
                   "2,1,2025-02-10,DEP,7,D7,4,-100,-100,8,1,,\n"
                   "3,2,2025-04-05,CHQ,8,C8,1,-30,-30,,,false,true\n"
                   "4,2,2025-04-05,CHQ,8,C8,5,10,10,8,,,\n"
                   "5,2,2025-04-05,CHQ,8,C8,5,20,20,8,2,,\n"
                   "6,3,2025-05-01,DEP,9,D7,2,140,100,,1,,\n"
                   "7,3,2025-05-01,DEP,9,D7,4,-140,-100,,1,,\n"
                   "8,4,2025-05-02,RPD,1,RP1,1,-7,-7,,,,\n"
                   "9,4,2025-05-02,RPD,1,RP1,32,7,7,,,,\n"
                   "10,5,2025-06-01,GJ,3,,5,5,5,8,,,\n11,5,2025-06-01,GJ,3,,5,-5,-5,8,,,\n");
    company_->load("RPDPmtHdr",
                   "InRPDPmtId,ChqNo,ChqDate,DateFrom,DateTo,ChqAmnt,ExGLAcctId\n"
                   "1,RP1,2025-05-02,2025-03-01,2025-03-31,7,1\n");
    company_->load("GLAcctBudget",
                   "ExGLAcctId,ExFiscalYearDetId,Amount\n4,1,-10\n4,2,-20\n4,3,-40\n");
    company_->load("GLAcctSegmentBudget",
                   "ExID,ExSegmentId,ExFiscalYearDetId,Amount\n4,1,2,-5\n4,2,2,-15\n");
    company_->load("QuorAcctParams", "ParamName,ParamValue\nTest,9\n");
    auto host = company_->host(fixture::Dialect::Server);
    std::int32_t changed = 0;
    const std::string set = "UPDATE QuorAcctParams SET ParamValue = ? WHERE ParamName = ?";
    const auto put = [&](std::int32_t value, const char* name) {
      host->connection()->Execute(set, changed, -1, QuorDataLib::Parameters::array({value, name}));
    };
    put(31, "GLCurntEarn");
    put(32, "GLRtainEarn");
  }
  static void TearDownTestSuite() { company_.reset(); }

  static inline std::unique_ptr<fixture::CompanyFile> company_;
};

TEST_F(LedgerCompany, HistoriesTakeInWhatTheySay) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CGeneralLedgerQueries queries;
    const Date first = Date::of(2025, 2, 10);
    const Date second = Date::of(2025, 4, 5);
    EXPECT_THAT(lines(queries.OpenGLAcctHistory(false, 0, 1, 1, first, second),
                      {"SeqNo", "DetRef", "DetAmount"}),
                ElementsAre("1|D7|100", "2|C8|-30"));
    EXPECT_THAT(lines(queries.OpenGLAcctHistory(true, 2, 2, 1, {}, kEnd), {"DetAmount"}),
                ElementsAre("100"));
    EXPECT_THAT(lines(queries.OpenGLAcctHistory(true, 1, 2, 1, {}, kEnd), {"DetAmount"}),
                ElementsAre("140"));
    // The day itself is not brought forward to it.
    EXPECT_THAT(lines(queries.OpenGLAcctHistoryForwardBalance(false, 0, 1, 1, first, second)),
                ElementsAre("100"));
    EXPECT_THAT(lines(queries.OpenGLAcctHistoryForwardBalance(false, 0, 1, 1, first, first)),
                ElementsAre("-"));
    for (const auto& [kind, value] : {std::pair{2, "-37"}, {1, "100"}, {0, "100"}, {-2, "100"}}) {
      EXPECT_THAT(lines(queries.OpenGLAcctHistoryDebitsCredits(false, 0, 1, 1, {}, kEnd, kind)),
                  ElementsAre(value));
    }
  }
}

TEST_F(LedgerCompany, ProjectsAreTotalledByTheSideOfTheIncomeStatement) {
  for (const auto dialect : fixture::kDialects) {
    for (const char* const chart : {"1", "3"}) {
      const auto host = company_->host(dialect, {{"Company.CieAccountTypeChart", chart}});
      CGeneralLedgerQueries queries;
      const auto net = [&](std::int32_t kind, std::int32_t side) {
        return lines(queries.OpenProjHistoryDebitsCredits(true, 2, 8, {}, kEnd, kind, side));
      };
      // Lines of a transaction are one row, and lines of zero none.
      EXPECT_THAT(lines(queries.OpenProjectHistory(true, 2, 8, {}, Date::of(2025, 5, 31), 2),
                        {"SeqNo", "DetAmount"}),
                  ElementsAre("2|30"));
      EXPECT_THAT(lines(queries.OpenProjHistoryForwardBalance(true, 2, 8, {}, kEnd, 1)),
                  ElementsAre("-100"));
      EXPECT_THAT(net(1, 2), ElementsAre("30"));
      EXPECT_THAT(net(2, 2), ElementsAre("-"));
      EXPECT_THAT(net(2, 4), ElementsAre("-100"));
    }
  }
}

TEST_F(LedgerCompany, BalancesFollowTheFiscalYearAndTheEarningsAccounts) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    for (const bool caching : {false, true}) {
      CGeneralLedgerHelper helper;
      helper.SetCacheRecordsets(caching);
      const auto balance = [&](std::int32_t account, std::int32_t type, bool ignore = false,
                               std::int32_t segment = 0, std::int32_t project = 0,
                               const std::string& condition = {}) {
        return helper.GetAcctBalance(account, type, 0, kEnd, 1, false, segment, project, ignore,
                                     condition);
      };
      EXPECT_EQ(balance(4, 4), money("-140"));
      EXPECT_EQ(balance(4, 4, true), money("-240"));
      EXPECT_EQ(balance(1, 1), money("63"));
      EXPECT_EQ(balance(1, 1, false, 1), money("100"));
      EXPECT_EQ(balance(1, 1, false, -1), money("-37"));
      EXPECT_EQ(balance(5, 5, false, 2, 8, "DetAmnt > 0"), money("20"));
      EXPECT_EQ(balance(5, 5, false, 0, -1), money("0"));
      EXPECT_EQ(balance(31, 3), money("-110"));
      EXPECT_EQ(balance(32, 3), money("-93"));
      EXPECT_EQ(balance(0, 4), money("0"));
      // The condition's " AND " is left hanging, which the engine refuses.
      EXPECT_THROW(balance(5, 5, false, 0, 0, "DetAmnt > 0"), Error);
      EXPECT_THROW(balance(5, 5, false, 0, 8, "DetAmnt > 0"), Error);
      EXPECT_EQ(helper.GetAcctBalance(2, 1, 2, kEnd, 1, true, 0, 0, false, {}), money("100"));
      EXPECT_EQ(helper.GetAcctBalanceRange(1, {}, kEnd, {}, {}), money("63"));
      Currency home;
      EXPECT_EQ(helper.GetAcctBalanceRangeForeign(2, {}, kEnd, {}, {}, 2, home), money("100"));
      EXPECT_EQ(home, money("140"));
      EXPECT_EQ(helper.GetAcctBalanceRangeForeign(2, {}, kEnd, {}, {}, 3, home), money("0"));
      EXPECT_EQ(home, money("0"));
      const Date march = Date::of(2025, 3, 1);
      EXPECT_EQ(helper.GetAcctBalanceRangeTotRemittence(1, march, Date::of(2025, 3, 31), {}, {}),
                money("-7"));
      EXPECT_EQ(helper.GetAcctBalanceRangeTotRemittence(1, march, Date::of(2025, 3, 30), {}, {}),
                money("0"));
    }
  }
}

TEST_F(LedgerCompany, KeptRowsAreFoundByDatesAndConditionAlone) {
  const auto host = company_->host(fixture::Dialect::Server);
  CGeneralLedgerHelper helper;
  helper.SetCacheRecordsets(true);
  EXPECT_EQ(helper.GetAcctBalanceRange(5, {}, kEnd, {}, "1"), money("0"));
  EXPECT_EQ(helper.GetAcctBalanceRange(5, {}, kEnd, {}, "8"), money("0"));
  EXPECT_EQ(helper.GetAcctBalanceRange(5, {}, kEnd, "ExProjId = 8", {}), money("30"));
  const Date year = Date::of(2025, 4, 1);
  EXPECT_EQ(helper.RetainedEarnings(year, {}), money("-100"));
  EXPECT_EQ(helper.RetainedEarnings(year, "1 = 0"), money("-100"));
  helper.SetCacheRecordsets(false);
  EXPECT_EQ(helper.RetainedEarnings(year, "1 = 0"), money("0"));
}

TEST_F(LedgerCompany, SmallQuestions) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CGeneralLedgerHelper helper;
    EXPECT_EQ(helper.GetAcctCurrency(2), 2);
    EXPECT_EQ(helper.GetAcctCurrency(1), 0);
    // What looks like a marker in a description stays.
    EXPECT_THAT(helper.CheckAccountBalance(1, Date::of(2025, 4, 1)),
                testing::AllOf(testing::HasSubstr("The balance of account 1010 - Bank {2} is"),
                               testing::HasSubstr("100"),
                               testing::HasSubstr("Le solde du compte 1010 - Bank {2} est")));
    // A period that overlaps the dates counts whole.
    EXPECT_EQ(helper.GetAcctBudget(4, Date::of(2025, 3, 10), Date::of(2025, 3, 11)), money("-20"));
    EXPECT_EQ(helper.GetAcctBudget(4, Date::of(2025, 2, 28), Date::of(2025, 4, 1)), money("-70"));
    EXPECT_EQ(helper.GetAcctSegmentBudget(4, "GLAcctSegmentBudget.ExSegmentId = 2", {}, kEnd),
              money("-15"));
    EXPECT_EQ(helper.GetAcctSegmentBudget(4, "", {}, kEnd), money("-20"));
    EXPECT_EQ(helper.GetSeqNoFromExSrcKeyVal("DEP", 7), "1");
    EXPECT_EQ(helper.GetSeqNoFromExSrcKeyVal("DEP", 99), "");
    EXPECT_TRUE(helper.AcctIsUsedInTransaction(9, 0));
    EXPECT_TRUE(helper.AcctIsUsedInTransaction(4, 1));
    EXPECT_FALSE(helper.AcctIsUsedInTransaction(77, 1));
  }
}

TEST_F(LedgerCompany, BankChecksReadTheFlagsAsTheyAre) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CGeneralLedgerHelper helper;
    EXPECT_FALSE(helper.ChequeIsConciliated("CHQ", "C8", 1, 8));
    EXPECT_TRUE(helper.ChequeIsUnconciliated("CHQ", "C8", 1, 8));
    EXPECT_FALSE(helper.ChequeIsUnconciliated("CHQ", "C8", 1, 9));
    EXPECT_FALSE(helper.ChequeIsUnconciliated("CHQ", "C8", 5, 8)) << "no bank account";
    EXPECT_TRUE(helper.DepositIsConciliated("DEP", "D7", 1, 0));
    EXPECT_TRUE(helper.DepositIsConciliated("DEP", "D7", 1, 7));
    EXPECT_FALSE(helper.DepositIsConciliated("DEP", "D7", 1, 8));
    EXPECT_FALSE(helper.DepositIsUnconciliated("DEP", "D7", 2));
    EXPECT_TRUE(helper.IsCheckNumberDuplicateByAccount("", "RP1", 1, {}));
    EXPECT_FALSE(helper.IsCheckNumberDuplicateByAccount("", "RP1", 2, {}));
    EXPECT_EQ(lines(CGeneralLedgerQueries().OpenAllIssuedChecks("RP1", 1), {"TrxType"}),
              std::vector<std::string>{"4"});
  }
}

TEST(LedgerStatements, AskNothingWhereThereIsNothingToAsk) {
  const fake::Platform platform;
  CGeneralLedgerHelper helper;
  EXPECT_EQ(helper.GetAcctBalance(0, 4, 0, kEnd, 1, false, 0, 0, false, {}), Currency());
  EXPECT_FALSE(helper.ChequeIsConciliated("", "1", 1, 1));
  EXPECT_FALSE(helper.DepositIsUnconciliated("", "1", 1));
  EXPECT_FALSE(helper.IsCheckNumberDuplicateByAccount("1", "", 1, {}));
  EXPECT_THAT(platform->opened, IsEmpty());
}

TEST(LedgerStatements, GoOutWithoutASelectListToAnUnknownEngine) {
  const fake::Platform platform;
  platform->engine = 2;
  CGeneralLedgerQueries queries;
  queries.OpenGLAcctBalanceRange(0, {}, {}, "", "");
  queries.OpenCurrentEarnRange({}, {});
  ASSERT_EQ(platform->opened.size(), 2U);
  EXPECT_TRUE(platform->opened[0].sql.starts_with(" FROM GLDet WHERE"));
  EXPECT_TRUE(platform->opened[1].sql.starts_with("FROM (GLAcct"));
}

TEST(LedgerStatements, StopAtTheFirstUseOfAnAccount) {
  const fake::Platform platform;
  CGeneralLedgerHelper helper;
  platform->row = {{"ID", Value(std::int32_t{1})}};
  EXPECT_TRUE(helper.AcctIsUsedInTransaction(4, 2));
  EXPECT_EQ(platform->opened.size(), 1U);
  platform->opened.clear();
  platform->row.clear();
  EXPECT_FALSE(helper.AcctIsUsedInTransaction(4, 2));
  ASSERT_EQ(platform->opened.size(), 23U);
  EXPECT_THAT(platform->opened.back().sql, EndsWith("= 4) AND InCurrencyID <> 2"));
}

}  // namespace
