#include "com/component/apartment_end.h"

#include <windows.h>
// After it, since they stand on its types.
#include <objbase.h>
#include <objidl.h>

#include <atomic>

#include "com/values/com_error.h"
#include "com/values/com_ptr.h"

namespace QuorCom {
namespace {

std::atomic<std::int32_t> watched = 0;

/// Told by COM before a thread leaves its apartment. It has no state and so needs no count of its
/// own beyond the one that COM keeps.
class Spy final : public IInitializeSpy {
 public:
  STDMETHODIMP QueryInterface(REFIID interfaceId, void** found) override {
    if (found == nullptr) return E_POINTER;
    *found = nullptr;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IInitializeSpy) return E_NOINTERFACE;
    *found = static_cast<IInitializeSpy*>(this);
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP PreInitialize(DWORD /*how*/, DWORD /*before*/) override { return S_OK; }
  STDMETHODIMP PostInitialize(HRESULT result, DWORD /*how*/, DWORD /*after*/) override {
    return result;
  }
  STDMETHODIMP PreUninitialize(DWORD before) override {
    if (before == 1) apartmentEnds();
    return S_OK;
  }
  STDMETHODIMP PostUninitialize(DWORD after) override {
    if (after == 0) unwatchApartment();
    return S_OK;
  }
};

Spy& spy() {
  static Spy all;
  return all;
}

/// COM's ticket for this thread; 0 for none.
std::uint64_t& ticket() {
  thread_local std::uint64_t ticket = 0;
  return ticket;
}

}  // namespace

void watchApartment() {
  if (ticket() != 0) return;
  ULARGE_INTEGER cookie{};
  check(::CoRegisterInitializeSpy(&spy(), &cookie));
  ticket() = cookie.QuadPart;
  ++watched;
}

void unwatchApartment() noexcept {
  if (ticket() == 0) return;
  ULARGE_INTEGER cookie{};
  cookie.QuadPart = ticket();
  ::CoRevokeInitializeSpy(cookie);
  ticket() = 0;
  --watched;
}

std::int32_t watchedApartments() noexcept { return watched; }

}  // namespace QuorCom
