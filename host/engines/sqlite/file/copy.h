// Copies of a company file.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "host/engines/sqlite/database.h"

namespace QuorHost::Sqlite {

/// `Store::copyTo` of this engine.
void copyDatabase(const std::shared_ptr<Database>& source, const std::string& path,
                  const std::function<void(std::int64_t done, std::int64_t total)>& progress);

}  // namespace QuorHost::Sqlite
