#include "com/component/thread_application.h"

#include <windows.h>
// After it, since they stand on its types.
#include <objbase.h>
#include <oleauto.h>

#include <array>

#include "com/component/apartment_end.h"
#include "com/objects/identity.h"
#include "com/objects/live.h"
#include "com/server/identifiers.h"
#include "com/values/com_error.h"
#include "com/values/text.h"
#include "platform/current_application.h"

namespace QuorCom {

using QuorDataLib::Application;
using QuorDataLib::Error;
using QuorDataLib::Ref;

namespace {

/// Automation's number for a class of which no object can be made.
constexpr std::int32_t kCannotCreateObject = 429;

/// What a host has told a thread.
struct Told {
  std::string classId;
  bool assigned = false;
};
Told& told() {
  thread_local Told told;
  return told;
}

std::string registeredClass() {
  const std::wstring key =
      L"CLSID\\{" + wide(classId("QuorAccQueries", "CQueries")) + L"}\\" + kApplicationKey;
  constexpr std::size_t kLongest = 256;
  std::array<wchar_t, kLongest> text{};
  DWORD size = sizeof text;
  if (::RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text.data(),
                     &size) != ERROR_SUCCESS) {
    return {};
  }
  return narrow(text.data());
}

[[noreturn]] void refuseClass(const std::string& classId, HRESULT result) {
  throw Error(kCannotCreateObject, "QuorAccQueries",
              "The application object cannot be made of the class '" + classId +
                  "': " + errorLeftBehind(result).description() +
                  ". Register the DLL that has it, or name another class (CThreadHost)");
}

Ref<Application> makeApplication() {
  const std::string name = applicationClass();
  CLSID id{};
  HRESULT result = ::CLSIDFromProgID(wide(name).c_str(), &id);
  ComPtr<IUnknown> object;
  if (SUCCEEDED(result)) {
    void* made = nullptr;
    result = ::CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IDispatch, &made);
    object = ComPtr<IUnknown>::adopted(static_cast<IDispatch*>(made));
  }
  if (FAILED(result)) refuseClass(name, result);
  watchApartment();
  return incoming(object.get(), Application::kClassName).as<Application>();
}

void letGo() noexcept {
  QuorDataLib::releaseHeldObjects();
  if (!told().assigned) unwatchApartment();
}

}  // namespace

void serveApplications() {
  QuorDataLib::installDefaultApplication(makeApplication);
  QuorDataLib::setAtThreadEnd(QuorDataLib::AtThreadEnd::Abandon);
  setThreadIdle(letGo);
}

bool holdsNothing() noexcept { return watchedApartments() == 0; }

std::string applicationClass() {
  return told().classId.empty() ? registeredClass() : told().classId;
}

void setApplicationClass(const std::string& classId) {
  told().classId = classId;
  QuorDataLib::releaseHeldObjects();
}

void setApplication(const Ref<Application>& application) {
  told().assigned = static_cast<bool>(application);
  if (!application) return QuorDataLib::installApplication({});
  watchApartment();
  QuorDataLib::installApplication([application] { return application; });
}

void apartmentEnds() noexcept {
  told().assigned = false;
  QuorDataLib::installApplication({});
}

}  // namespace QuorCom
