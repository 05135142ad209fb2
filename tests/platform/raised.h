// What a call raises.
#pragma once

#include "platform/error.h"

namespace QuorTest {

/// The number of the error that `call` raises, 0 when it raises none.
template <class Call>
int raisedBy(Call&& call) {
  try {
    static_cast<void>(call());
  } catch (const QuorDataLib::Error& error) {
    return error.number();
  }
  return 0;
}

}  // namespace QuorTest
