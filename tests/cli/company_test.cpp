// The commands on a small company whose figures are worked out by hand.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "platform/values/currency.h"
#include "tests/cli/run_program.h"
#include "tests/cli/temporary_path.h"

namespace QuorCli {
namespace {

using nlohmann::json;
using QuorDataLib::Currency;
using QuorTest::Outcome;
using QuorTest::runProgram;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

/// A company with two customers that owe, one that has paid, and a supplier. Its books:
/// - Léger: F-10 of 1,150.00 less 480.00 paid and 10.00 discount, credit note N-11 of 50.00, F-12
/// of
///   200.00; of the payment C-20 20.00 are left, and the deposit C-22 of 300.00 on the order O-15
///   is a credit until the order is invoiced;
/// - Acme owes 1,000.00 dollars at 1.3675;
/// - Zénith paid F-14 in full on 2025-10-20;
/// - 400.00 were bought from Bois Laurentide, 150.00 paid, of which 100.00 were applied.
class CompanyCommands : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_EQ(runProgram({"company", "create", file(), "--force"}).code, kDone);
    load("CieInfo",
         "InCieId,Name,HomeCurrencyId,ForeignCurrencyUsed,AccountTypeChart,SessionDate\n"
         "1,Érable & Fils inc.,1,true,1,2025-12-31\n");
    load("WorldCurrency",
         "InCurrencyId,CurrencyCode,Descr\n1,CAD,Dollar\n2,USD,US dollar\n3,EUR,Euro\n");
    load("Cust",
         "InCustId,CustId,Name,ExCurrencyId\n1,LEG,Léger Ltée,1\n2,ACM,Acme Corp.,2\n"
         "3,ZEN,Zénith,1\n");
    load(
        "InvoiHdr",
        "InInvoiId,InvoiId,InvoiType,ExCustId,InvoiDate,TotAmnt,Balance,ExchangeRate,ExCurrencyId\n"
        "10,F-10,1,1,2025-09-15,1150,1150,,1\n"
        "11,N-11,4,1,2025-11-20,-50,-50,,1\n"
        "12,F-12,1,1,2025-12-20,200,200,,1\n"
        "13,F-13,2,2,2025-12-01,1000,1000,1.3675,2\n"
        "14,F-14,1,3,2025-10-01,100,100,,1\n"
        "15,O-15,51,1,2025-12-01,500,500,,1\n");
    load("PmtHdr",
         "InPmtId,ExCustId,PmtDate,ChqNo,PmtType,PmtTotAmnt,ExCurrencyId\n"
         "20,1,2025-10-15,C-20,CHQ,500,1\n"
         "21,3,2025-10-20 09:30:00,C-21,CHQ,100,1\n"
         "22,1,2025-12-28,C-22,EFT,300,1\n");
    load("PmtDet", "ExPmtId,ExInvoiId,PmtAmnt,PmtDisc\n20,10,480,10\n21,14,100,0\n22,15,300,0\n");
    load("Supp", "InSuppId,SuppId,Name,ExCurrencyId\n1,BOIS,Bois Laurentide,1\n");
    load("PurcHdr",
         "InPurcId,DocNo,PurcType,ExSuppId,PurcDate,TotAmnt,Balance,ExCurrencyId\n"
         "30,A-30,1,1,2025-11-01,400,400,1\n");
    load("SuppPmtHdr",
         "InPmtId,ExSuppId,ChqDate,ChqNo,PmtTotAmnt,ExCurrencyId\n40,1,2025-12-01,777,150,1\n");
    load("SuppPmtDet", "ExPmtId,ExPurcId,PmtAmnt\n40,30,100\n");
  }
  static void TearDownTestSuite() { std::filesystem::remove(file()); }

  static std::string file() { return temporaryPath("company"); }

  static void load(const std::string& table, const std::string& csv) {
    const Outcome outcome = runProgram({"company", "import", file(), table, "-"}, csv);
    ASSERT_EQ(outcome.code, kDone) << outcome.err;
  }

  /// Runs a command against the company.
  static Outcome run(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--company", file()});
    return runProgram(arguments);
  }

  static std::string output(const std::vector<std::string>& arguments) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.code, kDone) << outcome.err;
    return outcome.out;
  }
};

TEST_F(CompanyCommands, agingOfCustomersIsWhatTheBooksSay) {
  const std::string expected =
      "Érable & Fils inc.\n"
      "Customer aging as at 2025-12-31\n"
      "\n"
      "LEG Léger Ltée (customer 1), CAD\n"
      "  Document  Type          Date        Days   Balance       0-30    31-60    61-90   over "
      "90\n"
      "  F-10      invoice       2025-09-15   107    660.00                                 "
      "660.00\n"
      "  C-20      credit        2025-10-15    77    (20.00)                      (20.00)\n"
      "  N-11      credit note   2025-11-20    41    (50.00)             (50.00)\n"
      "  F-12      invoice       2025-12-20    11    200.00     200.00\n"
      "  C-22      credit        2025-12-28     3   (300.00)   (300.00)\n"
      "  Total CAD                                   490.00    (100.00)  (50.00)  (20.00)   "
      "660.00\n";
  for (const std::string engine : {"server", "desktop"}) {
    const std::string report = output({"aging", "customers", "--engine", engine});
    EXPECT_THAT(report, testing::StartsWith(expected)) << engine;
    EXPECT_THAT(report, AllOf(Not(HasSubstr("Zénith")), ContainsRegex("\n  F-13 .* 1,000\\.00 "),
                              ContainsRegex("Total USD, 1 customer, 1 document +1,000\\.00 "),
                              ContainsRegex("All in CAD, at the documents' rates +1,857\\.50 ")));
  }
}

TEST_F(CompanyCommands, agingFollowsItsOptions) {
  const std::string october = output({"aging", "customers", "--as-of", "2025-10-01"});
  EXPECT_THAT(october, AllOf(ContainsRegex("F-10 .* 16 +1,150\\.00 "),
                             ContainsRegex("F-14 .*  0 +100\\.00 "), Not(HasSubstr("credit"))));
  // A payment with a time of day belongs to its day.
  EXPECT_THAT(output({"aging", "customers", "--as-of", "2025-10-20"}), Not(HasSubstr("Zénith")));
  EXPECT_THAT(output({"aging", "customers", "--all"}), ContainsRegex("F-14 .* 91 +0\\.00\n"));
  EXPECT_THAT(output({"aging", "customers", "--party", "2"}),
              AllOf(HasSubstr("Acme"), Not(HasSubstr("Léger"))));
  EXPECT_THAT(output({"aging", "customers", "--party", "3"}), HasSubstr("Nothing to show"));
  EXPECT_EQ(output({"aging", "customers", "--party", "acm"}),
            output({"aging", "customers", "--party", "2"}));
  EXPECT_THAT(run({"aging", "customers", "--party", "99"}).err, HasSubstr("no customer"));
  EXPECT_THAT(run({"aging", "customers", "--party", "LEGR"}).err, HasSubstr("Did you mean LEG?"));
  EXPECT_THAT(run({"aging", "customers", "--party", "corp"}).err,
              HasSubstr("By that name there is ACM (Acme Corp.)."));
  EXPECT_THAT(output({"aging", "customers", "--by-currency"}),
              AllOf(HasSubstr("\n\nCAD\n\nLEG Léger"), HasSubstr("\n\nUSD\n\nACM Acme"),
                    Not(HasSubstr("EUR"))));
  EXPECT_THAT(output({"aging", "customers", "--set", "Company.SessionDate=2025-09-20"}),
              AllOf(HasSubstr("as at 2025-09-20"), HasSubstr("Total CAD, 1 customer, 1 document")));

  const json rows = json::parse(
      output({"aging", "customers", "--format", "json", "--buckets", "15,100"}))["rows"];
  ASSERT_EQ(rows.size(), 6U);
  EXPECT_EQ(rows[0].dump(), R"([1,"LEG","Léger Ltée","CAD","invoice",1,10,"F-10","2025-09-15",107,)"
                            R"("660.0000","660.0000","0.0000","0.0000","660.0000"])");
  EXPECT_EQ(rows[5].dump(),
            R"([2,"ACM","Acme Corp.","USD","counter sale",2,13,"F-13","2025-12-01",30,)"
            R"("1000.0000","1367.5000","0.0000","1000.0000","0.0000"])");
}

TEST_F(CompanyCommands, agingOfSuppliers) {
  EXPECT_THAT(output({"aging", "suppliers"}),
              AllOf(HasSubstr("BOIS Bois Laurentide (supplier 1), CAD"),
                    ContainsRegex("A-30 +purchase +2025-11-01 +60 +300\\.00 +300\\.00\n"),
                    ContainsRegex("777 +credit +2025-12-01 +30 +\\(50\\.00\\) +\\(50\\.00\\)\n"),
                    ContainsRegex("Total CAD +250\\.00 +\\(50\\.00\\) +300\\.00 ")));
}

TEST_F(CompanyCommands, callsGoThroughTheConnectionAsked) {
  const std::vector<std::string> call{"call",         "CCustomerHelper.GetCustBalance",
                                      "CustomerId=1", "AsOfDate=2025-12-31",
                                      "--format",     "json"};
  EXPECT_EQ(output(call),
            "{\"result\":{\"type\":\"currency\",\"value\":\"490.0000\"},\"outputs\":{}}\n");
  std::vector<std::string> cached = call;
  cached.emplace_back("--cache");
  EXPECT_EQ(output(cached), output(call));

  const std::string trace = temporaryPath("trace");
  output({"call", "CCustomerQueries.OpenCustOpenCredits", "CustomerId=1", "--trace", trace});
  std::ifstream lines(trace);
  std::string line;
  ASSERT_TRUE(std::getline(lines, line));
  EXPECT_EQ(json::parse(line)["connection"], "custom");
  std::filesystem::remove(trace);

  EXPECT_EQ(run({"call", "CQueries.Customer", "--trace", file()}).code, kWrongUse);
  EXPECT_EQ(output({"call", "CCustomerHelper.GetLastSaleInfo", "CustomerId=2"}),
            "LastSaleDate = 2025-12-01\nLastSaleAmnt = 1000.0000\nLastSaleCode = 13\n"
            "LastSaleType = 2\n");
}

TEST_F(CompanyCommands, errorsOfTheComponentNameTheirPlace) {
  const std::vector<std::string> broken{"call", "CCustomerQueries.OpenCustAgingTransactions",
                                        "FieldList=NoSuchColumn"};
  const Outcome raised = run(broken);
  EXPECT_EQ(raised.code, kFailed);
  EXPECT_THAT(raised.err, AllOf(testing::StartsWith("quoracc: "), HasSubstr("NoSuchColumn"),
                                HasSubstr("QuorAccQueries.CCustomerQueries.OpenCustAgingTrans")));
  std::vector<std::string> left = broken;
  left.insert(left.end(), {"--on-error", "leave", "--format", "json"});
  EXPECT_EQ(json::parse(output(left))["result"]["value"], nullptr);
}

TEST_F(CompanyCommands, sqlReadsInTheDialectOfTheEngine) {
  const std::string text =
      "SELECT InvoiId, Balance, InvoiDate FROM InvoiHdr WHERE InvoiDate >= ? AND ExCustId = ? "
      "ORDER BY InInvoiId";
  const std::vector<std::string> query{"sql", text, "2025-12-01", "1", "--format", "json"};
  const json rows = json::parse(output(query));
  EXPECT_EQ(rows["columns"].dump(), R"([{"name":"InvoiId","type":"text"},)"
                                    R"({"name":"Balance","type":"currency"},)"
                                    R"({"name":"InvoiDate","type":"date"}])");
  EXPECT_EQ(rows["rows"].dump(),
            R"([["F-12","200.0000","2025-12-20"],["O-15","500.0000","2025-12-01"]])");
  EXPECT_EQ(output({"sql", "SELECT InvoiId FROM InvoiHdr WHERE Balance < ?", "-49.99", "--format",
                    "csv"}),
            "InvoiId\r\nN-11\r\n");
  EXPECT_THAT(output({"sql", "SELECT Name FROM Cust WHERE Name = ?", "[a,b]"}),
              HasSubstr("(0 rows)"));

  const std::string server = "SELECT COALESCE(Descr, '') FROM WorldCurrency";
  EXPECT_EQ(run({"sql", server}).code, kDone);
  EXPECT_EQ(run({"sql", server, "--engine", "desktop"}).code, kFailed);
  EXPECT_EQ(run({"sql", "SELECT Name FROM Cust WHERE InCustId = ?"}).code, kFailed);
}

TEST_F(CompanyCommands, sqlWritesOnlyWhenAskedTo) {
  const std::vector<std::string> update{"sql", "UPDATE Supp SET City = ? WHERE InSuppId = ?",
                                        "Trois-Rivières", "1"};
  const Outcome refused = run(update);
  EXPECT_EQ(refused.code, kFailed);
  EXPECT_THAT(refused.err, HasSubstr("--write"));
  std::vector<std::string> allowed = update;
  allowed.emplace_back("--write");
  EXPECT_EQ(output(allowed), "1 row affected\n");
  EXPECT_THAT(output({"sql", "SELECT City FROM Supp", "--format", "csv"}),
              HasSubstr("Trois-Rivières"));
  allowed.insert(allowed.end(), {"--format", "json"});
  EXPECT_EQ(json::parse(output(allowed))["result"]["value"], 1);
}

TEST_F(CompanyCommands, exportsWhatImportTakesBack) {
  const Outcome exported = runProgram({"company", "export", file(), "Cust"});
  ASSERT_EQ(exported.code, kDone);
  const std::string copy = temporaryPath("copy");
  ASSERT_EQ(runProgram({"company", "create", copy, "--force"}).code, kDone);
  for (int time = 0; time < 2; ++time) {
    EXPECT_THAT(runProgram({"company", "import", copy, "Cust", "-", "--replace"}, exported.out).out,
                HasSubstr("3 rows loaded into Cust"));
  }
  EXPECT_EQ(runProgram({"company", "export", copy, "Cust"}).out, exported.out);

  const Outcome bad = runProgram({"company", "import", copy, "InvoiHdr", "-"},
                                 "InInvoiId,InvoiType,ExCustId,InvoiDate\n1,1,1,2025-01-01\n"
                                 "2,1,1,yesterday\n");
  EXPECT_EQ(bad.code, kFailed);
  EXPECT_THAT(bad.err, AllOf(HasSubstr("3"), HasSubstr("InvoiDate")));
  EXPECT_EQ(runProgram({"company", "import", copy, "Cust", "/nowhere.csv"}).code, kFailed);
  EXPECT_EQ(runProgram({"company", "create", copy}).code, kFailed);
  std::filesystem::remove(copy);
}

TEST_F(CompanyCommands, backsUpWhatIsThere) {
  const std::string copy = temporaryPath("backup");
  EXPECT_THAT(runProgram({"company", "backup", file(), copy}).out, HasSubstr("copied to"));
  EXPECT_EQ(runProgram({"company", "export", copy, "InvoiHdr"}).out,
            runProgram({"company", "export", file(), "InvoiHdr"}).out);
  const Outcome again = runProgram({"company", "backup", file(), copy});
  EXPECT_EQ(again.code, kFailed);
  EXPECT_THAT(again.err, HasSubstr("--force"));
  EXPECT_EQ(runProgram({"company", "backup", file(), copy, "--force"}).code, kDone);
  EXPECT_EQ(runProgram({"company", "backup", "/nowhere", copy, "--force"}).code, kFailed);
  EXPECT_EQ(runProgram({"company", "check", copy}).code, kDone);
  std::filesystem::remove(copy);
}

TEST_F(CompanyCommands, infoAndCheck) {
  const Outcome info = runProgram({"company", "info", file()});
  EXPECT_THAT(info.out, AllOf(HasSubstr("from 2025-09-15 to 2025-12-20"),
                              ContainsRegex("\nCust +3\n"), ContainsRegex("\nCustAgingDet +8\n")));
  EXPECT_EQ(runProgram({"company", "check", file()}).code, kDone);

  ASSERT_EQ(run({"sql", "UPDATE PmtDet SET ExInvoiId = NULL WHERE ExPmtId = 22", "--write"}).code,
            kDone);
  const Outcome broken = runProgram({"company", "check", file()});
  EXPECT_EQ(broken.code, kFailed);
  EXPECT_THAT(broken.out, HasSubstr("payment 22"));
  EXPECT_THAT(broken.err, HasSubstr("1 finding"));
  ASSERT_EQ(run({"sql", "UPDATE PmtDet SET ExInvoiId = 15 WHERE ExPmtId = 22", "--write"}).code,
            kDone);
}

/// The balances of an aging report by currency.
std::map<std::string, Currency> agedBalances(const std::string& side, const std::string& file) {
  std::map<std::string, Currency> balances;
  std::istringstream lines(
      runProgram({"aging", side, "--as-of", "9999-12-31", "--company", file, "--format", "jsonl"})
          .out);
  for (std::string line; std::getline(lines, line);) {
    const json row = json::parse(line);
    balances[row["Currency"]] += *Currency::parse(row["Balance"].get<std::string>());
  }
  return balances;
}

std::string totalsByCurrency(const std::string& view, const std::string& column) {
  return "SELECT WorldCurrency.CurrencyCode, SUM(" + column + ") AS Total FROM " + view +
         " AS Balances LEFT JOIN WorldCurrency ON WorldCurrency.InCurrencyId = "
         "COALESCE(Balances.ExCurrencyId, 1) GROUP BY WorldCurrency.CurrencyCode";
}

TEST(SampleCompany, agingAddsUpToTheBalances) {
  const std::string file = temporaryPath("sample");
  ASSERT_EQ(runProgram({"company", "create", file, "--sample", "--force"}).code, kDone);
  for (const auto& [side, view, column] :
       {std::array<std::string, 3>{"customers", "CustBalance_View", "CustBalance"},
        std::array<std::string, 3>{"suppliers", "SuppBalance_View", "SuppBalance"}}) {
    const json books = json::parse(
        runProgram({"sql", totalsByCurrency(view, column), "--company", file, "--format", "json"})
            .out);
    std::map<std::string, Currency> balances;
    for (const json& row : books["rows"]) {
      const Currency total = *Currency::parse(row[1].get<std::string>());
      if (!total.isZero()) balances[row[0]] = total;
    }
    EXPECT_GE(balances.size(), 2U);
    EXPECT_EQ(agedBalances(side, file), balances) << side;
  }
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace QuorCli
