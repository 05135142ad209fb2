#include "host/engines/sqlite/statement_cache.h"

#include <utility>

#include "host/engines/sqlite/write/sql_writer.h"

namespace QuorHost::Sqlite {

StatementCache::Taken StatementCache::take(std::string_view text, Sql::Dialect dialect,
                                           const Sql::Catalogue& catalogue) {
  auto& [source, idle] = known_.take(text, dialect, catalogue, SqlWriter());
  Taken taken{source, std::move(idle)};
  if (!taken.statement) {
    taken.statement = Statement(database_, source->translation.sql, true, text);
  }
  return taken;
}

Statement StatementCache::take(const std::shared_ptr<const TranslatedStatement>& source) {
  auto* const known = known_.find(source->text, source->dialect);
  if (known != nullptr && known->source == source && known->kept) return std::move(known->kept);
  return Statement(database_, source->translation.sql, true, source->text);
}

void StatementCache::giveBack(Taken taken) noexcept {
  auto* const known = known_.find(taken.source->text, taken.source->dialect);
  if (known == nullptr || known->source != taken.source || known->kept) return;
  taken.statement.clear();
  known->kept = std::move(taken.statement);
}

}  // namespace QuorHost::Sqlite
