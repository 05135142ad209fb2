#include "com/server/server.h"

#include <objbase.h>

#include "com/values/com_error.h"
#include "com/values/text.h"

namespace QuorCom {

GUID guidOf(std::string_view text) {
  GUID guid{};
  check(::CLSIDFromString((L"{" + wide(text) + L"}").c_str(), &guid));
  return guid;
}

std::wstring modulePath() {
  HMODULE module = nullptr;
  ::GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<const wchar_t*>(&server), &module);  // NOLINT: an address in the DLL
  constexpr DWORD kLongest = 32768;
  std::wstring path(kLongest, L'\0');
  path.resize(::GetModuleFileNameW(module, path.data(), kLongest));
  return path;
}

}  // namespace QuorCom
