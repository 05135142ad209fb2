#include "com/component/thread_host.h"

#include "com/component/thread_application.h"
#include "com/objects/live.h"
#include "platform/current_application.h"

namespace QuorCom {

using QuorDataLib::Object;
using QuorDataLib::Ref;

namespace {

class OwnThreadHost final : public ThreadHost {
 public:
  std::string ApplicationClass() override { return applicationClass(); }
  void SetApplicationClass(const std::string& classId) override { setApplicationClass(classId); }
  Ref<QuorDataLib::Application> Application() override { return QuorDataLib::currentApplication(); }
  void SetApplication(const Ref<QuorDataLib::Application>& application) override {
    setApplication(application);
  }
  std::int32_t LiveObjects() override { return liveObjects(); }
};

}  // namespace

Ref<Object> newThreadHost() { return QuorDataLib::make<OwnThreadHost>(); }

}  // namespace QuorCom
