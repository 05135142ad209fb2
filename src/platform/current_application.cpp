#include "platform/current_application.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace QuorDataLib {
namespace {

struct ThreadObjects {
  ApplicationFactory factory;
  Ref<Application> application;
  Ref<QuorCastriaFoundation::CCastriaHelper> foundation;
  bool making = false;
};

std::atomic<AtThreadEnd> atThreadEnd = AtThreadEnd::Release;

// The pointer itself needs no destruction, so that it can be used as long as there is code to run
// on the thread: also by objects that end after the thread's own, such as those of static storage.
thread_local ThreadObjects* threadObjects = nullptr;

/// What threads share. It is never destroyed: threads may outlive what has static storage.
struct Shared {
  std::mutex mutex;
  ApplicationFactory factory;
  std::vector<std::unique_ptr<ThreadObjects>> abandoned;
};
Shared& shared() {
  static auto& kept = *new Shared;  // NOLINT: see above
  return kept;
}

/// Ends with the thread.
struct ThreadEnd {
  ~ThreadEnd() {
    std::unique_ptr<ThreadObjects> objects(std::exchange(threadObjects, nullptr));
    if (atThreadEnd != AtThreadEnd::Abandon) return;
    const std::lock_guard lock(shared().mutex);
    shared().abandoned.push_back(std::move(objects));
  }
};

ThreadObjects& held() {
  if (threadObjects == nullptr) {
    thread_local const ThreadEnd end;
    static_cast<void>(end);
    threadObjects = new ThreadObjects;  // NOLINT: `ThreadEnd` takes it over
  }
  return *threadObjects;
}

ApplicationFactory factoryFor(const ThreadObjects& objects) {
  if (objects.factory) return objects.factory;
  const std::lock_guard lock(shared().mutex);
  return shared().factory;
}

/// A thread's application object while it is being made.
class Making {
 public:
  explicit Making(ThreadObjects& objects) : objects_(objects) {
    if (objects.making) {
      raise(ErrorNumber::ObjectNotSet,
            "No application object: its factory asked for it while it was making it");
    }
    objects.making = true;
  }
  ~Making() { objects_.making = false; }
  Making(const Making&) = delete;
  Making& operator=(const Making&) = delete;

 private:
  ThreadObjects& objects_;
};

}  // namespace

void installApplication(ApplicationFactory factory) {
  // What is released may use the thread's application object in its end; it finds the new one.
  const Ref<Application> application = std::exchange(held().application, nullptr);
  const auto foundation = std::exchange(held().foundation, nullptr);
  const ApplicationFactory before = std::exchange(held().factory, std::move(factory));
}

void installDefaultApplication(ApplicationFactory factory) {
  const std::lock_guard lock(shared().mutex);
  shared().factory.swap(factory);  // what was there is released without the lock
}

Ref<Application> currentApplication() {
  ThreadObjects& objects = held();
  if (!objects.application) {
    if (const ApplicationFactory factory = factoryFor(objects)) {
      const Making making(objects);
      objects.application = factory();
    }
  }
  if (!objects.application) {
    raise(ErrorNumber::ObjectNotSet,
          "No application object: the host must install one on this thread, or one for all "
          "threads, before it uses the component");
  }
  return objects.application;
}

Ref<Application> heldApplication() noexcept {
  return threadObjects != nullptr ? threadObjects->application : nullptr;
}

Ref<QuorCastriaFoundation::CCastriaHelper> heldFoundationHelper() noexcept {
  return threadObjects != nullptr ? threadObjects->foundation : nullptr;
}

void holdFoundationHelper(Ref<QuorCastriaFoundation::CCastriaHelper> helper) {
  const auto before = std::exchange(held().foundation, std::move(helper));
}

void releaseHeldObjects() noexcept {
  if (threadObjects == nullptr) return;
  const Ref<Application> application = std::exchange(threadObjects->application, nullptr);
  const auto foundation = std::exchange(threadObjects->foundation, nullptr);
}

void setAtThreadEnd(AtThreadEnd what) noexcept { atThreadEnd = what; }

}  // namespace QuorDataLib
