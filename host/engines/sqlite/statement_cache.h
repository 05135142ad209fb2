// Translated and prepared statements, kept for the next time that their text comes.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string_view>

#include "host/engines/sqlite/statement.h"
#include "host/engines/write/translation_cache.h"

namespace QuorHost::Sqlite {

using Write::TranslatedStatement;

/// The most recently used statements of one database, by text and dialect. A statement that is
/// taken belongs to the taker until it comes back; a second taker of the same text, or of one that
/// shares its translation, gets one of its own.
class StatementCache {
 public:
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
  [[nodiscard]] Statement take(const TranslatedStatement& source);

  /// Keeps a statement that was taken for the next taker, or ends it when it is no longer wanted.
  void giveBack(Taken taken) noexcept;

  /// Forgets everything: after a change of the catalogue translations may no longer hold.
  void clear() noexcept { known_.clear(); }

 private:
  sqlite3* database_;
  Write::TranslationCache<Statement> known_;  // a statement is kept while nobody has it
};

}  // namespace QuorHost::Sqlite
