// Changes of a statement that leave it a statement more often than changes of bytes do.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace QuorHost::Sql::Testing {

/// Puts one word of a text or of `vocabulary` in the place of another, changes a join, an operator
/// or a constant, adds a condition, or
/// reads a table through a select of its own.
[[nodiscard]] std::string mutated(const std::string& text,
                                  const std::vector<std::string>& vocabulary,
                                  std::minstd_rand& random);

}  // namespace QuorHost::Sql::Testing
