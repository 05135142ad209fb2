// A database in memory that is reached through the front end alone.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/sqlite/write/sql_writer.h"
#include "host/engines/write/translation_cache.h"
#include "host/sql/front_end.h"
#include "platform/values/value.h"

namespace QuorHost::Sql::Testing {

inline constexpr Dialect kServer = Dialect::Server;
inline constexpr Dialect kDesktop = Dialect::Desktop;
inline constexpr Dialect kBoth[] = {kServer, kDesktop};

using Values = std::vector<QuorDataLib::Value>;
using TranslationCache = Write::TranslationCache<Write::Nothing>;

class Database {
 public:
  /// An empty database.
  Database();
  /// A database with what `schema`, in the server dialect, makes; it may also insert rows.
  explicit Database(std::string_view schema);
  /// A company file, to be read.
  Database(const std::string& path, Catalogue catalogue);

  [[nodiscard]] Translation translate(std::string_view text, Dialect dialect,
                                      Rewriting rewriting = Rewriting::Faster) const;

  /// Runs a statement and returns its rows, the values of each joined by '|' ("-" for NULL). Raises
  /// a refused statement with the engine's message when the engine ends it.
  std::vector<std::string> rows(std::string_view text, Dialect dialect, const Values& values = {});
  /// The same for a statement that was translated.
  std::vector<std::string> rows(const Translation& translation, const Values& values);
  /// The same for one that a cache has translated, maybe together with others.
  std::vector<std::string> rows(const Write::TranslatedStatement& statement, const Values& values);

  /// The one value of a SELECT of one row and column, without FROM: `SELECT <expression>`.
  std::string value(std::string_view expression, Dialect dialect, const Values& values = {});

  /// The message with which the statement is refused, by the front end or by the engine; empty when
  /// it is not.
  std::string refusal(std::string_view text, Dialect dialect);

  [[nodiscard]] const Catalogue& catalogue() const noexcept { return catalogue_; }
  [[nodiscard]] sqlite3* handle() const noexcept { return database_.get(); }

  /// Whether the engine accepts the translation, which it does not run.
  [[nodiscard]] std::string preparationError(const Translation& translation) const;

 private:
  void open(const std::string& path, int flags);

  struct Close {
    void operator()(sqlite3* database) const noexcept { sqlite3_close(database); }
  };

  /// Has kept totals be what the rows add up to.
  void addUpTotals();

  std::unique_ptr<sqlite3, Close> database_;
  Catalogue catalogue_;
  Sqlite::SqlWriter writer_;
};

/// The schema of company files.
[[nodiscard]] std::string companySchema();

}  // namespace QuorHost::Sql::Testing
