// The application objects: foundation values, parameters, error service, utility, dry run.
#include <gmock/gmock.h>

#include "host/application/host.h"
#include "host/small_company.h"
#include "platform/current_application.h"
#include "platform/foundation.h"

namespace QuorHost::Testing {
namespace {

using QuorCastriaFoundation::CCastriaHelper;
using testing::AllOf;
using testing::HasSubstr;

/// The tables that the host itself reads, with a row or two in each.
void defineFoundation(Store& store) {
  for (const char* sql :
       {"CREATE TABLE QuorAcctParams (ParamName VARCHAR(50) NOT NULL PRIMARY KEY, ParamValue INT)",
        "CREATE TABLE QuorCastriaParams (ParamName VARCHAR(50) NOT NULL PRIMARY KEY,"
        " ParamValue VARCHAR(255))",
        "CREATE TABLE CieParam (ParamName VARCHAR(50) NOT NULL PRIMARY KEY,"
        " ParamValue VARCHAR(255))",
        "CREATE TABLE CieSetting (SettingName VARCHAR(50) NOT NULL PRIMARY KEY,"
        " SettingText VARCHAR(255))",
        "CREATE TABLE AppSetting (SettingNo INT NOT NULL PRIMARY KEY, SettingValue INT)",
        "CREATE TABLE FiscalYearHdr (ID INT NOT NULL PRIMARY KEY, Descr VARCHAR(50),"
        " BegDate DATETIME, EndDate DATETIME)",
        "CREATE TABLE CieInfo (InCieId INT NOT NULL PRIMARY KEY, Name VARCHAR(60),"
        " HomeCurrencyId INT, ForeignCurrencyUsed BIT, AccountTypeChart INT,"
        " SessionDate DATETIME, ExGLAcctCurrencyId INT)"}) {
    store.define(sql);
  }
  const Ref<Connection> connection = store.connect(Sql::Dialect::Server);
  for (const char* sql :
       {"INSERT INTO QuorAcctParams (ParamName, ParamValue) VALUES ('GLCurntEarn', 3100)",
        "INSERT INTO QuorAcctParams (ParamName) VALUES ('GLUnset')",
        "INSERT INTO QuorCastriaParams (ParamName, ParamValue) VALUES ('Use6', 'True')",
        "INSERT INTO CieParam (ParamName, ParamValue) VALUES ('Language', 'F')",
        "INSERT INTO CieSetting (SettingName, SettingText)"
        " VALUES ('Greeting', '%1 owes %2 (%3, 100 %)')",
        "INSERT INTO AppSetting (SettingNo, SettingValue) VALUES (133, -1)",
        "INSERT INTO FiscalYearHdr (ID, BegDate, EndDate) VALUES (1, '2022-04-01', '2023-03-31')",
        "INSERT INTO FiscalYearHdr (ID, BegDate, EndDate) VALUES (2, '2023-04-01', '2023-12-31')",
        "INSERT INTO CieInfo (InCieId, HomeCurrencyId, ForeignCurrencyUsed, AccountTypeChart,"
        " SessionDate) VALUES (1, 4, 1, 2, '2023-11-30')"}) {
    execute(connection, sql);
  }
}

class Application : public testing::Test {
 protected:
  Application() {
    store = createCompanyFile(folder.file("company"), Durability::Full);
    defineFoundation(*store);
  }

  [[nodiscard]] static Ref<QuorCastriaFoundation::CastriaApplication> foundation(const Host& host) {
    return host.application()
        ->Context()
        ->Registry()
        ->Find("castria-helper", nullptr)
        .as<CCastriaHelper>()
        ->Application();
  }
  [[nodiscard]] static std::string parameter(const Host& host, const std::string& name,
                                             const std::string& table,
                                             const Ref<Connection>& connection = {}) {
    Value value;
    std::string text = host.application()->Context()->DataServices()->GetParameter(
        name, "key", table, value, connection, 0);
    EXPECT_EQ(value, Value(text));
    return text;
  }

  TemporaryFolder folder;
  std::shared_ptr<Store> store;
};

TEST_F(Application, FoundationValuesComeFromTheCompany) {
  for (const Sql::Dialect dialect : {Sql::Dialect::Server, Sql::Dialect::Desktop}) {
    const Host host({.store = store, .dialect = dialect});
    const auto company = foundation(host)->Company();
    EXPECT_EQ(company->CieAccountTypeChart(), 2);
    EXPECT_EQ(company->SessionDate(), Date::of(2023, 11, 30));
    EXPECT_EQ(company->CurrencyInfo()->CieHomeCurrencyId(), 4);
    EXPECT_TRUE(company->CurrencyInfo()->CieIsForeignCurrencyUsed());
    EXPECT_TRUE(foundation(host)->Settings()->GetSetting(133).toBoolean());
    EXPECT_EQ(foundation(host)->Settings()->GetSetting(134).toLong(), 0);
    EXPECT_EQ(company->GetParam("language", "E").toText(), "F");
    EXPECT_EQ(company->GetParam("Country", std::int16_t{7}), Value(std::int16_t{7}));
    EXPECT_EQ(host.application()->Context()->DataServices()->EngineType(),
              static_cast<std::int16_t>(dialect));
  }
}

TEST_F(Application, FiscalYears) {
  const Host host({.store = store});
  const auto company = foundation(host)->Company();
  EXPECT_EQ(company->GetFiscalYearStartDate(Date::of(2022, 4, 1)), Date::of(2022, 4, 1));
  EXPECT_EQ(company->GetFiscalYearStartDate(Date::of(2023, 3, 31, 18, 0, 0)), Date::of(2022, 4, 1));
  EXPECT_EQ(company->GetFiscalYearStartDate(Date::of(2023, 12, 31)), Date::of(2023, 4, 1));
  EXPECT_EQ(company->GetFiscalYearStartDate(Date::of(2022, 3, 31)), Date::of(2021, 4, 1))
      << "before the first year its month and day count";
  EXPECT_EQ(company->GetFiscalYearStartDate(Date::of(2025, 4, 1)), Date::of(2025, 4, 1));

  const Host july({.store = store, .overrides = {{"company.fiscalyearstart", "07-01"}}});
  EXPECT_EQ(foundation(july)->Company()->GetFiscalYearStartDate(Date::of(2023, 6, 30)),
            Date::of(2022, 7, 1));
  const Host dry({});
  EXPECT_EQ(foundation(dry)->Company()->GetFiscalYearStartDate(Date::of(2023, 6, 30)),
            Date::of(2023, 1, 1));
}

TEST_F(Application, WhatACompanyDoesNotHaveHasADefault) {
  const auto bare = createCompanyFile(folder.file("bare"), Durability::Full);
  for (const std::shared_ptr<Store>& each : {bare, std::shared_ptr<Store>()}) {
    const Host host({.store = each});
    const auto company = foundation(host)->Company();
    EXPECT_EQ(company->CieAccountTypeChart(), 1);
    EXPECT_EQ(company->CurrencyInfo()->CieHomeCurrencyId(), 1);
    EXPECT_FALSE(company->CurrencyInfo()->CieIsForeignCurrencyUsed());
    EXPECT_GT(company->SessionDate(), Date::of(2024, 1, 1));
    EXPECT_FALSE(company->SessionDate().hasTime());
    EXPECT_EQ(parameter(host, "GLCurntEarn", "QuorAcctParams"), each ? "key" : "0");
    EXPECT_EQ(
        host.application()->Context()->SettingsReader()->GetSetting("Greeting", "", 2, {}, {}), "");
  }
}

TEST_F(Application, ParametersAreReadByNameOrAnswerTheirKey) {
  const Host host({.store = store, .overrides = {{"Param.QuorAcctParams.GLRetained", "3000"}}});
  EXPECT_EQ(parameter(host, "glcurntearn", "QuorAcctParams"), "3100");
  EXPECT_EQ(parameter(host, "GLCurntEarn", "QuorAcctParams", host.connection()), "3100");
  EXPECT_EQ(parameter(host, "GLNone", "QuorAcctParams"), "key");
  EXPECT_EQ(parameter(host, "GLUnset", "QuorAcctParams"), "key");
  EXPECT_EQ(parameter(host, "GLRetained", "QuorAcctParams"), "3000");
  EXPECT_EQ(parameter(host, "GLRetained", "QuorCastriaParams"), "key");
  EXPECT_EQ(parameter(host, "Use6", "QuorCastriaParams"), "True");
  EXPECT_THAT(raised(ErrorNumber::InvalidArgument, [&] { (void)parameter(host, "A", "CieParam"); }),
              HasSubstr("CieParam"));
  EXPECT_EQ(host.application()->Context()->SettingsReader()->GetSetting(
                "Greeting", "Velmark", 2, {}, {"Anna", Currency::fromInteger(5)}),
            "Anna owes 5 (%3, 100 %)");
}

TEST_F(Application, SetParamLastsWhereItCan) {
  {
    const Host host({.store = store, .overrides = {{"Company.Param.Language", "D"}}});
    const auto company = foundation(host)->Company();
    EXPECT_EQ(company->GetParam("Language", "").toText(), "D");
    company->SetParam("LANGUAGE", "E");
    company->SetParam("InventGLToDate", std::int16_t{0});
    EXPECT_EQ(company->GetParam("Language", "").toText(), "E");
    EXPECT_EQ(company->GetParam("inventgltodate", "").toLong(), 0);
  }
  const auto reader = openCompanyFile(folder.file("company"), Access::Read);
  const Host host({.store = reader});
  const auto company = foundation(host)->Company();
  EXPECT_EQ(company->GetParam("Language", "").toText(), "E");
  EXPECT_EQ(company->GetParam("InventGLToDate", "none").toText(), "0");
  company->SetParam("Language", "S");
  EXPECT_EQ(company->GetParam("Language", "").toText(), "S") << "kept for this run";
  EXPECT_EQ(foundation(Host({.store = store}))->Company()->GetParam("Language", "").toText(), "E");
}

TEST_F(Application, OverridesAreChecked) {
  const Host host({.store = store,
                   .overrides = {{"COMPANY.CieAccountTypeChart", "9"},
                                 {"Company.SessionDate", "2024-02-29"},
                                 {"CurrencyInfo.CieIsForeignCurrencyUsed", "False"},
                                 {"CurrencyInfo.CieHomeCurrencyId", "12"},
                                 {"settings.133", "false"},
                                 {"Settings.7", "-3"}}});
  const auto company = foundation(host)->Company();
  EXPECT_EQ(company->CieAccountTypeChart(), 9);
  EXPECT_EQ(company->SessionDate(), Date::of(2024, 2, 29));
  EXPECT_FALSE(company->CurrencyInfo()->CieIsForeignCurrencyUsed());
  EXPECT_EQ(company->CurrencyInfo()->CieHomeCurrencyId(), 12);
  EXPECT_FALSE(foundation(host)->Settings()->GetSetting(133).toBoolean());
  EXPECT_EQ(foundation(host)->Settings()->GetSetting(7).toLong(), -3);

  for (const auto& [key, value] :
       std::map<std::string, std::string>{{"Company.Colour", "red"},
                                          {"Company.Param.", "x"},
                                          {"Param.CieParam.X", "1"},
                                          {"Param.QuorAcctParams", "1"},
                                          {"Param.QuorAcctParams.", "1"},
                                          {"Settings.many", "1"},
                                          {"Settings.133", "maybe"},
                                          {"Settings.40000", "1"},
                                          {"Company.SessionDate", "tomorrow"},
                                          {"Company.FiscalYearStart", "02-29"},
                                          {"Company.FiscalYearStart", "7-1"},
                                          {"Company.CieAccountTypeChart", "1.5"},
                                          {"CurrencyInfo.CieIsForeignCurrencyUsed", "perhaps"}}) {
    EXPECT_THAT(raised(ErrorNumber::InvalidArgument,
                       [&] { const Host refused({.overrides = {{key, value}}}); }),
                AllOf(HasSubstr("'" + key + "'"), HasSubstr("Settings.NUMBER")));
  }
  raised(ErrorNumber::InvalidArgument,
         [&] { const Host refused({.overrides = {{"Company.SessionDate", ""}}}); });
}

TEST_F(Application, ErrorServiceAnswers) {
  const auto report = [](const Host& host, std::int32_t line = 12) {
    return host.application()->Context()->ErrorService()->ReportError(
        3021, "No row", "QuorAccQueries", "CThing", "GetIt", line);
  };
  EXPECT_EQ(report(Host({.onError = OnError::Leave})), 2);
  EXPECT_EQ(report(Host({.onError = OnError::Continue})), 1);

  const Host retrying({.onError = OnError::Retry});
  for (int round = 0; round < 2; ++round) {
    std::vector<std::int32_t> answers;
    for (int i = 0; i < 4; ++i) {
      answers.push_back(report(retrying, 12));
      // Another step's errors in between must not give this one further tries.
      if (i < 2) {
        EXPECT_EQ(report(retrying, 13), 0);
      }
    }
    EXPECT_THAT(answers, testing::ElementsAre(0, 0, 0, 2));
    EXPECT_EQ(report(retrying, 13), 0);
    EXPECT_EQ(report(retrying, 13), 2);
  }

  // A step that was done in the end has no past when it fails again.
  for (int error = 0; error < 3; ++error) {
    EXPECT_EQ(report(retrying, 14), 0);
    EXPECT_EQ(report(retrying, 14), 0);
    retrying.application()->Context()->ErrorService()->RetryEnded("CThing", "GetIt", 14);
  }

  const Host raising({});
  std::string source;
  try {
    try {
      report(raising);
    } catch (const Error& inner) {
      EXPECT_EQ(inner.number(), 3021);
      EXPECT_EQ(inner.description(), "No row");
      EXPECT_EQ(inner.source(), "QuorAccQueries.CThing.GetIt:12");
      raising.application()->Context()->ErrorService()->ReportError(
          3021, "No row", "QuorAccQueries", "COuter", "GetAll", 34);
    }
  } catch (const Error& outer) {
    source = outer.source();
  }
  EXPECT_EQ(source, "QuorAccQueries.CThing.GetIt:12, called by QuorAccQueries.COuter.GetAll:34");
}

TEST_F(Application, UtilityFollowsTheDialect) {
  const auto utility = [](Sql::Dialect dialect) {
    return Host({.dialect = dialect}).application()->Context()->Utility();
  };
  const auto server = utility(Sql::Dialect::Server);
  EXPECT_EQ(server->NullSafe("Sum(A)", 0, -1), "COALESCE(Sum(A),0)");
  EXPECT_EQ(utility(Sql::Dialect::Desktop)->NullSafe("Sum(A)", 0, -1),
            "IIf(IsNull(Sum(A)),0,Sum(A))");
  EXPECT_EQ(server->DaysInMonth(2024, 2), 29);
  EXPECT_EQ(server->DaysInMonth(2023, 2), 28);
  EXPECT_EQ(server->DaysInMonth(2023, 13), 31);
  raised(ErrorNumber::InvalidArgument, [&] { (void)server->DaysInMonth(2023, 14); });
  raised(ErrorNumber::InvalidArgument, [&] { (void)server->DaysInMonth(2023, 0); });
  EXPECT_EQ(server->FurtherAccountTypes(2), "6,7");
  raised(ErrorNumber::InvalidArgument, [&] { (void)server->FurtherAccountTypes(1); });
  const auto typesSetTo = [](const char* types) {
    return Host({.overrides = {{"Company.Param.FurtherExpenseAccountTypes", types}}})
        .application()
        ->Context()
        ->Utility()
        ->FurtherAccountTypes(2);
  };
  EXPECT_EQ(typesSetTo("8,12"), "8,12");
  for (const char* none : {"", "6,", ",6", "6,,7", "6) OR (1=1", "six"}) {
    EXPECT_THAT(raised(ErrorNumber::InvalidArgument, [&] { (void)typesSetTo(none); }),
                HasSubstr("FurtherExpenseAccountTypes"));
  }
  const auto french = Host({.overrides = {{"Company.Param.Language", "F"}}}).application();
  EXPECT_EQ(french->Context()->Utility()->FormatNumber(Currency::fromUnits(-12'500)), "-1,25");
  EXPECT_EQ(server->FormatNumber(Currency::fromUnits(25'000)), "2.5");
  EXPECT_EQ(server->DecimalSeparator(), ".");
}

TEST_F(Application, TheThreadsApplicationIsTheInstalledHosts) {
  {
    Host first({});
    first.install();
    EXPECT_EQ(QuorDataLib::currentApplication(), first.application());
    {
      Host second({.store = store});
      second.install();
      EXPECT_EQ(QuorDataLib::currentApplication(), second.application());
    }
    raised(ErrorNumber::ObjectNotSet, [] { (void)QuorDataLib::currentApplication(); });
    first.install();
    {
      const Host bystander({});
    }
    EXPECT_EQ(QuorDataLib::currentApplication(), first.application());
    const auto context = first.application()->Context();
    EXPECT_TRUE(context->Factory()
                    ->Create("QuorCastriaFoundation.CCastriaHelper", 0, nullptr)
                    .as<CCastriaHelper>());
    EXPECT_THAT(raised(429, [&] { (void)context->Factory()->Create("Acme.Thing", 0, nullptr); }),
                HasSubstr("Acme.Thing"));
    EXPECT_FALSE(context->Registry()->Find("nothing", nullptr));
    EXPECT_FALSE(first.connection() == context->DataServices()->DefaultConnection());
  }
  raised(ErrorNumber::ObjectNotSet, [] { (void)QuorDataLib::currentApplication(); });
}

TEST_F(Application, ADryRunAnswersNothingToEverything) {
  const Host host({.overrides = {{"Param.QuorAcctParams.A", "5"}}});
  EXPECT_EQ(parameter(host, "A", "QuorAcctParams"), "5");
  EXPECT_EQ(parameter(host, "B", "QuorAcctParams"), "0");
  const Ref<Connection> connection = host.connection();
  EXPECT_EQ(execute(connection, "anything at all"), 0);
  const Ref<Recordset> rows = open(connection, "SELECT * FROM Nowhere WHERE A = ?", {}, 1);
  EXPECT_TRUE(rows->AtEnd());
  EXPECT_EQ(rows->FieldCount(), 0);
  EXPECT_FALSE(rows->Find("A = 1"));
  rows->MoveFirst();
  raised(ErrorNumber::NoCurrentRow, [&] { (void)rows->Field("A"); });
  raised(ErrorNumber::UnknownItem, [&] { (void)rows->FieldName(0); });
  rows->AddNew();
  rows->SetField("A", "new");
  rows->Update();
  EXPECT_EQ(rows->Field("a"), Value("new"));
  EXPECT_EQ(rows->Field("InId").toLong(), 0);
  rows->Close();
  raised(ErrorNumber::ObjectClosed, [&] { (void)rows->AtEnd(); });
}

}  // namespace
}  // namespace QuorHost::Testing
