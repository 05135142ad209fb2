#include "com/values/com_error.h"

#include <array>
#include <string>

#include "com/values/com_ptr.h"
#include "com/values/text.h"

namespace QuorCom {

using QuorDataLib::Error;

namespace {

constexpr const char* kSource = "QuorDataLib";

/// Result codes that mean what an error of the automation runtime means.
struct Meaning {
  HRESULT result;
  std::int32_t number;
  const char* text;
};
constexpr std::array kMeanings{
    Meaning{DISP_E_UNKNOWNNAME, 438, "The object has no such member"},
    Meaning{DISP_E_MEMBERNOTFOUND, 438, "The object has no such member"},
    Meaning{DISP_E_TYPEMISMATCH, 13, "A value has the wrong type"},
    Meaning{DISP_E_OVERFLOW, 6, "A value does not fit its type"},
    Meaning{DISP_E_BADPARAMCOUNT, 450, "The member takes another number of arguments"},
    Meaning{DISP_E_PARAMNOTOPTIONAL, 449, "An argument is missing"},
    Meaning{DISP_E_PARAMNOTFOUND, 448, "The member has no argument of that name"},
    Meaning{DISP_E_BADINDEX, 9, "There is no item at that place"},
    Meaning{E_OUTOFMEMORY, 7, "Out of memory"},
    Meaning{E_NOINTERFACE, 430, "The object does not serve automation"},
    Meaning{REGDB_E_CLASSNOTREG, 429, "The class is not registered"},
    Meaning{CO_E_CLASSSTRING, 429, "The class is not registered"},
};

std::string systemText(HRESULT result) {
  std::array<wchar_t, 512> text{};
  const DWORD size = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                      nullptr, static_cast<DWORD>(result), 0, text.data(),
                                      static_cast<DWORD>(text.size()), nullptr);
  std::string message = narrow({text.data(), size});
  message.erase(message.find_last_not_of("\r\n .") + 1);
  std::array<char, 16> code{};
  std::snprintf(code.data(), code.size(), "0x%08lX", static_cast<unsigned long>(result));
  return message.empty() ? "An object has failed with " + std::string(code.data())
                         : message + " (" + code.data() + ")";
}

std::int32_t numberOf(HRESULT result) noexcept {
  return HRESULT_FACILITY(result) == FACILITY_CONTROL ? HRESULT_CODE(result)
                                                      : static_cast<std::int32_t>(result);
}

/// Leaves the error to whoever asks the thread for it.
void leaveBehind(const Error& error) {
  ComPtr<ICreateErrorInfo> created;
  if (FAILED(::CreateErrorInfo(created.put()))) return;
  const std::wstring source = wide(error.source());
  const std::wstring description = wide(error.description());
  created->SetSource(const_cast<wchar_t*>(source.c_str()));            // NOLINT: not changed
  created->SetDescription(const_cast<wchar_t*>(description.c_str()));  // NOLINT: not changed
  ::SetErrorInfo(0, created.query<IErrorInfo>(IID_IErrorInfo).get());
}

HRESULT tell(const Error& error, EXCEPINFO* details) {
  if (details == nullptr) {
    leaveBehind(error);
    return resultOf(error);
  }
  *details = {};
  details->scode = resultOf(error);
  details->bstrSource = newBstr(error.source());
  details->bstrDescription = newBstr(error.description());
  return DISP_E_EXCEPTION;
}

}  // namespace

HRESULT resultOf(const Error& error) noexcept {
  constexpr std::int32_t kLargestRuntimeNumber = 0xFFFF;
  const std::int32_t number = error.number();
  if (number > 0 && number <= kLargestRuntimeNumber) {
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
  }
  return number < 0 ? static_cast<HRESULT>(number) : E_FAIL;
}

Error errorOf(HRESULT result) {
  for (const Meaning& meaning : kMeanings) {
    if (meaning.result == result) return {meaning.number, kSource, meaning.text};
  }
  return {numberOf(result), kSource, systemText(result)};
}

Error errorOf(EXCEPINFO& details) {
  if (details.pfnDeferredFillIn != nullptr) details.pfnDeferredFillIn(&details);
  const std::int32_t number = details.wCode != 0      ? details.wCode
                              : FAILED(details.scode) ? numberOf(details.scode)
                                                      : numberOf(E_FAIL);
  std::string description = textOf(details.bstrDescription);
  if (description.empty())
    description = errorOf(FAILED(details.scode) ? details.scode : E_FAIL).description();
  Error error(number, textOf(details.bstrSource), std::move(description));
  ::SysFreeString(details.bstrSource);
  ::SysFreeString(details.bstrDescription);
  ::SysFreeString(details.bstrHelpFile);
  details = {};
  return error;
}

Error errorLeftBehind(HRESULT result) {
  ComPtr<IErrorInfo> info;
  Bstr description;
  if (::GetErrorInfo(0, info.put()) != S_OK || FAILED(info->GetDescription(description.put())) ||
      ::SysStringLen(description.get()) == 0) {
    return errorOf(result);
  }
  Bstr source;
  info->GetSource(source.put());
  return {numberOf(result), textOf(source.get()), textOf(description.get())};
}

void check(HRESULT result) {
  if (FAILED(result)) raiseForResult(result);
}

void raiseForResult(HRESULT result) { throw errorOf(result); }

HRESULT tellCaught(EXCEPINFO* details) noexcept {
  try {
    try {
      throw;
    } catch (const Refusal& refusal) {
      return refusal.result();
    } catch (...) {
      return tell(QuorDataLib::currentError(), details);
    }
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace QuorCom
