#include "com/objects/live.h"

#include <atomic>

namespace QuorCom {

struct ThreadCount {
  std::atomic<std::int32_t> objects = 0;
};

namespace {

std::atomic<std::int32_t> allObjects = 0;
std::atomic<std::int32_t> locks = 0;
std::atomic<void (*)() noexcept> threadIdle = nullptr;

/// Objects keep the count of their thread, which may end before them.
const std::shared_ptr<ThreadCount>& countOfThread() {
  thread_local const auto count = std::make_shared<ThreadCount>();
  return count;
}

}  // namespace

LiveObject::LiveObject() : thread_(::GetCurrentThreadId()), count_(countOfThread()) {
  ++allObjects;
  ++count_->objects;
}

LiveObject::~LiveObject() {
  const bool last = --count_->objects == 0 && onItsThread();
  if (auto* const callback = threadIdle.load(); last && callback != nullptr) callback();
  --allObjects;  // last: nothing of the DLL runs for this object from here on
}

std::int32_t liveObjects() noexcept { return allObjects; }

void lockModule(bool lock) noexcept { locks += lock ? 1 : -1; }

bool mayUnload() noexcept { return allObjects == 0 && locks == 0; }

void setThreadIdle(void (*callback)() noexcept) noexcept { threadIdle = callback; }

}  // namespace QuorCom
