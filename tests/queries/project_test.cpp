// Projects on a small company whose answers are worked out by hand, and on the sample company,
// under both kinds of chart and in both dialects.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "ledger/general_ledger_queries.h"
#include "projects/project_helper.h"
#include "projects/project_queries.h"
#include "queries/company_fixture.h"

namespace {

using fixture::lines;
using QuorAccQueries::CGeneralLedgerQueries;
using QuorAccQueries::CProjectHelper;
using QuorAccQueries::CProjectQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorHost::Chart;
using testing::ElementsAre;
using testing::IsEmpty;

Currency amount(const char* text) { return Currency::parse(text).value(); }
Date day(const char* text) { return Date::parse(text).value(); }

/// Project 1: of its hours, 8 in January and 4 in February are paid, twice 5 and 2 bought; what
/// does not count beside them is a bonus, a cancelled pay, goods without hours and a purchase of
/// goods.
class ProjectCompany : public testing::TestWithParam<fixture::Dialect> {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<fixture::CompanyFile>();
    const auto load = [](const char* table, const char* csv) { company_->load(table, csv); };
    load("CieInfo", "InCieId,HomeCurrencyId,AccountTypeChart,SessionDate\n1,1,1,2024-12-31\n");
    load("Proj", "InProjId,ProjId\n1,P1\n2,P2\n");
    load("Empl", "InEmplId,EmplId,FirstName,LastName\n1,E1,Ann,Roy\n");
    load("PayCode", "InPayCodeId,Descr,PayCodeType\n1,Regular,4\n2,Bonus,3\n");
    load("TrxPay",
         "InTrxPayId,ExEmplId,ChqDate,ChqNb,Canceled\n1,1,2024-01-05,P1,false\n"
         "2,1,2024-01-06,P2,true\n3,1,2024-02-01,P3,\n");
    load("TrxPayDetails",
         "ExTrxPayId,ExPayCodeId,Units,ExProjId,ExSegmentId\n1,1,8,1,1\n1,2,3,1,1\n1,1,6,2,1\n"
         "2,1,8,1,1\n3,1,4,1,2\n");
    load("Supp", "InSuppId,SuppId,Name\n1,S1,Acier\n");
    load("Item", "InItemId,ItemId,Descr1,Hours\n1,LAB,Labour,1\n2,NIL,Nothing,0\n3,NUL,Unknown,\n");
    load("PurcHdr",
         "InPurcId,PurcType,ExSuppId,PurcDate,DocNo\n10,3,1,2024-01-10,D10\n"
         "11,1,1,2024-01-11,D11\n12,3,1,2024-02-01,D12\n");
    load("PurcDet",
         "ExPurcId,ExItemId,Qty,ExProjId,ExSegmentId\n10,1,5,1,1\n10,1,5,1,1\n10,2,7,1,1\n"
         "10,3,9,1,1\n11,1,3,1,1\n12,1,2,1,2\n");
    load("AccountType", "ID,ExAcctTypeDefId,ReverseBalance\n1,1,\n4,2,true\n5,2,false\n6,2,\n");
    load("GLAcct", "InGLAcctId,GLAcctId,AcctType\n1,1010,1\n4,4010,4\n5,5010,5\n6,6010,6\n");
    load("GLDet",
         "SeqNo,DetDate,Source,ExAcctId,DetAmnt,ExProjId,ExSegmentId\n"
         "1,2024-01-31,INV,4,-100.10,1,1\n1,2024-01-31,INV,1,100.10,1,1\n"
         "2,2024-02-01,INV,4,30,1,2\n2,2024-02-01,INV,1,-30,,\n"
         "3,2024-02-15,PUR,5,40,1,1\n3,2024-02-15,PUR,6,5.05,1,\n3,2024-02-15,PUR,1,-45.05,,\n");
    load("FiscalYearHdr", "ID,BegDate,EndDate\n1,2008-01-01,2008-12-31\n");
    load("FiscalYearDet",
         "ID,ExID,BegDate,EndDate\n1,1,2008-01-01,2008-01-31\n2,1,2008-02-01,2008-02-29\n"
         "3,1,2008-03-01,2008-03-31\n");
    load("ProjBudgets",
         "ExID,ExSegmentId,ExFiscalYearDetId,BudgetSales,BudgetPurch,BudgetHours\n"
         "1,0,1,10,1,0.5\n1,0,2,20,2,0.25\n1,0,3,40,4,0.125\n1,1,1,7,7,7\n2,0,1,9,9,9\n");
  }
  static void TearDownTestSuite() { company_.reset(); }

  static inline std::unique_ptr<fixture::CompanyFile> company_;
};

INSTANTIATE_TEST_SUITE_P(Dialects, ProjectCompany, testing::ValuesIn(fixture::kDialects),
                         [](const auto& dialect) {
                           return dialect.param == fixture::Dialect::Server ? "Server" : "Desktop";
                         });

TEST_P(ProjectCompany, HoursAreThoseOfPaysAndOfPurchases) {
  const auto host = company_->host(GetParam());
  CProjectQueries queries;
  EXPECT_THAT(lines(queries.OpenProjectHoursTransactions(1, day("2024-01-01"), day("2024-01-31"))),
              ElementsAre("1|1|2024-01-05|E1|Ann Roy|P1|Regular|8",
                          "2|10|2024-01-10|S1|Acier|D10|Labour|5"));
  EXPECT_THAT(lines(queries.OpenProjectHoursTransactions(1, {}, {})), IsEmpty())
      << "dates are taken as they are";
  CProjectHelper helper;
  const auto hours = [&](std::int32_t segment, const char* from, const char* to) {
    return helper.GetProjHoursRange(1, segment, day(from), day(to));
  };
  EXPECT_EQ(hours(0, "2024-01-01", "2024-01-31"), amount("18"));
  EXPECT_EQ(hours(0, "2024-02-01", "2024-02-01"), amount("6"));
  EXPECT_EQ(hours(2, "2024-01-01", "2024-12-31"), amount("6"));
  EXPECT_EQ(hours(-1, "2024-02-01", "2024-02-01"), amount("6"));
  // Twelve paid and twelve bought: a union has equal rows once.
  EXPECT_EQ(helper.GetProjHours(1), amount("12"));
  EXPECT_EQ(helper.GetProjHours(2), amount("6"));
  EXPECT_EQ(helper.GetProjHours(3), Currency());
}

TEST_P(ProjectCompany, SalesAndPurchasesAreThoseOfTheLedger) {
  for (const char* const chart : {"1", "3"}) {
    const auto host = company_->host(GetParam(), {{"Company.CieAccountTypeChart", chart}});
    CProjectHelper helper;
    const Date first = day("2024-01-01");
    const Date last = day("2024-12-31");
    EXPECT_EQ(helper.GetProjSales(1), amount("70.10"));
    EXPECT_EQ(helper.GetProjPurchases(1), amount("45.05"));
    EXPECT_EQ(helper.GetProjSalesRange(1, 0, first, last), amount("70.10"));
    EXPECT_EQ(helper.GetProjSalesRange(1, 0, first, day("2024-01-31")), amount("100.10"));
    EXPECT_EQ(helper.GetProjSalesRange(1, 2, first, last), amount("-30"));
    EXPECT_EQ(helper.GetProjPurchasesRange(1, 0, first, last), amount("45.05"));
    EXPECT_EQ(helper.GetProjPurchasesRange(1, 1, first, last), amount("40"));
    EXPECT_EQ(helper.GetProjSales(2), Currency());
    EXPECT_EQ(helper.GetProjSalesRange(2, 0, first, last), Currency());
    EXPECT_EQ(helper.GetProjPurchasesRange(1, 0, last, first), Currency());
  }
  // The host says which further types are expenses.
  const auto host = company_->host(GetParam(), {{"Company.Param.FurtherExpenseAccountTypes", "7"}});
  EXPECT_EQ(CProjectHelper().GetProjPurchasesRange(1, 0, day("2024-01-01"), day("2024-12-31")),
            amount("40"));
}

TEST_P(ProjectCompany, BudgetsCountWholePeriods) {
  const auto host = company_->host(GetParam());
  CProjectHelper helper;
  const auto sales = [&](std::int32_t segment, const char* from, const char* to) {
    return helper.GetProjSalesBudgetRange(1, segment, day(from), day(to));
  };
  EXPECT_EQ(sales(0, "2008-01-15", "2008-02-15"), amount("30"));
  EXPECT_EQ(sales(0, "2008-01-10", "2008-01-20"), amount("10")) << "within a period";
  EXPECT_EQ(sales(0, "2008-02-29", "2008-03-01"), amount("60"));
  EXPECT_EQ(sales(1, "2008-01-01", "2008-12-31"), amount("7"));
  EXPECT_EQ(sales(-1, "2008-01-01", "2008-12-31"), Currency()) << "the segment is always asked for";
  EXPECT_EQ(sales(0, "2009-01-01", "2009-12-31"), Currency());
  EXPECT_EQ(helper.GetProjPurchBudgetRange(1, 0, day("2008-01-15"), day("2008-02-15")),
            amount("3"));
  EXPECT_EQ(helper.GetProjHoursBudgetRange(1, 0, day("2008-01-15"), day("2008-12-31")),
            amount("0.875"));
}

TEST_P(ProjectCompany, EachMemberKeepsWhatItReadUnderItsArguments) {
  std::ostringstream trace;
  QuorHost::Host host({.store = QuorHost::openCompanyFile(company_->path(), QuorHost::Access::Read),
                       .dialect = GetParam(),
                       .trace = &trace});
  host.install();
  CProjectHelper helper;
  helper.SetCacheRecordsets(true);
  const Date from = day("2008-01-01");
  const Date to = day("2024-12-31");
  const auto askAll = [&] {
    std::vector<Currency> all;
    for (const std::int32_t project : {1, 2}) {
      for (const auto member :
           {&CProjectHelper::GetProjSalesBudgetRange, &CProjectHelper::GetProjPurchBudgetRange,
            &CProjectHelper::GetProjHoursBudgetRange, &CProjectHelper::GetProjSalesRange,
            &CProjectHelper::GetProjPurchasesRange, &CProjectHelper::GetProjHoursRange}) {
        for (const std::int32_t segment : {0, 1}) {
          all.push_back((helper.*member)(project, segment, from, to));
        }
      }
      for (const auto member : {&CProjectHelper::GetProjSales, &CProjectHelper::GetProjPurchases,
                                &CProjectHelper::GetProjHours}) {
        all.push_back((helper.*member)(project));
      }
    }
    return all;
  };
  const auto opened = [&] {
    int count = 0;
    for (std::size_t at = 0; (at = trace.str().find("\"event\":\"open\"", at)) != std::string::npos;
         ++at) {
      ++count;
    }
    return count;
  };
  const std::vector<Currency> first = askAll();
  // Of two projects: three totals, and of two segments each three ranges and one of all budgets.
  EXPECT_EQ(opened(), 2 * (3 + 2 * (3 + 1)));
  EXPECT_EQ(askAll(), first);
  EXPECT_EQ(opened(), 2 * (3 + 2 * (3 + 1))) << "nothing is read twice";
  helper.SetCacheRecordsets(false);
  EXPECT_EQ(askAll(), first);
}

class ProjectSample : public testing::TestWithParam<Chart> {
 protected:
  void SetUp() override {
    host_ = company_.host(fixture::Dialect::Server);
    for (const auto rows = read("SELECT InProjId FROM Proj"); !rows->AtEnd(); rows->MoveNext()) {
      projects_.push_back(rows->Field(0).toLong());
    }
    ASSERT_EQ(projects_.size(), 10U);
  }

  fixture::Ref<fixture::Recordset> read(const std::string& sql) const {
    return company_.store().connect(fixture::Dialect::Server)->OpenRecordset(sql, 4, 0, {}, 0);
  }
  Currency only(const std::string& sql) const { return only(read(sql)); }
  static Currency only(const fixture::Ref<fixture::Recordset>& rows) {
    const auto value = rows->Field(0);
    rows->Close();
    return value.isNull() ? Currency() : value.toCurrency();
  }

  fixture::CompanyFile company_{QuorHost::CreateOptions{.sample = true, .chart = GetParam()}};
  std::unique_ptr<QuorHost::Host> host_;
  std::vector<std::int32_t> projects_;
};

INSTANTIATE_TEST_SUITE_P(Charts, ProjectSample, testing::Values(Chart::Fixed, Chart::Own),
                         [](const auto& chart) {
                           return chart.param == Chart::Fixed ? "Fixed" : "Own";
                         });

TEST_P(ProjectSample, MonthsAddUpToTheWholeAndAgreeWithTheLedger) {
  CProjectHelper helper;
  CGeneralLedgerQueries ledger;
  int busyMonths = 0;
  for (const std::int32_t project : projects_) {
    Currency sales;
    Currency purchases;
    Currency segments;
    for (int month = 0; month < 36; ++month) {
      const Date from = Date::of(2022, 4, 1).addMonths(month);
      const Date to = from.addMonths(1).addDays(-1);
      const Currency sold = helper.GetProjSalesRange(project, 0, from, to);
      const Currency spent = helper.GetProjPurchasesRange(project, 0, from, to);
      ASSERT_EQ(sold, -only(ledger.OpenProjHistoryForwardBalance(false, 1, project, from, to, 1)));
      ASSERT_EQ(spent, only(ledger.OpenProjHistoryForwardBalance(false, 1, project, from, to, 2)));
      sales += sold;
      purchases += spent;
      for (std::int32_t segment = 1; segment <= 4; ++segment) {
        segments += helper.GetProjSalesRange(project, segment, from, to) +
                    helper.GetProjPurchasesRange(project, segment, from, to);
      }
      busyMonths += sold.isZero() && spent.isZero() ? 0 : 1;
    }
    EXPECT_EQ(sales, helper.GetProjSales(project)) << project;
    EXPECT_EQ(purchases, helper.GetProjPurchases(project)) << project;
    EXPECT_EQ(segments, sales + purchases) << "every line has a segment";
  }
  EXPECT_GT(busyMonths, 60);
}

TEST_P(ProjectSample, HoursAreThoseOfTheDocuments) {
  CProjectHelper helper;
  CProjectQueries queries;
  Currency listed;
  for (const std::int32_t project : projects_) {
    const std::string key = std::to_string(project);
    const std::string paid =
        "SELECT SUM(Units) FROM TrxPayDetails INNER JOIN TrxPay ON TrxPay.InTrxPayId = ExTrxPayId "
        "WHERE ExPayCodeId IN (1, 2) AND Canceled = 0 AND ExProjId = " +
        key;
    const std::string bought =
        "SELECT SUM(Qty) FROM PurcDet INNER JOIN PurcHdr ON PurcHdr.InPurcId = ExPurcId INNER JOIN "
        "Item ON Item.InItemId = ExItemId WHERE PurcType = 3 AND Hours <> 0 AND ExProjId = " +
        key;
    Currency all;
    for (int month = 0; month < 36; ++month) {
      const Date from = Date::of(2022, 4, 1).addMonths(month);
      const Date to = from.addMonths(1).addDays(-1);
      const auto inMonth = [&](std::string query, const char* column) {
        query.append(" AND ").append(column).append(" BETWEEN '").append(from.toText());
        return only(query.append("' AND '").append(to.toText()).append("'"));
      };
      const Currency ofPays = inMonth(paid, "ChqDate");
      const Currency ofPurchases = inMonth(bought, "PurcDate");
      // Equal sums count once.
      ASSERT_EQ(helper.GetProjHoursRange(project, 0, from, to),
                ofPays == ofPurchases ? ofPays : ofPays + ofPurchases);
      all += ofPays + ofPurchases;
    }
    const bool equal = only(paid) == only(bought);
    EXPECT_EQ(equal ? all : helper.GetProjHours(project), all) << project;
    for (const auto rows = queries.OpenProjectHoursTransactions(project, Date::of(2022, 4, 1),
                                                                Date::of(2025, 3, 31));
         !rows->AtEnd(); rows->MoveNext()) {
      listed += rows->Field("NbHours").toCurrency();
    }
  }
  EXPECT_GT(listed, amount("500"));
  EXPECT_LE(listed, only("SELECT SUM(Units) FROM TrxPayDetails WHERE NOT ExProjId IS NULL") +
                        only("SELECT SUM(Qty) FROM PurcDet WHERE NOT ExProjId IS NULL"));
}

}  // namespace
