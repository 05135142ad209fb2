// Which engine a company is kept by. Nobody else knows that there are several.
#include "host/engines/sqlite/file/file_check.h"
#include "host/engines/sqlite/file/opening.h"
#include "host/engines/sqlite/functions/collation.h"
#include "host/engines/sqlite/store.h"
#include "host/engines/store.h"
#include "platform/error.h"

#ifdef QUORACC_POSTGRES
#include "host/engines/postgres/opening.h"
#include "host/engines/postgres/server/address.h"
#endif

namespace QuorHost {

#ifdef QUORACC_POSTGRES

bool isServer(std::string_view company) noexcept { return Postgres::isServerAddress(company); }

std::string shownCompany(const std::string& company) {
  return isServer(company) ? Postgres::shownAddress(company) : company;
}

namespace {

std::shared_ptr<Store> openOnServer(const std::string& company, Access access) {
  return Postgres::openServer(company, access, Sqlite::compareTexts);
}

std::shared_ptr<Store> createOnServer(const std::string& company, const OnServer& how) {
  return Postgres::createServer(company, how, Sqlite::compareTexts);
}

}  // namespace

#else

bool isServer(std::string_view company) noexcept {
  return company.starts_with("postgresql://") || company.starts_with("postgres://");
}

std::string shownCompany(const std::string& company) {
  return isServer(company) ? company.substr(0, company.find("://")) + "://..." : company;
}

namespace {

[[noreturn]] void refuseServers() {
  QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                     "This program was built without PostgreSQL: name a company file, or build it "
                     "where the server's client library is installed (libpq-dev)");
}

std::shared_ptr<Store> openOnServer(const std::string& /*company*/, Access /*access*/) {
  refuseServers();
}

std::shared_ptr<Store> createOnServer(const std::string& /*company*/, const OnServer& /*how*/) {
  refuseServers();
}

}  // namespace

#endif

std::shared_ptr<Store> openCompanyFile(const std::string& path, Access access) {
  return isServer(path) ? openOnServer(path, access) : Sqlite::openFile(path, access);
}

std::shared_ptr<Store> openChangedCopy(const std::string& path,
                                       const std::function<void(Store&)>& change) {
  if (isServer(path)) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "on a server that is done when somebody who may change it opens it for "
                       "writing (quoracc sql --write \"SELECT COUNT(*) FROM CieInfo\" --company "
                       "...)");
  }
  return Sqlite::openFileCopy(path, change);
}

std::shared_ptr<Store> createCompanyFile(const std::string& path, Durability durability,
                                         const OnServer& onServer) {
  if (isServer(path)) return createOnServer(path, onServer);
  if (!onServer.readers.empty()) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "A file knows no roles: who may read it is a matter of its permissions, and "
                       "--reader of companies on servers");
  }
  return Sqlite::createFile(path, durability);
}

std::unique_ptr<SoleUse> takeAlone(const std::string& path) {
  return Sqlite::takeDatabaseAlone(path);
}

bool isCompanyHeader(std::string_view header) noexcept { return Sqlite::isCompanyStart(header); }

std::vector<std::string> companyFileFindings(const std::string& path) {
  // What stands in the way of opening a server's company stands in the way of looking at it.
  if (isServer(path)) return openOnServer(path, Access::Read)->integrityFindings();
  return Sqlite::fileFindings(*Sqlite::openDatabase(path, Access::Read));
}

}  // namespace QuorHost
