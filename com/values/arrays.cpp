#include "com/values/arrays.h"

#include <utility>

#include "com/proxies/late_bound.h"
#include "com/values/com_error.h"
#include "com/values/com_ptr.h"
#include "com/values/variant.h"

namespace QuorCom {

using QuorDataLib::Collection;
using QuorDataLib::ErrorNumber;
using QuorDataLib::make;
using QuorDataLib::Ref;
using QuorDataLib::Value;

namespace {

/// Any type.
constexpr QuorDataLib::TypeInfo kAny{};

Ref<Collection> walked(IEnumVARIANT& enumerator) {
  std::vector<Value> values;
  for (;;) {
    Variant item;
    ULONG fetched = 0;
    const HRESULT result = enumerator.Next(1, item.get(), &fetched);
    check(result);
    if (result != S_OK || fetched == 0) return make<Collection>(std::move(values));
    values.push_back(readVariant(*item, kAny));
  }
}

Ref<Collection> counted(IDispatch& object) {
  const std::int32_t count = getValue(object, L"Count").toLong();
  std::vector<Value> values;
  for (std::int32_t place = 1; place <= count; ++place) {
    values.push_back(getValue(object, L"Item", place));
  }
  return make<Collection>(std::move(values));
}

}  // namespace

Ref<Collection> readArray(SAFEARRAY* array) {
  if (array == nullptr) return make<Collection>();
  VARTYPE type = VT_EMPTY;
  if (::SafeArrayGetDim(array) != 1 || FAILED(::SafeArrayGetVartype(array, &type))) {
    QuorDataLib::raise(ErrorNumber::TypeMismatch, "An array must be a plain list of values");
  }
  LONG first = 0;
  LONG last = -1;
  check(::SafeArrayGetLBound(array, 1, &first));
  check(::SafeArrayGetUBound(array, 1, &last));
  std::vector<Value> values;
  for (LONG place = first; place <= last; ++place) {
    Variant element;
    if (type == VT_VARIANT) {
      check(::SafeArrayGetElement(array, &place, element.get()));
    } else {
      check(::SafeArrayGetElement(array, &place, &element->llVal));
      element->vt = type;
    }
    values.push_back(readVariant(*element, kAny));
  }
  return make<Collection>(std::move(values));
}

SAFEARRAY* newArray(const std::vector<Value>& values) {
  SAFEARRAY* const array =
      ::SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
  if (array == nullptr) throw std::bad_alloc();
  try {
    for (LONG place = 0; std::cmp_less(place, values.size()); ++place) {
      Variant element;
      writeVariant(*element, values[static_cast<std::size_t>(place)], kAny);
      check(::SafeArrayPutElement(array, &place, element.get()));
    }
  } catch (...) {
    ::SafeArrayDestroy(array);
    throw;
  }
  return array;
}

Ref<Collection> readCollection(IDispatch* object) {
  DISPPARAMS none{};
  Variant walker;
  const HRESULT result =
      object->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                     DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, walker.get(), nullptr, nullptr);
  if (SUCCEEDED(result) && (walker->vt == VT_UNKNOWN || walker->vt == VT_DISPATCH)) {
    const auto enumerator =
        ComPtr<IUnknown>::shared(walker->punkVal).query<IEnumVARIANT>(IID_IEnumVARIANT);
    if (enumerator) return walked(*enumerator.get());
  }
  return counted(*object);
}

}  // namespace QuorCom
