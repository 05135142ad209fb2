#include "com/objects/identity.h"

#include "com/objects/dispatch_object.h"
#include "com/objects/enumerator.h"
#include "com/proxies/proxies.h"
#include "com/server/server.h"
#include "com/values/arrays.h"
#include "com/values/com_error.h"
#include "platform/collection.h"

namespace QuorCom {

using QuorDataLib::Collection;
using QuorDataLib::Object;
using QuorDataLib::Ref;

namespace {

/// Somebody's object of which nothing is asked.
class Opaque final : public Object, public Foreign {
 public:
  explicit Opaque(ComPtr<IUnknown> object) : object_(std::move(object)) {}
  [[nodiscard]] IUnknown* original() const noexcept override { return object_.get(); }

 private:
  ComPtr<IUnknown> object_;
};

}  // namespace

ComPtr<IUnknown> outgoing(const Ref<Object>& object) {
  if (!object) return {};
  if (const auto* const foreign = dynamic_cast<const Foreign*>(&*object)) {
    return ComPtr<IUnknown>::shared(foreign->original());
  }
  if (const auto walker = object.as<QuorDataLib::Enumerator>()) return newEnumerator(walker);
  return DispatchObject::of(object);
}

void writeObject(VARIANT& variant, const Ref<Object>& object) {
  const ComPtr<IUnknown> out = outgoing(object);
  if (auto dispatch = out.query<IDispatch>(IID_IDispatch); dispatch || !out) {
    variant.pdispVal = dispatch.detach();
    variant.vt = VT_DISPATCH;
  } else {
    variant.punkVal = ComPtr<IUnknown>(out).detach();
    variant.vt = VT_UNKNOWN;
  }
}

Ref<Object> incoming(IUnknown* object, std::string_view wanted) {
  if (object == nullptr) return nullptr;
  const auto held = ComPtr<IUnknown>::shared(object);
  if (const auto own = held.query<OwnObject>(server().ownInterface)) return own->object();
  auto dispatch = held.query<IDispatch>(IID_IDispatch);
  if (dispatch && wanted == Collection::kClassName) return readCollection(dispatch.get());
  if (dispatch) {
    if (Ref<Object> proxy = newProxy(dispatch, wanted)) return proxy;
  }
  return QuorDataLib::make<Opaque>(held);
}

}  // namespace QuorCom
