// The reports of the ledger and of stock on the sample company: what they say must agree with each
// other and with the books.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
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
using testing::HasSubstr;
using testing::IsEmpty;

class SampleReports : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_EQ(runProgram({"company", "create", file(), "--sample", "--force"}).code, kDone);
  }
  static void TearDownTestSuite() { std::filesystem::remove(file()); }
  static std::string file() { return temporaryPath("reports"); }

  static Outcome run(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--company", file()});
    Outcome outcome = runProgram(arguments);
    EXPECT_EQ(outcome.code, kDone) << outcome.err;
    return outcome;
  }

  /// The rows of a report, by the names of its columns. Nothing may be out of balance.
  static std::vector<json> rows(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--format", "jsonl"});
    const Outcome outcome = run(arguments);
    EXPECT_THAT(outcome.err, IsEmpty());
    std::vector<json> rows;
    std::istringstream lines(outcome.out);
    for (std::string line; std::getline(lines, line);) rows.push_back(json::parse(line));
    return rows;
  }

  static Currency amount(const json& value) {
    return value.is_null() ? Currency() : *Currency::parse(value.get<std::string>());
  }
  static Currency sum(const std::vector<json>& rows, const std::string& column) {
    Currency sum;
    for (const json& row : rows) sum += amount(row[column]);
    return sum;
  }
  static Currency sqlAmount(const std::string& statement) {
    return amount(rows({"sql", statement}).at(0)["Total"]);
  }
};

const std::vector<std::string> kDays{"2022-04-01", "2023-03-31", "2023-04-01", "2024-10-17",
                                     "2025-03-31"};

TEST_F(SampleReports, theLedgersTotalsAreEqualOnEveryDay) {
  for (const std::string& day : kDays) {
    const std::vector<json> trial = rows({"ledger", "trial-balance", "--as-of", day});
    EXPECT_EQ(sum(trial, "Debit"), sum(trial, "Credit")) << day;
    EXPECT_GT(sum(trial, "Debit"), Currency()) << day;
    Currency difference;
    for (const json& row : rows({"ledger", "balance-sheet", "--as-of", day})) {
      difference += row["Side"] == "Assets" ? amount(row["Balance"]) : -amount(row["Balance"]);
    }
    EXPECT_EQ(difference, Currency()) << day;
  }
  EXPECT_THAT(run({"ledger", "trial-balance"}).out, HasSubstr("Debits and credits are equal."));
}

TEST_F(SampleReports, theIncomeStatementIsWhatTheYearAddsToTheBalanceSheet) {
  const std::vector<json> year = rows({"ledger", "income-statement", "--compare", "last-year"});
  Currency net;
  Currency before;
  for (const json& row : year) {
    const bool revenue = row["Side"] == "Revenue";
    net += revenue ? amount(row["Amount"]) : -amount(row["Amount"]);
    before += revenue ? amount(row["LastYear"]) : -amount(row["LastYear"]);
    EXPECT_EQ(amount(row["Difference"]), amount(row["Amount"]) - amount(row["LastYear"]));
  }
  const auto balanceOf = [](const std::string& day, const std::string& account) {
    for (const json& row : rows({"ledger", "balance-sheet", "--all", "--as-of", day})) {
      if (row["AccountId"].dump() == account) return amount(row["Balance"]);
    }
    return Currency();
  };
  const std::string earnings =
      rows({"sql", "SELECT ParamValue FROM QuorAcctParams WHERE ParamName = 'GLCurntEarn'"})
          .at(0)["ParamValue"]
          .dump();
  EXPECT_EQ(net, balanceOf("2025-03-31", earnings));
  EXPECT_EQ(before, balanceOf("2024-03-31", earnings));
  EXPECT_NE(net, Currency());
}

TEST_F(SampleReports, anAccountIsCarriedForwardToItsBalance) {
  for (const json& row : rows({"ledger", "trial-balance"})) {
    const std::string code = row["AccountCode"];
    const std::vector<json> lines = rows({"ledger", "account", code, "--from", "2025-01-01"});
    if (lines.empty()) continue;
    const Currency balance = amount(row["Debit"]) - amount(row["Credit"]);
    EXPECT_EQ(amount(lines.back()["Balance"]), balance) << code;
    const json& first = lines.front();
    const Currency forward =
        amount(first["Balance"]) - amount(first["Debit"]) + amount(first["Credit"]);
    EXPECT_EQ(forward + sum(lines, "Debit") - sum(lines, "Credit"), balance) << code;
  }
}

TEST_F(SampleReports, whatIsNotReconciledIsBetweenTheBooksAndTheBank) {
  const std::vector<json> accounts = rows({"ledger", "checks", "--summary"});
  const std::vector<json> lines = rows({"ledger", "checks"});
  EXPECT_EQ(sum(lines, "Deposit"), sum(accounts, "Deposits"));
  EXPECT_EQ(sum(lines, "Cheque"), sum(accounts, "Cheques"));
  EXPECT_EQ(sum(accounts, "BankBalance"),
            sum(accounts, "BookBalance") - sum(lines, "Deposit") + sum(lines, "Cheque"));
}

TEST_F(SampleReports, stockIsWhatItsMovementsAddUpTo) {
  for (const std::string& day : kDays) {
    const std::vector<json> stock = rows({"stock", "--as-of", day});
    Currency onHand;
    for (const json& row : stock) {
      if (row["Kind"] == "item") onHand += amount(row["OnHand"]);
      EXPECT_EQ(amount(row["Available"]), amount(row["OnHand"]) - amount(row["Reserved"]));
    }
    EXPECT_EQ(onHand,
              sqlAmount("SELECT SUM(InvenDet.Qty) AS Total FROM InvenDet INNER JOIN Item ON "
                        "Item.InItemId = InvenDet.ExItemId WHERE InvenDet.DetDate <= '" +
                        day + "' AND Item.Servc = 0"))
        << day;
  }
  const json one = rows({"stock"}).at(0);
  EXPECT_EQ(rows({"stock", "--item", one["ItemCode"]}), std::vector<json>{one});
}

TEST_F(SampleReports, projectsAreWhatTheLedgerHasOfThem) {
  const auto inPeriod = [](const std::string& from, const std::string& to) {
    return rows({"projects", "--from", from, "--to", to});
  };
  const std::vector<json> all = inPeriod("2022-04-01", "2025-03-31");
  const std::string ofType =
      "SELECT SUM(DetAmnt) AS Total FROM GLDet INNER JOIN GLAcct ON InGLAcctId = ExAcctId WHERE "
      "NOT "
      "ExProjId IS NULL AND AcctType ";
  EXPECT_EQ(sum(all, "Sales"), -sqlAmount(ofType + "= 4"));
  EXPECT_EQ(sum(all, "Purchases"), sqlAmount(ofType + "IN (5, 6, 7)"));
  EXPECT_EQ(sum(all, "Margin"), sum(all, "Sales") - sum(all, "Purchases"));
  Currency years;
  for (const std::string year : {"2022", "2023", "2024"}) {
    years += sum(inPeriod(year + "-04-01", std::to_string(std::stoi(year) + 1) + "-03-31"),
                 "SalesBudget");
  }
  EXPECT_EQ(years, sum(all, "SalesBudget"));
  for (const json& project : all) {
    const std::vector<json> one = rows({"projects", "--from", "2022-04-01", "--to", "2025-03-31",
                                        "--project", project["ProjectCode"]});
    for (const char* const column : {"Sales", "MarginBudget", "Hours"}) {
      EXPECT_EQ(one.at(0)[column], project[column]);
    }
    EXPECT_EQ(one.at(0)["Row"], "project");
    EXPECT_EQ(one.size() > 1, !amount(project["Hours"]).isZero());
  }
  EXPECT_THAT(run({"projects", "--from", "2022-04-01"}).out, HasSubstr("Over budget: P22-02, "));
}

TEST_F(SampleReports, whatIsDueIsWhatIsOpen) {
  const std::vector<json> due = rows({"due", "--until", "2025-05-15"});
  for (const std::string side : {"customers", "suppliers"}) {
    const std::string column = side == "customers" ? "Customers" : "Suppliers";
    std::map<std::string, Currency> open;
    std::map<std::string, Currency> overdue;
    for (const json& row : rows({"aging", side, "--by", "due"})) {
      open[row["Currency"]] += amount(row["Balance"]);
      if (row["Days"] > 0) overdue[row["Currency"]] += amount(row["Balance"]);
    }
    EXPECT_GE(open.size(), 2U);
    for (const json& row : due) {
      open[row["Currency"]] -= amount(row[column]);
      if (row["Period"] == "overdue") overdue[row["Currency"]] -= amount(row[column]);
    }
    for (const auto& [currency, left] : open) EXPECT_EQ(left, Currency()) << currency;
    for (const auto& [currency, left] : overdue) EXPECT_EQ(left, Currency()) << currency;
  }
  Currency running;
  for (const json& row : due) {
    if (row["Period"] == "overdue") running = Currency();
    running += amount(row["Net"]);
    EXPECT_EQ(running, amount(row["Running"]));
  }
}

// Last of all: it changes the company.
TEST_F(SampleReports, whatHasATimeOfDayBelongsToItsDay) {
  const auto texts = [] {
    std::vector<std::string> printed;
    for (std::vector<std::string> report :
         {std::vector<std::string>{"ledger", "trial-balance", "--as-of"},
          {"ledger", "balance-sheet", "--as-of"},
          {"ledger", "checks", "--summary", "--as-of"},
          {"ledger", "income-statement", "--from", "2024-04-01", "--compare", "last-year", "--to"},
          {"projects", "--from", "2024-04-01", "--to"},
          {"stock", "--as-of"}}) {
      report.emplace_back("2024-10-17");
      printed.push_back(run(report).out);
    }
    return printed;
  };
  const std::vector<std::string> before = texts();
  for (const char* const table : {"GLDet", "InvenDet"}) {
    run({"sql", "--write", std::string("UPDATE ") + table + " SET DetDate = DetDate + 0.75"});
  }
  EXPECT_EQ(texts(), before);
}

}  // namespace
}  // namespace QuorCli
