// A client of the DLL in this process: it loads the DLL, makes its objects by their class objects,
// and calls them by dispatch. What the test itself hands over is served by the same means, so that
// the objects which the DLL holds of it are counted, too.
#pragma once

#include <windows.h>
// After it, since they stand on its types.
#include <objbase.h>
#include <oleauto.h>

#include <bit>
#include <string>
#include <vector>

#include "com/objects/identity.h"
#include "com/proxies/late_bound.h"
#include "com/server/identifiers.h"
#include "com/server/server.h"
#include "com/values/com_error.h"
#include "com/values/com_ptr.h"
#include "com/values/text.h"
#include "com/values/variant.h"
#include "core/member_table.h"

namespace client {

using namespace QuorCom;

/// The DLL, loaded for as long as this lives.
class Dll {
 public:
  explicit Dll(const wchar_t* name) : module_(::LoadLibraryW(name)) {}
  ~Dll() { ::FreeLibrary(module_); }
  Dll(const Dll&) = delete;
  Dll& operator=(const Dll&) = delete;

  [[nodiscard]] bool mayUnload() const {
    return entry<HRESULT WINAPI()>("DllCanUnloadNow")() == S_OK;
  }

  [[nodiscard]] HRESULT classObject(const GUID& id, ComPtr<IClassFactory>& found) const {
    return entry<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(
        id, IID_IClassFactory, reinterpret_cast<void**>(found.put()));
  }

  /// A new object of a class of the component.
  [[nodiscard]] ComPtr<IDispatch> create(std::string_view className) const {
    ComPtr<IClassFactory> factory;
    check(classObject(guidOf(classId("QuorAccQueries", className)), factory));
    void* made = nullptr;
    check(factory->CreateInstance(nullptr, IID_IDispatch, &made));
    return ComPtr<IDispatch>::adopted(static_cast<IDispatch*>(made));
  }

 private:
  template <class F>
  [[nodiscard]] std::add_pointer_t<F> entry(const char* name) const {
    return std::bit_cast<std::add_pointer_t<F>>(::GetProcAddress(module_, name));
  }

  HMODULE module_;
};

/// One call as scripts make it; arguments from the first to the last.
struct Called {
  HRESULT result = S_OK;
  Variant value;
  EXCEPINFO details{};
  UINT wrongArgument = 99;

  [[nodiscard]] QuorDataLib::Error error() { return errorOf(details); }
};

inline DISPID numberOf(IDispatch& object, std::wstring name) {
  DISPID number = DISPID_UNKNOWN;
  wchar_t* text = name.data();
  object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &number);
  return number;
}

inline void invoke(Called& called, IDispatch& object, const wchar_t* name, WORD flags,
                   const std::vector<VARIANT>& arguments, std::vector<DISPID> names = {}) {
  std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
  DISPPARAMS parameters{reversed.data(), names.data(), static_cast<UINT>(reversed.size()),
                        static_cast<UINT>(names.size())};
  ::VariantClear(called.value.get());
  called.result =
      object.Invoke(numberOf(object, name), IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                    called.value.get(), &called.details, &called.wrongArgument);
}

inline VARIANT number(std::int32_t value) {
  VARIANT variant{};
  variant.vt = VT_I4;
  variant.lVal = value;
  return variant;
}

inline VARIANT object(IDispatch* value) {
  VARIANT variant{};
  variant.vt = VT_DISPATCH;
  variant.pdispVal = value;
  return variant;
}

inline VARIANT omitted() {
  VARIANT variant{};
  variant.vt = VT_ERROR;
  variant.scode = DISP_E_PARAMNOTFOUND;
  return variant;
}

/// An object of the test's for the DLL.
inline ComPtr<IDispatch> served(const QuorDataLib::Ref<QuorDataLib::Object>& given) {
  return outgoing(given).query<IDispatch>(IID_IDispatch);
}

/// Makes an application object the one of this thread in the DLL; null for none.
inline void assignApplication(IDispatch& host, IDispatch* application) {
  DISPID assigned = DISPID_PROPERTYPUT;
  VARIANT argument = object(application);
  DISPPARAMS parameters{&argument, &assigned, 1, 1};
  check(host.Invoke(numberOf(host, L"Application"), IID_NULL, LOCALE_USER_DEFAULT,
                    DISPATCH_PROPERTYPUTREF, &parameters, nullptr, nullptr, nullptr));
}

}  // namespace client
