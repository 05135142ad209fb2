// Which object is which on both sides.
//
// An object of this DLL goes out as one `IDispatch` for as long as a client holds it, and comes
// back as itself. An object of somebody else's comes in as a proxy, and goes out as the very object
// that came in.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <oleauto.h>

#include <string_view>

#include "com/values/com_ptr.h"
#include "platform/ref.h"
#include "platform/values/value.h"

namespace QuorCom {

/// An object that stands for one of somebody else's.
class Foreign {
 public:
  virtual ~Foreign() = default;
  /// The object that came in.
  [[nodiscard]] virtual IUnknown* original() const noexcept = 0;
};

/// The interface by which objects of this DLL know each other; its identifier differs by DLL.
struct OwnObject : public IUnknown {
  virtual const QuorDataLib::Ref<QuorDataLib::Object>& object() const noexcept = 0;

 protected:
  ~OwnObject() = default;
};

/// The object for clients: an `IDispatch` (empty for no object, an `IEnumVARIANT` for an
/// enumerator).
[[nodiscard]] ComPtr<IUnknown> outgoing(const QuorDataLib::Ref<QuorDataLib::Object>& object);

/// Fills a variant with an object for clients.
void writeObject(VARIANT& variant, const QuorDataLib::Ref<QuorDataLib::Object>& object);

/// A client's object as one of the contract `wanted`: one of ours as itself, another as a proxy, or
/// as a thing without members where `wanted` is no contract. What can be walked comes in as a
/// collection of its own where one is wanted.
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Object> incoming(IUnknown* object,
                                                             std::string_view wanted);

}  // namespace QuorCom
