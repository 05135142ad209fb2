#include "core/frame.h"

#include <iterator>

#include "core/column_list.h"
#include "platform/current_application.h"

namespace QuorAccQueries {
namespace {

/// Mode of the recordset-open call for rows that are read.
constexpr std::int32_t kReadRows = 4;
/// Mode for finding out a table's columns.
constexpr std::int32_t kReadColumns = 2;

Ref<QuorDataLib::ApplicationContext> context() {
  return QuorDataLib::currentApplication()->Context();
}

}  // namespace

Ref<Connection> QueryFrame::CustomConnection() {
  return trap("CustomConnection", [&](Steps& step, Ref<Connection>& result) {
    result = connection_;
    if (!result) result = step([&] { return context()->DataServices()->DefaultConnection(); });
  });
}

void QueryFrame::SetCustomConnection(const Ref<Connection>& Conn) {
  trap("CustomConnection", [&](Steps& step) { step([&] { connection_ = Conn; }); });
}

std::vector<Member> QueryFrame::members() {
  return {
      propertyGet<&QueryFrame::CustomConnection>(
          "CustomConnection", "The connection in use: the one assigned, or the application's own."),
      propertyPut<&QueryFrame::SetCustomConnection>("CustomConnection",
                                                    "Assigns the connection to use."),
  };
}

Ref<Recordset> QueryFrame::open(const Statement& statement, Pass pass, std::int32_t flag) {
  statement.checkComplete();
  QuorDataLib::Parameters parameters;
  if (pass == Pass::Array) parameters = context()->Utility()->ParameterArray(statement.values());
  if (pass == Pass::Single) parameters = QuorDataLib::Parameters::single(statement.values().at(0));
  return CustomConnection()->OpenRecordset(statement.sql(), kReadRows, 0, parameters, flag);
}

void QueryFrame::listColumns(Steps& step, std::string& list, std::string_view noRows,
                             std::string_view table, const std::string& exclusions,
                             std::source_location where) {
  const Ref<Recordset> rows = step(
      [&] {
        return CustomConnection()->OpenRecordset(std::string(noRows), kReadColumns, 0, {},
                                                 kFlagSet);
      },
      where);
  step([&] { list = columnsWithout(rows, table, exclusions); }, where);
  step([&] { rows->Close(); }, where);
}

std::int32_t QueryFrame::accountParameter(const std::string& name) {
  return MUtils::GetAcctParamLong(name, 0, CustomConnection());
}

std::int16_t QueryFrame::engineType() { return context()->DataServices()->EngineType(); }

std::string QueryFrame::nullSafe(const std::string& column, std::int16_t defaultValue) {
  return context()->Utility()->NullSafe(column, defaultValue, -1);
}

bool QueryFrame::foreignCurrencyUsed() {
  return MUtils::QuorCastriaFoundation()
      ->Application()
      ->Company()
      ->CurrencyInfo()
      ->CieIsForeignCurrencyUsed();
}

bool HelperFrame::CacheRecordsets() {
  return trap("CacheRecordsets",
              [&](Steps& step, bool& result) { step([&] { result = cacheOn_; }); });
}

void HelperFrame::SetCacheRecordsets(bool On) {
  trap("CacheRecordsets", [&](Steps& step) { step([&] { cacheOn_ = cacheAllowed_ && On; }); });
}

std::vector<Member> HelperFrame::members() {
  return joined(QueryFrame::members(),
                {propertyGet<&HelperFrame::CacheRecordsets>(
                     "CacheRecordsets", "Whether recordsets read are kept for later calls."),
                 propertyPut<&HelperFrame::SetCacheRecordsets>(
                     "CacheRecordsets",
                     "Keeps recordsets from now on, where the application allows it, or stops.")});
}

bool moveOn(Steps& step, const Ref<Recordset>& rows, std::source_location where) {
  const bool moved = step(
      [&] {
        rows->MoveNext();
        return true;
      },
      where);
  return moved && step([&] { return !rows->AtEnd(); }, where);
}

Value valueOrEmpty(const Ref<Recordset>& rows, const std::string& column) {
  Value value = rows->Field(column);
  if (value.isNull()) return {};
  return value;
}

std::vector<Member> joined(std::vector<Member> frameMembers, std::vector<Member> ownMembers) {
  frameMembers.insert(frameMembers.end(), std::make_move_iterator(ownMembers.begin()),
                      std::make_move_iterator(ownMembers.end()));
  return frameMembers;
}

}  // namespace QuorAccQueries
