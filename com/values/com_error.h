// Errors on their way across: numbers of the automation runtime here, result codes there.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <oleauto.h>

#include <utility>

#include "platform/error.h"

namespace QuorCom {

/// A call that is answered with a result code of COM's own (an unknown name, a wrong count).
class Refusal {
 public:
  explicit Refusal(HRESULT result) : result_(result) {}
  [[nodiscard]] HRESULT result() const noexcept { return result_; }

 private:
  HRESULT result_;
};

/// The result code of an error: numbers of the runtime (1 to 65535) are 0x800Axxxx, all others are
/// codes already.
[[nodiscard]] HRESULT resultOf(const QuorDataLib::Error& error) noexcept;

/// The error that a failed result code means, with the standard number and text.
[[nodiscard]] QuorDataLib::Error errorOf(HRESULT result);

/// The error that a called object described; `details` is emptied.
[[nodiscard]] QuorDataLib::Error errorOf(EXCEPINFO& details);

/// The error of a failed call of something that does not dispatch: as the error object of the
/// thread tells it, or by its code.
[[nodiscard]] QuorDataLib::Error errorLeftBehind(HRESULT result);

/// Raises what a failed result code means.
void check(HRESULT result);
[[noreturn]] void raiseForResult(HRESULT result);

/// The exception being handled, told as the thread's error object and, where there is room for it,
/// in `details`. Returns the result code that goes with it.
HRESULT tellCaught(EXCEPINFO* details) noexcept;

/// Runs `body`, which returns a result code, and lets nothing that it throws out.
template <class Body>
HRESULT guarded(EXCEPINFO* details, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return tellCaught(details);
  }
}
template <class Body>
HRESULT guarded(Body&& body) noexcept {
  return guarded(nullptr, std::forward<Body>(body));
}

}  // namespace QuorCom
