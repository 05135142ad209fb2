// The files beside the tests that hold the application's statements.
#pragma once

#include <string>
#include <vector>

namespace QuorHost::Sql::Testing {

std::string fileText(const std::string& path);

/// The statements of an area ("receivables"), each with the comment above it, which begins with its
/// dialect.
std::vector<std::string> statementsOf(const std::string& area);

}  // namespace QuorHost::Sql::Testing
