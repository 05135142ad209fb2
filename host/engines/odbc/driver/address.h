// Where a company behind a driver is.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/sql/types.h"

namespace QuorHost::Odbc {

/// Whether `company` is a connection over ODBC.
[[nodiscard]] bool isOdbcAddress(std::string_view company) noexcept;

/// `odbc:CONNECTION STRING` with `dialect=server` or `dialect=desktop` in it, taken apart.
struct Address {
  /// What the driver manager is given: the text as it stands, without our own key.
  std::string connection;
  /// The dialect that the database behind it reads.
  Sql::Dialect dialect = Sql::Dialect::Server;
  /// The text as messages may show it.
  std::string shown;
  /// The values that nobody is to read, the longest first.
  std::vector<std::string> secrets;
};

/// Reads the text. Raises 5, without showing what it has for a password, where it names no dialect
/// or an unknown one, where a brace does not end, and where it is empty or too long.
[[nodiscard]] Address readAddress(std::string_view text);

/// `text` without passwords and what is like them.
[[nodiscard]] std::string shownAddress(std::string_view text);

/// `message` without the secrets of the address, should it repeat one.
[[nodiscard]] std::string withoutSecrets(std::string message, const Address& address);

}  // namespace QuorHost::Odbc
