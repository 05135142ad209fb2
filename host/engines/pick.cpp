// Which engine a company is kept by. Nobody else knows that there are several.
#include "host/engines/file_access.h"
#include "host/engines/sqlite/file/file_check.h"
#include "host/engines/sqlite/file/opening.h"
#include "host/engines/sqlite/functions/collation.h"
#include "host/engines/sqlite/store.h"
#include "host/engines/store.h"
#include "platform/error.h"

#ifdef QUORACC_ODBC
#include "host/engines/odbc/driver/address.h"
#include "host/engines/odbc/opening.h"
#endif
#ifdef QUORACC_POSTGRES
#include "host/engines/postgres/opening.h"
#include "host/engines/postgres/server/address.h"
#endif

namespace QuorHost {
namespace {

/// How companies of one kind are named, shown, opened and made.
struct Kind {
  bool (*names)(std::string_view company) noexcept;
  std::string (*shown)(std::string_view company);
  std::shared_ptr<Store> (*open)(const std::string& company, Access access);
  std::shared_ptr<Store> (*create)(const std::string& company, const OnServer& how);
  /// Why there are none, where the engine's library was not there when the program was built.
  const char* missing = nullptr;
};

#if !defined(QUORACC_POSTGRES) || !defined(QUORACC_ODBC)

/// `company` up to where secrets may begin.
std::string beginningOf(std::string_view company) {
  std::string beginning(company.substr(0, company.find(':') + 1));
  if (company.substr(beginning.size()).starts_with("//")) beginning += "//";
  return beginning + "...";
}

#endif

#ifdef QUORACC_POSTGRES
constexpr Kind kPostgres{.names = Postgres::isServerAddress,
                         .shown = Postgres::shownAddress,
                         .open =
                             [](const std::string& company, Access access) {
                               return Postgres::openServer(company, access, Sqlite::compareTexts);
                             },
                         .create =
                             [](const std::string& company, const OnServer& how) {
                               return Postgres::createServer(company, how, Sqlite::compareTexts);
                             }};
#else
bool isPostgres(std::string_view company) noexcept {
  return company.starts_with("postgresql://") || company.starts_with("postgres://");
}
constexpr Kind kPostgres{
    .names = isPostgres,
    .shown = beginningOf,
    .missing =
        "This program was built without PostgreSQL: name a company file, or build it where "
        "the server's client library is installed (libpq-dev)"};
#endif

#ifdef QUORACC_ODBC
constexpr Kind kOdbc{
    .names = Odbc::isOdbcAddress,
    .shown = Odbc::shownAddress,
    .open =
        [](const std::string& company, Access access) {
          return Odbc::openOverDriver(company, access, Sqlite::compareTexts);
        },
    .create = [](const std::string& company, const OnServer&) -> std::shared_ptr<Store> {
      Odbc::refuseToCreate(company);
    }};
#else
bool isOdbc(std::string_view company) noexcept { return company.starts_with("odbc:"); }
constexpr Kind kOdbc{
    .names = isOdbc,
    .shown = beginningOf,
    .missing =
        "This program was built without ODBC: name a company file, or build it where a "
        "driver manager is installed (unixodbc-dev)"};
#endif

/// What a company that is no file is; null for a file.
const Kind* kindOf(std::string_view company) noexcept {
  for (const Kind* const kind : {&kPostgres, &kOdbc}) {
    if (kind->names(company)) return kind;
  }
  return nullptr;
}

/// The same where it is to be used. Raises 5 when this program cannot.
const Kind* usableKindOf(std::string_view company) {
  const Kind* const kind = kindOf(company);
  if (kind != nullptr && kind->missing != nullptr) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument, kind->missing);
  }
  return kind;
}

}  // namespace

bool isServer(std::string_view company) noexcept { return kindOf(company) != nullptr; }

Access accessAllowed(const std::string& company) noexcept {
  return isServer(company) || mayWrite(company) ? Access::Write : Access::Read;
}

std::string shownCompany(const std::string& company) {
  const Kind* const kind = kindOf(company);
  return kind == nullptr ? company : kind->shown(company);
}

std::shared_ptr<Store> openCompanyFile(const std::string& path, Access access) {
  const Kind* const server = usableKindOf(path);
  return server == nullptr ? Sqlite::openFile(path, access) : server->open(path, access);
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
  if (const Kind* const server = usableKindOf(path)) return server->create(path, onServer);
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
  if (const Kind* const server = usableKindOf(path)) {
    return server->open(path, Access::Read)->integrityFindings();
  }
  return Sqlite::fileFindings(*Sqlite::openDatabase(path, Access::Read));
}

}  // namespace QuorHost
