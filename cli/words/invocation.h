// Calling a member of the component by name, off the member tables alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/print/json_text.h"
#include "cli/session.h"
#include "core/member_table.h"

namespace QuorCli {

/// A member to call and the class that it belongs to.
struct Target {
  const QuorAccQueries::ClassInfo* owner = nullptr;
  const QuorAccQueries::Member* member = nullptr;

  /// "CCustomerQueries.OpenCustBalance", spelled as the tables spell it.
  [[nodiscard]] std::string name() const;
};

/// The class of that name. Raises `UsageError` with the nearest names for an unknown one.
[[nodiscard]] const QuorAccQueries::ClassInfo& classNamed(std::string_view name);

/// The method or readable property that `CLASS.MEMBER` names. Raises `UsageError`, with the nearest
/// names, for an unknown class or member, and for a property that can only be assigned.
[[nodiscard]] Target findTarget(std::string_view path);

/// The values of a call, in the order of the member's arguments, from `NAME=VALUE` texts; what is
/// left out gets its type's empty value. A collection is given as its values, separated by commas.
/// Raises `UsageError`, listing the arguments, for an unknown or repeated name, any other object,
/// or a text that the argument's type cannot hold.
[[nodiscard]] std::vector<QuorDataLib::Value> parseArguments(const Target& target,
                                                             const std::vector<std::string>& texts);

/// The same from values by name.
[[nodiscard]] std::vector<QuorDataLib::Value> bindArguments(const Target& target,
                                                            const std::vector<NamedValue>& values);

/// Raises `UsageError` when `options` ask for something that the class does not have.
void checkOptions(const Target& target, const RunOptions& options);

/// A call that has been made. The object is kept: a recordset may still need it.
struct Answer {
  QuorDataLib::Ref<QuorAccQueries::ComponentObject> object;
  QuorDataLib::Value result;
  /// The arguments by reference that the member may write to, in their order.
  std::vector<NamedValue> outputs;
};

/// Creates an object of the target's class, sets it up as `options` say and calls the member.
/// Raises what the component raises.
[[nodiscard]] Answer callMember(const Target& target, std::vector<QuorDataLib::Value> values,
                                const RunOptions& options, const Session& session);

}  // namespace QuorCli
