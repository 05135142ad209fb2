// Changing files behind the application's back.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>
#include <string_view>

namespace QuorHost::Testing {

/// Opens any file with the engine alone, where nothing watches over references and values. Texts
/// have an order by their bytes there, so that definitions can be changed; statements must not rely
/// on it. Null when it cannot be opened.
inline sqlite3* openRaw(const std::string& path) {
  sqlite3* handle = nullptr;
  constexpr int kInnocuous = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  const auto byBytes = [](void*, int leftSize, const void* left, int rightSize, const void* right) {
    const std::string_view a(static_cast<const char*>(left), static_cast<std::size_t>(leftSize));
    const std::string_view b(static_cast<const char*>(right), static_cast<std::size_t>(rightSize));
    return a.compare(b);
  };
  // What checks call for a value that its column cannot hold lets it pass, and so does what keeps
  // totals true.
  const auto pass = [](sqlite3_context* context, int, sqlite3_value**) {
    sqlite3_result_int(context, 1);
  };
  const bool opened =
      sqlite3_open(path.c_str(), &handle) == SQLITE_OK &&
      sqlite3_create_collation(handle, "QUOR", SQLITE_UTF8, nullptr, byBytes) == SQLITE_OK &&
      sqlite3_create_function(handle, "quor_misfit", 4, kInnocuous, nullptr, pass, nullptr,
                              nullptr) == SQLITE_OK &&
      sqlite3_create_function(handle, "quor_total", -1, kInnocuous, nullptr, pass, nullptr,
                              nullptr) == SQLITE_OK;
  if (opened) return handle;
  sqlite3_close(handle);
  return nullptr;
}

/// Runs the engine's own SQL on a file that is opened so.
inline void runRaw(const std::string& path, const std::string& sql) {
  sqlite3* const handle = openRaw(path);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(handle);
  sqlite3_close(handle);
}

}  // namespace QuorHost::Testing
