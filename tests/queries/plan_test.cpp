// How the engine goes about the statements that ask for one party or one document: by indexes, from
// the first row on. It plans by the indexes alone, as no statistics are kept, so that what it does
// in a small company it does in one of a million documents.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "host/engines/sqlite/store.h"
#include "host/engines/sqlite/write/sql_writer.h"
#include "host/sql/front_end.h"
#include "inventory/inventory_queries.h"
#include "payables/supplier_queries.h"
#include "projects/project_helper.h"
#include "projects/project_queries.h"
#include "queries/company_fixture.h"
#include "receivables/customer_queries.h"

namespace {

using QuorAccQueries::CCustomerQueries;
using QuorAccQueries::CInventoryQueries;
using QuorAccQueries::CProjectHelper;
using QuorAccQueries::CProjectQueries;
using QuorAccQueries::CSupplierQueries;
using QuorDataLib::Date;
using QuorDataLib::Parameters;
using QuorHost::Sqlite::SqliteStore;
using testing::IsEmpty;

/// Passes statements on, and collects what is slow in their plans.
class PlanReader final : public QuorDataLib::Connection {
 public:
  PlanReader(const SqliteStore& store, fixture::Dialect dialect,
             fixture::Ref<QuorDataLib::Connection> connection)
      : store_(store), dialect_(dialect), connection_(std::move(connection)) {}

  fixture::Ref<fixture::Recordset> OpenRecordset(const std::string& sql, std::int32_t mode,
                                                 std::int32_t option, const Parameters& parameters,
                                                 std::int32_t flag) override {
    // The columns of a table are asked for without its rows.
    if (!sql.ends_with("WHERE 1=0")) read(sql);
    return connection_->OpenRecordset(sql, mode, option, parameters, flag);
  }
  void Execute(const std::string& sql, std::int32_t& recordsAffected, std::int32_t option,
               const Parameters& parameters) override {
    connection_->Execute(sql, recordsAffected, option, parameters);
  }
  std::int32_t CommandTimeout() override { return connection_->CommandTimeout(); }
  void SetCommandTimeout(std::int32_t seconds) override { connection_->SetCommandTimeout(seconds); }

  int statements = 0;
  std::vector<std::string> slow;

 private:
  void read(const std::string& sql) {
    ++statements;
    const std::string plan =
        "EXPLAIN QUERY PLAN " +
        QuorHost::Sql::translate(sql, dialect_, store_.catalogue(), QuorHost::Sqlite::SqlWriter())
            .sql;
    QuorHost::Sqlite::Statement steps(store_.database()->handle(), plan);
    std::set<std::string> streams;
    while (steps.step()) {
      const std::string step = reinterpret_cast<const char*>(sqlite3_column_text(steps.get(), 3));
      if (step.starts_with("CO-ROUTINE ")) streams.insert(step.substr(11));
      const bool scan = step.starts_with("SCAN ") && !streams.contains(step.substr(5));
      if (scan || step.starts_with("MATERIALIZE") || step.find("AUTOMATIC") != std::string::npos) {
        slow.push_back(step);
        slow.back().append(" in ").append(sql);
      }
    }
  }

  const SqliteStore& store_;
  fixture::Dialect dialect_;
  fixture::Ref<QuorDataLib::Connection> connection_;
};

class Plans : public testing::TestWithParam<fixture::Dialect> {
 protected:
  /// Runs `calls`, of which each sends one statement and may read parameters besides.
  template <class Queries, class Calls>
  void expectFast(int statements, Calls calls) {
    auto& store = dynamic_cast<SqliteStore&>(company_.store());
    const auto host = company_.host(GetParam());
    const auto reader = QuorDataLib::make<PlanReader>(store, GetParam(), store.connect(GetParam()));
    Queries queries;
    queries.SetCustomConnection(reader);
    calls(queries);
    queries.SetCustomConnection({});
    EXPECT_THAT(reader->slow, IsEmpty());
    EXPECT_GE(reader->statements, statements);
  }

  fixture::CompanyFile company_;
};

const Date kDay = Date::of(2024, 6, 30);

TEST_P(Plans, OfOneCustomerAreByIndex) {
  expectFast<CCustomerQueries>(16, [](CCustomerQueries& queries) {
    for (const bool all : {false, true}) {
      queries.OpenCustAgingTransactions(all, 5, kDay, "", "", "", "", false, false);
      queries.OpenCustAgingTransactions(all, 5, Date(), "Cust.Name > 'M'", "", "", "", false,
                                        false);
      queries.OpenCustAgingTransactions(all, 0, kDay, "CustAgingList.ExCustId IN (5, 7)", "", "",
                                        "", false, false);
    }
    queries.OpenInvoiBalanceAtDate(5, kDay);
    queries.OpenCustHistoryList(kDay, kDay, 5);
    queries.OpenCustPreviousBalanceInfo(5, kDay);
    queries.OpenCustBalance(5, kDay, 1, "");
    queries.OpenCustOpenCredits(5);
    queries.OpenInvoiPaidAmntAll(5);
    queries.OpenCustPmtUnappl(5);
    queries.OpenCustLastPmt(5);
    queries.OpenCustLastSale(5);
    queries.OpenCustCostByProject(5, kDay, 2, 0, "");
  });
}

TEST_P(Plans, OfOneSupplierAreByIndex) {
  expectFast<CSupplierQueries>(19, [](CSupplierQueries& queries) {
    for (const bool all : {false, true}) {
      queries.OpenSuppAgingTransactions(all, 5, kDay, "", "", false, "", "");
      queries.OpenSuppAgingTransactions(all, 5, Date(), "Supp.Name > 'M'", "", false, "", "");
      queries.OpenSuppAgingTransactions(all, 0, kDay, "SuppAgingList_View.ExSuppId IN (5, 7)", "",
                                        false, "", "");
    }
    queries.OpenPurcBalanceAtDate(5, kDay);
    queries.OpenSuppHistoryList(5, kDay, kDay);
    queries.OpenSuppPreviousBalanceInfo(5, kDay);
    queries.OpenSuppBalance(5, kDay, 1, "");
    queries.OpenSuppOpenCredits(5);
    queries.OpenSuppOpenRec(5, "");
    queries.OpenSuppOpenPurcOrd(5, "7, 8");
    queries.OpenSuppPurcOpenExpectedRec(5, 2);
    queries.OpenUnappliedPayment(5);
    queries.OpenSuppLastPmt(5);
    queries.OpenSuppLastPurc(5);
    queries.OpenSuppExpectedPurcOrd(5);
    queries.OpenSuppCostByProject(5, kDay, 2, 0, "Source");
  });
}

TEST_P(Plans, OfOneItemAreByIndex) {
  expectFast<CInventoryQueries>(9, [](CInventoryQueries& queries) {
    const std::string projects = "1,2";
    const std::string none;
    for (const std::int32_t warehouse : {0, 2}) {
      queries.OpenQtyOnHand(5, warehouse, {}, kDay);
      queries.OpenQtyStock(5, warehouse, {}, kDay, true, false, "");
      queries.OpenItemAvgCost(5, kDay, warehouse, "", "");
      queries.OpenItemLastCost(5, kDay, warehouse, "", "");
    }
    queries.OpenQtyStockProj(5, {}, kDay, projects, none);
  });
}

TEST_P(Plans, OfOneProjectAreByIndex) {
  expectFast<CProjectQueries>(
      1, [](CProjectQueries& queries) { queries.OpenProjectHoursTransactions(5, {}, kDay); });
  expectFast<CProjectHelper>(9, [](CProjectHelper& helper) {
    helper.GetProjSales(5);
    helper.GetProjPurchases(5);
    helper.GetProjHours(5);
    for (const std::int32_t segment : {0, 2}) {
      helper.GetProjSalesRange(5, segment, {}, kDay);
      helper.GetProjPurchasesRange(5, segment, {}, kDay);
      helper.GetProjHoursRange(5, segment, {}, kDay);
    }
    helper.GetProjSalesBudgetRange(5, 0, {}, kDay);
  });
}

INSTANTIATE_TEST_SUITE_P(Dialects, Plans, testing::ValuesIn(fixture::kDialects),
                         [](const auto& dialect) {
                           return dialect.param == fixture::Dialect::Server ? "Server" : "Desktop";
                         });

}  // namespace
