// How many objects of this DLL clients hold, in all and by thread.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

namespace QuorCom {

struct ThreadCount;

/// Counts as one object that a client holds for as long as it lives. When the last one of a thread
/// has ended there, what the DLL holds for the thread is let go (`setThreadIdle`).
class LiveObject {
 public:
  LiveObject();
  ~LiveObject();
  LiveObject(const LiveObject&) = delete;
  LiveObject& operator=(const LiveObject&) = delete;

  /// Whether the object was made on the calling thread, the only one that may use it.
  [[nodiscard]] bool onItsThread() const noexcept { return thread_ == ::GetCurrentThreadId(); }

 private:
  DWORD thread_;
  std::shared_ptr<ThreadCount> count_;
};

/// Objects that clients hold.
[[nodiscard]] std::int32_t liveObjects() noexcept;

/// Keeps the DLL loaded while it is more than 0.
void lockModule(bool lock) noexcept;

/// Whether nothing of the DLL is in use.
[[nodiscard]] bool mayUnload() noexcept;

/// What is done when clients have let go of a thread's last object.
void setThreadIdle(void (*callback)() noexcept) noexcept;

}  // namespace QuorCom
