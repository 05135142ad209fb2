// The supplier queries on a small company whose answers are worked out by hand, in both dialects.
#include "payables/supplier_queries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "payables/supplier_helper.h"
#include "queries/company_fixture.h"

namespace {

using fixture::lines;
using QuorAccQueries::CSupplierHelper;
using QuorAccQueries::CSupplierQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Error;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Lines = std::vector<std::string>;

/// Supplier 1 is paid in home currency, 2 has no currency, 3 has no documents.
///   purchase 31  200.00, paid 150.00, the rest by a credit drawn later on payment 43
///   purchase 32   80.00, cleared by 78.40 and a discount of 1.60
///   purchase 33   60.00, dated after its payment
///   payment 43  100.00, nothing applied; 50.00 drawn on it on 1 May
///   payment 44   30.00, 40.00 applied: more than it paid
///   credit note 34 of 25.00 of the supplier without currency
///   order 35 and reception 36, not invoiced
class SupplierCompany : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<fixture::CompanyFile>();
    company_->load("CieInfo",
                   "InCieId,HomeCurrencyId,ForeignCurrencyUsed,SessionDate\n1,1,true,2025-12-31\n");
    company_->load("WorldCurrency",
                   "InCurrencyId,CurrencyCode,Descr\n1,CAD,Dollar\n2,USD,US dollar\n");
    company_->load("Supp",
                   "InSuppId,SuppId,Name,ExCurrencyId\n1,A,Acier Nord,1\n2,B,Bolts,\n3,C,Coal,1\n");
    company_->load("PurcHdr",
                   "InPurcId,DocNo,PurcType,PurcCredit,ExSuppId,PurcDate,POrderStatus,TotAmnt,"
                   "Balance,ExCurrencyId\n"
                   "31,P31,1,false,1,2025-01-10,,200.00,200.00,1\n"
                   "32,P32,1,false,1,2025-02-01,,80.00,80.00,1\n"
                   "33,P33,1,false,1,2025-06-15,,60.00,60.00,1\n"
                   "34,C34,1,true,2,2025-03-01,,-25.00,-25.00,\n"
                   "35,O35,51,false,1,2025-07-01,1,500.00,500.00,1\n"
                   "36,R36,52,false,1,2025-07-05,2,90.00,90.00,1\n"
                   "37,P37,2,false,1,2025-07-10,,40.00,40.00,1\n");
    company_->load("PurcDet", "InPurcDetId,ExPurcId,Qty\n1,35,10\n2,36,4\n");
    company_->load("SuppPmtHdr",
                   "InPmtId,ExSuppId,ChqDate,ChqNo,PmtType,PmtTotAmnt,ExCurrencyId\n"
                   "41,1,2025-02-10,41,CHQ,150.00,1\n"
                   "42,1,2025-02-20,42,CHQ,78.40,1\n"
                   "43,1,2025-03-05,43,EFT,100.00,1\n"
                   "45,1,2025-05-01,45,CREDIT,0,1\n"
                   "46,1,2025-06-10,46,CHQ,60.00,1\n"
                   "44,1,2025-07-12,44,CHQ,30.00,1\n");
    company_->load(
        "SuppPmtDet",
        "ExPmtId,ExPurcId,ExPmtRefId,PmtAmnt,PmtDisc\n"
        "41,31,,150.00,0\n42,32,,78.40,1.60\n45,31,,50.00,0\n45,,43,-50.00,0\n46,33,,60.00,0\n"
        "44,37,,40.00,0\n");
  }
  static void TearDownTestSuite() { company_.reset(); }

  static Lines aging(Date asOf, bool all = false, std::int32_t supplier = 0,
                     bool byCurrency = false) {
    Lines server;
    for (const auto dialect : fixture::kDialects) {
      const auto host = company_->host(dialect);
      CSupplierQueries queries;
      const Lines rows =
          lines(queries.OpenSuppAgingTransactions(all, supplier, asOf, "", "", byCurrency, "", ""),
                {"CurrencyCode", "ExSuppId", "DocOrderId", "PurcType", "Balance"});
      if (dialect == fixture::Dialect::Server) server = rows;
      EXPECT_EQ(rows, server) << "the dialects differ";
    }
    return server;
  }

  static inline std::unique_ptr<fixture::CompanyFile> company_;
};

TEST_F(SupplierCompany, AgingShowsWhatIsOutstandingAtTheDate) {
  EXPECT_THAT(aging(Date::of(2025, 2, 15)),
              ElementsAre("CAD|1|31|1|200", "CAD|1|31|99|-150", "CAD|1|32|1|80"));
  // Payment 43 is an open credit of 100.00 until 45 draws on it.
  EXPECT_THAT(aging(Date::of(2025, 4, 30)), ElementsAre("-|2|34|1|-25", "CAD|1|31|1|200",
                                                        "CAD|1|31|99|-150", "CAD|1|43|99|-100"));
  // The draw clears purchase 31. What 44 applied beyond its amount is a positive row.
  EXPECT_THAT(aging({}), ElementsAre("-|2|34|1|-25", "CAD|1|43|99|-50", "CAD|1|44|99|10"));
}

TEST_F(SupplierCompany, AgingLimitsTheDocumentsDateToo) {
  // Payment 46 is dated before its purchase: its row stands under a document not yet dated.
  EXPECT_THAT(aging(Date::of(2025, 6, 12), true, 1),
              ElementsAre("CAD|1|31|1|200", "CAD|1|31|99|-150", "CAD|1|31|99|-50", "CAD|1|32|1|80",
                          "CAD|1|32|99|-78.4", "CAD|1|32|100|-1.6", "CAD|1|43|99|-50"));
}

TEST_F(SupplierCompany, AgingByCurrencyCountsNoCurrencyAsTheFirst) {
  EXPECT_THAT(aging({}, false, 0, true),
              ElementsAre("CAD|1|43|99|-50", "CAD|1|44|99|10", "CAD|2|34|1|-25", "USD|-|-|-|-"));
}

TEST_F(SupplierCompany, BalancesAndHistoryAgree) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CSupplierQueries queries;
    EXPECT_THAT(lines(queries.OpenSuppBalance(0, {}, 0, ""), {"ExSuppId", "SuppBalance"}),
                ElementsAre("1|-40", "2|-25"));
    EXPECT_THAT(lines(queries.OpenSuppBalance(1, Date::of(2025, 4, 30), 0, "ExCurrencyId"),
                      {"ExSuppId", "ExCurrencyId", "SuppBalance"}),
                ElementsAre("1|1|-50"));
    EXPECT_THAT(lines(queries.OpenSuppHistoryList(1, Date::of(2025, 2, 20), Date::of(2025, 3, 5)),
                      {"InPurcID", "PurcType", "TotalToPay"}),
                UnorderedElementsAre("42|99|-78.4", "42|100|-1.6", "43|99|-100"));
    EXPECT_EQ(lines(queries.OpenSuppHistoryList(1, {}, {})).size(), 11U);
    EXPECT_THAT(lines(queries.OpenSuppPreviousBalanceInfo(1, Date::of(2025, 3, 5))),
                ElementsAre("50"));
    EXPECT_THAT(lines(queries.OpenPurcBalanceAtDate(31, Date::of(2025, 2, 10))),
                ElementsAre("31|50"));
    EXPECT_THAT(lines(queries.OpenPurcBalanceAtDate(31, {})), ElementsAre("31|0"));
    EXPECT_THAT(lines(queries.OpenSuppOpenCredits(1), {"InPmtId"}),
                UnorderedElementsAre("43", "44"));
    EXPECT_EQ(lines(queries.OpenUnappliedPayment(43)).size(), 1U);
  }
}

TEST_F(SupplierCompany, ReceptionsAndOrders) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CSupplierQueries queries;
    EXPECT_THAT(lines(queries.OpenSuppOpenRec(1, ""), {"InPurcId"}), ElementsAre("36"));
    EXPECT_THAT(lines(queries.OpenSuppOpenRec(1, "12,36")), IsEmpty());
    EXPECT_THAT(lines(queries.OpenSuppOpenPurcOrd(1, "36"), {"InPurcId"}), ElementsAre("35"));
    EXPECT_THAT(lines(queries.OpenSuppPurcOpenExpectedRec(1, 0), {"InPurcId"}), ElementsAre("35"));
    EXPECT_THAT(lines(queries.OpenSuppPurcOpenExpectedRec(1, 52)), IsEmpty());
    EXPECT_THAT(lines(queries.OpenSuppExpectedPurcOrd(1), {"InPurcId"}), ElementsAre("35"));
  }
}

TEST_F(SupplierCompany, LastDocuments) {
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CSupplierHelper helper;
    const auto payment = helper.GetLastPmtInfo(1);
    EXPECT_EQ(payment->LastPmtCode(), 44);
    EXPECT_EQ(payment->LastPmtDate(), Date::of(2025, 7, 12));
    EXPECT_EQ(payment->LastPmtAmnt(), Currency::fromInteger(30));
    EXPECT_EQ(payment->LastPmtType(), "CHQ");
    const auto purchase = helper.GetLastPurcInfo(1);
    EXPECT_EQ(purchase->LastPurcCode(), 37);
    EXPECT_EQ(purchase->LastPurcType(), 2);
    EXPECT_EQ(helper.GetLastPurcInfo(3)->LastPurcCode(), 0);
    EXPECT_EQ(helper.GetSuppBalance(1, Date::of(2025, 4, 30)), Currency::fromInteger(-50));
  }
}

TEST_F(SupplierCompany, ProjectCostsNeedExtraFields) {
  company_->load("GLDet",
                 "SeqNo,DetDate,Source,ExSrcKeyVal,ExAcctId,DetAmnt,ForeignAmnt,ExProjId\n"
                 "1,2025-01-10,PUR,31,5000,200,190,5\n2,2025-02-01,EXP,32,5000,80,80,6\n"
                 "2,2025-02-01,INV,32,5000,9,9,6\n");
  for (const auto dialect : fixture::kDialects) {
    const auto host = company_->host(dialect);
    CSupplierQueries queries;
    EXPECT_THROW(queries.OpenSuppCostByProject(1, {}, 0, 0, ""), Error);
    EXPECT_THAT(lines(queries.OpenSuppCostByProject(0, {}, 6, 0, "Source")),
                ElementsAre("200|190|1|5|PUR", "80|80|1|6|EXP"));
    EXPECT_THAT(lines(queries.OpenSuppCostByProject(1, {}, 6, 0, "Source")),
                ElementsAre("80|80|1|6|EXP"));
  }
}

}  // namespace
