#include "host/engines/sqlite/statement_cache.h"

#include <utility>

#include "host/engines/sqlite/write/sql_writer.h"

namespace QuorHost::Sqlite {

StatementCache::Taken StatementCache::take(std::string_view text, Sql::Dialect dialect,
                                           const Sql::Catalogue& catalogue) {
  const auto known = byText_.find(Key{text, dialect});
  if (known != byText_.end()) {
    entries_.splice(entries_.begin(), entries_, known->second);
    Taken taken{entries_.front().source, std::move(entries_.front().idle)};
    if (!taken.statement) {
      taken.statement = Statement(database_, taken.source->translation.sql, true, text);
    }
    return taken;
  }

  auto source = std::make_shared<TranslatedStatement>(TranslatedStatement{
      std::string(text), dialect, Sql::translate(text, dialect, catalogue, SqlWriter())});
  Taken taken{source, Statement(database_, source->translation.sql, true, text)};
  if (entries_.size() == kCapacity) {
    const TranslatedStatement& oldest = *entries_.back().source;
    byText_.erase(Key{oldest.text, oldest.dialect});
    entries_.pop_back();
  }
  entries_.push_front(Entry{source, Statement()});
  byText_.emplace(Key{source->text, dialect}, entries_.begin());
  return taken;
}

Statement StatementCache::take(const std::shared_ptr<const TranslatedStatement>& source) {
  const auto known = byText_.find(Key{source->text, source->dialect});
  if (known != byText_.end() && known->second->source == source && known->second->idle) {
    return std::move(known->second->idle);
  }
  return Statement(database_, source->translation.sql, true, source->text);
}

void StatementCache::giveBack(Taken taken) noexcept {
  const auto entry = byText_.find(Key{taken.source->text, taken.source->dialect});
  if (entry == byText_.end() || entry->second->source != taken.source || entry->second->idle) {
    return;
  }
  taken.statement.clear();
  entry->second->idle = std::move(taken.statement);
}

void StatementCache::clear() noexcept {
  byText_.clear();
  entries_.clear();
}

}  // namespace QuorHost::Sqlite
