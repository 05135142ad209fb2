// What a DLL offers to clients, as its type library and its registration tell it.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "platform/class_info.h"

namespace QuorCom {

/// A class that clients can create.
struct PublicClass {
  const QuorDataLib::ClassInfo* info = nullptr;
  /// The name that clients create it by, before the dot: mostly that of its library.
  std::string_view maker;
  std::function<QuorDataLib::Ref<QuorDataLib::Object>()> create;
};

struct Library {
  std::string_view name;
  std::string_view summary;
  /// The tables of everything that clients may get into their hands; a class that they can create
  /// is among them.
  std::vector<const QuorDataLib::ClassInfo*> interfaces;
  std::vector<PublicClass> classes;
};

/// The component's library, and the reference host's.
[[nodiscard]] const Library& componentLibrary();
[[nodiscard]] const Library& dataLibrary();

}  // namespace QuorCom
