#include "com/server/type_library.h"

#include <oleauto.h>

#include <unordered_map>

#include "com/server/identifiers.h"
#include "com/server/server.h"

namespace QuorCom {

using QuorDataLib::ClassInfo;

namespace {

struct Ids {
  GUID ofInterface{};
  GUID ofClass{};
};

const Ids* idsOf(const ClassInfo& info) {
  static const auto all = [] {
    std::unordered_map<const ClassInfo*, Ids> ids;
    const Library& library = server().library;
    for (const ClassInfo* const each : library.interfaces) {
      ids[each] = {guidOf(interfaceId(library.name, each->name)),
                   guidOf(classId(library.name, each->name))};
    }
    return ids;
  }();
  const auto found = all.find(&info);
  return found == all.end() ? nullptr : &found->second;
}

ComPtr<ITypeInfo> typeOf(const GUID& id) noexcept {
  ComPtr<ITypeLib> library;
  ComPtr<ITypeInfo> info;
  if (FAILED(::LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, library.put())) ||
      FAILED(library->GetTypeInfoOfGuid(id, info.put()))) {
    return {};
  }
  return info;
}

}  // namespace

bool isMain(REFIID id, const ClassInfo& info) {
  const Ids* const ids = idsOf(info);
  return ids != nullptr && ids->ofInterface == id;
}

ComPtr<ITypeInfo> interfaceInfo(const ClassInfo& info) noexcept {
  const Ids* const ids = idsOf(info);
  return ids == nullptr ? ComPtr<ITypeInfo>() : typeOf(ids->ofInterface);
}

ComPtr<ITypeInfo> classInfoOf(const ClassInfo& info) noexcept {
  const Ids* const ids = idsOf(info);
  return ids == nullptr ? ComPtr<ITypeInfo>() : typeOf(ids->ofClass);
}

}  // namespace QuorCom
