#include "com/server/registration.h"

#include <windows.h>

#include <string>
#include <vector>

#include "com/server/identifiers.h"
#include "com/server/server.h"
#include "com/values/com_error.h"
#include "com/values/text.h"

namespace QuorCom {
namespace {

constexpr const wchar_t* kClasses = L"Software\\Classes\\";
constexpr const wchar_t* kVersion = L"1.0";
/// The marshaller of everything that dispatches.
constexpr const wchar_t* kDispatchMarshaller = L"{00020420-0000-0000-C000-000000000046}";
#ifdef _WIN64
constexpr const wchar_t* kPlatform = L"win64";
#else
constexpr const wchar_t* kPlatform = L"win32";
#endif

std::wstring braced(std::string_view guid) { return L"{" + wide(guid) + L"}"; }

/// A text to be written: as the value `name` of a key, or as its own where that is null.
struct Entry {
  std::wstring key;
  std::wstring text;
  const wchar_t* name = nullptr;
};

void addClass(std::vector<Entry>& entries, const PublicClass& each, const std::wstring& path) {
  const Library& library = server().library;
  const std::wstring id = braced(classId(library.name, each.info->name));
  const std::wstring name = wide(each.maker) + L"." + wide(each.info->name);
  const std::wstring summary = wide(each.info->summary);
  const std::wstring key = L"CLSID\\" + id;
  entries.insert(entries.end(), {
                                    {name, summary},
                                    {name + L"\\CLSID", id},
                                    {key, summary},
                                    {key + L"\\InprocServer32", path},
                                    {key + L"\\InprocServer32", L"Apartment", L"ThreadingModel"},
                                    {key + L"\\ProgID", name},
                                    {key + L"\\TypeLib", braced(libraryId(library.name))},
                                    {key + L"\\Version", kVersion},
                                    {key + L"\\Programmable", L""},
                                });
  const Server::Setting& setting = server().setting;
  if (setting.className == each.info->name) {
    entries.push_back({key + L"\\" + setting.key, setting.text});
  }
}

std::vector<Entry> allEntries() {
  const Library& library = server().library;
  const std::wstring path = modulePath();
  const std::wstring libraryKey = braced(libraryId(library.name));
  std::vector<Entry> entries;
  for (const PublicClass& each : library.classes) addClass(entries, each, path);
  const std::wstring version = L"TypeLib\\" + libraryKey + L"\\" + kVersion;
  entries.push_back({version, wide(library.summary)});
  entries.push_back({version + L"\\0\\" + kPlatform, path});
  entries.push_back({version + L"\\FLAGS", L"0"});
  for (const QuorDataLib::ClassInfo* const info : library.interfaces) {
    const std::wstring key = L"Interface\\" + braced(interfaceId(library.name, info->name));
    entries.push_back({key, L"_" + wide(info->name)});
    entries.push_back({key + L"\\ProxyStubClsid32", kDispatchMarshaller});
    entries.push_back({key + L"\\TypeLib", libraryKey});
    entries.push_back({key + L"\\TypeLib", kVersion, L"Version"});
  }
  return entries;
}

LSTATUS write(HKEY root, const Entry& entry) {
  const auto size = static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t));
  return ::RegSetKeyValueW(root, (kClasses + entry.key).c_str(), entry.name, REG_SZ,
                           entry.text.c_str(), size);
}

LSTATUS writeAll(HKEY root) {
  for (const Entry& entry : allEntries()) {
    if (const LSTATUS status = write(root, entry); status != ERROR_SUCCESS) return status;
  }
  return ERROR_SUCCESS;
}

LSTATUS removeTree(HKEY root, const std::wstring& key) {
  const std::wstring path = kClasses + key;
  const LSTATUS status = ::RegDeleteTreeW(root, path.c_str());
  return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

/// Whether a key has a subkey.
bool isParent(HKEY root, const std::wstring& key) {
  HKEY opened = nullptr;
  if (::RegOpenKeyExW(root, (kClasses + key).c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) {
    return false;
  }
  DWORD children = 0;
  ::RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, &children, nullptr, nullptr, nullptr,
                     nullptr, nullptr, nullptr, nullptr);
  ::RegCloseKey(opened);
  return children > 0;
}

LSTATUS removeAll(HKEY root) {
  const Library& library = server().library;
  LSTATUS result = ERROR_SUCCESS;
  const auto remove = [&](const std::wstring& key) {
    if (const LSTATUS status = removeTree(root, key); status != ERROR_SUCCESS) result = status;
  };
  for (const PublicClass& each : library.classes) {
    remove(L"CLSID\\" + braced(classId(library.name, each.info->name)));
    remove(wide(each.maker) + L"." + wide(each.info->name));
  }
  // The library is one for both word sizes.
  const std::wstring libraryKey = L"TypeLib\\" + braced(libraryId(library.name));
  const std::wstring languages = libraryKey + L"\\" + kVersion + L"\\0";
  remove(languages + L"\\" + kPlatform);
  if (isParent(root, languages)) return result;
  remove(libraryKey);
  for (const QuorDataLib::ClassInfo* const info : library.interfaces) {
    remove(L"Interface\\" + braced(interfaceId(library.name, info->name)));
  }
  return result;
}

}  // namespace

void registerServer() {
  HKEY root = HKEY_LOCAL_MACHINE;
  LSTATUS status = writeAll(root);
  if (status == ERROR_ACCESS_DENIED) {
    root = HKEY_CURRENT_USER;
    status = writeAll(root);
  }
  if (status == ERROR_SUCCESS) return;
  removeAll(root);
  raiseForResult(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

void unregisterServer() {
  const LSTATUS user = removeAll(HKEY_CURRENT_USER);
  const LSTATUS machine = removeAll(HKEY_LOCAL_MACHINE);
  for (const LSTATUS status : {user, machine}) {
    if (status != ERROR_SUCCESS) raiseForResult(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
  }
}

}  // namespace QuorCom
