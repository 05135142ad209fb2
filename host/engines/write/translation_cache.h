// Translated statements, kept for the next time that their text comes.
#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "host/sql/front_end.h"

namespace QuorHost::Write {

/// A statement as its author wrote it, and what the front end made of it.
struct TranslatedStatement {
  std::string text;
  Sql::Dialect dialect = Sql::Dialect::Server;
  Sql::Translation translation;
};

/// What is kept beside a translation by an engine that keeps nothing.
struct Nothing {};

/// The most recently used statements, by text and dialect, each with what an engine keeps beside
/// it.
template <class Kept>
class TranslationCache {
 public:
  /// Statements of which a look-up is found again: a helper's calls need a dozen at most.
  static constexpr std::size_t kCapacity = 64;

  struct Entry {
    std::shared_ptr<const TranslatedStatement> source;
    Kept kept;
  };

  /// The statement, or null where it is not known. It holds until the next one is added.
  [[nodiscard]] Entry* find(std::string_view text, Sql::Dialect dialect) noexcept {
    if (isFirst({text, dialect})) return &entries_.front();
    const auto known = byText_.find(Key{text, dialect});
    return known == byText_.end() ? nullptr : &*known->second;
  }

  /// The same, translated by `writer` and added where it is not known; it is then the most recently
  /// used one. Raises what the front end raises.
  Entry& take(std::string_view text, Sql::Dialect dialect, const Sql::Catalogue& catalogue,
              const Sql::Writer& writer) {
    if (isFirst({text, dialect})) return entries_.front();
    const auto known = byText_.find(Key{text, dialect});
    if (known != byText_.end()) {
      entries_.splice(entries_.begin(), entries_, known->second);
      return entries_.front();
    }
    auto source = std::make_shared<TranslatedStatement>(TranslatedStatement{
        std::string(text), dialect, Sql::translate(text, dialect, catalogue, writer)});
    if (entries_.size() == kCapacity) {
      byText_.erase(keyOf(entries_.back()));
      entries_.pop_back();
    }
    entries_.push_front(Entry{source, Kept()});
    byText_.emplace(Key{source->text, dialect}, entries_.begin());
    return entries_.front();
  }

  /// Forgets everything: after a change of the catalogue translations may no longer hold.
  void clear() noexcept {
    byText_.clear();
    entries_.clear();
  }

 private:
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

  [[nodiscard]] static Key keyOf(const Entry& entry) noexcept {
    return {entry.source->text, entry.source->dialect};
  }
  /// Statements are often run again and again: whether it is the one used last.
  [[nodiscard]] bool isFirst(const Key& key) const noexcept {
    return !entries_.empty() && keyOf(entries_.front()) == key;
  }

  Entries entries_;  // the most recently used first
  std::unordered_map<Key, typename Entries::iterator, Hash> byText_;
};

}  // namespace QuorHost::Write
