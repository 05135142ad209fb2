// The check finds what is planted, and nothing in a sound company.
#include <gmock/gmock.h>

#include <random>

#include "company/company_file.h"
#include "host/raw_sql.h"

namespace companytest {
namespace {

using QuorHost::checkCompany;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Check : public BareCompany {
 protected:
  void SetUp() override {
    BareCompany::SetUp();
    import(*store_, "Cust", "InCustId,Name\n1,Aubé\n2,Baker\n");
    import(*store_, "Supp", "InSuppId,Name\n1,Acier\n");
    import(*store_, "GLAcct", "InGLAcctId,GLAcctId\n1100,1100\n4010,4010\n");
    import(*store_, "InvoiHdr",
           "InInvoiId,InvoiType,ExCustId,InvoiDate,TotAmnt,RecAmnt,Balance\n"
           "1,1,1,2024-01-01,0.40,0.10,0.30\n");
    import(*store_, "InvoiDet", "InInvoiDetId,ExInvoiId,LineAmnt\n1,1,0.30\n");
    import(*store_, "PmtHdr", "InPmtId,ExCustId,PmtDate,PmtTotAmnt\n2,1,2024-02-01,0.30\n");
    import(*store_, "PmtDet", "InPmtDetId,ExPmtId,ExInvoiId,PmtAmnt\n1,2,1,0.30\n");
    import(*store_, "GLDet",
           "InGLDetId,SeqNo,DetDate,Source,ExAcctId,DetAmnt\n1,5,2024-01-01,INV,1100,0.30\n"
           "2,5,2024-01-01,INV,4010,-0.10\n3,5,2024-01-01,INV,4010,-0.20\n");
  }

  void tamper(const char* sql) {
    store_.reset();
    QuorHost::Testing::runRaw(path_, sql);
    store_ = QuorHost::openCompanyFile(path_, QuorHost::Access::Write);
  }

  [[nodiscard]] std::vector<std::string> findingsInFile() const {
    std::vector<std::string> findings;
    checkCompany(path_, [&](const std::string& line) { findings.push_back(line); });
    return findings;
  }
};

TEST_F(Check, ASoundCompanyHasNoFindings) { EXPECT_THAT(checkCompany(*store_), IsEmpty()); }

TEST_F(Check, FindsALedgerThatDoesNotBalance) {
  import(*store_, "GLDet",
         "InGLDetId,SeqNo,DetDate,Source,ExAcctId,DetAmnt\n4,6,2024-01-01,GJ,1100,0.01\n"
         "5,7,2024-01-01,GJ,9999,1\n6,7,2024-01-01,GJ,1100,-1\n");
  EXPECT_THAT(
      checkCompany(*store_),
      ElementsAre("Ledger transaction 6 of GLDet does not balance: its lines add up to 0.01",
                  "Row 5 of GLDet is posted to account 9999, which is missing in GLAcct"));
}

TEST_F(Check, FindsABalanceSheetThatDoesNotBalance) {
  import(*store_, "AccountType", "ID,ExAcctTypeDefId\n1,1\n4,2\n");
  import(*store_, "FiscalYearHdr",
         "ID,BegDate,EndDate\n1,2023-01-01,2023-12-31\n"
         "2,2024-01-01,2024-12-31\n");
  import(*store_, "FiscalYearDet",
         "ID,ExID,BegDate,EndDate\n1,1,2023-12-01,2023-12-31\n"
         "2,2,2024-01-01,2024-01-31\n3,2,2024-02-01,2024-02-29\n");
  import(*store_, "GLAcct", "InGLAcctId,GLAcctId,AcctType\n1,1,1\n4,4,4\n5,5,\n");
  import(*store_, "GLDet",
         "SeqNo,DetDate,Source,ExAcctId,DetAmnt\n8,2023-12-31,GJ,1,7\n8,2023-12-31,GJ,4,-7\n"
         "9,2024-02-03,GJ,1,2\n9,2024-02-03,GJ,5,-2\n");
  import(*store_, "GJTrxHdr", "InGJTrxId,TrxDate\n8,2023-12-31\n");
  import(*store_, "GJTrxDet", "ExGJTrxId,ExGLAcctId,Amount\n8,1,7\n8,4,-6\n");
  tamper(
      "UPDATE GLAcct SET AcctType = 1 WHERE InGLAcctId = 1100; "
      "UPDATE GLAcct SET AcctType = 4 WHERE InGLAcctId = 4010;");
  EXPECT_THAT(checkCompany(*store_),
              ElementsAre("The lines of journal entry 8 of GJTrxHdr add up to 1 and not to zero",
                          HasSubstr("The balance sheet of 2024-02-29 does not balance: assets, "
                                    "liabilities, equity and earnings add up to 2.00")));
}

TEST_F(Check, FindsRowsThatPointAtNothing) {
  tamper("DELETE FROM InvoiHdr WHERE InInvoiId = 1");
  EXPECT_THAT(
      checkCompany(*store_),
      AllOf(Contains(AllOf(HasSubstr("InvoiDet"), HasSubstr("row 1"))),
            Contains(AllOf(HasSubstr("PmtDet"), HasSubstr("InvoiHdr"))), testing::SizeIs(2)));
  tamper("DELETE FROM Cust WHERE InCustId = 1");
  EXPECT_THAT(checkCompany(*store_),
              Contains(AllOf(HasSubstr("PmtHdr"), HasSubstr("row 2"), HasSubstr("Cust"))));
}

TEST_F(Check, FindsPaymentLinesThatMakeNoSense) {
  import(*store_, "PmtHdr", "InPmtId,ExCustId,PmtDate,PmtTotAmnt\n3,2,2024-03-01,10\n");
  import(*store_, "PmtDet",
         "InPmtDetId,ExPmtId,ExInvoiId,ExPmtRefId,PmtAmnt\n2,3,1,,0.10\n3,3,,,5\n4,2,1,3,0\n");
  import(*store_, "PurcHdr", "InPurcId,PurcType,ExSuppId,PurcDate\n8,51,1,2024-01-01\n");
  import(*store_, "SuppPmtHdr", "InPmtId,ExSuppId,ChqDate,PmtTotAmnt\n9,1,2024-03-01,6\n");
  import(*store_, "SuppPmtDet", "InPmtDetId,ExPmtId,ExPurcId,PmtAmnt\n1,9,8,5\n2,9,,1\n");
  EXPECT_THAT(
      checkCompany(*store_),
      ElementsAre(
          "Row 3 of PmtDet (payment 3) must name either a document or an earlier payment",
          "Row 4 of PmtDet (payment 2) must name either a document or an earlier payment",
          "Row 2 of PmtDet pays document 1 of InvoiHdr, which is another customer's",
          "Row 2 of SuppPmtDet (payment 9) must name either a document or an earlier payment",
          "Row 1 of SuppPmtDet pays document 8 of PurcHdr, which is an order or a reception"));
}

TEST_F(Check, FindsBalancesAndPaymentsThatCannotBe) {
  import(*store_, "CieInfo", "InCieId,Name\n1,Un\n2,Deux\n");
  import(*store_, "WorldCurrency", "InCurrencyId,CurrencyCode,ExCustAcctId\n1,CAD,1200\n");
  import(*store_, "InvoiHdr",
         "InInvoiId,InvoiType,ExCustId,InvoiDate,TotAmnt,Balance\n7,5,1,2024-05-05,0,0\n"
         "8,1,1,2024-05-05,5,4\n");
  import(*store_, "PurcHdr",
         "InPurcId,PurcType,ExSuppId,PurcDate,TotAmnt,PaidAmnt,Balance\n"
         "8,1,1,2024-01-01,9,2,9\n");
  import(*store_, "PmtDet", "ExPmtId,ExInvoiId,PmtAmnt\n2,8,0.5\n");
  EXPECT_THAT(
      checkCompany(*store_),
      ElementsAre(
          "Row 2 of CieInfo (Deux) is a second company: a file holds one",
          "Document 7 of InvoiHdr is of type 5, which is unknown",
          "Document 8 of InvoiHdr has a Balance of 4, but TotAmnt less RecAmnt is 5",
          "Payment 2 of PmtHdr is applied beyond its amount: of 0.3, -0.5 are left",
          "Control account 1200: on 2024-01-01 the documents and payments of its customers come "
          "to 0.3 more than the ledger",
          "Control account 1200: on 2024-02-01 the documents and payments of its customers come "
          "to -0.3 more than the ledger",
          "Control account 1200: on 2024-05-05 the documents and payments of its customers come "
          "to 4 more than the ledger",
          "Document 8 of PurcHdr has a Balance of 9, but TotAmnt less PaidAmnt is 7"));
}

TEST_F(Check, FindsDueDatesAndSchedulesThatCannotBe) {
  import(*store_, "Term", "InTermId,TermId,TermMode,Due\n1,N30,4,30\n2,FIXED,2,\n3,BAD,4,\n");
  import(*store_, "TermDet", "ExTermId,DueDate\n2,2024-05-15\n2,2024-01-01\n");
  import(*store_, "InvoiHdr",
         "InInvoiId,InvoiType,ExCustId,InvoiDate,DueDate,ExTermId\n2,51,1,2024-01-01,2024-01-31,1\n"
         "3,51,1,2024-01-01,2024-02-01,1\n4,51,1,2024-01-01,,2\n5,51,1,2024-01-01,2024-05-15,2\n"
         "6,51,1,2024-01-01,2024-01-01,9\n7,51,1,2024-01-01,2024-01-01,3\n");
  import(*store_, "TrxRec",
         "TrxType,ExTrxId,Frqncy,LastRun,NextRun\n1,2,3,2024-01-01,2024-02-01\n1,99,3,,\n"
         "1,3,9,,\n1,4,3,2024-02-01,2024-02-01\n4,1,3,,\n");
  import(*store_, "Proj", "InProjId\n1\n");
  import(*store_, "FiscalYearHdr", "ID,BegDate,EndDate\n1,2024-01-01,2024-12-31\n");
  import(*store_, "FiscalYearDet", "ID,ExID,BegDate,EndDate\n1,1,2024-01-01,2024-01-31\n");
  import(*store_, "ProjBudgets", "ExID,ExSegmentId,ExFiscalYearDetId\n1,0,1\n1,2,1\n1,2,1\n");
  tamper("UPDATE Supp SET ExTermId = 9");
  for (const char* const change : {"UPDATE GLDet SET ExProjId = 8 WHERE InGLDetId = 2",
                                   "UPDATE GLDet SET ExProjId = 1 WHERE InGLDetId = 3"}) {
    std::int32_t changed = 0;
    store_->connect(QuorHost::Sql::Dialect::Server)->Execute(change, changed, -1, {});
  }
  EXPECT_THAT(
      checkCompany(*store_),
      ElementsAre(
          "Document 3 of InvoiHdr is due on 2024-02-01, but by its payment term N30 on 2024-01-31",
          "Document 4 of InvoiHdr is due on no day, but by its payment term FIXED on 2024-05-15",
          "Document 6 of InvoiHdr has the payment term 9, which is missing in Term",
          HasSubstr("Document 7 of InvoiHdr has the payment term BAD, which gives no due date"),
          "Supplier 1 of Supp has the payment term 9, which is missing in Term",
          HasSubstr("transaction 3 of type 1 in TrxRec has the frequency 9"),
          HasSubstr("transaction 4 of type 1 in TrxRec ran last on 2024-02-01"),
          HasSubstr("transaction 99 of type 1 in TrxRec is that of a document that is missing"),
          HasSubstr("transaction 1 of type 4 in TrxRec is that of a document that is missing"),
          "Row 2 of GLDet is on project 8, which is missing in Proj",
          HasSubstr("Project 1 has 2 budgets in ProjBudgets for segment 2 and fiscal period 1")));
}

TEST_F(Check, FindsWhatNobodyDefined) {
  store_.reset();
  QuorHost::Testing::runRaw(
      path_,
      "CREATE TRIGGER Skim AFTER INSERT ON PmtHdr BEGIN DELETE FROM PmtHdr; END;"
      "CREATE VIEW Extra AS SELECT 1 AS X; DROP INDEX GLDetByProj");
  const std::vector<std::string> findings = findingsInFile();
  for (const char* const part :
       {"trigger Skim on PmtHdr", "view Extra", "index GLDetByProj is missing"}) {
    EXPECT_THAT(findings, Contains(HasSubstr(part)));
  }
}

TEST_F(Check, FindsValuesThatNoTypeHolds) {
  tamper(
      "UPDATE Cust SET Name = CAST(X'C328' AS TEXT), ExTermId = 2147483648,"
      " CredOfficeDate = 'soon' WHERE InCustId = 2;"
      "UPDATE InvoiHdr SET ExchangeRate = 9e999");
  EXPECT_THAT(checkCompany(*store_),
              ElementsAre(HasSubstr("Row 2 of Cust, column Name: the text is not UTF-8"),
                          HasSubstr("Row 2 of Cust, column ExTermId"),
                          HasSubstr("Row 2 of Cust, column CredOfficeDate"),
                          HasSubstr("Row 1 of InvoiHdr, column ExchangeRate: the number is not")));
}

TEST_F(Check, TellsWhatItFindsInWhateverIsLeftOfAFile) {
  import(*store_, "GLDet",
         "InGLDetId,SeqNo,DetDate,Source,ExAcctId,DetAmnt\n4,6,2024-01-01,GJ,1100,0.01\n");
  store_.reset();
  const std::string sound = bytesOf(path_);
  std::minstd_rand random(1);
  int checked = 0;
  for (int turn = 0; turn < 60; ++turn) {
    std::string bytes = sound;
    for (int i = 0; i < 4; ++i) {
      char& byte = bytes[200 + random() % (bytes.size() - 200)];
      byte = static_cast<char>(byte ^ (1 << random() % 8));
    }
    std::ofstream(path_, std::ios::binary) << bytes;
    std::vector<std::string> findings;
    const std::string refusal = failure([&] { findings = findingsInFile(); });
    // A file that cannot be opened at all has no findings; any other has the planted one or says
    // what hides it.
    EXPECT_NE(refusal.empty(), findings.empty()) << turn << refusal;
    checked += refusal.empty() ? 1 : 0;
  }
  EXPECT_GT(checked, 30);
}

TEST_F(Check, ReportsADamagedFile) {
  store_.reset();
  std::string bytes = bytesOf(path_);
  // The payment's date stands in its row and in an index; now they disagree.
  const std::size_t date = bytes.find("2024-02-01");
  ASSERT_NE(date, std::string::npos);
  bytes[date + 9] = '2';
  std::ofstream(path_, std::ios::binary) << bytes;
  store_ = QuorHost::openCompanyFile(path_, QuorHost::Access::Read);
  EXPECT_THAT(checkCompany(*store_), Contains(HasSubstr("PmtHdr")));
}

}  // namespace
}  // namespace companytest
