#include "host/engines/odbc/driver/driver_error.h"

#include <string>

#include "host/engines/rows/refusal.h"
#include "host/engines/rows/sql_state.h"
#include "platform/error.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Odbc {
namespace {

using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;

constexpr std::int32_t kPathFileAccess = 75;
constexpr std::size_t kLongestMessage = 600;

std::string shownMessage(const Diagnosis& diagnosis, const Address& address) {
  // Cleaned before it is cut: half a password is one, too.
  return QuorDataLib::shownText(withoutSecrets(diagnosis.message, address), kLongestMessage);
}

/// What to do about a connection that cannot be made.
std::string adviceFor(std::string_view state) {
  if (state == "IM002") {
#ifdef _WIN32
    return "See which data sources and drivers there are (odbcad32; a program sees those of "
           "its own word size)";
#else
    return "See which data sources and drivers the driver manager knows (odbcinst -q -s, odbcinst "
           "-q -d), or name the driver's library by its path (Driver=/path/to/it)";
#endif
  }
  if (state == "IM003" || state == "IM004" || state == "01000") {
    return "See that the driver's library is where it is said to be, and is one for this system";
  }
  if (state == "28000") {
    return "See that user and password are right (UID and PWD, or those of the data source)";
  }
  return "See that the server runs, that host, database and user are spelled as they are there, "
         "and that the password is right";
}

}  // namespace

void raiseConnectionError(const Diagnosis& diagnosis, const Address& address) {
  throw Error(kPathFileAccess, "QuorDataLib",
              "'" + address.shown + "' cannot be opened: " + shownMessage(diagnosis, address) +
                  ". " + adviceFor(diagnosis.state));
}

void raiseDriverError(const Diagnosis& diagnosis, const Address& address,
                      const Circumstances& circumstances) {
  if (circumstances.lost) Rows::raiseConnectionLost(circumstances.mayChange);
  const std::string where = Rows::inStatement(circumstances.statement);
  if (diagnosis.state == "HY001") QuorDataLib::raise(ErrorNumber::OutOfMemory, "Out of memory");
  const std::string state = Rows::stateMessage(diagnosis.state, circumstances.limit);
  if (!state.empty()) Rows::refuseStatement(state + where);
  const std::string said = shownMessage(diagnosis, address);
  if (diagnosis.state == "22003") {
    QuorDataLib::raise(ErrorNumber::Overflow, "Overflow: " + said + where);
  }
  if (diagnosis.state.starts_with("23")) {
    Rows::refuseStatement("The change breaks a rule of the table: " + said + where);
  }
  Rows::refuseStatement("The statement failed: " + said + where);
}

}  // namespace QuorHost::Odbc
