#include "host/engines/sqlite/statement_cache.h"

#include <utility>

#include "host/engines/sqlite/write/sql_writer.h"

namespace QuorHost::Sqlite {

StatementCache::Taken StatementCache::take(std::string_view text, Sql::Dialect dialect,
                                           const Sql::Catalogue& catalogue) {
  auto [source, entry] = known_.take(text, dialect, catalogue, SqlWriter());
  Taken taken{std::move(source), std::move(entry.kept)};
  if (!taken.statement) {
    taken.statement = Statement(database_, taken.source->translation().sql, true, text);
  }
  return taken;
}

Statement StatementCache::take(const TranslatedStatement& source) {
  auto* const entry = known_.entryOf(source);
  if (entry != nullptr && entry->kept) return std::move(entry->kept);
  return Statement(database_, source.translation().sql, true, source.text);
}

void StatementCache::giveBack(Taken taken) noexcept {
  auto* const entry = known_.entryOf(*taken.source);
  if (entry == nullptr || entry->kept) return;
  taken.statement.clear();
  entry->kept = std::move(taken.statement);
}

}  // namespace QuorHost::Sqlite
