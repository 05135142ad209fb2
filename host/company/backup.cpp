#include <filesystem>
#include <system_error>

#include "host/company/company.h"
#include "host/company/place/new_file.h"
#include "host/engines/paths.h"
#include "platform/error.h"

namespace QuorHost {

void backupCompany(const std::string& path, const std::string& copy, bool force,
                   const Progress& progress) {
  if (isServer(path) || isServer(copy)) {
    QuorDataLib::raise(
        QuorDataLib::ErrorNumber::InvalidArgument,
        "A backup is made of a company file. A company on a server is backed up with "
        "the server's own tools, or copied (quoracc company copy) where it is on "
        "PostgreSQL");
  }
  const std::shared_ptr<Store> store = openCompanyFile(path, Access::Read);
  std::error_code missing;
  if (std::filesystem::equivalent(pathOf(path), pathOf(copy), missing)) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "'" + copy + "' is the company itself: name another file for its copy");
  }
  NewFile file(copy, force);
  store->copyTo(file.path(), [&](std::int64_t done, std::int64_t total) {
    if (progress) progress("copying", done, total);
  });
  file.putInPlace();
}

}  // namespace QuorHost
