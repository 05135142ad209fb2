#include "com/proxies/late_bound.h"

#include <dispex.h>

#include <memory>
#include <string>

#include "com/values/com_error.h"
#include "com/values/text.h"
#include "com/values/variant.h"

namespace QuorCom {

using QuorDataLib::ErrorNumber;
using QuorDataLib::Member;
using QuorDataLib::TypeInfo;
using QuorDataLib::Value;

namespace {

/// The extended interface of objects of scripts; the libraries of the compiler do not have it.
constexpr IID kExtendedInterface{
    0xA6EF9860, 0xC720, 0x11D0, {0x93, 0x37, 0x00, 0xA0, 0xC9, 0x0D, 0xCA, 0xA9}};

/// The number of a name. Objects of scripts may be known by their extended interface alone.
HRESULT askNumber(IDispatch& object, std::wstring name, DISPID& number) {
  wchar_t* text = name.data();
  const HRESULT result = object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &number);
  if (result != E_NOTIMPL) return result;
  const auto extended = ComPtr<IDispatch>::shared(&object).query<IDispatchEx>(kExtendedInterface);
  if (!extended) return result;
  const Bstr wanted(narrow(name));
  return extended->GetDispID(wanted.get(), fdexNameCaseInsensitive, &number);
}

/// Calls the member of a number, by the interface that the object answers on.
HRESULT callNumber(IDispatch& object, DISPID number, WORD flags, DISPPARAMS& arguments,
                   VARIANT* result, EXCEPINFO& details) {
  const HRESULT done = object.Invoke(number, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments,
                                     result, &details, nullptr);
  if (done != E_NOTIMPL) return done;
  const auto extended = ComPtr<IDispatch>::shared(&object).query<IDispatchEx>(kExtendedInterface);
  if (!extended) return done;
  return extended->InvokeEx(number, LOCALE_USER_DEFAULT, flags, &arguments, result, &details,
                            nullptr);
}

/// The number of the first function of an object's interface that is its own.
HRESULT firstNumber(IDispatch& object, DISPID& number) {
  ComPtr<ITypeInfo> info;
  TYPEATTR* attributes = nullptr;
  HRESULT result = object.GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put());
  if (SUCCEEDED(result)) result = info->GetTypeAttr(&attributes);
  if (FAILED(result)) return result;
  result = DISP_E_UNKNOWNNAME;
  for (UINT i = 0; i < attributes->cFuncs && FAILED(result); ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(info->GetFuncDesc(i, &function))) break;
    if ((function->wFuncFlags & FUNCFLAG_FRESTRICTED) == 0) {
      number = function->memid;
      result = S_OK;
    }
    info->ReleaseFuncDesc(function);
  }
  info->ReleaseTypeAttr(attributes);
  return result;
}

WORD flagsOf(const Member& called, const DISPPARAMS& arguments) {
  if (called.kind != Member::Kind::Put) return DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  const VARTYPE type = arguments.rgvarg[0].vt;
  return type == VT_DISPATCH || type == VT_UNKNOWN ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
}

/// Dispatches one call. An object may take an assignment by value only, or the other way round.
HRESULT dispatch(IDispatch& object, DISPID number, const Member& called, DISPPARAMS& arguments,
                 VARIANT* result, EXCEPINFO& details) {
  const WORD flags = flagsOf(called, arguments);
  VARIANT* const wanted = called.kind == Member::Kind::Put ? nullptr : result;
  const HRESULT done = callNumber(object, number, flags, arguments, wanted, details);
  if (flags != DISPATCH_PROPERTYPUTREF || done != DISP_E_MEMBERNOTFOUND) return done;
  return callNumber(object, number, DISPATCH_PROPERTYPUT, arguments, wanted, details);
}

/// The variants of a call, from the last argument to the first, and what those by reference point
/// at.
class Arguments {
 public:
  Arguments(const Member& called, std::span<const Value> values)
      : called_(called), held_(values.size()), passed_(values.size()) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      writeVariant(*held_[i], values[i], called.arguments[i].type);
      VARIANT& variant = passed_[values.size() - 1 - i];
      if (called.arguments[i].byReference) {
        variant.vt = VT_BYREF | VT_VARIANT;
        variant.pvarVal = held_[i].get();
      } else {
        variant = *held_[i];  // still owned by the one held
      }
    }
    parameters_.rgvarg = passed_.data();
    parameters_.cArgs = static_cast<UINT>(passed_.size());
    if (called.kind == Member::Kind::Put) {
      parameters_.rgdispidNamedArgs = &assigned_;
      parameters_.cNamedArgs = 1;
    }
  }
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;
  ~Arguments() = default;

  [[nodiscard]] DISPPARAMS& parameters() noexcept { return parameters_; }

  void takeBack(std::span<Value> values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (called_.arguments[i].written) {
        values[i] = readVariant(*held_[i], called_.arguments[i].type);
      }
    }
  }

 private:
  const Member& called_;
  std::vector<Variant> held_;
  std::vector<VARIANT> passed_;
  DISPID assigned_ = DISPID_PROPERTYPUT;
  DISPPARAMS parameters_{};
};

[[noreturn]] void raiseFailed(HRESULT result, EXCEPINFO& details) {
  if (result == DISP_E_EXCEPTION) throw errorOf(details);
  raiseForResult(result);
}

}  // namespace

Value getValue(IDispatch& object, const wchar_t* name, std::int32_t place) {
  DISPID number = DISPID_UNKNOWN;
  check(askNumber(object, name, number));
  VARIANT argument{};
  argument.vt = VT_I4;
  argument.lVal = place;
  DISPPARAMS parameters{};
  if (place != 0) {
    parameters.rgvarg = &argument;
    parameters.cArgs = 1;
  }
  Variant result;
  EXCEPINFO details{};
  const HRESULT done = callNumber(object, number, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                  parameters, result.get(), details);
  if (FAILED(done)) raiseFailed(done, details);
  return readVariant(*result, {});
}

const Member& LateBound::member(std::string_view name, Member::Kind kind) const {
  if (const Member* const found = contract_.find(name, kind)) return *found;
  QuorDataLib::raise(ErrorNumber::InternalError, "The contract " + std::string(contract_.name) +
                                                     " has no member " + std::string(name));
}

DISPID LateBound::numberOf(const Member& called) {
  for (const auto& [member, number] : numbers_) {
    if (member == &called) return number;
  }
  DISPID number = DISPID_UNKNOWN;
  HRESULT result = askNumber(*object_.get(), wide(called.name), number);
  if (FAILED(result) && firstMember_) result = firstNumber(*object_.get(), number);
  if (result == DISP_E_UNKNOWNNAME || result == DISP_E_MEMBERNOTFOUND) {
    QuorDataLib::raise(ErrorNumber::UnknownMember,
                       "The host's object has no member " + std::string(called.name) +
                           ", which it needs as " + std::string(contract_.name));
  }
  check(result);
  numbers_.emplace_back(&called, number);
  return number;
}

Value LateBound::invoke(const Member& called, std::span<Value> values, const TypeInfo& result) {
  // The object may let go of this proxy while it is called.
  const ComPtr<IDispatch> object = object_;
  const DISPID number = numberOf(called);
  Arguments arguments(called, values);
  Variant given;
  EXCEPINFO details{};
  const HRESULT done =
      dispatch(*object.get(), number, called, arguments.parameters(), given.get(), details);
  if (FAILED(done)) raiseFailed(done, details);
  arguments.takeBack(values);
  return called.kind == Member::Kind::Put ? Value() : readVariant(*given, result);
}

}  // namespace QuorCom
