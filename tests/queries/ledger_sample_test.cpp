// What must hold in the sample company's ledger, under each kind of chart:
// balances that agree with histories, books that balance at every month's end, earnings that agree
// however they are asked for.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "ledger/general_ledger_helper.h"
#include "queries/company_fixture.h"

namespace {

using fixture::lines;
using QuorAccQueries::CGeneralLedgerHelper;
using QuorAccQueries::CGeneralLedgerQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorHost::Chart;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

constexpr std::int32_t kHome = 1;
constexpr std::int32_t kBalanceSheet = 1;
constexpr std::int32_t kIncomeStatement = 2;
constexpr std::int32_t kCurrentEarnings = 3100;
constexpr std::int32_t kRetainedEarnings = 3200;
const Date kFirst = Date::of(1899, 12, 31);

struct Account {
  std::int32_t id, type, currency, definition;
};

class LedgerSample : public testing::TestWithParam<Chart> {
 protected:
  static void TearDownTestSuite() { companies_.clear(); }

  void SetUp() override {
    auto& company = companies_[GetParam()];
    if (!company) {
      company = std::make_unique<fixture::CompanyFile>(
          QuorHost::CreateOptions{.sample = true, .chart = GetParam()});
    }
    desktop_ = company->host(fixture::Dialect::Desktop);
    server_ = company->host(fixture::Dialect::Server);
    const auto rows = read(
        "SELECT InGLAcctId, AcctType, ExCurrencyId, ExAcctTypeDefId FROM GLAcct INNER JOIN "
        "AccountType ON AccountType.ID = GLAcct.AcctType ORDER BY InGLAcctId");
    for (; !rows->AtEnd(); rows->MoveNext()) {
      const auto number = [&](std::int32_t column) {
        return rows->Field(column).isNull() ? 0 : rows->Field(column).toLong();
      };
      accounts_.push_back({number(0), number(1), number(2), number(3)});
    }
    ASSERT_GT(accounts_.size(), 40U);
  }

  fixture::Ref<fixture::Recordset> read(const std::string& sql) const {
    return server_->connection()->OpenRecordset(sql, 4, 0, {}, 0);
  }

  /// The first and the last day of every month of the sample; of some under the charts that differ
  /// in names only.
  static std::vector<std::pair<Date, Date>> months() {
    const int step = GetParam() == Chart::Fixed ? 1 : 5;
    std::vector<std::pair<Date, Date>> all;
    for (int month = 0; month < 36; month += step) {
      const Date first = Date::of(2022, 4, 1).addMonths(month);
      all.emplace_back(first, first.addMonths(1).addDays(-1));
    }
    return all;
  }
  static Date yearOf(Date day) {
    const auto civil = day.civil();
    return Date::of(civil.month < 4 ? civil.year - 1 : civil.year, 4, 1);
  }

  static Currency balance(CGeneralLedgerHelper& helper, const Account& account, Date day,
                          bool foreign = false) {
    return helper.GetAcctBalance(account.id, account.type, account.currency, day, kHome, foreign, 0,
                                 0, false, {});
  }

  /// The one value of a recordset; 0 for null.
  static Currency single(const fixture::Ref<fixture::Recordset>& rows) {
    const auto value = rows->Field(0);
    rows->Close();
    return value.isNull() ? Currency() : value.toCurrency();
  }

  std::vector<Account> accounts_;
  std::unique_ptr<QuorHost::Host> desktop_;
  std::unique_ptr<QuorHost::Host> server_;
  static inline std::map<Chart, std::unique_ptr<fixture::CompanyFile>> companies_;
};

INSTANTIATE_TEST_SUITE_P(Charts, LedgerSample,
                         testing::Values(Chart::Fixed, Chart::French, Chart::Own),
                         [](const auto& chart) {
                           return chart.param == Chart::Fixed    ? "Fixed"
                                  : chart.param == Chart::French ? "French"
                                                                 : "Own";
                         });

TEST_P(LedgerSample, BalancesAreWhatHistoriesComeTo) {
  server_->install();
  CGeneralLedgerQueries queries;
  CGeneralLedgerHelper helper;
  CGeneralLedgerHelper caching;
  caching.SetCacheRecordsets(true);
  for (const Account& account : accounts_) {
    for (const auto& [first, last] : months()) {
      const bool earnings = account.id == kCurrentEarnings || account.id == kRetainedEarnings;
      const Date from = account.definition == kIncomeStatement ? yearOf(last) : kFirst;
      for (const bool foreign : {false, true}) {
        if (foreign && account.currency == 0) continue;
        const Currency forward = single(queries.OpenGLAcctHistoryForwardBalance(
            foreign, account.currency, account.id, kHome, from, first));
        const Currency debits = single(queries.OpenGLAcctHistoryDebitsCredits(
            foreign, account.currency, account.id, kHome, first, last, 1));
        const Currency credits = single(queries.OpenGLAcctHistoryDebitsCredits(
            foreign, account.currency, account.id, kHome, first, last, 2));
        const Currency expected = balance(helper, account, last, foreign);
        if (!earnings) {
          ASSERT_EQ(forward + debits + credits, expected) << account.id << " " << last.toText();
        }
        ASSERT_EQ(balance(caching, account, last, foreign), expected) << account.id;
      }
    }
  }
}

TEST_P(LedgerSample, TheBooksBalanceAndEarningsAgreeAtEveryMonthsEnd) {
  for (const bool cache : {false, true}) {
    (cache ? desktop_ : server_)->install();
    CGeneralLedgerQueries queries;
    CGeneralLedgerHelper helper;
    helper.SetCacheRecordsets(cache);
    for (const auto& [first, last] : months()) {
      const Date year = yearOf(last);
      Currency sheet;
      Currency income;
      for (const Account& account : accounts_) {
        (account.definition == kBalanceSheet ? sheet : income) += balance(helper, account, last);
      }
      ASSERT_EQ(sheet, Currency()) << "assets and what they belong to, " << last.toText();
      const Currency current = helper.CurrentEarnings(year, last, {});
      ASSERT_EQ(income, current);
      ASSERT_EQ(single(queries.OpenCurrentEarnRange(year, last)), -current);
      ASSERT_EQ(helper.RetainedEarnings(year, {}),
                helper.CurrentEarnings(Date::of(1900, 12, 31), year.addDays(-1), {}));
      // The trial balance has the year's earnings on their own accounts.
      ASSERT_EQ(sheet - current + income, Currency());
    }
  }
}

TEST_P(LedgerSample, SalesAreThoseOfTheLedger) {
  server_->install();
  const Date from = Date::of(2023, 4, 1);
  const Date to = Date::of(2024, 3, 31);
  const Currency ledger =
      single(read("SELECT -SUM(DetAmnt) FROM GLDet WHERE ExAcctId IN (4010, 4020, 4030, 4040) AND "
                  "ExCurrencyID = 1 AND DetDate BETWEEN '2023-04-01' AND '2024-03-31'"));
  const Currency withoutCurrency = single(read(
      "SELECT SUM(DetAmnt + ShipAmnt) FROM InvoiHdr WHERE ExCurrencyId IS NULL AND InvoiType < 51 "
      "AND InvoiDate BETWEEN '2023-04-01' AND '2024-03-31'"));
  EXPECT_EQ(CGeneralLedgerHelper().GetTotalEarnings(from, to) + withoutCurrency, ledger);
}

TEST_P(LedgerSample, BankChecksSayWhatTheLinesSay) {
  server_->install();
  CGeneralLedgerHelper helper;
  std::map<std::string, int> seen;
  const auto rows = read(
      "SELECT Source, DetRef, ExAcctId, ExSrcKeyVal, Conciliated, Unconciliated, DetAmnt FROM "
      "GLDet "
      "INNER JOIN GLAcct ON GLAcct.InGLAcctId = GLDet.ExAcctId WHERE ChqAcct <> 0 AND DetDate > "
      "'2025-01-15' AND NOT (Source = 'PAY' AND ExSrcKeyVal IN (SELECT InTrxPayId FROM TrxPay "
      "WHERE "
      "Canceled <> 0))");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const std::string source = rows->Field(0).toText();
    const std::string reference = rows->Field(1).toText();
    const std::int32_t account = rows->Field(2).toLong();
    const std::int32_t document = rows->Field(3).toLong();
    const bool conciliated = rows->Field(4).toBoolean();
    const bool unconciliated = rows->Field(5).toBoolean();
    const bool cheque = rows->Field(6).toCurrency() < Currency();
    ASSERT_FALSE(conciliated && unconciliated);
    ASSERT_EQ(helper.ChequeIsConciliated(source, reference, account, document),
              cheque && conciliated);
    ASSERT_EQ(helper.ChequeIsUnconciliated(source, reference, account, document),
              cheque && unconciliated);
    ASSERT_EQ(helper.DepositIsConciliated(source, reference, account, document),
              !cheque && conciliated);
    ++seen[std::string(cheque ? "cheque" : "deposit") + (conciliated     ? " conciliated"
                                                         : unconciliated ? " outstanding"
                                                                         : " later")];
  }
  EXPECT_THAT(seen, testing::SizeIs(6)) << "each kind, in each state";
}

TEST_P(LedgerSample, NumbersBelongToTheirTypesAndTheNextOneIsFree) {
  server_->install();
  CGeneralLedgerHelper helper;
  Lines unused;
  for (const Account& account : accounts_) {
    const auto row =
        read("SELECT GLAcctId FROM GLAcct WHERE InGLAcctId = " + std::to_string(account.id));
    const std::string number = row->Field(0).toText();
    EXPECT_EQ(helper.FindGLAcctTypeId(number), account.type) << number;
    EXPECT_TRUE(helper.IsAccountIdAndAccountTypeMatch(number, account.type));
    EXPECT_FALSE(helper.IsAccountIdAndAccountTypeMatch("?" + number, account.type));
    EXPECT_EQ(helper.GetAccountTypeTypeDefinition(account.type), account.definition);
    const std::string next = helper.FindNextGLAcctId(std::to_string(account.type), "9");
    EXPECT_EQ(helper.FindGLAcctTypeId(next), account.type) << next;
    EXPECT_THAT(lines(read("SELECT GLAcctId FROM GLAcct WHERE GLAcctId = '" + next + "'")),
                IsEmpty());
    if (!helper.AcctIsUsedInTransaction(account.id, 0))
      unused.push_back(std::to_string(account.id));
  }
  EXPECT_THAT(unused, testing::IsSupersetOf({"6050", "6070"}));
  EXPECT_THAT(unused, testing::SizeIs(testing::Lt(6U)));
}

TEST_P(LedgerSample, BudgetsOfSegmentsAddUpToTheAccounts) {
  server_->install();
  CGeneralLedgerHelper helper;
  int budgets = 0;
  for (const Account& account : accounts_) {
    for (const Date from : {Date::of(2022, 4, 1), Date::of(2024, 5, 17)}) {
      const Date to = from.addMonths(5);
      const Currency budget = helper.GetAcctBudget(account.id, from, to);
      EXPECT_EQ(helper.GetAcctSegmentBudget(account.id, "", from, to), budget);
      budgets += budget.isZero() ? 0 : 1;
    }
  }
  EXPECT_GT(budgets, 20);
}

}  // namespace
