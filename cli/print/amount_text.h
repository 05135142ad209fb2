// Numbers and amounts as an accountant prints them.
#pragma once

#include <cstdint>
#include <string>

#include "platform/values/currency.h"

namespace QuorCli {

/// A whole number with a comma between thousands: "1,234,567".
[[nodiscard]] std::string grouped(std::int64_t number);

/// An amount with a comma between thousands and two decimals, or four when it has more than cents;
/// a credit stands in parentheses, and everything else keeps the column of the closing one free, so
/// that digits stand below each other: "1,234.50 ", "(1,234.50)".
[[nodiscard]] std::string amountText(QuorDataLib::Currency amount);

/// A quantity with a comma between thousands and that many decimals, 0 to 4: "-1,234.5".
[[nodiscard]] std::string quantityText(QuorDataLib::Currency quantity, int decimals);

}  // namespace QuorCli
