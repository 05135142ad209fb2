// The four entry points of the DLL.
#include <windows.h>
// After it, since they stand on its types.
#include <olectl.h>

#include "com/objects/live.h"
#include "com/server/class_object.h"
#include "com/server/identifiers.h"
#include "com/server/registration.h"
#include "com/server/server.h"
#include "com/values/com_error.h"

namespace {

using namespace QuorCom;

/// Runs registration code; what the registry refuses is the result.
template <class Body>
HRESULT registering(Body&& body) noexcept {
  const HRESULT result = guarded(std::forward<Body>(body));
  return result == E_OUTOFMEMORY || SUCCEEDED(result) ? result : SELFREG_E_CLASS;
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** found) {
  if (found == nullptr) return E_POINTER;
  *found = nullptr;
  return guarded([&] {
    const Library& library = server().library;
    for (const PublicClass& each : library.classes) {
      if (guidOf(QuorCom::classId(library.name, each.info->name)) != classId) continue;
      return classObjectOf(each).QueryInterface(interfaceId, found);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
  });
}

STDAPI DllCanUnloadNow() { return mayUnload() && server().atRest() ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() {
  return registering([] { return registerServer(), S_OK; });
}

STDAPI DllUnregisterServer() {
  return registering([] { return unregisterServer(), S_OK; });
}
