// Class objects: what makes the objects of a public class.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <unknwn.h>

#include "com/server/library.h"

namespace QuorCom {

/// The class object of a class, which is there as long as the DLL: holding it keeps no DLL loaded,
/// locking it does. Objects are no part of others: aggregation is refused.
[[nodiscard]] IClassFactory& classObjectOf(const PublicClass& made);

}  // namespace QuorCom
