// Translated and prepared statements, kept for the next time that their text comes.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host/engines/sqlite/statement.h"
#include "host/sql/front_end.h"

namespace QuorHost::Sqlite {

/// A statement as its author wrote it, and what the front end made of it.
struct TranslatedStatement {
  std::string text;
  Sql::Dialect dialect = Sql::Dialect::Server;
  Sql::Translation translation;
};

/// The most recently used statements of one database, by text and dialect. A statement that is
/// taken belongs to the taker until it comes back; a second taker of the same text gets one of its
/// own, translated no second time.
class StatementCache {
 public:
  /// Statements of which a look-up is found again: a helper's calls need a dozen at most.
  static constexpr std::size_t kCapacity = 64;

  explicit StatementCache(sqlite3* database) : database_(database) {}

  /// A statement ready to be bound, and its translation.
  struct Taken {
    std::shared_ptr<const TranslatedStatement> source;
    Statement statement;
  };

  /// Translates and prepares `text` unless that was done before. Raises what the front end and the
  /// engine raise.
  [[nodiscard]] Taken take(std::string_view text, Sql::Dialect dialect,
                           const Sql::Catalogue& catalogue);

  /// Another statement of one that was translated before, by this cache or that of another handle.
  [[nodiscard]] Statement take(const std::shared_ptr<const TranslatedStatement>& source);

  /// Keeps a statement that was taken for the next taker, or ends it when it is no longer wanted.
  void giveBack(Taken taken) noexcept;

  /// Forgets everything: after a change of the catalogue translations may no longer hold.
  void clear() noexcept;

 private:
  struct Entry {
    std::shared_ptr<const TranslatedStatement> source;
    Statement idle;
  };
  /// The text is the entry's own.
  struct Key {
    std::string_view text;
    Sql::Dialect dialect;
    bool operator==(const Key&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Key& key) const noexcept {
      return std::hash<std::string_view>()(key.text) + static_cast<std::size_t>(key.dialect);
    }
  };
  using Entries = std::list<Entry>;

  sqlite3* database_;
  Entries entries_;  // the most recently used first
  std::unordered_map<Key, Entries::iterator, Hash> byText_;
};

}  // namespace QuorHost::Sqlite
