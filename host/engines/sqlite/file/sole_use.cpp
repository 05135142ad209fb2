#include <memory>
#include <utility>

#include "host/engines/sqlite/file/opening.h"
#include "host/engines/sqlite/file/raw_handle.h"

namespace QuorHost::Sqlite {

namespace {

/// Holds the lock of a file for as long as it is open.
class SqliteSoleUse final : public SoleUse {
 public:
  explicit SqliteSoleUse(Handle handle) : handle_(std::move(handle)) {}

 private:
  Handle handle_;
};

}  // namespace

std::unique_ptr<SoleUse> takeDatabaseAlone(const std::string& path) {
  constexpr int kWait = 1000;  // milliseconds
  Handle handle = openHandle(path, SQLITE_OPEN_READWRITE, Form::Plain, kWait);
  if (!isDatabase(handle.get())) return nullptr;
  // Without its log, so that nothing of it is left beside what comes in its place.
  int code = SQLITE_OK;
  for (const char* const step :
       {"PRAGMA locking_mode=EXCLUSIVE", "SELECT count(*) FROM sqlite_schema",
        "PRAGMA journal_mode=DELETE", "BEGIN EXCLUSIVE"}) {
    if (code == SQLITE_OK) code = sqlite3_exec(handle.get(), step, nullptr, nullptr, nullptr);
  }
  switch (code & 0xFF) {
    case SQLITE_OK:
      return std::make_unique<SqliteSoleUse>(std::move(handle));
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return nullptr;
    default:
      refuseProbed(handle.get(), code, path, Access::Write);
  }
}

bool isCompanyStart(std::string_view header) noexcept {
  constexpr std::size_t kIdPlace = 68;
  std::uint32_t id = 0;
  for (std::size_t i = 0; i < sizeof id && kIdPlace + i < header.size(); ++i) {
    id = id << 8U | static_cast<unsigned char>(header[kIdPlace + i]);
  }
  return header.starts_with(kFileMagic) && id == static_cast<std::uint32_t>(kApplicationId);
}

}  // namespace QuorHost::Sqlite
