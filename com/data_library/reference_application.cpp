#include "com/data_library/reference_application.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/company/company.h"
#include "platform/member_table.h"

namespace QuorCom {

using QuorDataLib::ClassInfo;
using QuorDataLib::ErrorNumber;
using QuorDataLib::method;
using QuorDataLib::propertyGet;
using QuorDataLib::propertyPut;
using QuorDataLib::Ref;

namespace {

struct Answer {
  std::string_view name;
  QuorHost::OnError onError;
};
constexpr std::array kAnswers{
    Answer{"raise", QuorHost::OnError::Raise},
    Answer{"leave", QuorHost::OnError::Leave},
    Answer{"continue", QuorHost::OnError::Continue},
    Answer{"retry", QuorHost::OnError::Retry},
};

const Answer& answerOf(std::string_view name) {
  const auto* const found = std::ranges::find_if(
      kAnswers, [&](const Answer& each) { return QuorDataLib::sameMemberName(each.name, name); });
  if (found == kAnswers.end()) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument,
                       "'" + std::string(name) +
                           "' is no answer to an error: name raise, leave, continue or retry");
  }
  return *found;
}

}  // namespace

const ClassInfo& ReferenceApplication::info() {
  using Self = ReferenceApplication;
  static const ClassInfo info{
      kClassName, "The reference host: a company file and everything reachable from it.",
      QuorDataLib::numbered(
          {
              propertyGet<&Self::Context>("Context", "The application context."),
              method<&Self::OpenCompany>(
                  "OpenCompany", {"Path", "EngineType"},
                  "Opens a company file; engine type 1: desktop, 0: server."),
              method<&Self::CloseCompany>("CloseCompany", {}, "Lets go of the company."),
              method<&Self::CreateCompany>("CreateCompany", {"Path", "Sample"},
                                           "Makes a company file."),
              propertyGet<&Self::Connection>("Connection", "A connection to the company."),
              propertyGet<&Self::OnError>("OnError", "The error service's answer."),
              propertyPut<&Self::SetOnError>("OnError", "The error service's answer."),
              method<&Self::SetFoundationValue>("SetFoundationValue", {"Key", "Value"},
                                                "A value that stands over the company's."),
              propertyGet<&Self::LiveObjects>("LiveObjects",
                                              "Objects of the DLL that clients hold."),
          },
          1)};
  return info;
}

Ref<ReferenceApplication> ReferenceApplication::ofThread() {
  thread_local std::weak_ptr<ReferenceApplication> current;
  std::shared_ptr<ReferenceApplication> application = current.lock();
  if (!application) current = application = std::make_shared<ReferenceApplication>();
  return application;
}

QuorHost::Host& ReferenceApplication::host() const {
  if (host_) return *host_;
  QuorDataLib::raise(wasOpen_ ? ErrorNumber::ObjectClosed : ErrorNumber::ObjectNotSet,
                     wasOpen_ ? "The company was closed: open it again (OpenCompany)"
                              : "No company is open: open one first (OpenCompany)");
}

Ref<QuorDataLib::ApplicationContext> ReferenceApplication::Context() {
  return host().application()->Context();
}

void ReferenceApplication::OpenCompany(const std::string& Path, std::int16_t EngineType) {
  QuorHost::HostOptions options;
  options.store = QuorHost::openCompany(Path, QuorHost::accessAllowed(Path));
  options.dialect = EngineType == QuorDataLib::kDesktopEngine ? QuorHost::Sql::Dialect::Desktop
                                                              : QuorHost::Sql::Dialect::Server;
  options.onError = answerOf(onError_).onError;
  options.overrides = values_;
  host_ = std::make_unique<QuorHost::Host>(options);
  wasOpen_ = true;
}

void ReferenceApplication::CloseCompany() { host_.reset(); }

void ReferenceApplication::CreateCompany(const std::string& Path, bool Sample) {
  QuorHost::createCompany(Path, {.sample = Sample});
}

Ref<QuorDataLib::Connection> ReferenceApplication::Connection() { return host().connection(); }

void ReferenceApplication::SetOnError(const std::string& Answer) {
  onError_ = answerOf(Answer).name;
}

void ReferenceApplication::SetFoundationValue(const std::string& Key, const std::string& Value) {
  if (Value.empty()) {
    values_.erase(Key);
  } else {
    values_[Key] = Value;
  }
}

std::int32_t ReferenceApplication::LiveObjects() { return objectsHeld(); }

}  // namespace QuorCom
