#include "core/mutils.h"

#include "core/error_trap.h"
#include "platform/current_application.h"

namespace QuorAccQueries::MUtils {
namespace {

constexpr std::string_view kModule = "MUtils";
constexpr const char* kCompanyKey = "Velmark";
constexpr std::int32_t kCompanySettingText = 2;
constexpr std::int16_t kRecordsetCacheSetting = 133;

Ref<QuorDataLib::ApplicationContext> context() {
  return QuorDataLib::currentApplication()->Context();
}

std::string joined(CacheKey key) {
  std::string text;
  for (const Value& part : key) {
    if (&part != key.begin()) text += "§";
    text += part.toText();
  }
  return text;
}

std::string readParameter(const std::string& table, const std::string& name, const std::string& key,
                          const Ref<Connection>& connection) {
  Value value;
  return context()->DataServices()->GetParameter(name, key, table, value, connection, 0);
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

std::string GetCompanySetting(const std::string& SettingName, const Ref<Connection>& Conn) {
  return context()->SettingsReader()->GetSetting(SettingName, kCompanyKey, kCompanySettingText,
                                                 Conn, {});
}

std::string GetCastriaParam(const std::string& ParamName, const std::string& Key,
                            const Ref<Connection>& Conn) {
  return readParameter("QuorCastriaParams", ParamName, Key, Conn);
}

std::int32_t GetAcctParamLong(const std::string& ParamName, std::int32_t Key,
                              const Ref<Connection>& Conn) {
  return Value(readParameter("QuorAcctParams", ParamName, std::to_string(Key), Conn)).toLong();
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

Date GetFiscalYearStartDateCached(ValueCache& Cache, Date AtDate) {
  const std::string key = Value(AtDate).toText();
  const Value known = GetCachedValue(Cache, key, {});
  if (!known.isEmpty()) return known.toDate();
  const Date start =
      QuorCastriaFoundation()->Application()->Company()->GetFiscalYearStartDate(AtDate);
  PutCachedValue(Cache, key, start);
  return start;
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
  return trap(kModule, "QuorCastriaFoundation", [&](Steps& step, Ref<CCastriaHelper>& result) {
    Ref<CCastriaHelper>& kept = QuorDataLib::currentFoundationHelper();
    if (!kept) {
      Ref<QuorDataLib::Object> found =
          step([&] { return context()->Registry()->Find("castria-helper"); });
      if (!found) {
        found = step([&] {
          return context()->Factory()->Create("QuorCastriaFoundation.CCastriaHelper", 0);
        });
      }
      kept = found.as<CCastriaHelper>();
    }
    result = kept;
  });
}

bool IsRecordsetCacheAllowed() {
  return QuorCastriaFoundation()
      ->Application()
      ->Settings()
      ->GetSetting(kRecordsetCacheSetting)
      .toBoolean();
}

}  // namespace QuorAccQueries::MUtils
