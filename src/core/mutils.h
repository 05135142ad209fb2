// The module that all classes of the component share.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>

#include "core/error_trap.h"
#include "platform/data_library.h"
#include "platform/foundation.h"

namespace QuorAccQueries {

/// Open recordsets by the text of their key.
using RecordsetCache = std::map<std::string, QuorDataLib::Ref<QuorDataLib::Recordset>>;

/// The parts of a cache key. They are joined by "§", so (1, 23) and (12, 3) are two keys.
using CacheKey = std::initializer_list<QuorDataLib::Value>;

/// Values by name.
using ValueCache = std::map<std::string, QuorDataLib::Value>;

namespace MUtils {

using QuorDataLib::Connection;
using QuorDataLib::Date;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

// Procedures that take steps have no trap of their own: their errors are those of the calling
// method's statement. Called within a step and given the steps, they repeat no earlier call when a
// later one is retried.

/// The ledger column to sum for an account: "ForeignAmnt" when foreign amounts are wanted and the
/// account's currency is not the home currency, otherwise "DetAmnt". Errors are raised again with
/// the place added.
std::string GLAcctQueryFieldToUse(bool UseForeignAmnt, std::int32_t AcctCurrencyId,
                                  std::int32_t HomeCurrencyId);

/// Widens a date range: no lower date becomes 1900-01-01, no upper date 9999-12-31. A date counts
/// as none when it rounds to day 0, so a bare time of day up to noon is none, too.
void NormalizeDateRange(Date& FromDate, Date& ToDate);

/// The text of a company setting, from the application's settings reader.
std::string GetCompanySetting(const std::string& SettingName, const Ref<Connection>& Conn,
                              Steps& step = Steps::untrapped());

/// A value of the application's parameter table "QuorCastriaParams". `Key` is the store's second
/// key.
std::string GetCastriaParam(const std::string& ParamName, const std::string& Key,
                            const Ref<Connection>& Conn, Steps& step = Steps::untrapped());

/// A number of the accounting parameter table "QuorAcctParams". Raises 13 when it is no number.
std::int32_t GetAcctParamLong(const std::string& ParamName, std::int32_t Key,
                              const Ref<Connection>& Conn, Steps& step = Steps::untrapped());

/// Keeps a recordset under a key, unless the key is taken.
void PutRecordsetInCache(RecordsetCache& Cache, const Ref<Recordset>& Rows, CacheKey Key);

/// The recordset kept under a key, or an empty reference.
Ref<Recordset> GetRecordsetFromCache(const RecordsetCache& Cache, CacheKey Key);

/// The value kept under a key, or `Default`.
Value GetCachedValue(const ValueCache& Cache, const std::string& Key, const Value& Default);

/// Keeps a value under a key, unless the key is taken.
void PutCachedValue(ValueCache& Cache, const std::string& Key, const Value& CachedValue);

/// First day of the fiscal year of `AtDate`, asked of the company once for each date.
Date GetFiscalYearStartDateCached(ValueCache& Cache, Date AtDate, Steps& step = Steps::untrapped());

/// A foreign key as it is stored: the number as a Long, or Null for 0 and for what is no number.
Value SafeExternalId(const Value& Id);

/// The application foundation, looked up as "castria-helper" or else created, and kept for the life
/// of the thread. An object of that name which is no foundation helper is an error of this
/// procedure (13).
Ref<::QuorCastriaFoundation::CCastriaHelper> QuorCastriaFoundation();

/// Application setting 133: may helpers keep recordsets?
bool IsRecordsetCacheAllowed(Steps& step = Steps::untrapped());

}  // namespace MUtils
}  // namespace QuorAccQueries
