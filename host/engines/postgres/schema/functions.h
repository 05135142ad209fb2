// The functions that statements on a server call.
#pragma once

#include <string_view>
#include <vector>

namespace QuorHost::Postgres {

/// Version of the functions: it grows with every change of one.
inline constexpr int kFunctionsVersion = 1;

/// The texts that make them, in their order.
const std::vector<std::string_view>& functionTexts();

}  // namespace QuorHost::Postgres
