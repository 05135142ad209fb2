// One connection to the server.
#pragma once

#include <libpq-fe.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/postgres/server/address.h"
#include "host/engines/store.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Postgres {

struct ClearResult {
  void operator()(PGresult* result) const noexcept { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ClearResult>;

/// A value for a marker: its text, or nothing for null, and the server's number of its type, 0 to
/// let the statement say.
struct Argument {
  std::optional<std::string> text;
  Oid type = 0;
};

/// The text in a result.
[[nodiscard]] inline std::string_view textAt(const Result& result, int row, int column) {
  return {PQgetvalue(result.get(), row, column),
          static_cast<std::size_t>(PQgetlength(result.get(), row, column))};
}

/// An open connection whose names are those of the company's schema alone. It is closed with the
/// object.
class Link {
 public:
  /// Connects. Raises 75 with what to do for a server, a database or a role that is not there, or
  /// not for us. Errors spell tables and columns as `catalogue` does, which lives longer.
  Link(const Address& address, Access access, const Sql::Catalogue& catalogue);

  /// Runs one or more statements; gives the last one's result. Raises what the server reports;
  /// `text` is the statement as its author wrote it, of which messages quote the beginning.
  Result run(const std::string& sql, std::string_view text = {});
  /// Runs one statement with values for its markers.
  Result run(const std::string& sql, const std::vector<Argument>& arguments,
             std::string_view text = {});
  /// Runs a statement whose failure means nothing.
  void tryTo(const char* sql) noexcept;

  /// The number in the first row and column; 0 where there is none.
  [[nodiscard]] std::int64_t number(const std::string& sql);

  /// Lets statements run for so many seconds at most; 0 for as many as the server allows the role.
  void limit(std::int32_t seconds);
  /// Undoes the open transaction, and what it has set.
  void rollBack() noexcept;

  /// Sends rows into a table, by a COPY statement, and does not wait for the server to take them:
  /// what is wrong with them is raised before the next statement, or by `awaitCopy`.
  void copy(const std::string& sql, std::string_view rows);
  /// Waits until the rows that were sent last are in their table; raises what was wrong with them.
  void awaitCopy();

  /// Whether the connection has been lost.
  [[nodiscard]] bool lost() const noexcept { return PQstatus(connection_.get()) == CONNECTION_BAD; }
  /// Whether a statement in the open transaction has failed, so that nothing goes on in it.
  [[nodiscard]] bool failed() const noexcept {
    return PQtransactionStatus(connection_.get()) == PQTRANS_INERROR;
  }

  /// `name` in quotes, as it stands.
  [[nodiscard]] static std::string quoted(std::string_view name);
  /// The name of a table or column of the company, which the server has in lower case, quoted.
  [[nodiscard]] static std::string nameOf(std::string_view name);
  /// A text literal.
  [[nodiscard]] static std::string literal(std::string_view text);

 private:
  struct Finish {
    void operator()(PGconn* connection) const noexcept { PQfinish(connection); }
  };

  Result checked(PGresult* result, std::string_view text);
  /// Takes what the server says of the rows that were sent last; null where none are on their way.
  Result takeCopied() noexcept;

  std::unique_ptr<PGconn, Finish> connection_;
  const Sql::Catalogue* catalogue_;
  bool mayChange_;
  std::int32_t limit_ = 0;
  bool copying_ =
      false;  // rows have been sent, and the server has not yet said what it made of them
};

}  // namespace QuorHost::Postgres
