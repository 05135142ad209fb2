// The three-letter source codes of stock movements.
#pragma once

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <string_view>

#include "platform/stock_costs.h"

namespace QuorAccQueries {

struct MovementCode {
  std::int32_t type;
  std::string_view source;
};

inline constexpr std::array<MovementCode, 6> kMovementCodes{{
    {QuorDataLib::MovementType::kConsumption, "CON"},
    {QuorDataLib::MovementType::kPurchase, "PUR"},
    {QuorDataLib::MovementType::kAdjustment, "ADJ"},
    {QuorDataLib::MovementType::kTransfer, "TRW"},
    {QuorDataLib::MovementType::kAssembly, "ASB"},
    {QuorDataLib::MovementType::kSale, "INV"},
}};

/// The type of a source code, matched without regard to case; 0 for an unknown one.
[[nodiscard]] inline std::int32_t typeOfSource(std::string_view source) noexcept {
  const auto upper = [](char c) { return std::toupper(static_cast<unsigned char>(c)); };
  const auto* const found = std::ranges::find_if(kMovementCodes, [&](const MovementCode& code) {
    return std::ranges::equal(code.source, source, {}, upper, upper);
  });
  return found == kMovementCodes.end() ? 0 : found->type;
}

/// The source code of a type; empty for an unknown one.
[[nodiscard]] inline std::string_view sourceOfType(std::int32_t type) noexcept {
  const auto* const found = std::ranges::find(kMovementCodes, type, &MovementCode::type);
  return found == kMovementCodes.end() ? std::string_view() : found->source;
}

}  // namespace QuorAccQueries
