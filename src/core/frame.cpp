#include "core/frame.h"

#include <iterator>

#include "core/column_list.h"

namespace QuorAccQueries {

using QuorDataLib::Parameters;

namespace {

/// An object's own limit on a connection that others use, too: put back when the call is over,
/// however it ends.
class TimeLimit {
 public:
  explicit TimeLimit(const Ref<Connection>& connection) : connection_(connection) {}
  ~TimeLimit() {
    if (!before_) return;
    try {
      connection_->SetCommandTimeout(*before_);
    } catch (...) {  // NOLINT(bugprone-empty-catch): the error that ended the call counts
    }
  }
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

  void set(Steps& step, std::int32_t limit, std::source_location where) {
    before_ = step([&] { return std::optional(connection_->CommandTimeout()); }, where);
    step([&] { connection_->SetCommandTimeout(limit); }, where);
  }
  void putBack(Steps& step, std::source_location where) {
    if (before_) step([&] { connection_->SetCommandTimeout(*before_); }, where);
    before_.reset();
  }

 private:
  const Ref<Connection>& connection_;
  std::optional<std::int32_t> before_;
};

/// One statement that makes `call` on the connection that `connectionOf` gives; under the object's
/// own limit, if it has one, with statements around it that set the limit and put it back.
template <class ConnectionOf, class Call>
auto callUnderLimit(Steps& step, std::optional<std::int32_t> limit, ConnectionOf&& connectionOf,
                    Call&& call, std::source_location where) {
  if (!limit) return step([&] { return call(step(connectionOf)); }, where);
  const Ref<Connection> connection = step(connectionOf, where);
  TimeLimit timeLimit(connection);
  timeLimit.set(step, *limit, where);
  auto result = step([&] { return call(connection); }, where);
  timeLimit.putBack(step, where);
  return result;
}

Parameters parametersOf(Steps& step, const Statement& statement, Pass pass) {
  statement.checkComplete();
  switch (pass) {
    case Pass::Array:
      return askUtility(step, [&](QuorDataLib::Utility& utility) {
        return utility.ParameterArray(statement.values());
      });
    case Pass::Single:
      return Parameters::single(statement.values().at(0));
    case Pass::Nothing:
      break;
  }
  return {};
}

}  // namespace

Ref<Connection> QueryFrame::CustomConnection() {
  return trap("CustomConnection", [&](Steps& step, Ref<Connection>& result) {
    result = connection_;
    if (!result) result = defaultConnection(step);
  });
}

void QueryFrame::SetCustomConnection(const Ref<Connection>& Conn) {
  trap("CustomConnection", [&](Steps& step) {
    step([&] {
      handOn(Conn);
      connection_ = Conn;
    });
  });
}

void QueryFrame::SetCustomCommandTimeout(std::int32_t Timeout) {
  trap("CustomCommandTimeout", [&](Steps& step) { step([&] { commandTimeout_ = Timeout; }); });
}

std::vector<Member> QueryFrame::members() {
  return QuorDataLib::numbered(
      {
          propertyGet<&QueryFrame::CustomConnection>(
              "CustomConnection",
              "The connection in use: the one assigned, or the application's own."),
          propertyPut<&QueryFrame::SetCustomConnection>("CustomConnection",
                                                        "Assigns the connection to use."),
      },
      kQueryFrameNumbers);
}

Ref<Recordset> QueryFrame::open(Steps& step, const Statement& statement, Pass pass, Opening opening,
                                std::source_location where) {
  return callUnderLimit(
      step, commandTimeout_, [&] { return CustomConnection(); },
      [&](const Ref<Connection>& connection) {
        const Parameters parameters = parametersOf(step, statement, pass);
        return step([&] {
          return connection->OpenRecordset(statement.sql(), opening.mode, 0, parameters,
                                           opening.flag);
        });
      },
      where);
}

std::int32_t QueryFrame::execute(Steps& step, const Statement& statement,
                                 std::source_location where) {
  return executeOn(step, statement, [&] { return CustomConnection(); }, where);
}

std::int32_t QueryFrame::execute(Steps& step, const Statement& statement,
                                 const Ref<Connection>& connection, std::source_location where) {
  return executeOn(step, statement, [&] { return connection; }, where);
}

template <class ConnectionOf>
std::int32_t QueryFrame::executeOn(Steps& step, const Statement& statement,
                                   ConnectionOf&& connectionOf, std::source_location where) {
  constexpr std::int32_t kExecuteOption = -1;
  return callUnderLimit(
      step, commandTimeout_, connectionOf,
      [&](const Ref<Connection>& connection) {
        const Parameters parameters = parametersOf(step, statement, Pass::Array);
        return step([&] {
          std::int32_t changed = 0;
          connection->Execute(statement.sql(), changed, kExecuteOption, parameters);
          return changed;
        });
      },
      where);
}

void QueryFrame::listColumns(Steps& step, std::string& list, std::string_view noRows,
                             std::string_view table, const std::string& exclusions,
                             std::source_location where) {
  const Ref<Recordset> rows =
      open(step, Statement(noRows), Pass::Nothing, {.mode = QuorDataLib::kOpenColumns}, where);
  listColumnsWithout(step, list, rows, table, exclusions, where);
  step([&] { rows->Close(); }, where);
}

std::int32_t QueryFrame::accountParameter(Steps& step, const std::string& name,
                                          std::source_location where) {
  return step(
      [&] {
        const Ref<Connection> connection = step([&] { return CustomConnection(); });
        return MUtils::GetAcctParamLong(name, 0, connection, step);
      },
      where);
}

Ref<Connection> QueryFrame::defaultConnection(Steps& step, std::source_location where) {
  return askDataServices(step, &QuorDataLib::DataServices::DefaultConnection, where);
}

std::int16_t QueryFrame::engineType(Steps& step, std::source_location where) {
  return askDataServices(step, &QuorDataLib::DataServices::EngineType, where);
}

std::string QueryFrame::nullSafe(Steps& step, const std::string& column, std::int16_t defaultValue,
                                 std::source_location where) {
  return askUtility(
      step,
      [&](QuorDataLib::Utility& utility) { return utility.NullSafe(column, defaultValue, -1); },
      where);
}

bool QueryFrame::foreignCurrencyUsed(Steps& step, std::source_location where) {
  return askCurrencyInfo(step, &QuorCastriaFoundation::CurrencyInfo::CieIsForeignCurrencyUsed,
                         where);
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
                QuorDataLib::numbered(
                    {
                        propertyGet<&HelperFrame::CacheRecordsets>(
                            "CacheRecordsets", "Whether recordsets read are kept for later calls."),
                        propertyPut<&HelperFrame::SetCacheRecordsets>(
                            "CacheRecordsets",
                            "Keeps recordsets from now on, where the application allows it, or "
                            "stops."),
                    },
                    kHelperFrameNumbers));
}

void HelperFrame::keepOrClose(Steps& step, RecordsetCache& cache, CacheKey key,
                              const Ref<Recordset>& rows, std::source_location where) {
  if (cacheOn_ && rows) step([&] { MUtils::PutRecordsetInCache(cache, rows, key); }, where);
  release(step, rows, where);
}

void HelperFrame::release(Steps& step, const Ref<Recordset>& rows,
                          std::source_location where) const {
  if (!cacheOn_) step([&] { rows->Close(); }, where);
}

std::vector<Member> joined(std::vector<Member> frameMembers, std::vector<Member> ownMembers) {
  frameMembers.insert(frameMembers.end(), std::make_move_iterator(ownMembers.begin()),
                      std::make_move_iterator(ownMembers.end()));
  return frameMembers;
}

}  // namespace QuorAccQueries
