#pragma once

#include "platform/values/two_words.h"

namespace QuorDataLib {

/// A whole number of 128 bits with a sign, in which sums and products of amounts are exact.
#ifdef __SIZEOF_INT128__
// An alias may not stand on an extension.
__extension__ typedef __int128 WideInteger;  // NOLINT(modernize-use-using)
#else
using WideInteger = TwoWords;
#endif

}  // namespace QuorDataLib
