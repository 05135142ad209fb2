// The program on strings: what it refuses and how, help, description, dry runs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "core/member_table.h"
#include "tests/cli/run_program.h"

namespace QuorCli {
namespace {

using nlohmann::json;
using QuorTest::Outcome;
using QuorTest::runProgram;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(Program, refusesEveryWrongUseWithExitTwo) {
  struct Case {
    std::vector<std::string> arguments;
    std::string message;  // what standard error must hold
  };
  const std::vector<Case> cases{
      {{}, "say which command"},
      {{"compny"}, "Did you mean company?"},
      {{"company"}, "say which command of 'quoracc company'"},
      {{"company", "creat"}, "Did you mean create?"},
      {{"company", "create"}, "FILE is required"},
      {{"company", "create", "x", "--scale", "0"}, "--scale: '0'"},
      {{"company", "create", "x", "--seed", "-1"}, "--seed: '-1'"},
      {{"company", "import", "x", "Cust"}, "CSV is required"},
      {{"company", "info", "x", "y"}, "'y' is one word too many"},
      {{"describe", "CFoo"}, "there is no class 'CFoo'"},
      {{"describe", "CCustomerHelper.GetCustBalanc"}, "Did you mean GetCustBalance?"},
      {{"describe", "--format", "csv"}, "'csv' is none of text|json"},
      {{"call"}, "CLASS.MEMBER is required"},
      {{"call", "CCustomerHelper"}, "CLASS.MEMBER"},
      {{"call", "CCustomrHelper.GetCustBalance"}, "Did you mean CCustomerHelper"},
      {{"call", "CCustomerHelper.GetBalance"}, "Did you mean GetCustBalance?"},
      {{"call", "CQueries.CustomConnection"}, "can be assigned but not read"},
      {{"call", "CQueries.Customer", "--cache"}, "CQueries has no CacheRecordsets"},
      {{"call", "CQueries.Customer", "--fromat", "csv"}, "Did you mean --format?"},
      {{"call", "CQueries.Customer", "--engine", "jet"}, "'jet' is none of desktop|server"},
      {{"call", "CQueries.Customer", "--on-error", "no"}, "none of raise|leave|continue|retry"},
      {{"call", "CQueries.Customer", "--limit", "-1"}, "--limit: '-1'"},
      {{"call", "CQueries.Customer", "--set", "Company.SessionDate"}, "KEY=VALUE"},
      {{"call", "CQueries.Customer", "--set", "a.B=1", "--set", "A.b=2"}, "given twice"},
      {{"call", "CQueries.Customer", "--set", "Company.NoSuch=1"}, "Company.NoSuch"},
      {{"call", "CQueries.Customer", "--set", "Company.SessionDate=soon"}, "SessionDate"},
      {{"sql"}, "STATEMENT is required"},
      {{"sql", "SELECT 1"}, "--company is required"},
      {{"sql", "SELECT 1", "--company", "x", "--cache"}, "--cache"},
      {{"aging", "--company", "x"}, "SIDE is required"},
      {{"aging", "everyone", "--company", "x"}, "none of customers|suppliers"},
      {{"aging", "customers"}, "--company is required"},
      {{"aging", "customers", "--company", "x", "--as-of", "2025-02-30"}, "--as-of"},
      {{"aging", "customers", "--company", "x", "--as-of", ""}, "--as-of"},
      {{"aging", "customers", "--company", "x", "--buckets", "60,30"}, "--buckets"},
      {{"aging", "customers", "--company", "x", "--by", "age"}, "none of document|due"},
      {{"aging", "customers", "--company", "x", "--cache"}, "has no CacheRecordsets"},
      {{"stock"}, "--company is required"},
      {{"stock", "--company", "x", "--as-of", "soon"}, "--as-of"},
      {{"ledger"}, "say which command of 'quoracc ledger'"},
      {{"ledger", "account", "--company", "x"}, "say which account"},
      {{"ledger", "account", "1", "--company", "x", "--from", "2025-02-01", "--to", "2025-01-31"},
       "comes before"},
      {{"ledger", "income-statement", "--company", "x", "--compare", "x"}, "budget|last-year"},
  };
  for (const Case& wrong : cases) {
    const Outcome outcome = runProgram(wrong.arguments);
    EXPECT_EQ(outcome.code, kWrongUse) << wrong.message << "\n" << outcome.err;
    EXPECT_THAT(outcome.err, AllOf(StartsWith("quoracc: "), HasSubstr(wrong.message)));
    EXPECT_THAT(outcome.out, IsEmpty()) << wrong.message;
  }
}

TEST(Program, wrongArgumentsListTheRightOnes) {
  const std::string member = "ccustomerqueries.OPENCUSTBALANCE";
  for (const std::string argument :
       {"Foo=1", "CustomerId=1.5", "customerid", "AsOfDate=soon", "=5", "ExtraFields=caf\xE9"}) {
    const Outcome outcome = runProgram({"call", member, argument});
    EXPECT_EQ(outcome.code, kWrongUse) << argument;
    EXPECT_THAT(outcome.err,
                AllOf(HasSubstr("CustomerId   long\n"), HasSubstr("AsOfDate     date\n"),
                      HasSubstr("ExtraFields  text\n")))
        << argument;
  }
  EXPECT_THAT(runProgram({"call", member, "CustomerId=1", "customerID=1"}).err,
              HasSubstr("CustomerId is given twice"));
}

TEST(Program, helpAndVersionGoToStandardOutput) {
  const std::vector<std::vector<std::string>> commands{{},
                                                       {"company"},
                                                       {"company", "create"},
                                                       {"company", "import"},
                                                       {"company", "export"},
                                                       {"company", "info"},
                                                       {"company", "check"},
                                                       {"describe"},
                                                       {"call"},
                                                       {"sql"},
                                                       {"aging"},
                                                       {"stock"},
                                                       {"ledger"},
                                                       {"ledger", "checks"},
                                                       {"manual"},
                                                       {"completion"}};
  for (std::vector<std::string> command : commands) {
    command.emplace_back("--help");
    const Outcome outcome = runProgram(command);
    EXPECT_EQ(outcome.code, kDone);
    EXPECT_THAT(outcome.out, HasSubstr("Usage: quoracc"));
    EXPECT_THAT(outcome.err, IsEmpty());
  }
  EXPECT_THAT(runProgram({"--version"}).out, testing::MatchesRegex("quoracc [0-9.]+\n"));
}

TEST(Program, theManualHasEveryCommandInMacrosThatManKnows) {
  const std::string page = runProgram({"manual"}).out;
  for (const std::string heading : {".SS quoracc company create\n", ".SS quoracc aging\n",
                                    ".SH EXIT STATUS\n", "\\fB\\-\\-limit\\fR \\fIN\\fR\n"}) {
    EXPECT_THAT(page, HasSubstr(heading));
  }
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_FALSE(line.empty()) << "a blank line is no macro";
    if (line.starts_with('.')) {
      EXPECT_THAT(line.substr(0, 3), testing::AnyOf(".TH", ".SH", ".SS", ".TP", ".PP"));
    }
  }
}

TEST(Program, describesEveryMemberOfEveryClass) {
  const json classes = json::parse(runProgram({"describe", "--format", "json"}).out)["classes"];
  ASSERT_EQ(classes.size(), QuorAccQueries::allClasses().size());
  for (std::size_t index = 0; index < classes.size(); ++index) {
    const QuorAccQueries::ClassInfo& info = *QuorAccQueries::allClasses()[index];
    EXPECT_EQ(classes[index]["name"], info.name);
    EXPECT_EQ(classes[index]["members"].size(), info.members.size());
  }
  const json one = json::parse(
      runProgram({"describe", "ccustomerhelper.getcustbalance", "--format", "json"}).out);
  EXPECT_EQ(one["classes"][0]["members"][0].dump(),
            json::parse(R"({"name":"GetCustBalance","kind":"method","number":1001,"arguments":[
                {"name":"CustomerId","type":"long","byReference":false},
                {"name":"AsOfDate","type":"date","byReference":false}],
                "result":{"type":"currency"},
                "summary":"What a customer owes at a date less his open credits."})")
                .dump());
  EXPECT_THAT(
      runProgram({"describe", "CCustomerHelper"}).out,
      AllOf(HasSubstr("GetCustBalance(CustomerId long, AsOfDate date) -> currency\n"),
            HasSubstr("GetLastPmtInfo(CustomerId long) -> CCustPmtInfo\n"),
            HasSubstr("CacheRecordsets -> boolean\n"), HasSubstr("CacheRecordsets = boolean\n")));
}

TEST(Program, aDryRunAnswersWithNothing) {
  const std::vector<std::string> query{"call", "CCustomerQueries.OpenCustAgingTransactions",
                                       "CustomerId=42", "AsOfDate=2025-12-31", "FieldList=*"};
  for (const std::string engine : {"server", "desktop"}) {
    std::vector<std::string> arguments = query;
    arguments.insert(arguments.end(), {"--engine", engine, "--format", "json", "--trace", "-"});
    const Outcome outcome = runProgram(arguments);
    EXPECT_EQ(outcome.code, kDone) << outcome.err;
    EXPECT_EQ(json::parse(outcome.out).dump(), R"({"columns":[],"rows":[]})");
    const std::string last =
        outcome.err.substr(outcome.err.rfind('\n', outcome.err.size() - 2) + 1);
    const json open = json::parse(last);
    EXPECT_EQ(open["event"], "open");
    EXPECT_EQ(open["connection"], "custom");
    EXPECT_EQ(open["parameters"].size(), 4U);
    EXPECT_EQ(open["sql"].get<std::string>().find("IIf") != std::string::npos, engine == "desktop");
  }
  EXPECT_EQ(runProgram(query).out, "(0 rows)\n");

  std::vector<std::string> arguments = query;
  arguments.insert(arguments.end(), {"--default-connection", "--trace", "-"});
  EXPECT_THAT(runProgram(arguments).err, HasSubstr(R"("connection":"default")"));

  EXPECT_EQ(runProgram({"call", "CCustSaleInfo.LastSaleAmnt", "--format", "json"}).out,
            "{\"result\":{\"type\":\"currency\",\"value\":\"0.0000\"},\"outputs\":{}}\n");
}

TEST(Program, aFileThatIsNoCompanyIsAFailureNotAMisuse) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {"company", "info", "/nowhere/books"},
           {"sql", "SELECT 1", "--company", "/nowhere/books"},
           {"sql", "DELETE FROM Cust", "--company", "/nowhere/books"},
           {"call", "CQueries.Customer", "--company", "/nowhere/books"},
           {"call", "CQueries.Customer", "--trace", "/nowhere/trace"},
           {"aging", "customers", "--company", "/nowhere/books"}}) {
    const Outcome outcome = runProgram(arguments);
    EXPECT_EQ(outcome.code, kFailed) << outcome.err;
    EXPECT_THAT(outcome.err, StartsWith("quoracc: "));
  }
}

}  // namespace
}  // namespace QuorCli
