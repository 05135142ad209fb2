// The member tables of all contracts, for what works off names: proxies for objects of a host that
// is reached late-bound, and hosts that offer their objects so.
#pragma once

#include <span>
#include <string_view>

#include "platform/class_info.h"

namespace QuorDataLib {

/// The tables of the data library's and the foundation's contracts, and of collections.
[[nodiscard]] std::span<const ClassInfo* const> allContracts();

/// The contract of that name, matched without regard to case, or null.
[[nodiscard]] const ClassInfo* findContract(std::string_view name) noexcept;

}  // namespace QuorDataLib
