// One connection over a driver.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/engines/odbc/driver/address.h"
#include "host/engines/odbc/driver/handle.h"
#include "host/engines/store.h"

namespace QuorHost::Odbc {

class OdbcCursor;

/// An open connection, on which one statement has rows to come at the most: not all drivers allow
/// more. Every statement is kept when it returns, except between `begin` and `commit`. It is closed
/// with the object.
class Session {
 public:
  /// Connects. Raises 75 with what to do for a driver, a data source, a server or a user that is
  /// not there, or not for us.
  Session(std::shared_ptr<const EnvironmentHandle> environment,
          std::shared_ptr<const Address> address, Access access);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  [[nodiscard]] SQLHDBC handle() const noexcept { return connection_.get(); }
  [[nodiscard]] const Address& address() const noexcept { return *address_; }

  /// Whether the connection has been lost, or is in a state of which nothing is known.
  [[nodiscard]] bool lost() const noexcept { return lost_; }

  /// Begins a transaction; `snapshot` is one that reads only, and all of one moment. Raises 5 where
  /// the driver has none such.
  void begin(bool snapshot);
  [[nodiscard]] bool inTransaction() const noexcept { return inTransaction_; }
  /// Makes what was done in the transaction durable, and ends it. Raises a refused statement, and
  /// keeps nothing, when a statement in it has failed.
  void commit();
  /// Undoes it.
  void rollBack() noexcept;

  /// Raises a refused statement when a statement of the open transaction has failed. Drivers go on
  /// in another transaction then, without a word.
  void requireSound() const;

  /// Raises what a call on `handle` has reported, unless it succeeded. `statement` and `limit` are
  /// for the message.
  void check(SQLRETURN result, SQLSMALLINT kind, SQLHANDLE handle, std::string_view statement = {},
             std::int32_t limit = 0);

  /// What the driver says of itself.
  [[nodiscard]] std::string text(SQLUSMALLINT what);
  template <class Number>
  [[nodiscard]] Number number(SQLUSMALLINT what) {
    Number value{};
    askNumber(what, &value, sizeof value);
    return value;
  }
  /// A name as the catalogue of the database has it, which may be in upper or in lower case.
  [[nodiscard]] std::string catalogueName(std::string_view name);

  /// The cursor that has rows to come.
  OdbcCursor* live = nullptr;

 private:
  void connect();
  void askNumber(SQLUSMALLINT what, void* value, std::size_t size);
  void set(SQLINTEGER attribute, SQLULEN value);
  /// Ends the open transaction in one of the two ways.
  void end(SQLSMALLINT how);
  /// Lets each statement be kept by itself again.
  void leaveTransaction() noexcept;

  std::shared_ptr<const EnvironmentHandle> environment_;
  std::shared_ptr<const Address> address_;
  Access access_;
  ConnectionHandle connection_;
  bool connected_ = false;
  bool lost_ = false;
  bool inTransaction_ = false;
  bool failed_ = false;    // a statement in the transaction
  SQLULEN isolation_ = 0;  // to be set again behind a snapshot; 0 for none
};

/// The handle of which all others are made. Raises 7 where there is none.
[[nodiscard]] std::shared_ptr<const EnvironmentHandle> makeEnvironment(const Address& address);

}  // namespace QuorHost::Odbc
