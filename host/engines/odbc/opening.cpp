#include "host/engines/odbc/opening.h"

#include "host/engines/odbc/driver/database.h"
#include "host/engines/odbc/store.h"
#include "platform/error.h"

namespace QuorHost::Odbc {

std::shared_ptr<Store> openOverDriver(const std::string& address, Access access,
                                      CompareTexts compare) {
  return std::make_shared<OdbcStore>(
      std::make_shared<Database>(readAddress(address), access, compare));
}

void refuseToCreate(const std::string& address) {
  QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                     "'" + shownAddress(address) +
                         "' cannot be made or filled over ODBC, which passes statements through: "
                         "make the company with the server's own tools");
}

}  // namespace QuorHost::Odbc
