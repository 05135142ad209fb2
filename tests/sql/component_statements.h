// The statements that the component itself sends.
#pragma once

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
};

/// What all members of all classes send in both dialects, called with nothing set, with everything
/// set, and mixed in many ways: each statement once. Some members change the company.
[[nodiscard]] std::vector<Sent> componentStatements(const std::shared_ptr<Store>& company);

}  // namespace QuorHost::Sql::Testing
