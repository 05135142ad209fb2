// How much of a debt lies in which age bucket.
#pragma once

#include <string>
#include <vector>

#include "platform/values/currency.h"

namespace QuorCli {

/// The share of each amount in the sum of those above zero, in whole per cent; credits have none.
/// Empty when nothing is above zero.
[[nodiscard]] std::vector<int> sharesOf(const std::vector<QuorDataLib::Currency>& parts);

/// A bar and the number in `width` columns: "███▌      44%"; the number alone where a bar would be
/// too short to say anything.
[[nodiscard]] std::string shareBar(int percent, std::size_t width);

}  // namespace QuorCli
