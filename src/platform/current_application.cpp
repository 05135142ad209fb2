#include "platform/current_application.h"

#include <utility>

namespace QuorDataLib {
namespace {

struct ThreadObjects {
  ApplicationFactory factory;
  Ref<Application> application;
  Ref<QuorCastriaFoundation::CCastriaHelper> foundation;
};

ThreadObjects& threadObjects() {
  thread_local ThreadObjects objects;
  return objects;
}

}  // namespace

void installApplication(ApplicationFactory factory) {
  threadObjects() = ThreadObjects{std::move(factory), nullptr, nullptr};
}

Ref<Application> currentApplication() {
  ThreadObjects& objects = threadObjects();
  if (!objects.application && objects.factory) objects.application = objects.factory();
  if (!objects.application) {
    raise(ErrorNumber::ObjectNotSet,
          "No application object: the host must install one on this thread before it uses the "
          "component");
  }
  return objects.application;
}

Ref<QuorCastriaFoundation::CCastriaHelper>& currentFoundationHelper() {
  return threadObjects().foundation;
}

}  // namespace QuorDataLib
