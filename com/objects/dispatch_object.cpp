#include "com/objects/dispatch_object.h"

#include <mutex>
#include <unordered_map>

#include "com/objects/call.h"
#include "com/server/server.h"
#include "com/server/type_library.h"
#include "com/values/com_error.h"

namespace QuorCom {

using QuorDataLib::ClassInfo;
using QuorDataLib::Object;
using QuorDataLib::Ref;

namespace {

/// The table of objects that have no members to offer.
const ClassInfo& noMembers() {
  static const ClassInfo info{"Object", "An object without members.", {}};
  return info;
}

const ClassInfo& tableOf(const Object& object) {
  const ClassInfo* const info = object.table();
  return info == nullptr ? noMembers() : *info;
}

/// The objects that clients hold, by what they stand for. Never destroyed: clients may let go of
/// theirs until the program's very end.
struct Held {
  std::mutex mutex;
  std::unordered_map<const Object*, DispatchObject*> objects;
};
Held& held() {
  static auto& all = *new Held;  // NOLINT: see above
  return all;
}

}  // namespace

DispatchObject::DispatchObject(const Ref<Object>& object)
    : members_(MemberIndex::of(tableOf(*object))), object_(object) {}

DispatchObject::~DispatchObject() = default;

ComPtr<IUnknown> DispatchObject::of(const Ref<Object>& object) {
  const std::lock_guard lock(held().mutex);
  auto& entry = held().objects[&*object];
  if (entry != nullptr) {
    return ComPtr<IUnknown>::shared(static_cast<IDispatch*>(entry));
  }
  try {
    entry = new DispatchObject(object);
  } catch (...) {
    held().objects.erase(&*object);
    throw;
  }
  return ComPtr<IUnknown>::adopted(static_cast<IDispatch*>(entry));
}

HRESULT DispatchObject::QueryInterface(REFIID interfaceId, void** found) {
  if (found == nullptr) return E_POINTER;
  if (interfaceId == IID_IUnknown || interfaceId == IID_IDispatch ||
      isMain(interfaceId, members_.info())) {
    *found = static_cast<IDispatch*>(this);
  } else if (interfaceId == IID_IProvideClassInfo) {
    *found = static_cast<IProvideClassInfo*>(this);
  } else if (interfaceId == IID_ISupportErrorInfo) {
    *found = static_cast<ISupportErrorInfo*>(this);
  } else if (interfaceId == server().ownInterface) {
    *found = static_cast<OwnObject*>(this);
  } else {
    *found = nullptr;
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG DispatchObject::AddRef() { return ++references_; }

ULONG DispatchObject::Release() {
  ULONG references = references_;
  while (references > 1) {
    if (references_.compare_exchange_weak(references, references - 1)) return references - 1;
  }
  {
    // Nobody finds it any more once its last reference is gone.
    const std::lock_guard lock(held().mutex);
    if (const ULONG left = --references_; left > 0) return left;
    held().objects.erase(&*object_);
  }
  delete this;
  return 0;
}

HRESULT DispatchObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = interfaceInfo(members_.info()) ? 1 : 0;
  return S_OK;
}

HRESULT DispatchObject::GetTypeInfo(UINT place, LCID /*locale*/, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (place != 0) return DISP_E_BADINDEX;
  *info = interfaceInfo(members_.info()).detach();
  return *info == nullptr ? TYPE_E_ELEMENTNOTFOUND : S_OK;
}

HRESULT DispatchObject::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID /*locale*/,
                                      DISPID* numbers) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || numbers == nullptr || count == 0) return E_INVALIDARG;
  return guarded([&] {
    const auto member = members_.numberOf(names[0]);
    numbers[0] = member.value_or(DISPID_UNKNOWN);
    bool all = member.has_value();
    for (UINT i = 1; i < count; ++i) {
      const auto argument = member ? members_.argumentOf(*member, names[i]) : std::nullopt;
      numbers[i] = argument.value_or(DISPID_UNKNOWN);
      all = all && argument.has_value();
    }
    return all ? S_OK : DISP_E_UNKNOWNNAME;
  });
}

HRESULT DispatchObject::Invoke(DISPID number, REFIID reserved, LCID /*locale*/, WORD flags,
                               DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* details,
                               UINT* wrongArgument) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (arguments == nullptr) return E_INVALIDARG;
  if (!live_.onItsThread()) return RPC_E_WRONG_THREAD;
  if (result != nullptr) ::VariantInit(result);
  // Whom the member calls may let go of this object.
  const auto alive = ComPtr<IDispatch>::shared(this);
  return guarded(details, [&] {
    const QuorDataLib::Member* const member = members_.find(number, flags);
    if (member == nullptr) throw Refusal(DISP_E_MEMBERNOTFOUND);
    callMember(*object_, *member, {*arguments, result, wrongArgument});
    return S_OK;
  });
}

HRESULT DispatchObject::GetClassInfo(ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = classInfoOf(members_.info()).detach();
  return *info == nullptr ? TYPE_E_ELEMENTNOTFOUND : S_OK;
}

HRESULT DispatchObject::InterfaceSupportsErrorInfo(REFIID interfaceId) {
  return interfaceId == IID_IDispatch ? S_OK : S_FALSE;
}

}  // namespace QuorCom
