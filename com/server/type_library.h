// The type library inside the DLL.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <oaidl.h>

#include "com/values/com_ptr.h"
#include "platform/class_info.h"

namespace QuorCom {

/// Whether an interface identifier is that of the interface of `info`.
[[nodiscard]] bool isMain(REFIID id, const QuorDataLib::ClassInfo& info);

/// What the type library says about the interface of `info`, or about its class; empty where it
/// says nothing.
[[nodiscard]] ComPtr<ITypeInfo> interfaceInfo(const QuorDataLib::ClassInfo& info) noexcept;
[[nodiscard]] ComPtr<ITypeInfo> classInfoOf(const QuorDataLib::ClassInfo& info) noexcept;

}  // namespace QuorCom
