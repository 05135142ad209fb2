#include "com/objects/enumerator.h"

#include <atomic>

#include "com/objects/live.h"
#include "com/values/com_error.h"
#include "com/values/variant.h"

namespace QuorCom {

using QuorDataLib::Enumerator;
using QuorDataLib::Ref;
using QuorDataLib::Value;

namespace {

class EnumVariant final : public IEnumVARIANT {
 public:
  explicit EnumVariant(const Ref<Enumerator>& walker) : walker_(walker) {}
  EnumVariant(const EnumVariant&) = delete;
  EnumVariant& operator=(const EnumVariant&) = delete;

  STDMETHODIMP QueryInterface(REFIID interfaceId, void** found) override {
    if (found == nullptr) return E_POINTER;
    *found = nullptr;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IEnumVARIANT) return E_NOINTERFACE;
    *found = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    if (items == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG done = 0;
    if (fetched != nullptr) *fetched = 0;
    const HRESULT result = guarded([&] {
      for (Value item; done < count && walker_->Next(item); ++done) {
        writeVariant(items[done], item, {});
      }
      return done == count ? S_OK : S_FALSE;
    });
    if (FAILED(result)) {
      while (done > 0) ::VariantClear(&items[--done]);
    }
    if (fetched != nullptr) *fetched = done;
    return result;
  }
  STDMETHODIMP Skip(ULONG count) override {
    return guarded([&] {
      Value skipped;
      while (count > 0 && walker_->Next(skipped)) --count;
      return count == 0 ? S_OK : S_FALSE;
    });
  }
  STDMETHODIMP Reset() override {
    return guarded([&] { return walker_->Reset(), S_OK; });
  }
  STDMETHODIMP Clone(IEnumVARIANT** copy) override {
    if (copy == nullptr) return E_POINTER;
    *copy = nullptr;
    return guarded([&] {
      *copy = new EnumVariant(walker_->copy());
      return S_OK;
    });
  }

 private:
  ~EnumVariant() = default;

  LiveObject live_;
  std::atomic<ULONG> references_ = 1;
  Ref<Enumerator> walker_;
};

}  // namespace

ComPtr<IUnknown> newEnumerator(const Ref<Enumerator>& walker) {
  return ComPtr<IUnknown>::adopted(new EnumVariant(walker));
}

}  // namespace QuorCom
