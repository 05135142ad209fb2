// What is wrong with a company file, as far as the storage engine can tell.
#pragma once

#include <string>
#include <vector>

#include "host/engines/sqlite/database.h"

namespace QuorHost::Sqlite {

/// Damage to the file, broken references, and objects that stand in the file and not among its
/// definitions, or the other way round: one line each, empty when all is well. What stops one of
/// these checks is among its findings.
[[nodiscard]] std::vector<std::string> fileFindings(Database& database);

}  // namespace QuorHost::Sqlite
