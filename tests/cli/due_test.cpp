// What is due, on a small company whose figures are worked out by hand.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/cli/run_program.h"
#include "tests/cli/temporary_path.h"

namespace QuorCli {
namespace {

using QuorTest::Outcome;
using QuorTest::runProgram;
using testing::HasSubstr;

/// The last of January 2025. Open are invoices of 50 (due the day before), 100 (today), 20 (in a
/// week) and 7 (in December), a credit of 5, 10 dollars without a due date, and a purchase of 30.
/// Schedules: the invoice of 100, net 30, every month and late since the 15th; the purchase every
/// two weeks; a journal entry that takes 12 from the bank every week, and one that has ended.
class Due : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_EQ(runProgram({"company", "create", file(), "--force"}).code, kDone);
    load("CieInfo",
         "InCieId,HomeCurrencyId,ForeignCurrencyUsed,AccountTypeChart,SessionDate\n"
         "1,1,true,1,2025-01-31\n");
    load("WorldCurrency", "InCurrencyId,CurrencyCode\n1,CAD\n2,USD\n");
    load("Term", "InTermId,TermMode,Due\n1,4,30\n");
    load("Cust", "InCustId,CustId,Name,ExCurrencyId\n1,LEG,Léger,1\n2,ACM,Acme,2\n");
    load("Supp", "InSuppId,SuppId,Name,ExCurrencyId\n1,BOI,Bois,1\n");
    load("InvoiHdr",
         "InInvoiId,InvoiType,ExCustId,InvoiDate,DueDate,TotAmnt,Balance,ExchangeRate,ExCurrencyId,"
         "ExTermId\n1,1,1,2025-01-01,2025-01-31,100,100,,1,1\n2,1,1,2024-12-01,2025-01-30,50,50,,1,"
         "\n"
         "3,1,1,2025-01-05,2025-02-07,20,20,,1,\n4,1,1,2025-01-06,2025-12-01,7,7,,1,\n"
         "5,1,2,2025-01-15,,10,10,1.5,2,\n");
    load("PmtHdr", "InPmtId,ExCustId,PmtDate,PmtTotAmnt,ExCurrencyId\n9,1,2025-01-20,5,1\n");
    load("PurcHdr",
         "InPurcId,PurcType,ExSuppId,PurcDate,DueDate,TotAmnt,Balance,ExCurrencyId\n"
         "1,1,1,2025-01-10,2025-02-01,30,30,1\n");
    load("GLAcct", "InGLAcctId,GLAcctId,ChqAcct\n1,1010,true\n5,5010,false\n");
    load("GJTrxHdr", "InGJTrxId,TrxDate\n1,2024-01-01\n2,2025-02-20\n");
    load("GJTrxDet", "ExGJTrxId,ExGLAcctId,Amount\n1,1,-8\n1,5,8\n2,1,-12\n2,5,12\n");
    load("TrxRec",
         "TrxType,ExTrxId,Frqncy,LastRun,NextRun\n1,1,3,2024-12-15,2025-01-15\n"
         "2,1,4,,2025-02-03\n3,1,5,2024-01-01,\n3,2,2,2025-02-20,2025-02-27\n");
  }
  static void TearDownTestSuite() { std::filesystem::remove(file()); }
  static std::string file() { return temporaryPath("due"); }
  static void load(const char* table, const std::string& csv) {
    ASSERT_EQ(runProgram({"company", "import", file(), table, "-"}, csv).code, kDone) << table;
  }
  static Outcome run(std::vector<std::string> options) {
    options.insert(options.begin(), {"due", "--company", file()});
    return runProgram(options);
  }
};

TEST_F(Due, isToldWeekByWeekWithWhatSchedulesWillAdd) {
  EXPECT_EQ(run({"--until", "2025-02-28", "--format", "csv"}).out,
            "Currency,Period,From,To,Customers,Suppliers,RecurringIn,RecurringOut,Net,Running\r\n"
            "CAD,overdue,,2025-01-30,45.0000,0.0000,0.0000,0.0000,45.0000,45.0000\r\n"
            "CAD,week,2025-01-31,2025-02-06,100.0000,30.0000,0.0000,30.0000,40.0000,85.0000\r\n"
            "CAD,week,2025-02-07,2025-02-13,20.0000,0.0000,0.0000,0.0000,20.0000,105.0000\r\n"
            "CAD,week,2025-02-14,2025-02-20,0.0000,0.0000,100.0000,30.0000,70.0000,175.0000\r\n"
            "CAD,week,2025-02-21,2025-02-27,0.0000,0.0000,0.0000,12.0000,-12.0000,163.0000\r\n"
            "CAD,later,2025-03-01,,7.0000,0.0000,100.0000,0.0000,107.0000,270.0000\r\n"
            "USD,overdue,,2025-01-30,10.0000,0.0000,0.0000,0.0000,10.0000,10.0000\r\n");
  const Outcome sheet = run({"--until", "2025-02-28"});
  EXPECT_THAT(sheet.out, HasSubstr("187.00")) << "172 dollars at home and 10 at 1.5";
  EXPECT_THAT(sheet.out,
              HasSubstr("3 schedules of recurring transactions run, 1 of them late: what they have "
                        "missed is to be made yet; 1 ended."));
  // On the last day of all, nothing is made after it.
  EXPECT_THAT(run({"--until", "2025-01-31", "--format", "csv"}).out,
              HasSubstr("CAD,later,2025-02-01,,27.0000,30.0000,100.0000,0.0000,97.0000,242.0000"));
}

TEST_F(Due, refusesDaysThatItCannotTell) {
  EXPECT_THAT(run({"--until", "2025-01-30"}).err, HasSubstr("before the session date, 2025-01-31"));
  EXPECT_THAT(run({"--until", "9999-12-31"}).err, HasSubstr("more than ten years"));
  EXPECT_EQ(run({"--until", "soon"}).code, kWrongUse);
}

}  // namespace
}  // namespace QuorCli
