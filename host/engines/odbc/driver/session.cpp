#include "host/engines/odbc/driver/session.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/engines/odbc/driver/driver_error.h"
#include "host/engines/odbc/driver/wide_text.h"
#include "host/engines/rows/refusal.h"
#include "host/engines/rows/sql_state.h"
#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost::Odbc {
namespace {

using QuorDataLib::ErrorNumber;

/// Attributes are numbers in the place of an address.
SQLPOINTER attributeValue(SQLULEN value) {
  return reinterpret_cast<SQLPOINTER>(value);  // NOLINT(performance-no-int-to-ptr)
}

std::string upperName(std::string_view name) {
  std::string upper(name);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

}  // namespace

std::shared_ptr<const EnvironmentHandle> makeEnvironment(const Address& address) {
  SQLHANDLE raw = nullptr;
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &raw))) {
    QuorDataLib::raise(ErrorNumber::OutOfMemory, "Out of memory");
  }
  auto environment = std::make_shared<const EnvironmentHandle>(raw);
  if (!SQL_SUCCEEDED(SQLSetEnvAttr(raw, SQL_ATTR_ODBC_VERSION, attributeValue(SQL_OV_ODBC3), 0))) {
    raiseConnectionError(diagnose(SQL_HANDLE_ENV, raw), address);
  }
  return environment;
}

Session::Session(std::shared_ptr<const EnvironmentHandle> environment,
                 std::shared_ptr<const Address> address, Access access)
    : environment_(std::move(environment)), address_(std::move(address)), access_(access) {
  SQLHANDLE raw = nullptr;
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, environment_->get(), &raw))) {
    raiseConnectionError(diagnose(SQL_HANDLE_ENV, environment_->get()), *address_);
  }
  connection_ = ConnectionHandle(raw);
  connect();
}

void Session::connect() {
  if (access_ == Access::Read) {
    // A hint: who must not change anything is given a role that cannot.
    SQLSetConnectAttrW(handle(), SQL_ATTR_ACCESS_MODE, attributeValue(SQL_MODE_READ_ONLY),
                       SQL_IS_UINTEGER);
  }
  WideText text(address_->connection);
  const SQLRETURN result =
      SQLDriverConnectW(handle(), nullptr, text.data(), static_cast<SQLSMALLINT>(text.size()),
                        nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  if (!SQL_SUCCEEDED(result)) {
    raiseConnectionError(diagnose(SQL_HANDLE_DBC, handle()), *address_);
  }
  connected_ = true;
}

Session::~Session() {
  if (!connected_) return;
  rollBack();
  // A driver that does not let go because of a transaction does when that has been undone.
  if (!SQL_SUCCEEDED(SQLDisconnect(handle()))) {
    SQLEndTran(SQL_HANDLE_DBC, handle(), SQL_ROLLBACK);
    SQLDisconnect(handle());
  }
}

void Session::requireSound() const {
  if (failed_) Rows::refuseInFailed();
}

void Session::check(SQLRETURN result, SQLSMALLINT kind, SQLHANDLE handle,
                    std::string_view statement, std::int32_t limit) {
  if (SQL_SUCCEEDED(result) || result == SQL_NO_DATA) return;
  const Diagnosis diagnosis = diagnose(kind, handle);
  failed_ = inTransaction_;
  SQLUINTEGER dead = SQL_CD_FALSE;
  const bool asked = SQL_SUCCEEDED(SQLGetConnectAttrW(this->handle(), SQL_ATTR_CONNECTION_DEAD,
                                                      &dead, SQL_IS_UINTEGER, nullptr));
  lost_ = lost_ || Rows::isEndOfConnection(diagnosis.state) || (asked && dead == SQL_CD_TRUE);
  raiseDriverError(diagnosis, *address_,
                   {.lost = lost_,
                    .mayChange = access_ == Access::Write,
                    .statement = statement,
                    .limit = limit});
}

void Session::set(SQLINTEGER attribute, SQLULEN value) {
  check(SQLSetConnectAttrW(handle(), attribute, attributeValue(value), SQL_IS_UINTEGER),
        SQL_HANDLE_DBC, handle());
}

void Session::begin(bool snapshot) {
  if (number<SQLUSMALLINT>(SQL_TXN_CAPABLE) == SQL_TC_NONE) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument,
                       "The database behind this driver has no transactions");
  }
  if (snapshot) {
    if ((number<SQLUINTEGER>(SQL_TXN_ISOLATION_OPTION) & SQL_TXN_REPEATABLE_READ) == 0) {
      QuorDataLib::raise(ErrorNumber::InvalidArgument,
                         "The database behind this driver cannot be read as it is at one moment "
                         "(no repeatable reads)");
    }
    const auto usual = number<SQLUINTEGER>(SQL_DEFAULT_TXN_ISOLATION);
    set(SQL_ATTR_TXN_ISOLATION, SQL_TXN_REPEATABLE_READ);
    isolation_ = usual;
  }
  try {
    set(SQL_ATTR_AUTOCOMMIT, SQL_AUTOCOMMIT_OFF);
  } catch (...) {
    leaveTransaction();
    throw;
  }
  inTransaction_ = true;
}

void Session::end(SQLSMALLINT how) {
  check(SQLEndTran(SQL_HANDLE_DBC, handle(), how), SQL_HANDLE_DBC, handle());
}

void Session::commit() {
  if (failed_) Rows::refuseFailedCommit();
  end(SQL_COMMIT);
  leaveTransaction();
}

void Session::rollBack() noexcept {
  if (!inTransaction_) return;
  if (!SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, handle(), SQL_ROLLBACK))) lost_ = true;
  leaveTransaction();
}

void Session::leaveTransaction() noexcept {
  inTransaction_ = false;
  failed_ = false;
  const auto put = [&](SQLINTEGER attribute, SQLULEN value) {
    return SQL_SUCCEEDED(
        SQLSetConnectAttrW(handle(), attribute, attributeValue(value), SQL_IS_UINTEGER));
  };
  // A connection that stays in a transaction must not be used for anything else.
  if (!put(SQL_ATTR_AUTOCOMMIT, SQL_AUTOCOMMIT_ON)) lost_ = true;
  const SQLULEN isolation = std::exchange(isolation_, 0);
  if (isolation != 0 && !put(SQL_ATTR_TXN_ISOLATION, isolation)) lost_ = true;
}

std::string Session::text(SQLUSMALLINT what) {
  std::array<SQLWCHAR, 256> value{};
  SQLSMALLINT bytes = 0;
  check(SQLGetInfoW(handle(), what, value.data(),
                    static_cast<SQLSMALLINT>(sizeof(SQLWCHAR) * value.size()), &bytes),
        SQL_HANDLE_DBC, handle());
  const auto size = static_cast<std::size_t>(std::max<SQLSMALLINT>(bytes, 0)) / sizeof(SQLWCHAR);
  return narrow(value.data(), std::min(size, value.size() - 1));
}

void Session::askNumber(SQLUSMALLINT what, void* value, std::size_t size) {
  check(SQLGetInfoW(handle(), what, value, static_cast<SQLSMALLINT>(size), nullptr), SQL_HANDLE_DBC,
        handle());
}

std::string Session::catalogueName(std::string_view name) {
  switch (number<SQLUSMALLINT>(SQL_IDENTIFIER_CASE)) {
    case SQL_IC_UPPER:
      return upperName(name);
    case SQL_IC_LOWER:
      return Sql::lowerName(name);
    default:
      return std::string(name);
  }
}

}  // namespace QuorHost::Odbc
