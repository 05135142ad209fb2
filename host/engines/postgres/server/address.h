// Where a company on a server is.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace QuorHost::Postgres {

/// Whether `company` names a server rather than a file.
[[nodiscard]] bool isServerAddress(std::string_view company) noexcept;

/// `postgresql://user@host/database?schema=NAME&...`, taken apart.
struct Address {
  /// What the client library is given: pairs of a name and a value.
  std::vector<std::string> names;
  std::vector<std::string> values;
  /// The company, which is one schema of the database; "public" unless it is said.
  std::string schema;
  /// The text without its password, for messages.
  std::string shown;
};

/// Reads the text; to another machine, the server's name is verified unless the text says
/// otherwise. Raises 5 for what is no such text, without showing what it has for a password.
[[nodiscard]] Address readAddress(std::string_view text);

/// `text` without its password.
[[nodiscard]] std::string shownAddress(std::string_view text);

}  // namespace QuorHost::Postgres
