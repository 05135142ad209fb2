#include "com/server/class_object.h"

#include <map>
#include <mutex>

#include "com/objects/identity.h"
#include "com/objects/live.h"
#include "com/values/com_error.h"

namespace QuorCom {
namespace {

class ClassObject final : public IClassFactory {
 public:
  explicit ClassObject(const PublicClass& made) : made_(made) {}
  ClassObject(const ClassObject&) = delete;
  ClassObject& operator=(const ClassObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID interfaceId, void** found) override {
    if (found == nullptr) return E_POINTER;
    *found = nullptr;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IClassFactory) return E_NOINTERFACE;
    *found = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID interfaceId, void** made) override {
    if (made == nullptr) return E_POINTER;
    *made = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    const LiveObject busy;  // what the DLL holds for the thread goes once more when this fails
    return guarded([&] { return outgoing(made_.create())->QueryInterface(interfaceId, made); });
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    lockModule(lock != FALSE);
    return S_OK;
  }

 private:
  const PublicClass& made_;
};

}  // namespace

IClassFactory& classObjectOf(const PublicClass& made) {
  static std::mutex mutex;
  static std::map<const PublicClass*, ClassObject> objects;
  const std::lock_guard lock(mutex);
  return objects.try_emplace(&made, made).first->second;
}

}  // namespace QuorCom
