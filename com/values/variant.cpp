#include "com/values/variant.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "com/objects/identity.h"
#include "com/values/arrays.h"
#include "com/values/com_error.h"
#include "com/values/com_ptr.h"
#include "com/values/text.h"
#include "platform/automation.h"

namespace QuorCom {

using QuorDataLib::Collection;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Object;
using QuorDataLib::Ref;
using QuorDataLib::TypeInfo;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

namespace {

/// A whole number as the smallest type that holds it without loss of what counts.
Value wholeNumber(std::int64_t number) {
  if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
  return static_cast<double>(number);
}

Value decimalNumber(const DECIMAL& decimal) {
  CY exact{};
  double number = 0;
  DECIMAL& given = const_cast<DECIMAL&>(decimal);  // NOLINT: the system's declaration lacks const
  constexpr int kCurrencyPlaces = 4;
  if (decimal.scale <= kCurrencyPlaces && SUCCEEDED(::VarCyFromDec(&given, &exact))) {
    return Currency::fromUnits(exact.int64);
  }
  check(::VarR8FromDec(&given, &number));
  return number;
}

bool isPlain(const TypeInfo& type) {
  return type.type != ValueType::Empty && type.type != ValueType::Object;
}

/// What an object stands for where a plain value is wanted.
Value defaultValueOf(IUnknown* object, const TypeInfo& type) {
  const auto dispatch = ComPtr<IUnknown>::shared(object).query<IDispatch>(IID_IDispatch);
  if (!dispatch) {
    QuorDataLib::raise(object == nullptr ? ErrorNumber::ObjectNotSet : ErrorNumber::TypeMismatch,
                       object == nullptr ? "Object variable not set"
                                         : "An object was given where a value is wanted");
  }
  DISPPARAMS none{};
  Variant value;
  check(dispatch->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                         value.get(), nullptr, nullptr));
  if (value->vt == VT_DISPATCH || value->vt == VT_UNKNOWN) raiseForResult(DISP_E_TYPEMISMATCH);
  return readVariant(*value, type);
}

Value readObject(IUnknown* object, const TypeInfo& type) {
  if (isPlain(type)) return defaultValueOf(object, type);
  return incoming(object, type.className);
}

/// Where a variant by reference points, as a variant that owns nothing.
VARIANT pointedAt(const VARIANT& reference) {
  VARIANT copy{};
  copy.vt = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  // Of the types that come by reference only these are larger than a pointer may be.
  switch (copy.vt) {
    case VT_DECIMAL:
      copy.decVal = *reference.pdecVal;
      copy.vt = VT_DECIMAL;
      break;
    case VT_R8:
    case VT_DATE:
    case VT_CY:
    case VT_I8:
    case VT_UI8:
      copy.llVal = *reference.pllVal;
      break;
    case VT_BOOL:
    case VT_I2:
    case VT_UI2:
      copy.iVal = *reference.piVal;
      break;
    case VT_I1:
    case VT_UI1:
      copy.bVal = *reference.pbVal;
      break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
    case VT_R4:
      copy.lVal = *reference.plVal;
      break;
    default:  // texts, objects, arrays
      copy.byref = *static_cast<void**>(reference.byref);
      break;
  }
  return copy;
}

}  // namespace

bool isOmitted(const VARIANT& variant) noexcept {
  return variant.vt == VT_ERROR && variant.scode == DISP_E_PARAMNOTFOUND;
}

Value readVariant(const VARIANT& variant, const TypeInfo& type) {
  if (variant.vt == (VT_BYREF | VT_VARIANT)) return readVariant(*variant.pvarVal, type);
  if ((variant.vt & VT_BYREF) != 0) return readVariant(pointedAt(variant), type);
  if ((variant.vt & VT_ARRAY) != 0) return readArray(variant.parray);
  switch (variant.vt) {
    case VT_EMPTY:
      return {};
    case VT_NULL:
      return Value::null();
    case VT_BOOL:
      return variant.boolVal != VARIANT_FALSE;
    case VT_I1:
      return std::int16_t{static_cast<signed char>(variant.cVal)};
    case VT_UI1:
      return std::int16_t{variant.bVal};
    case VT_I2:
      return std::int16_t{variant.iVal};
    case VT_UI2:
      return std::int32_t{variant.uiVal};
    case VT_I4:
    case VT_INT:
      return static_cast<std::int32_t>(variant.lVal);
    case VT_UI4:
    case VT_UINT:
      return wholeNumber(variant.ulVal);
    case VT_I8:
      return wholeNumber(variant.llVal);
    case VT_UI8:
      return std::in_range<std::int64_t>(variant.ullVal)
                 ? wholeNumber(static_cast<std::int64_t>(variant.ullVal))
                 : Value(static_cast<double>(variant.ullVal));
    case VT_R4:
      return double{variant.fltVal};
    case VT_R8:
      return variant.dblVal;
    case VT_CY:
      return Currency::fromUnits(variant.cyVal.int64);
    case VT_DECIMAL:
      return decimalNumber(variant.decVal);
    case VT_DATE:
      return Date::fromSerial(variant.date);
    case VT_BSTR:
      return textOf(variant.bstrVal);
    case VT_DISPATCH:
      return readObject(variant.pdispVal, type);
    case VT_UNKNOWN:
      return readObject(variant.punkVal, type);
    case VT_ERROR:
      if (isOmitted(variant)) return {};
      break;
    default:
      break;
  }
  QuorDataLib::raise(ErrorNumber::TypeMismatch, "A variant of type " + std::to_string(variant.vt) +
                                                    " cannot be passed: it is no automation value");
}

void writeVariant(VARIANT& variant, const Value& value, const TypeInfo& type) {
  ::VariantInit(&variant);
  switch (value.type()) {
    case ValueType::Empty:
      // An object that is not there is nothing, and not an unknown value.
      if (type.type == ValueType::Object) variant.vt = VT_DISPATCH;
      return;
    case ValueType::Null:
      variant.vt = VT_NULL;
      return;
    case ValueType::Boolean:
      variant.boolVal = value.toBoolean() ? VARIANT_TRUE : VARIANT_FALSE;
      variant.vt = VT_BOOL;
      return;
    case ValueType::Integer:
      variant.iVal = value.toInteger();
      variant.vt = VT_I2;
      return;
    case ValueType::Long:
      variant.lVal = value.toLong();
      variant.vt = VT_I4;
      return;
    case ValueType::Double:
      variant.dblVal = value.toDouble();
      variant.vt = VT_R8;
      return;
    case ValueType::Currency:
      variant.cyVal.int64 = value.toCurrency().units();
      variant.vt = VT_CY;
      return;
    case ValueType::Date:
      variant.date = value.toDate().serial();
      variant.vt = VT_DATE;
      return;
    case ValueType::Text:
      variant.bstrVal = newBstr(value.text());
      variant.vt = VT_BSTR;
      return;
    case ValueType::Object:
      break;
  }
  const Ref<Object> object = value.toObject();
  if (const auto list = object.as<Collection>(); list && type.className == kParameters) {
    variant.parray = newArray(list->values());
    variant.vt = VT_ARRAY | VT_VARIANT;
    return;
  }
  writeObject(variant, object);
}

void writeBack(const VARIANT& reference, const Value& value, const TypeInfo& type) {
  if ((reference.vt & VT_BYREF) == 0) return;
  Variant written;
  writeVariant(*written, value, type);
  if (reference.vt == (VT_BYREF | VT_VARIANT)) {
    check(::VariantCopy(reference.pvarVal, written.get()));
    return;
  }
  const auto wanted = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  check(::VariantChangeType(written.get(), written.get(), 0, wanted));
  VARIANT before = pointedAt(reference);
  switch (wanted) {
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      *static_cast<void**>(reference.byref) = std::exchange(written->byref, nullptr);
      ::VariantClear(&before);
      return;
    case VT_DECIMAL:
      *reference.pdecVal = written->decVal;
      return;
    case VT_R8:
    case VT_DATE:
    case VT_CY:
    case VT_I8:
    case VT_UI8:
      *reference.pllVal = written->llVal;
      return;
    case VT_BOOL:
    case VT_I2:
    case VT_UI2:
      *reference.piVal = written->iVal;
      return;
    case VT_I1:
    case VT_UI1:
      *reference.pbVal = written->bVal;
      return;
    default:
      *reference.plVal = written->lVal;
      return;
  }
}

}  // namespace QuorCom
