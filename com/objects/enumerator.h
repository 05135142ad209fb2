// What `For Each` walks with.
#pragma once

#include "com/objects/identity.h"
#include "platform/collection.h"

namespace QuorCom {

/// An `IEnumVARIANT` for a client.
[[nodiscard]] ComPtr<IUnknown> newEnumerator(
    const QuorDataLib::Ref<QuorDataLib::Enumerator>& walker);

}  // namespace QuorCom
