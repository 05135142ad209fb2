// Letting go of what a thread holds while its apartment is still there.
#pragma once

#include <cstdint>

namespace QuorCom {

/// Has `apartmentEnds` called on this thread before its apartment ends, until `unwatchApartment`.
void watchApartment();
void unwatchApartment() noexcept;

/// How many apartments are watched at present.
[[nodiscard]] std::int32_t watchedApartments() noexcept;

/// Lets go of everything that this thread holds; defined by who holds it.
void apartmentEnds() noexcept;

}  // namespace QuorCom
