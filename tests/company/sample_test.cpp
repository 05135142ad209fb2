// What holds in the sample company: its books agree with its receivables and payables, and it has
// what a trading business has.
#include <gmock/gmock.h>

#include "company/company_file.h"

namespace companytest {
namespace {

using QuorDataLib::Date;
using QuorHost::Sql::Dialect;
using testing::IsEmpty;

class SampleBooks : public testing::TestWithParam<Dialect> {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::make_unique<Folder>();
    const std::string path = folder_->file("sample");
    QuorHost::createCompany(path, {.sample = true});
    store_ = QuorHost::openCompanyFile(path, QuorHost::Access::Read);
  }
  static void TearDownTestSuite() {
    store_.reset();
    folder_.reset();
  }

  static std::vector<std::string> query(const std::string& sql,
                                        const QuorDataLib::Parameters& parameters = {}) {
    return rows(*store_, sql, GetParam(), parameters);
  }
  static std::int64_t count(const std::string& from) {
    return std::stoll(query("SELECT COUNT(*) FROM " + from).at(0));
  }

  static inline std::unique_ptr<Folder> folder_;
  static inline std::shared_ptr<Store> store_;
};

INSTANTIATE_TEST_SUITE_P(Dialects, SampleBooks, testing::Values(Dialect::Server, Dialect::Desktop),
                         [](const auto& dialect) {
                           return dialect.param == Dialect::Server ? "Server" : "Desktop";
                         });

/// One side of the trade: its balance view and its control accounts, by currency.
struct Side {
  std::string view;
  std::string amount;
  int sign;
  std::string accounts[3];
};
const Side kSides[] = {{"CustBalance_View", "CustBalance", 1, {"1100", "1110", "1120"}},
                       {"SuppBalance_View", "SuppBalance", -1, {"2100", "2110", "2120"}}};

std::string signedSum(int sign, const std::string& column) {
  return (sign < 0 ? "-SUM(" : "SUM(") + column + ")";
}

TEST_P(SampleBooks, ControlAccountsAgreeWithTheBalancesOnEveryDateInEverySegment) {
  for (const Side& side : kSides) {
    const std::string accounts =
        side.accounts[0] + ", " + side.accounts[1] + ", " + side.accounts[2];
    for (const Date date : {Date::of(2022, 9, 17), Date::of(2024, 6, 30), Date::of(2025, 3, 31)}) {
      const auto until = QuorDataLib::Parameters::single(date);
      const auto ledger =
          query("SELECT ExSegmentId, " + signedSum(side.sign, "DetAmnt") +
                    " FROM GLDet WHERE ExAcctId IN (" + accounts +
                    ") AND DetDate <= ? GROUP BY ExSegmentId HAVING SUM(DetAmnt) <> 0 "
                    "ORDER BY ExSegmentId",
                until);
      EXPECT_THAT(ledger, testing::Not(IsEmpty()));
      EXPECT_EQ(query("SELECT ExSegmentId, SUM(" + side.amount + "Home) FROM " + side.view +
                          " WHERE BalanceDate <= ? GROUP BY ExSegmentId HAVING SUM(" + side.amount +
                          "Home) <> 0 ORDER BY ExSegmentId",
                      until),
                ledger)
          << side.view << " " << date.toText();
    }
    for (int currency = 2; currency <= 3; ++currency) {
      EXPECT_EQ(query("SELECT SUM(" + side.amount + ") FROM " + side.view +
                      " WHERE ExCurrencyId = " + std::to_string(currency)),
                query("SELECT " + signedSum(side.sign, "ForeignAmnt") +
                      " FROM GLDet WHERE ExAcctId = " + side.accounts[currency - 1]));
    }
    // What is settled in the party's currency is settled in the books, whatever the rates were.
    EXPECT_THAT(query("SELECT MIN(BalanceDate) FROM " + side.view + " GROUP BY " +
                      (side.sign > 0 ? "ExCustId" : "ExSuppId") + " HAVING SUM(" + side.amount +
                      ") = 0 AND SUM(" + side.amount + "Home) <> 0"),
                IsEmpty());
  }
}

TEST_P(SampleBooks, NothingIsPaidTwiceAndNoCreditIsOverdrawn) {
  for (const char* const unapplied : {"CustPmtUnappl_View", "SuppPmtUnappl_View"}) {
    EXPECT_EQ(count(std::string(unapplied) + " WHERE UnapplAmnt < 0"), 0) << unapplied;
  }
  const char* const kPaid[] = {
      "InvoiHdr INNER JOIN InvoiPaidAmntAll_View AS Paid ON Paid.InInvoiId = InvoiHdr.InInvoiId "
      "WHERE InvoiHdr.InvoiType <> 51",
      "PurcHdr INNER JOIN PurcPaidAmntAll_View AS Paid ON Paid.InPurcId = PurcHdr.InPurcId "
      "WHERE PurcHdr.PurcType <> 51"};
  for (const std::string paid : kPaid) {
    EXPECT_GT(count(paid + " AND Paid.TotalPaid <> 0"), 0);
    EXPECT_EQ(count(paid + " AND ((Balance >= 0 AND (TotalPaid < 0 OR TotalPaid > Balance)) OR "
                           "(Balance < 0 AND (TotalPaid > 0 OR TotalPaid < Balance)))"),
              0);
  }
}

TEST_P(SampleBooks, EveryTransactionBelongsToADocument) {
  const std::pair<const char*, const char*> kSources[] = {
      {"InvoiHdr WHERE InvoiType <> 51 AND TotAmnt <> 0", "'INV'"},
      {"PurcHdr WHERE PurcType < 51 AND TotAmnt <> 0", "'PUR', 'EXP'"},
      {"PmtHdr", "'PMT'"},
      {"SuppPmtHdr", "'CHQ'"},
      {"DepHdr", "'DEP'"},
      {"BankTransfer", "'TRF'"},
      {"GJTrxHdr", "'GJ'"},
      {"TaxTrxHdr", "'TAX'"},
      {"RPDPmtHdr", "'RPD'"},
      // A cancelled pay is posted back.
      {"(SELECT InTrxPayId FROM TrxPay UNION ALL SELECT InTrxPayId FROM TrxPay WHERE Canceled <> 0)"
       " AS Pays",
       "'PAY'"}};
  for (const auto& [documents, sources] : kSources) {
    EXPECT_EQ(count(std::string("(SELECT DISTINCT SeqNo FROM GLDet WHERE Source IN (") + sources +
                    ")) AS Posted"),
              count(documents))
        << documents;
  }
}

TEST_P(SampleBooks, ShowWhatATradingBusinessHas) {
  const char* const kCases[] = {
      "Cust WHERE ExCurrencyId IS NULL",
      "Cust WHERE CustInactive <> 0",
      "Cust WHERE Name LIKE '%É%' OR City LIKE '%é%'",
      "Cust INNER JOIN Cust AS Twin ON Twin.Name = Cust.Name WHERE Twin.InCustId > Cust.InCustId",
      "InvoiHdr WHERE ExCurrencyId = 2",
      "InvoiHdr WHERE ExCurrencyId = 3",
      "InvoiHdr WHERE InvoiType = 2 AND RecAmnt <> 0 AND Balance <> 0",
      "InvoiHdr WHERE InvoiType = 3",
      "InvoiHdr WHERE Balance < 0",
      "InvoiHdr WHERE NOT ExOrderId IS NULL",
      "PmtHdr WHERE PmtType = 'REFUND' AND PmtTotAmnt < 0",
      "PmtHdr WHERE PmtType = 'NSF' AND PmtTotAmnt < 0",
      "PmtHdr WHERE PmtTotAmnt = 0",
      "PmtDet WHERE PmtDisc > 0",
      "PmtDet INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = PmtDet.ExInvoiId WHERE InvoiType = 51",
      "CustAgingDet WHERE PaymentCreditApplication = 1",
      "CustOpenCredits_View",
      "PurcHdr WHERE PurcCredit <> 0",
      "PurcHdr WHERE PurcType = 3",
      "SuppPmtDet WHERE NOT ExPmtRefId IS NULL",
      "SuppPmtDet WHERE PmtDisc > 0",
      "SuppOpenCredits_View",
      "SuppOpenRec_View",
      "SuppOpenPurcOrd_View",
      "PurcOpenExpectedRec_View WHERE QtyExpected > 0",
      "GLDet WHERE ExProjId > 0 AND Source = 'INV' AND ExAcctId = 1310",
      "GLDet WHERE ExProjId > 0 AND Source = 'PAY'",
      "TrxPayDetails, PayCode WHERE InPayCodeId = ExPayCodeId AND PayCodeType = 4 AND ExProjId > 0",
      "TrxPay WHERE Canceled <> 0",
      "DepHdr WHERE SalesAmnt > 0",
      "GJTrxHdr WHERE SalesAmnt > 0",
      "BankTransfer WHERE ExGLAcctIdFrom = 1030",
      "TaxTrxHdr WHERE ChqAmnt > 0",
      "GLAcct WHERE CreatedByUser <> 0",
      "InvoiHdr INNER JOIN Term ON Term.InTermId = InvoiHdr.ExTermId WHERE TermMode = 1",
      "InvoiHdr INNER JOIN Term ON Term.InTermId = InvoiHdr.ExTermId WHERE TermMode = 2",
      "PurcHdr INNER JOIN Term ON Term.InTermId = PurcHdr.ExTermId WHERE TermMode = 3",
      "TrxRec WHERE TrxType = 1 AND NextRun IS NULL",
      "TrxRec WHERE TrxType = 2 AND NextRun < (SELECT SessionDate FROM CieInfo)",
      "TrxRec WHERE TrxType = 3 AND NextRun > (SELECT SessionDate FROM CieInfo)"};
  for (const char* const each : kCases) EXPECT_GT(count(each), 0) << each;
  EXPECT_EQ(count("InvoiHdr WHERE InvoiType IN (1, 2, 3)"), 1000);
  // The check compares due dates with the terms of documents, which all have one.
  for (const char* const documents : {"InvoiHdr", "PurcHdr"}) {
    EXPECT_EQ(count(std::string(documents) + " WHERE ExTermId IS NULL OR DueDate IS NULL"), 0);
  }
}

TEST_P(SampleBooks, CompleteDocumentsAddUp) {
  EXPECT_EQ(count("InvoiHdr WHERE DetAmnt + ShipAmnt + TaxAmnt <> TotAmnt "
                  "OR TotAmnt - RecAmnt <> Balance"),
            0);
  EXPECT_EQ(count("PurcHdr WHERE DetAmnt + ShipAmnt + TaxAmnt <> TotAmnt "
                  "OR TotAmnt - PaidAmnt <> Balance"),
            0);
  for (const char* const lines :
       {"InvoiHdr INNER JOIN (SELECT ExInvoiId AS Document, SUM(LineAmnt) AS Total FROM InvoiDet "
        "GROUP BY ExInvoiId) AS Lines ON Lines.Document = InvoiHdr.InInvoiId",
        "PurcHdr INNER JOIN (SELECT ExPurcId AS Document, SUM(LineAmnt) AS Total FROM PurcDet "
        "GROUP BY ExPurcId) AS Lines ON Lines.Document = PurcHdr.InPurcId"}) {
    EXPECT_EQ(count(std::string(lines) + " WHERE Lines.Total <> DetAmnt"), 0) << lines;
  }
}

TEST_P(SampleBooks, PaysAndRemittancesAddUp) {
  const std::string lines =
      "(SELECT ExTrxPayId, SUM(CASE WHEN PayCodeType IN (3, 4) THEN Amount ELSE 0 END) AS Gross, "
      "SUM(CASE WHEN PayCodeType = 1 THEN Amount ELSE 0 END) AS Deducted FROM TrxPayDetails INNER "
      "JOIN PayCode ON PayCode.InPayCodeId = TrxPayDetails.ExPayCodeId GROUP BY ExTrxPayId) AS "
      "Lines";
  if (GetParam() == Dialect::Server) {
    EXPECT_EQ(count("TrxPay INNER JOIN " + lines +
                    " ON Lines.ExTrxPayId = TrxPay.InTrxPayId WHERE "
                    "Gross <> GrossAmnt OR Gross - Deducted <> NetAmnt"),
              0);
  }
  // What was withheld until the end of February is remitted, and nothing else.
  for (const char* const account : {"2310", "2320"}) {
    EXPECT_EQ(query(std::string("SELECT SUM(DetAmnt) FROM GLDet WHERE ExAcctId = ") + account +
                        " AND ((Source = 'PAY' AND DetDate < ?) OR Source = 'RPD')",
                    QuorDataLib::Parameters::single(Date::of(2025, 3, 1))),
              std::vector<std::string>{"0"});
  }
  EXPECT_EQ(count("(SELECT ExGLAcctId, ChqNo FROM AllIssuedChecks_View WHERE TrxType <> 2 GROUP BY "
                  "ExGLAcctId, ChqNo HAVING COUNT(*) > 1) AS Twice"),
            0);
}

}  // namespace
}  // namespace companytest
