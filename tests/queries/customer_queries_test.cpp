// The customer queries on a small company whose answers are worked out by hand, in both dialects.
#include "receivables/customer_queries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "queries/company_fixture.h"
#include "receivables/customer_helper.h"

namespace {

using fixture::lines;
using QuorAccQueries::CCustomerHelper;
using QuorAccQueries::CCustomerQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Error;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Lines = std::vector<std::string>;

/// Customer 1 trades in home currency, 2 in dollars, 3 has no currency.
///   invoice 11    0.60, paid 0.10, 0.20 and 0.30
///   invoice 12  100.00, cleared by a payment of 98.00 and a discount of 2.00
///   invoice 13  500.00, paid 200.00 out of 300.00 received; 40.00 of the rest put to use later
///   credit note 14 of 50.00
///   order 15 with a deposit of 250.00
///   invoice 16   75.00, paid before its own date
class CustomerCompany : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<fixture::CompanyFile>();
    company_->load("CieInfo",
                   "InCieId,HomeCurrencyId,ForeignCurrencyUsed,SessionDate\n1,1,true,2025-12-31\n");
    company_->load("WorldCurrency",
                   "InCurrencyId,CurrencyCode,Descr\n1,CAD,Dollar\n2,USD,US dollar\n3,EUR,Euro\n");
    company_->load(
        "Cust",
        "InCustId,CustId,Name,ExCurrencyId\n1,A,Aubé,1\n2,B,Baker,2\n3,C,Cyr,\n4,D,Dunn,1\n");
    company_->load("InvoiHdr",
                   "InInvoiId,InvoiId,InvoiType,ExCustId,InvoiDate,TotAmnt,Balance,ExCurrencyId\n"
                   "11,I11,1,1,2025-01-10,0.60,0.60,1\n"
                   "12,I12,1,1,2025-02-15,100.00,100.00,1\n"
                   "13,I13,1,2,2025-03-01,500.00,500.00,2\n"
                   "14,C14,2,3,2025-04-01,-50.00,-50.00,\n"
                   "15,O15,51,1,2025-04-05,1000.00,1000.00,1\n"
                   "16,I16,1,2,2025-06-15,75.00,75.00,2\n");
    company_->load("PmtHdr",
                   "InPmtId,ExCustId,PmtDate,ChqNo,PmtType,PmtTotAmnt,ExCurrencyId\n"
                   "21,1,2025-02-01,21,CHQ,0.10,1\n"
                   "22,1,2025-02-10,22,CHQ,0.20,1\n"
                   "23,1,2025-03-01,23,CHQ,0.30,1\n"
                   "24,1,2025-03-10,24,CHQ,98.00,1\n"
                   "25,2,2025-03-20,25,EFT,300.00,2\n"
                   "26,2,2025-05-01,26,CREDIT,0,2\n"
                   "27,1,2025-04-06,27,CHQ,250.00,1\n"
                   "28,2,2025-06-10,28,CHQ,75.00,2\n"
                   "29,2,2025-06-10,29,CASH,5.00,2\n");
    company_->load("PmtDet",
                   "ExPmtId,ExInvoiId,ExPmtRefId,PmtAmnt,PmtDisc\n"
                   "21,11,,0.10,0\n22,11,,0.20,0\n23,11,,0.30,0\n24,12,,98.00,2.00\n"
                   "25,13,,200.00,0\n26,13,,40.00,0\n26,,25,-40.00,0\n27,15,,250.00,0\n"
                   "28,16,,75.00,0\n29,13,,5.00,0\n");
  }
  static void TearDownTestSuite() { company_.reset(); }

  /// The rows of the aging statement as key, type and balance, in both dialects.
  static Lines aging(Date asOf, bool all = false, std::int32_t customer = 0,
                     bool byCurrency = false) {
    Lines server;
    for (const auto dialect : fixture::kDialects) {
      const auto host = company_->host(dialect);
      CCustomerQueries queries;
      const Lines rows = lines(
          queries.OpenCustAgingTransactions(all, customer, asOf, "", "", "", "", byCurrency, false),
          {"CurrencyCode", "ExCustID", "DocOrderId", "InvoiType", "Balance"});
      if (dialect == fixture::Dialect::Server) server = rows;
      EXPECT_EQ(rows, server) << "the dialects differ";
    }
    return server;
  }

  static inline std::unique_ptr<fixture::CompanyFile> company_;
};

TEST_F(CustomerCompany, AgingShowsWhatIsOutstandingAtTheDate) {
  EXPECT_THAT(aging(Date::of(2025, 2, 5)), ElementsAre("CAD|1|11|1|0.6", "CAD|1|11|99|-0.1"));
  // Three payments of 0.10, 0.20 and 0.30 leave nothing of 0.60; the discount clears 100.00.
  EXPECT_THAT(aging(Date::of(2025, 3, 31)),
              ElementsAre("USD|2|13|1|500", "USD|2|13|99|-200", "USD|2|25|99|-100"));
  // No date means no limit. The credit of 25 is down by what 26 drew on it; the deposit stays one.
  EXPECT_THAT(aging({}),
              ElementsAre("-|3|14|2|-50", "CAD|1|27|99|-250", "USD|2|13|1|500", "USD|2|13|99|-200",
                          "USD|2|13|99|-40", "USD|2|13|99|-5", "USD|2|25|99|-60"));
}

TEST_F(CustomerCompany, AgingOfAPaymentBeforeItsInvoice) {
  // Nothing is dated but the payments: both stand under documents that are still open that day.
  EXPECT_THAT(aging(Date::of(2025, 6, 12), false, 2),
              ElementsAre("USD|2|13|1|500", "USD|2|13|99|-200", "USD|2|13|99|-40", "USD|2|13|99|-5",
                          "USD|2|25|99|-60", "USD|2|16|99|-75"));
}

TEST_F(CustomerCompany, AgingOfAllTransactionsKeepsWhatIsPaid) {
  EXPECT_THAT(
      aging({}, true, 1),
      ElementsAre("CAD|1|11|1|0.6", "CAD|1|11|99|-0.1", "CAD|1|11|99|-0.2", "CAD|1|11|99|-0.3",
                  "CAD|1|12|1|100", "CAD|1|12|99|-98", "CAD|1|12|100|-2", "CAD|1|27|99|-250"));
  EXPECT_THAT(aging({}, true, 4), IsEmpty());
}

TEST_F(CustomerCompany, AgingByCurrencyListsEveryCurrency) {
  // A row without currency counts as currency 1; no row is in euros, and the euro is there.
  EXPECT_THAT(
      aging({}, false, 0, true),
      ElementsAre("CAD|1|27|99|-250", "CAD|3|14|2|-50", "EUR|-|-|-|-", "USD|2|13|1|500",
                  "USD|2|13|99|-200", "USD|2|13|99|-40", "USD|2|13|99|-5", "USD|2|25|99|-60"));
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect, {{"CurrencyInfo.CieIsForeignCurrencyUsed", "false"}});
    CCustomerQueries queries;
    EXPECT_EQ(lines(queries.OpenCustAgingTransactions(false, 0, {}, "", "", "", "", true, false)),
              lines(queries.OpenCustAgingTransactions(false, 0, {}, "", "", "", "", false, false)));
  }
}

TEST_F(CustomerCompany, AgingByOrderGoesWithTheCallersListAndOrder) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CCustomerQueries queries;
    EXPECT_THAT(
        lines(queries.OpenCustAgingTransactions(
            false, 2, Date::of(2025, 5, 31), "CustAgingList.Balance < 450", "CustAgingList.Balance",
            "CustAgingList.DocOrderId1, CustAgingList.DocOrderDate, CustAgingList.Balance", "",
            false, true)),
        ElementsAre("0|2025-03-20|-200", "25|2025-03-20|-60", "0|2025-05-01|-40"));
    EXPECT_THROW(queries.OpenCustAgingTransactions(false, 0, {}, "", "", "", "", false, true),
                 Error);
  }
}

TEST_F(CustomerCompany, TheCallersFragmentsAreCheckedByTheEngine) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CCustomerQueries queries;
    for (const char* wrong :
         {"NoSuchColumn = 1", "Balance >", "Balance = ?", "1=1) OR (1=1; DELETE FROM PmtDet"}) {
      EXPECT_THROW(queries.OpenCustAgingTransactions(true, 0, {}, wrong, "", "", "", false, false),
                   Error)
          << wrong;
    }
  }
}

TEST_F(CustomerCompany, BalancesAndHistoryAgree) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CCustomerQueries queries;
    EXPECT_THAT(lines(queries.OpenCustBalance(0, {}, 0, ""), {"ExCustId", "CustBalance"}),
                ElementsAre("1|-250", "2|195", "3|-50"));
    EXPECT_THAT(lines(queries.OpenCustBalance(2, Date::of(2025, 3, 31), 0, "ExCurrencyId"),
                      {"ExCustId", "ExCurrencyId", "CustBalance"}),
                ElementsAre("2|2|200"));
    EXPECT_THAT(lines(queries.OpenCustBalance(0, {}, 7, "")), IsEmpty());
    EXPECT_THAT(lines(queries.OpenCustHistoryList(Date::of(2025, 2, 15), Date::of(2025, 3, 10), 1),
                      {"InInvoiID", "InvoiType", "TotalToPay"}),
                UnorderedElementsAre("12|1|100", "23|99|-0.3", "24|99|-98", "24|100|-2"));
    EXPECT_THAT(lines(queries.OpenCustPreviousBalanceInfo(1, Date::of(2025, 3, 10))),
                ElementsAre("100"));
    EXPECT_THAT(lines(queries.OpenInvoiBalanceAtDate(11, Date::of(2025, 2, 10))),
                ElementsAre("11|0.3"));
    EXPECT_THAT(lines(queries.OpenInvoiBalanceAtDate(99, Date::of(2025, 2, 10))),
                ElementsAre("-|-"));
    EXPECT_THAT(lines(queries.OpenCustOpenCredits(2), {"InPmtId", "CreditAmnt"}),
                ElementsAre("25|60"));
    EXPECT_THAT(lines(queries.OpenCustPmtUnappl(27), {"UnapplAmnt"}), ElementsAre("250"));
    EXPECT_THAT(lines(queries.OpenInvoiPaidAmntAll(12), {"TotalPaid"}), ElementsAre("100"));
  }
}

TEST_F(CustomerCompany, LastDocumentsTakeTheLatestDateThenTheHighestKey) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CCustomerQueries queries;
    EXPECT_THAT(lines(queries.OpenCustLastPmt(2), {"PmtCode"}), ElementsAre("29"));
    EXPECT_THAT(lines(queries.OpenCustLastPmt(-1), {"ExCustId", "PmtCode"}),
                UnorderedElementsAre("1|27", "2|29"));
    EXPECT_THAT(lines(queries.OpenCustLastSale(-1), {"ExCustId", "InInvoiId"}),
                UnorderedElementsAre("1|12", "2|16"));
    CCustomerHelper helper;
    const auto payment = helper.GetLastPmtInfo(2);
    EXPECT_EQ(payment->LastPmtDate(), Date::of(2025, 6, 10));
    EXPECT_EQ(payment->LastPmtAmnt(), Currency::fromInteger(5));
    EXPECT_EQ(payment->LastPmtCode(), 29);
    EXPECT_EQ(payment->LastPmtType(), "CASH");
    const auto sale = helper.GetLastSaleInfo(1);
    EXPECT_EQ(sale->LastSaleCode(), 12);
    EXPECT_EQ(sale->LastSaleAmnt(), Currency::fromInteger(100));
    EXPECT_EQ(helper.GetLastSaleInfo(4)->LastSaleCode(), 0);
    EXPECT_EQ(helper.GetCustBalance(2, Date::of(2025, 3, 31)), Currency::fromInteger(200));
    EXPECT_TRUE(helper.GetCustBalance(4, {}).isZero());
  }
}

TEST_F(CustomerCompany, ProjectCostsNeedNoExtraFields) {
  company_->load("GLDet",
                 "SeqNo,DetDate,Source,ExSrcKeyVal,ExAcctId,DetAmnt,ForeignAmnt,ExProjId\n"
                 "1,2025-01-10,INV,11,4000,-0.60,-0.50,5\n1,2025-01-10,INV,11,1200,0.60,0.50,0\n"
                 "2,2025-02-15,INV,12,4000,-100,-90,5\n2,2025-02-15,INV,12,4000,-7,-7,6\n"
                 "2,2025-02-15,PMT,12,1200,107,97,5\n");
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CCustomerQueries queries;
    EXPECT_THAT(lines(queries.OpenCustCostByProject(0, Date::of(2025, 1, 31), 0, 0, "")),
                ElementsAre("-0.6|-0.5|1|5"));
    // A project alone is no filter.
    EXPECT_THAT(lines(queries.OpenCustCostByProject(0, {}, 6, 0, "")),
                ElementsAre("-100.6|-90.5|1|5", "-7|-7|1|6"));
    EXPECT_THAT(lines(queries.OpenCustCostByProject(1, {}, 6, 0, "Source")),
                ElementsAre("-7|-7|1|6|INV"));
    const auto other = company_->host(dialect, {{"Param.QuorAcctParams.WIPGLBankAccount", "4000"}});
    EXPECT_THAT(lines(CCustomerQueries().OpenCustCostByProject(1, {}, 0, 0, "")), IsEmpty());
  }
}

}  // namespace
