#include "host/engines/postgres/opening.h"

#include "host/engines/postgres/server/database.h"
#include "host/engines/postgres/store.h"

namespace QuorHost::Postgres {

std::shared_ptr<Store> openServer(const std::string& address, Access access, CompareTexts compare) {
  return std::make_shared<ServerStore>(
      std::make_shared<Database>(readAddress(address), access, compare));
}

std::shared_ptr<Store> createServer(const std::string& address, const OnServer& how,
                                    CompareTexts compare) {
  return std::make_shared<ServerStore>(
      std::make_shared<Database>(readAddress(address), Access::Write, compare), how);
}

}  // namespace QuorHost::Postgres
