// Changing files behind the application's back.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

namespace QuorHost::Testing {

/// Runs the engine's own SQL on any file, where nothing watches over references.
inline void runRaw(const std::string& path, const std::string& sql) {
  sqlite3* handle = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &handle), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(handle);
  sqlite3_close(handle);
}

}  // namespace QuorHost::Testing
