// What must hold on the sample company: aging adds up to the balance, and histories agree with
// balances on every day.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "payables/supplier_queries.h"
#include "queries/company_fixture.h"
#include "receivables/customer_queries.h"

namespace {

using QuorAccQueries::CCustomerQueries;
using QuorAccQueries::CSupplierQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using Balances = std::map<std::int32_t, Currency>;

class SampleCompany : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<fixture::CompanyFile>(QuorHost::CreateOptions{.sample = true});
    host_ = company_->host(fixture::Dialect::Server);
  }
  static void TearDownTestSuite() {
    host_.reset();
    company_.reset();
  }

  /// The sums of a column by party.
  static Balances sums(const fixture::Ref<fixture::Recordset>& rows, const std::string& party,
                       const std::string& amount) {
    Balances totals;
    for (; !rows->AtEnd(); rows->MoveNext()) {
      const auto value = rows->Field(amount);
      if (!value.isNull()) totals[rows->Field(party).toLong()] += value.toCurrency();
    }
    rows->Close();
    std::erase_if(totals, [](const auto& entry) { return entry.second.isZero(); });
    return totals;
  }

  static std::set<Date> daysOf(const fixture::Ref<fixture::Recordset>& history,
                               const std::string& column) {
    std::set<Date> days;
    for (; !history->AtEnd(); history->MoveNext()) days.insert(history->Field(column).toDate());
    history->Close();
    return days;
  }

  static inline std::unique_ptr<fixture::CompanyFile> company_;
  static inline std::unique_ptr<QuorHost::Host> host_;
};

TEST_F(SampleCompany, AgingAtTheEndOfTimeAddsUpToTheBalances) {
  CCustomerQueries customers;
  CSupplierQueries suppliers;
  const Balances owed = sums(customers.OpenCustBalance(0, {}, 0, ""), "ExCustId", "CustBalance");
  const Balances owing = sums(suppliers.OpenSuppBalance(0, {}, 0, ""), "ExSuppId", "SuppBalance");
  EXPECT_GT(owed.size(), 10U);
  EXPECT_GE(owing.size(), 5U);
  for (const bool all : {false, true}) {
    EXPECT_EQ(sums(customers.OpenCustAgingTransactions(all, 0, {}, "", "", "", "", false, false),
                   "ExCustID", "Balance"),
              owed);
    EXPECT_EQ(sums(suppliers.OpenSuppAgingTransactions(all, 0, {}, "", "", false, "", ""),
                   "ExSuppId", "Balance"),
              owing);
  }
}

TEST_F(SampleCompany, HistoriesAgreeWithBalancesOnEveryDay) {
  CCustomerQueries customers;
  CSupplierQueries suppliers;
  const auto single = [](const fixture::Ref<fixture::Recordset>& rows, const std::string& column) {
    const auto value = rows->AtEnd() ? QuorDataLib::Value() : rows->Field(column);
    rows->Close();
    return value.isNull() ? Currency() : value.toCurrency();
  };
  for (std::int32_t party = 1; party <= 8; ++party) {
    SCOPED_TRACE("party " + std::to_string(party));
    const Date end = Date::of(9999, 12, 31);
    for (const Date day : daysOf(customers.OpenCustHistoryList({}, end, party), "InvoiDate")) {
      const Currency before =
          single(customers.OpenCustPreviousBalanceInfo(party, day.addDays(1)), "TotalToPay");
      ASSERT_EQ(before, single(customers.OpenCustBalance(party, day, 0, ""), "CustBalance"))
          << day.toText();
    }
    for (const Date day : daysOf(suppliers.OpenSuppHistoryList(party, {}, end), "PurcDate")) {
      const Currency before =
          single(suppliers.OpenSuppPreviousBalanceInfo(party, day.addDays(1)), "TotalToPay");
      ASSERT_EQ(before, single(suppliers.OpenSuppBalance(party, day, 0, ""), "SuppBalance"))
          << day.toText();
    }
  }
}

}  // namespace
