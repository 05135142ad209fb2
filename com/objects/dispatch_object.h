// An object of this DLL as clients see it.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <oaidl.h>
#include <ocidl.h>

#include <atomic>

#include "com/objects/identity.h"
#include "com/objects/live.h"
#include "com/objects/member_index.h"
#include "platform/class_info.h"

namespace QuorCom {

/// Serves `IDispatch` off the member table of an object, whatever class it is of. Used on the
/// thread that made it only: calls from another are answered with RPC_E_WRONG_THREAD.
class DispatchObject final : public IDispatch,
                             public IProvideClassInfo,
                             public ISupportErrorInfo,
                             public OwnObject {
 public:
  /// The one for `object`, made where there is none yet.
  static ComPtr<IUnknown> of(const QuorDataLib::Ref<QuorDataLib::Object>& object);

  DispatchObject(const DispatchObject&) = delete;
  DispatchObject& operator=(const DispatchObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID interfaceId, void** found) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT place, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* numbers) override;
  STDMETHODIMP Invoke(DISPID number, REFIID reserved, LCID locale, WORD flags,
                      DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* details,
                      UINT* wrongArgument) override;

  STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID interfaceId) override;

  const QuorDataLib::Ref<QuorDataLib::Object>& object() const noexcept override { return object_; }

 private:
  explicit DispatchObject(const QuorDataLib::Ref<QuorDataLib::Object>& object);
  ~DispatchObject();

  LiveObject live_;
  std::atomic<ULONG> references_ = 1;
  const MemberIndex& members_;
  QuorDataLib::Ref<QuorDataLib::Object> object_;
};

}  // namespace QuorCom
