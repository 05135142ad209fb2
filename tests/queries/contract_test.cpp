// What the contracts offer beside what the component's classes use so far, as a host and a class
// would use it: a class of our own on the frame, called off its member table, on the reference
// host.
#include <gmock/gmock.h>

#include "core/dialect_text.h"
#include "core/frame.h"
#include "platform/contracts.h"
#include "queries/company_fixture.h"

namespace {

using namespace QuorAccQueries;
using fixture::CompanyFile;
using fixture::kDialects;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Object;
using testing::ElementsAre;

/// The queries that a helper owns.
class CProbeQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CProbeQueries";
  static const ClassInfo& info() {
    static const ClassInfo info = describeClass<CProbeQueries>(
        "Queries of the probe.",
        joined(QueryFrame::members(),
               {
                   commandTimeoutLine<CProbeQueries>(),
                   method<&CProbeQueries::Open>("Open", {"Sql", "Mode"}, "Opens rows."),
                   method<&CProbeQueries::Change>("Change", {"Sql"}, "Changes rows."),
               }));
    return info;
  }
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  using QueryFrame::SetCustomCommandTimeout;

  Ref<Recordset> Open(const std::string& Sql, std::int32_t Mode) {
    return trap("Open", [&](Steps& step, Ref<Recordset>& result) {
      result = open(step, Statement(Sql), Pass::Nothing, {.mode = Mode});
    });
  }
  std::int32_t Change(const std::string& Sql) {
    return trap("Change",
                [&](Steps& step, std::int32_t& result) { result = execute(step, Statement(Sql)); });
  }
};

class CProbe : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CProbe";
  static const ClassInfo& info() {
    static const ClassInfo info = describeClass<CProbe>(
        "A helper with a query object.",
        joined(HelperFrame::members(),
               {
                   method<&CProbe::Accounts>("Accounts", {"Chosen", unwritten("Ignored")},
                                             "Keys of accounts, those chosen first."),
                   method<&CProbe::Same>("Same", {"Thing"}, "The object that was passed."),
                   method<&CProbe::Any>("Any", {"Thing"}, "The value that was passed."),
                   method<&CProbe::Tell>("Tell", {"Thing"}, "Tells of a change."),
                   method<&CProbe::CheckText>("CheckText", {"Amount"}, "An amount in words."),
                   propertyGet<&CProbe::Queries>("Queries", "The query object."),
               }));
    return info;
  }
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  Ref<Collection> Accounts(const Ref<Collection>& Chosen, const std::string& /*Ignored*/) {
    return trap("Accounts", [&](Steps& step, Ref<Collection>& result) {
      result = make<Collection>();
      for (const Value& each : Chosen->values()) result->Add(each);
      const Ref<Recordset> rows = findOrOpen(step, kept_, {}, [&] {
        return open(step, Statement("SELECT InGLAcctId FROM GLAcct ORDER BY InGLAcctId"),
                    Pass::Nothing);
      });
      for (bool more = moreRows(step, rows); more; more = moveOn(step, rows)) {
        std::int32_t key = 0;
        readField(step, rows, "InGLAcctId", key);
        result->Add(key);
      }
      keepOrClose(step, kept_, {}, rows);
    });
  }
  Ref<Object> Same(const Ref<Object>& Thing) { return Thing; }
  Value Any(const Value& Thing) { return Thing; }
  void Tell(const Ref<Object>& Thing) {
    trap("Tell", [&](Steps& step) {
      askDataServices(step, [&](QuorDataLib::DataServices& services) {
        services.NotifyDataChange("42", 0, 3, Thing);
      });
    });
  }
  std::string CheckText(Currency Amount) {
    return trap("CheckText", [&](Steps& step, std::string& result) {
      result = askUtility(
          step, [&](QuorDataLib::Utility& utility) { return utility.FormatCurrency(Amount); });
    });
  }
  Ref<CProbeQueries> Queries() { return queries_; }
  void Fail() {
    trap("Fail", [&](Steps& step) {
      step([&] { (void)queries_->Open("SELECT Nothing FROM GLAcct", QuorDataLib::kOpenRows); });
    });
  }

 private:
  void handOn(const Ref<Connection>& connection) override {
    queries_->SetCustomConnection(connection);
  }

  Ref<CProbeQueries> queries_ = make<CProbeQueries>();
  RecordsetCache kept_;
};

/// Calls a member off the table of the object that is given, by name and values alone.
Value call(const Ref<Object>& object, std::string_view member, std::vector<Value> values = {},
           Member::Kind kind = Member::Kind::Method) {
  return object->table()->find(member, kind)->invoke(*object, values);
}
Value get(const Ref<Object>& object, std::string_view property) {
  return call(object, property, {}, Member::Kind::Get);
}

std::vector<Value> longs(std::initializer_list<std::int32_t> numbers) {
  return std::vector<Value>(numbers.begin(), numbers.end());
}

class Contracts : public testing::Test {
 protected:
  Contracts() {
    company.load("GLAcct",
                 "InGLAcctId,GLAcctId,Descr\n1200,1200,Stock\n1210,1210,\"Goods, other\"\n");
  }

  CompanyFile company;
};

TEST_F(Contracts, CollectionsGoInAndComeOut) {
  for (const auto dialect : kDialects) {
    const auto host = company.host(dialect);
    const Ref<CProbe> probe = make<CProbe>();
    const Ref<Collection> chosen = make<Collection>(longs({7, 8}));
    const auto accounts = [&] {
      return call(probe, "Accounts", {chosen, "any"}).toObject().as<Collection>()->values();
    };
    EXPECT_EQ(accounts(), longs({7, 8, 1200, 1210}));
    EXPECT_EQ(call(chosen, "Item", {std::int16_t{2}}), Value(std::int32_t{8}));
    EXPECT_THROW(call(chosen, "Item", {std::int32_t{0}}), Error);

    const auto walk = get(chosen, "_NewEnum").toObject().as<QuorDataLib::Enumerator>();
    chosen->Add("late");
    std::vector<Value> met;
    for (Value item; walk->Next(item);) met.push_back(item);
    EXPECT_EQ(met, longs({7, 8}));
    EXPECT_EQ(get(chosen, "Count"), Value(std::int32_t{3}));
  }
}

TEST_F(Contracts, RowsAreKeptAfterTheyHaveBeenRead) {
  const auto host = company.host(kDialects[0], {{"Settings.133", "true"}});
  const Ref<CProbe> probe = make<CProbe>();
  probe->SetCacheRecordsets(true);
  const auto none = make<Collection>();
  EXPECT_EQ(probe->Accounts(none, "")->Count(), 2);
  EXPECT_EQ(probe->Accounts(none, "")->Count(), 0) << "kept as it was left: at its end";
}

TEST_F(Contracts, PlainObjectsAndAnyValuePassAsTheyAre) {
  class Plain : public Object {};
  const auto host = company.host(kDialects[0]);
  const Ref<CProbe> probe = make<CProbe>();
  const Ref<Object> plain = make<Plain>();
  EXPECT_TRUE(call(probe, "Same", {plain}).toObject() == plain);
  EXPECT_FALSE(call(probe, "Same", {Value()}).toObject());
  call(probe, "Tell", {plain});
  call(probe, "Tell", {Ref<Object>()});
  for (const Value& each : {Value(), Value::null(), Value("a"), Value(plain), Value(true)}) {
    EXPECT_EQ(call(probe, "Any", {each}), each);
  }
  try {
    call(probe, "Accounts", {plain, ""});
    FAIL();
  } catch (const Error& error) {
    EXPECT_TRUE(error.is(ErrorNumber::TypeMismatch));
    EXPECT_EQ(error.description(), "The object passed is no Collection");
  }
  EXPECT_FALSE(CProbe::info().find("Tell", Member::Kind::Method)->result);
  EXPECT_EQ(CProbe::info().find("Any", Member::Kind::Method)->result->type,
            QuorDataLib::ValueType::Empty);
  const Argument& ignored = CProbe::info().find("Accounts", Member::Kind::Method)->arguments[1];
  EXPECT_TRUE(ignored.byReference && !ignored.written);
}

TEST_F(Contracts, AConnectionIsHandedOnThroughTheTable) {
  const auto host = company.host(kDialects[0]);
  const Ref<CProbe> probe = make<CProbe>();
  const auto queries = [&] { return get(get(probe, "Queries").toObject(), "CustomConnection"); };
  EXPECT_FALSE(queries().toObject() == Ref<Object>(host->connection()));
  call(probe, "CustomConnection", {host->connection()}, Member::Kind::Put);
  EXPECT_TRUE(queries().toObject() == Ref<Object>(host->connection()));
}

TEST_F(Contracts, EveryModeOpensRowsAndOneChangesThem) {
  const auto host = company.host(kDialects[0]);
  CProbeQueries queries;
  const std::string sql = "SELECT InGLAcctId, GLAcctId, Descr FROM GLAcct WHERE InGLAcctId = 1200";
  for (const std::int32_t mode :
       {QuorDataLib::kOpenDefault, QuorDataLib::kOpenForUpdate, QuorDataLib::kOpenColumns,
        QuorDataLib::kOpenRows, QuorDataLib::kOpenDetails}) {
    const Ref<Recordset> rows = queries.Open(sql, mode);
    EXPECT_EQ(rows->Field("Descr"), Value("Stock"));
    const auto change = [&] {
      rows->SetField("Descr", "Stock");
      rows->Update();
    };
    if (mode == QuorDataLib::kOpenForUpdate) {
      change();
    } else {
      EXPECT_THROW(change(), Error) << mode;
    }
  }
  EXPECT_THROW(queries.Open(sql, 3), Error);
  EXPECT_EQ(queries.Change("UPDATE GLAcct SET Descr = 'Goods' WHERE InGLAcctId = 1200"), 1);
}

TEST_F(Contracts, AnObjectsTimeoutIsTheConnectionsForTheTimeOfItsCallsOnly) {
  const auto host = company.host(kDialects[0]);
  host->connection()->SetCommandTimeout(30);
  CProbeQueries queries;
  queries.SetCustomConnection(host->connection());
  queries.SetCustomCommandTimeout(5);
  (void)queries.Open("SELECT InGLAcctId FROM GLAcct", QuorDataLib::kOpenRows);
  EXPECT_EQ(host->connection()->CommandTimeout(), 30);
  EXPECT_THROW(queries.Open("SELECT Nothing FROM GLAcct", QuorDataLib::kOpenRows), Error);
  EXPECT_THROW(queries.Change("DELETE FROM Nowhere"), Error);
  EXPECT_EQ(host->connection()->CommandTimeout(), 30);
}

TEST_F(Contracts, AmountsAreWrittenInTheUsersLanguage) {
  const auto text = [&](const char* language, std::int64_t units) {
    const auto host = company.host(kDialects[0], {{"Company.Param.Language", language}});
    return CProbe().CheckText(Currency::fromUnits(units));
  };
  EXPECT_EQ(text("E", 12'345'678'950), "$1,234,567.90");
  EXPECT_EQ(text("E", -9'995'000), "-$999.50");
  EXPECT_EQ(text("F", -12'345'000), "-1\u00a0234,50\u00a0$");
  EXPECT_EQ(text("F", -49), "0,00\u00a0$");
}

TEST_F(Contracts, WhereAnErrorAroseIsKeptOnItsWayOut) {
  const auto host = company.host(kDialects[0]);
  try {
    CProbe().Fail();
    FAIL();
  } catch (const Error& error) {
    EXPECT_THAT(error.source(),
                testing::MatchesRegex("QuorAccQueries\\.CProbeQueries\\.Open:[0-9]+, called by "
                                      "QuorAccQueries\\.CProbe\\.Fail:[0-9]+"));
  }
}

// A host's object that is known by names alone, as dispatch has it.
class LateBound {
 public:
  explicit LateBound(Ref<Object> object) : object_(std::move(object)) {}

 protected:
  template <class T, class... A>
  T ask(std::string_view property, const A&... arguments) {
    const auto kind = sizeof...(A) == 0 ? Member::Kind::Get : Member::Kind::Method;
    return QuorDataLib::Automation<T>::from(call(
        object_, property, std::vector<Value>{QuorDataLib::Automation<A>::to(arguments)...}, kind));
  }

 private:
  Ref<Object> object_;
};

class LateSettings : public QuorCastriaFoundation::Settings, private LateBound {
 public:
  using LateBound::LateBound;
  Value GetSetting(std::int16_t number) override { return ask<Value>("GetSetting", number); }
};

class LateApplication : public QuorCastriaFoundation::CastriaApplication, private LateBound {
 public:
  using LateBound::LateBound;
  Ref<QuorCastriaFoundation::Settings> Settings() override {
    return make<LateSettings>(ask<Ref<Object>>("Settings"));
  }
  Ref<QuorCastriaFoundation::Company> Company() override {
    return ask<Ref<QuorCastriaFoundation::Company>>("Company");
  }
  Ref<QuorCastriaFoundation::Declares> Declares() override { return nullptr; }
};

class LateHelper : public QuorCastriaFoundation::CCastriaHelper, private LateBound {
 public:
  using LateBound::LateBound;
  Ref<QuorCastriaFoundation::CastriaApplication> Application() override {
    return make<LateApplication>(ask<Ref<Object>>("Application"));
  }
};

/// The context of a host, with a registry that knows its objects late-bound only.
class LateHost : public QuorDataLib::Application,
                 public QuorDataLib::ApplicationContext,
                 public QuorDataLib::ObjectRegistry,
                 public std::enable_shared_from_this<LateHost> {
 public:
  explicit LateHost(Ref<QuorDataLib::ApplicationContext> inner) : inner_(std::move(inner)) {}
  Ref<QuorDataLib::ApplicationContext> Context() override { return shared_from_this(); }
  Ref<QuorDataLib::DataServices> DataServices() override { return inner_->DataServices(); }
  Ref<QuorDataLib::ErrorService> ErrorService() override { return inner_->ErrorService(); }
  Ref<QuorDataLib::ObjectRegistry> Registry() override { return shared_from_this(); }
  Ref<QuorDataLib::ObjectFactory> Factory() override { return inner_->Factory(); }
  Ref<QuorDataLib::SettingsReader> SettingsReader() override { return inner_->SettingsReader(); }
  Ref<QuorDataLib::Utility> Utility() override { return inner_->Utility(); }
  Ref<Object> Find(const std::string& name, const ClassInfo* wanted) override {
    if (wrong) return inner_->Utility();
    Ref<Object> found = inner_->Registry()->Find(name, nullptr);
    if (wanted == &QuorCastriaFoundation::CCastriaHelper::info()) return make<LateHelper>(found);
    return found;
  }
  bool wrong = false;

 private:
  Ref<QuorDataLib::ApplicationContext> inner_;
};

TEST_F(Contracts, AHelperThatIsKnownByNamesAloneServesItsContract) {
  const auto host = company.host(kDialects[0], {{"Settings.133", "true"}});
  const auto late = std::make_shared<LateHost>(host->application()->Context());
  QuorDataLib::installApplication([&] { return Ref<QuorDataLib::Application>(late); });
  EXPECT_TRUE(MUtils::IsRecordsetCacheAllowed());

  QuorDataLib::holdFoundationHelper(nullptr);
  late->wrong = true;
  try {
    MUtils::QuorCastriaFoundation();
    FAIL();
  } catch (const Error& error) {
    EXPECT_TRUE(error.is(ErrorNumber::TypeMismatch));
    EXPECT_EQ(error.description(),
              "The object registered as castria-helper is a Utility and no CCastriaHelper");
    EXPECT_THAT(error.source(), testing::HasSubstr("MUtils.QuorCastriaFoundation"));
  }
}

// A connection off its table, as a second library would offer it.
TEST_F(Contracts, AConnectionServesByNamesAndValues) {
  const auto host = company.host(kDialects[0]);
  const Ref<Object> connection = host->connection();
  const auto open = [&](const char* sql, const Value& parameters) {
    return call(connection, "OpenRecordset",
                {sql, std::int16_t{4}, std::int32_t{0}, parameters, std::int32_t{-1}})
        .toObject();
  };
  const char* const one = "SELECT InGLAcctId, Descr FROM GLAcct WHERE InGLAcctId = ?";
  for (const Value& parameters : {Value("1210"), Value(make<Collection>(longs({1210})))}) {
    const Ref<Object> rows = open(one, parameters);
    EXPECT_EQ(call(rows, "Field", {"descr"}), Value("Goods, other"));
    EXPECT_EQ(call(rows, "Field", {std::int32_t{0}}), Value(std::int32_t{1210}));
    EXPECT_EQ(get(rows, "AtEnd"), Value(false));
  }
  EXPECT_EQ(call(open("SELECT COUNT(*) AS N FROM GLAcct", {}), "Field", {"N"}),
            Value(std::int32_t{2}));
  std::vector<Value> change{
      "DELETE FROM GLAcct WHERE InGLAcctId = ?", {}, std::int32_t{-1}, std::int32_t{1210}};
  Connection::info().find("Execute", Member::Kind::Method)->invoke(*connection, change);
  EXPECT_EQ(change[1], Value(std::int32_t{1}));
  EXPECT_THROW(call(connection, "Execute", {}), Error);
  EXPECT_THROW(Recordset::info().find("Close", Member::Kind::Method)->invoke(*connection, {}),
               Error);
}

TEST(DialectTexts, EachStatementHasItsOwnTestOfTheEngine) {
  constexpr DialectText kText{"desktop", "server"};
  const auto texts = [&](std::int16_t engine) {
    return std::vector<std::string_view>{kText.of(engine), kText.ofKnown(engine),
                                         kText.unlessServer(engine)};
  };
  EXPECT_THAT(texts(0), ElementsAre("server", "server", "server"));
  EXPECT_THAT(texts(1), ElementsAre("desktop", "desktop", "desktop"));
  EXPECT_THAT(texts(2), ElementsAre("server", "", "desktop"));
}

}  // namespace
