#include "host/application/context.h"

#include <utility>

#include "host/application/foundation.h"
#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorCastriaFoundation::CastriaApplication;
using QuorDataLib::ClassInfo;
using QuorDataLib::make;
using QuorDataLib::Object;
using QuorDataLib::Ref;

constexpr std::string_view kHelperName = "castria-helper";
constexpr std::string_view kHelperClass = "QuorCastriaFoundation.CCastriaHelper";

/// Automation's number for a class that cannot be created.
constexpr std::int32_t kCannotCreateObject = 429;

class Registry final : public QuorDataLib::ObjectRegistry {
 public:
  explicit Registry(const Ref<CastriaApplication>& foundation)
      : helper_(make<CastriaHelper>(foundation)) {}

  Ref<Object> Find(const std::string& name, const ClassInfo* /*wanted*/) override {
    if (name == kHelperName) return helper_;
    return nullptr;
  }

 private:
  Ref<Object> helper_;
};

class Factory final : public QuorDataLib::ObjectFactory {
 public:
  explicit Factory(Ref<CastriaApplication> foundation) : foundation_(std::move(foundation)) {}

  Ref<Object> Create(const std::string& classId, std::int32_t /*flag*/,
                     const ClassInfo* /*wanted*/) override {
    if (!Sql::sameName(classId, kHelperClass)) {
      throw QuorDataLib::Error(kCannotCreateObject, "QuorDataLib.ObjectFactory",
                               "Cannot create an object of the class " + classId +
                                   ": this host knows only " + std::string(kHelperClass));
    }
    return make<CastriaHelper>(foundation_);
  }

 private:
  Ref<CastriaApplication> foundation_;
};

class Context final : public QuorDataLib::ApplicationContext {
 public:
  explicit Context(const ContextParts& parts)
      : parts_(parts),
        registry_(make<QuorHost::Registry>(parts.foundation)),
        factory_(make<QuorHost::Factory>(parts.foundation)) {}

  Ref<QuorDataLib::DataServices> DataServices() override { return parts_.dataServices; }
  Ref<QuorDataLib::ErrorService> ErrorService() override { return parts_.errorService; }
  Ref<QuorDataLib::ObjectRegistry> Registry() override { return registry_; }
  Ref<QuorDataLib::ObjectFactory> Factory() override { return factory_; }
  Ref<QuorDataLib::SettingsReader> SettingsReader() override { return parts_.settingsReader; }
  Ref<QuorDataLib::Utility> Utility() override { return parts_.utility; }

 private:
  ContextParts parts_;
  Ref<QuorDataLib::ObjectRegistry> registry_;
  Ref<QuorDataLib::ObjectFactory> factory_;
};

class Application final : public QuorDataLib::Application {
 public:
  explicit Application(const ContextParts& parts) : context_(make<QuorHost::Context>(parts)) {}
  Ref<QuorDataLib::ApplicationContext> Context() override { return context_; }

 private:
  Ref<QuorDataLib::ApplicationContext> context_;
};

}  // namespace

Ref<QuorDataLib::Application> makeApplication(const ContextParts& parts) {
  return make<Application>(parts);
}

}  // namespace QuorHost
