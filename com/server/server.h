// The DLL that this code runs in.
#pragma once

#include <windows.h>

#include <string>

#include "com/server/library.h"

namespace QuorCom {

struct Server {
  const Library& library;
  GUID typeLibrary{};
  GUID ownInterface{};
  /// Whether nothing is in use beside the objects that clients hold.
  bool (*atRest)() noexcept = nullptr;
  /// What a class is registered with beyond what all are: a key under its own, and its text.
  struct Setting {
    std::string_view className;
    const wchar_t* key;
    const wchar_t* text;
  };
  Setting setting{};
};

/// Each DLL defines it.
[[nodiscard]] const Server& server();

/// An identifier out of its text.
[[nodiscard]] GUID guidOf(std::string_view text);

/// The path of the DLL.
[[nodiscard]] std::wstring modulePath();

}  // namespace QuorCom
