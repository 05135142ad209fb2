#include "core/mutils.h"

#include "core/platform_access.h"
#include "platform/class_info.h"
#include "platform/current_application.h"

namespace QuorAccQueries::MUtils {
namespace {

constexpr std::string_view kModule = "MUtils";
constexpr const char* kCompanyKey = "Velmark";
constexpr const char* kFoundationName = "castria-helper";
constexpr const char* kFoundationClass = "QuorCastriaFoundation.CCastriaHelper";
constexpr std::int32_t kCompanySettingText = 2;
constexpr std::int16_t kRecordsetCacheSetting = 133;

std::string joined(CacheKey key) {
  std::string text;
  for (const Value& part : key) {
    if (&part != key.begin()) text += "§";
    text += part.toText();
  }
  return text;
}

std::string readParameter(Steps& step, const std::string& table, const std::string& name,
                          const std::string& key, const Ref<Connection>& connection) {
  return askDataServices(step, [&](QuorDataLib::DataServices& services) {
    Value value;
    return services.GetParameter(name, key, table, value, connection, 0);
  });
}

/// The object as a foundation helper. `origin` is where it comes from.
Ref<::QuorCastriaFoundation::CCastriaHelper> foundationHelper(const Ref<QuorDataLib::Object>& found,
                                                              std::string_view origin) {
  const auto helper = found.as<::QuorCastriaFoundation::CCastriaHelper>();
  if (found && !helper) {
    const QuorDataLib::ClassInfo* const info = found->table();
    QuorDataLib::raise(QuorDataLib::ErrorNumber::TypeMismatch,
                       "The object " + std::string(origin) + " is " +
                           (info != nullptr ? "a " + std::string(info->name) + " and " : "") +
                           "no CCastriaHelper");
  }
  return helper;
}

}  // namespace

std::string GLAcctQueryFieldToUse(bool UseForeignAmnt, std::int32_t AcctCurrencyId,
                                  std::int32_t HomeCurrencyId) {
  return raisingAgain(kModule, "GLAcctQueryFieldToUse", [&]() -> std::string {
    return UseForeignAmnt && AcctCurrencyId != HomeCurrencyId ? "ForeignAmnt" : "DetAmnt";
  });
}

void NormalizeDateRange(Date& FromDate, Date& ToDate) {
  if (FromDate.roundedDay() == 0) FromDate = QuorDataLib::earliestBound();
  if (ToDate.roundedDay() == 0) ToDate = QuorDataLib::latestBound();
}

std::string GetCompanySetting(const std::string& SettingName, const Ref<Connection>& Conn,
                              Steps& step) {
  return askContext(
      step, std::source_location::current(), &QuorDataLib::ApplicationContext::SettingsReader,
      [&](QuorDataLib::SettingsReader& reader) {
        return reader.GetSetting(SettingName, kCompanyKey, kCompanySettingText, Conn, {});
      });
}

std::string GetCastriaParam(const std::string& ParamName, const std::string& Key,
                            const Ref<Connection>& Conn, Steps& step) {
  return readParameter(step, "QuorCastriaParams", ParamName, Key, Conn);
}

std::int32_t GetAcctParamLong(const std::string& ParamName, std::int32_t Key,
                              const Ref<Connection>& Conn, Steps& step) {
  return step([&] {
    return Value(readParameter(step, "QuorAcctParams", ParamName, std::to_string(Key), Conn))
        .toLong();
  });
}

void PutRecordsetInCache(RecordsetCache& Cache, const Ref<Recordset>& Rows, CacheKey Key) {
  trap(kModule, "PutRecordsetInCache",
       [&](Steps& step) { step([&] { Cache.try_emplace(joined(Key), Rows); }); });
}

Ref<Recordset> GetRecordsetFromCache(const RecordsetCache& Cache, CacheKey Key) {
  return trap(kModule, "GetRecordsetFromCache", [&](Steps& step, Ref<Recordset>& result) {
    step([&] {
      const auto found = Cache.find(joined(Key));
      if (found != Cache.end()) result = found->second;
    });
  });
}

Value GetCachedValue(const ValueCache& Cache, const std::string& Key, const Value& Default) {
  const auto found = Cache.find(Key);
  return found == Cache.end() ? Default : found->second;
}

void PutCachedValue(ValueCache& Cache, const std::string& Key, const Value& CachedValue) {
  Cache.try_emplace(Key, CachedValue);
}

Date GetFiscalYearStartDateCached(ValueCache& Cache, Date AtDate, Steps& step) {
  // One statement: an answer that did not come is not kept.
  return step([&] {
    const std::string key = Value(AtDate).toText();
    const Value known = GetCachedValue(Cache, key, {});
    if (!known.isEmpty()) return known.toDate();
    const Date start = askCompany(step, [&](::QuorCastriaFoundation::Company& company) {
      return company.GetFiscalYearStartDate(AtDate);
    });
    PutCachedValue(Cache, key, start);
    return start;
  });
}

Value SafeExternalId(const Value& Id) {
  return trap(kModule, "SafeExternalId", [&](Steps& step, Value& result) {
    step([&] {
      const std::int32_t number = Id.isNumeric() ? Id.toLong() : 0;
      result = number != 0 ? Value(number) : Value::null();
    });
  });
}

Ref<::QuorCastriaFoundation::CCastriaHelper> QuorCastriaFoundation() {
  using ::QuorCastriaFoundation::CCastriaHelper;
  using QuorDataLib::ApplicationContext;
  return trap(kModule, "QuorCastriaFoundation", [&](Steps& step, Ref<CCastriaHelper>& result) {
    result = QuorDataLib::heldFoundationHelper();
    if (result) return;
    Ref<QuorDataLib::Object> found =
        askContext(step, std::source_location::current(), &ApplicationContext::Registry,
                   [](QuorDataLib::ObjectRegistry& registry) {
                     return registry.Find(kFoundationName, &CCastriaHelper::info());
                   });
    step(
        [&] { result = foundationHelper(found, "registered as " + std::string(kFoundationName)); });
    if (!found) {
      found = askContext(step, std::source_location::current(), &ApplicationContext::Factory,
                         [](QuorDataLib::ObjectFactory& factory) {
                           return factory.Create(kFoundationClass, 0, &CCastriaHelper::info());
                         });
      step([&] { result = foundationHelper(found, "created as a CCastriaHelper"); });
    }
    if (result) QuorDataLib::holdFoundationHelper(result);
  });
}

bool IsRecordsetCacheAllowed(Steps& step) {
  return step([&] {
    return askFoundation(step, std::source_location::current(),
                         &::QuorCastriaFoundation::CastriaApplication::Settings,
                         [](::QuorCastriaFoundation::Settings& settings) {
                           return settings.GetSetting(kRecordsetCacheSetting);
                         })
        .toBoolean();
  });
}

}  // namespace QuorAccQueries::MUtils
