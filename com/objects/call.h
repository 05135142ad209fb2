// One call of a member: the arguments of a client in, result and outputs back.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <oleauto.h>

#include "platform/class_info.h"

namespace QuorCom {

/// What a client passes with a call.
struct ClientCall {
  const DISPPARAMS& arguments;
  /// Where the result goes; null where it is not wanted.
  VARIANT* result;
  /// Where the place of an argument of a wrong type goes; it may be null.
  UINT* wrongArgument;
};

/// Calls a member. Raises what the member raises, and refuses: too few, too many or unknown
/// arguments, and those that cannot be what the member wants.
///
/// All arguments have to be there; one that is to have its type's empty value is left out by a gap,
/// or, once arguments are named, by not being named.
void callMember(QuorDataLib::Object& object, const QuorDataLib::Member& member,
                const ClientCall& call);

}  // namespace QuorCom
