// The statements that the component itself sends.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/engines/store.h"
#include "host/sql/dialect.h"
#include "platform/values/value.h"

namespace QuorHost::Sql::Testing {

/// A statement, with the values of its markers.
struct Sent {
  Dialect dialect = Dialect::Server;
  std::string text;
  std::vector<QuorDataLib::Value> values;
  /// Who sends it first, as CLASS.MEMBER.
  std::string member;
};

/// A call of a member on a new object, with the arguments that come back in `values`. Returns what
/// the member returns.
using Call = std::function<QuorDataLib::Value(std::vector<QuorDataLib::Value>& values)>;

/// Gives `visit` calls of every member of every class: with nothing set, with everything set, with
/// each argument turned against all others, and mixed as chance has it. `what` tells them apart.
void forEachCall(const std::function<void(const std::string& what, const Call& call)>& visit);

/// Kinds of charts that a company may have.
inline constexpr std::size_t kAllCharts = 3;

/// What all these calls send in both dialects, to companies of as many kinds of charts: each
/// statement once. Some members change the company.
[[nodiscard]] std::vector<Sent> componentStatements(const std::shared_ptr<Store>& company,
                                                    std::size_t charts = kAllCharts);

}  // namespace QuorHost::Sql::Testing
