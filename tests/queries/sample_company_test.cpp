// What must hold on the sample company: both dialects give the same rows for every combination of a
// query's arguments, aging adds up to the balance, and histories agree with balances on every day.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "payables/supplier_queries.h"
#include "queries/company_fixture.h"
#include "receivables/customer_queries.h"

namespace {

using fixture::lines;
using QuorAccQueries::CCustomerQueries;
using QuorAccQueries::CSupplierQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using Lines = std::vector<std::string>;
using Balances = std::map<std::int32_t, Currency>;

class SampleCompany : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<fixture::CompanyFile>(QuorHost::CreateOptions{.sample = true});
    server_ = company_->host(fixture::Dialect::Server);
    desktop_ = company_->host(fixture::Dialect::Desktop);
  }
  static void TearDownTestSuite() {
    server_.reset();
    desktop_.reset();
    company_.reset();
  }

  /// Runs `open` in both dialects and expects the same rows in the same order.
  template <class Open>
  static Lines inBoth(Open open) {
    server_->install();
    const Lines server = lines(open());
    desktop_->install();
    EXPECT_EQ(lines(open()), server);
    return server;
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
  static inline std::unique_ptr<QuorHost::Host> server_;
  static inline std::unique_ptr<QuorHost::Host> desktop_;
};

constexpr bool kNoYes[] = {false, true};

/// A select list with what goes with it. Inside the by-currency form the list must name the
/// currency column, and the order can name columns of the list and of the currency only.
struct Shape {
  std::string fields, groupBy, orderBy;
  bool byOrder = false;
};

/// Calls `run` with every combination of the arguments that all aging queries have.
template <class Run>
void everyCombination(const std::vector<Shape>& shapes, const std::string& condition, Run run) {
  for (const Shape& shape : shapes) {
    for (const bool all : kNoYes) {
      for (const std::int32_t party : {0, 2}) {
        for (const Date day : {Date(), Date::of(2024, 6, 30)}) {
          for (const std::string& where : {std::string(), condition}) {
            for (const bool byCurrency : kNoYes) {
              SCOPED_TRACE(shape.fields + ", all " + std::to_string(all) + ", party " +
                           std::to_string(party) + ", " + day.toText() + ", " + where +
                           ", by currency " + std::to_string(byCurrency));
              run(shape, all, party, day, where, byCurrency);
            }
          }
        }
      }
    }
  }
}

TEST_F(SampleCompany, CustomerAgingIsTheSameInBothDialects) {
  const std::string rows =
      "CustAgingList.InvoiDate, CustAgingList.Balance, CustAgingList.InInvoiId, "
      "CustAgingList.InvoiType, "
      "CustAgingList.ExCurrencyId AS InnerViewExCurrencyId";
  const std::string order =
      "CustAgingList.Balance DESC, CustAgingList.InInvoiId, CustAgingList.InvoiType";
  const std::vector<Shape> shapes{
      {},
      {"", "", order},
      {rows, "", "WorldCurrency.CurrencyCode, " + order},
      {"CustAgingList.ExCustId, SUM(CustAgingList.Balance) AS Balance, CustAgingList.ExCurrencyId "
       "AS "
       "InnerViewExCurrencyId",
       "CustAgingList.ExCustId, CustAgingList.ExCurrencyId", "CustAgingList.ExCustId"},
      {"CustAgingList.DocOrderId1, " + rows, "", "CustAgingList.DocOrderId1, " + order, true},
  };
  std::size_t count = 0;
  everyCombination(shapes, "CustAgingList.Balance > 0 OR Cust.Name LIKE 'A%'",
                   [&](const Shape& shape, bool all, std::int32_t party, Date day,
                       const std::string& where, bool byCurrency) {
                     count += inBoth([&] {
                                return CCustomerQueries().OpenCustAgingTransactions(
                                    all, party, day, where, shape.orderBy, shape.fields,
                                    shape.groupBy, byCurrency, shape.byOrder);
                              }).size();
                   });
  EXPECT_GT(count, 1000U);
}

TEST_F(SampleCompany, SupplierAgingIsTheSameInBothDialects) {
  const std::string order =
      "SuppAgingList_View.Balance DESC, SuppAgingList_View.InPurcId, SuppAgingList_View.PurcType";
  const std::vector<Shape> shapes{
      {},
      {"", "", order},
      {"SuppAgingList_View.ExSuppId, SUM(SuppAgingList_View.Balance) AS Balance, "
       "SuppAgingList_View.ExCurrencyId AS "
       "InnerViewExCurrencyId",
       "SuppAgingList_View.ExSuppId, SuppAgingList_View.ExCurrencyId",
       "SuppAgingList_View.ExSuppId"},
  };
  std::size_t count = 0;
  everyCombination(shapes, "SuppAgingList_View.Balance > 0 OR Supp.Name LIKE 'A%'",
                   [&](const Shape& shape, bool all, std::int32_t party, Date day,
                       const std::string& where, bool byCurrency) {
                     count += inBoth([&] {
                                return CSupplierQueries().OpenSuppAgingTransactions(
                                    all, party, day, where, shape.orderBy, byCurrency, shape.fields,
                                    shape.groupBy);
                              }).size();
                   });
  EXPECT_GT(count, 500U);
}

TEST_F(SampleCompany, AccountQueriesAreTheSameInBothDialects) {
  for (const std::int32_t party : {0, 3}) {
    for (const Date date : {Date(), Date::of(2024, 6, 30)}) {
      for (const std::int32_t segment : {0, 1}) {
        for (const bool extra : kNoYes) {
          const std::string column = extra ? "ExCurrencyId" : "";
          inBoth([&] { return CCustomerQueries().OpenCustBalance(party, date, segment, column); });
          inBoth([&] { return CSupplierQueries().OpenSuppBalance(party, date, segment, column); });
          const std::string source = extra ? "GLDet.Source" : "";
          inBoth([&] {
            return CCustomerQueries().OpenCustCostByProject(party, date, 1, segment, source);
          });
          inBoth([&] {
            return CSupplierQueries().OpenSuppCostByProject(party, date, 1, segment,
                                                            "GLDet.Source");
          });
        }
      }
    }
  }
  for (std::int32_t party = 1; party <= 5; ++party) {
    inBoth([&] { return CCustomerQueries().OpenCustOpenCredits(party); });
    inBoth([&] { return CCustomerQueries().OpenCustLastPmt(party); });
    inBoth([&] { return CCustomerQueries().OpenCustLastSale(party); });
    inBoth([&] { return CCustomerQueries().OpenCustPmtUnappl(party); });
    inBoth([&] { return CSupplierQueries().OpenSuppOpenRec(party, "1,2"); });
    inBoth([&] { return CSupplierQueries().OpenSuppOpenPurcOrd(party, ""); });
    inBoth([&] { return CSupplierQueries().OpenSuppPurcOpenExpectedRec(party, 0); });
    inBoth([&] { return CSupplierQueries().OpenSuppExpectedPurcOrd(party); });
    inBoth([&] { return CSupplierQueries().OpenSuppOpenCredits(party); });
    inBoth([&] { return CSupplierQueries().OpenSuppLastPurc(party); });
    inBoth([&] { return CSupplierQueries().OpenSuppLastPmt(party); });
  }
  EXPECT_FALSE(inBoth([] { return CCustomerQueries().OpenCustLastPmt(-1); }).empty());
  EXPECT_FALSE(inBoth([] { return CCustomerQueries().OpenCustLastSale(-1); }).empty());
}

TEST_F(SampleCompany, AgingAtTheEndOfTimeAddsUpToTheBalances) {
  server_->install();
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
  server_->install();
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
