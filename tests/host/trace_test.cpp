// The trace: its lines are a contract.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "host/application/host.h"
#include "host/small_company.h"
#include "platform/foundation.h"

namespace QuorHost::Testing {
namespace {

using nlohmann::ordered_json;
using testing::ElementsAre;

class Tracing : public SmallCompany {
 protected:
  [[nodiscard]] std::vector<std::string> lines() const {
    std::vector<std::string> all;
    std::istringstream text(out.str());
    for (std::string line; std::getline(text, line);) all.push_back(line);
    return all;
  }

  std::ostringstream out;
};

TEST_F(Tracing, WhatCrossesInItsOrder) {
  store->define(
      "CREATE TABLE QuorAcctParams (ParamName VARCHAR(50) NOT NULL PRIMARY KEY, ParamValue INT)");
  execute(connection, "INSERT INTO QuorAcctParams (ParamName, ParamValue) VALUES ('A', 3100)");
  const Host host({.store = store, .trace = &out});
  const auto context = host.application()->Context();

  Value value;
  (void)context->DataServices()->GetParameter("A", "0", "QuorAcctParams", value, host.connection(),
                                              0);
  (void)open(host.connection(), "SELECT EntryNo FROM Entry");
  (void)context->DataServices()->DefaultConnection()->OpenRecordset(
      "SELECT EntryNo FROM Entry WHERE EntryNo = ?", 2, 0, Parameters::single(std::int32_t{1}), -1);
  (void)host.connection()->OpenRecordset("SELECT EntryNo FROM Entry", 4, 0, {}, 0);
  EXPECT_EQ(execute(host.connection(), "INSERT INTO Entry (EntryNo, Amnt) VALUES (?, ?)",
                    {std::int32_t{1}, Currency::fromUnits(15'000)}),
            1);
  raised(QuorDataLib::kStatementRefused, [&] { open(host.connection(), "SELECT"); });
  raised(5, [&] {
    context->ErrorService()->ReportError(5, "\"Wrong\"", "QuorAccQueries", "CThing", "GetIt", 7);
  });
  context->DataServices()->NotifyDataChange("42", 0, 3, {});
  (void)context->SettingsReader()->GetSetting("Name", "Velmark", 2, host.connection(), {});

  EXPECT_THAT(
      lines(),
      ElementsAre(
          R"js({"event":"parameter","table":"QuorAcctParams","name":"A","key":"0","value":"3100"})js",
          R"js({"event":"open","connection":"custom","sql":"SELECT EntryNo FROM Entry","mode":4,)js"
          R"js("option":0,"parameters":[],"bare":false,"flag":0})js",
          R"js({"event":"open","connection":"default",)js"
          R"js("sql":"SELECT EntryNo FROM Entry WHERE EntryNo = ?","mode":2,"option":0,)js"
          R"js("parameters":[{"type":"long","value":1}],"bare":true,"flag":-1})js",
          R"js({"event":"open","connection":"custom","sql":"SELECT EntryNo FROM Entry","mode":4,)js"
          R"js("option":0,"parameters":null,"bare":false,"flag":0})js",
          R"js({"event":"execute","connection":"custom",)js"
          R"js("sql":"INSERT INTO Entry (EntryNo, Amnt) VALUES (?, ?)","option":-1,)js"
          R"js("parameters":[{"type":"long","value":1},{"type":"currency","value":"1.5000"}],)js"
          R"js("affected":1})js",
          R"js({"event":"open","connection":"custom","sql":"SELECT","mode":4,"option":0,)js"
          R"js("parameters":[],"bare":false,"flag":0})js",
          R"js({"event":"error","number":5,"description":"\"Wrong\"","component":"QuorAccQueries",)js"
          R"js("class":"CThing","method":"GetIt","line":7,"action":2})js",
          R"js({"event":"notify","code":"42","values":[0,3]})js",
          R"js({"event":"setting","name":"Name","key":"Velmark","value":""})js"));
}

TEST_F(Tracing, FoundationValues) {
  const Host host(
      {.overrides = {{"Company.SessionDate", "2024-05-06"}, {"Company.FiscalYearStart", "04-01"}},
       .trace = &out});
  const auto foundation = host.application()
                              ->Context()
                              ->Registry()
                              ->Find("castria-helper", nullptr)
                              .as<QuorCastriaFoundation::CCastriaHelper>()
                              ->Application();
  const auto company = foundation->Company();
  (void)foundation->Settings()->GetSetting(133);
  (void)company->CieAccountTypeChart();
  (void)company->SessionDate();
  (void)company->GetFiscalYearStartDate(Date::of(2024, 3, 31));
  (void)company->CurrencyInfo()->CieIsForeignCurrencyUsed();
  (void)company->CurrencyInfo()->CieHomeCurrencyId();
  (void)company->GetParam("Language", "E");
  company->SetParam("InventGLToDate", std::int16_t{0});
  std::vector<std::string> read;
  for (const std::string& line : lines()) {
    const ordered_json event = ordered_json::parse(line);
    EXPECT_EQ(event.at("event"), "foundation");
    read.push_back(event.at("name").get<std::string>() + "=" + event.at("value").dump());
  }
  EXPECT_THAT(
      read,
      ElementsAre("Settings.133=0", "Company.CieAccountTypeChart=1",
                  "Company.SessionDate=\"2024-05-06\"", "Company.FiscalYearStart=\"2023-04-01\"",
                  "CurrencyInfo.CieIsForeignCurrencyUsed=false", "CurrencyInfo.CieHomeCurrencyId=1",
                  "Company.Param.Language=\"E\"", "Company.Param.InventGLToDate=0"));
}

TEST_F(Tracing, ValuesOfEveryTypeAndTextsOfEveryKind) {
  const Host host({.trace = &out});
  (void)open(host.connection(), "bad \xFF text",
             {Value(), Value::null(), true, std::int16_t{-2}, 0.5, Date::of(2024, 1, 2, 3, 4, 5),
              Date(), "é\n"});
  ASSERT_EQ(lines().size(), 1U);
  const ordered_json event = ordered_json::parse(lines().front());
  EXPECT_EQ(event.at("parameters").dump(),
            R"js([{"type":"null","value":null},{"type":"null","value":null},)js"
            R"js({"type":"boolean","value":true},{"type":"integer","value":-2},)js"
            R"js({"type":"double","value":0.5},{"type":"date","value":"2024-01-02T03:04:05"},)js"
            R"js({"type":"date","value":""},{"type":"text","value":"é\n"}])js");
}

}  // namespace
}  // namespace QuorHost::Testing
