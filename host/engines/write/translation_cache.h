// Translated statements, kept for the next time that their text comes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/sql/front_end.h"
#include "host/sql/parse/shape.h"
#include "platform/error.h"

namespace QuorHost::Write {

/// A statement as its author wrote it, and what the front end made of it.
struct TranslatedStatement {
  std::string text;
  Sql::Dialect dialect = Sql::Dialect::Server;
  Sql::Translation own;
  /// The statement whose translation serves for this one, too; null where `own` is it.
  std::shared_ptr<const TranslatedStatement> shape;
  /// The numbers in the text, for which the shape has markers.
  std::vector<Sql::PastedNumber> numbers;

  [[nodiscard]] const Sql::Translation& translation() const noexcept {
    return shape ? shape->own : own;
  }
};

/// What is kept beside a translation by an engine that keeps nothing.
struct Nothing {};

/// The most recently used statements, by text and dialect, each with what an engine keeps beside
/// it. Statements that differ in pasted numbers alone share one entry from the second of them on,
/// that of their shape with a marker for each number.
template <class Kept>
class TranslationCache {
 public:
  /// Statements of which a look-up is found again: a helper's calls need a dozen at most.
  static constexpr std::size_t kCapacity = 64;

  struct Entry {
    std::shared_ptr<const TranslatedStatement> source;
    Kept kept;
  };
  struct Taken {
    std::shared_ptr<const TranslatedStatement> source;
    /// Holds until the next statement is taken.
    Entry& entry;
  };

  /// The entry that a statement was taken from, or null where it is there no more.
  [[nodiscard]] Entry* entryOf(const TranslatedStatement& statement) noexcept {
    const TranslatedStatement& kept = statement.shape ? *statement.shape : statement;
    const Key key{kept.text, kept.dialect};
    Entry* entry = nullptr;
    if (isFirst(key)) {
      entry = &entries_.front();
    } else if (const auto known = byText_.find(key); known != byText_.end()) {
      entry = &*known->second;
    }
    return entry != nullptr && entry->source.get() == &kept ? entry : nullptr;
  }

  /// The statement, translated by `writer` where it is not known; its entry is then the most
  /// recently used one. Raises what the front end raises.
  [[nodiscard]] Taken take(std::string_view text, Sql::Dialect dialect,
                           const Sql::Catalogue& catalogue, const Sql::Writer& writer) {
    if (Entry* const known = find({text, dialect})) return {known->source, *known};
    Sql::Shape shape = Sql::shapeOf(text, dialect);
    if (!shape.numbers.empty()) {
      if (Entry* const shared = entryOfShape(shape, dialect, catalogue, writer)) {
        const TranslatedStatement statement{.text = std::string(text),
                                            .dialect = dialect,
                                            .own = {},
                                            .shape = shared->source,
                                            .numbers = std::move(shape.numbers)};
        return {std::make_shared<const TranslatedStatement>(statement), *shared};
      }
    }
    Entry& made = add(text, dialect, catalogue, writer);
    return {made.source, made};
  }

  /// Forgets everything: after a change of the catalogue translations may no longer hold.
  void clear() noexcept {
    byText_.clear();
    entries_.clear();
    shapes_.clear();
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
  /// Whether statements of a shape may share its translation.
  enum class Shared : std::uint8_t { Maybe, Never };
  /// With more shapes than this all are forgotten.
  static constexpr std::size_t kMostShapes = 4 * kCapacity;

  [[nodiscard]] static Key keyOf(const Entry& entry) noexcept {
    return {entry.source->text, entry.source->dialect};
  }
  /// Statements are often run again and again: whether it is the one used last.
  [[nodiscard]] bool isFirst(const Key& key) const noexcept {
    return !entries_.empty() && keyOf(entries_.front()) == key;
  }

  [[nodiscard]] Entry* find(const Key& key) {
    if (isFirst(key)) return &entries_.front();
    const auto known = byText_.find(key);
    if (known == byText_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, known->second);
    return &entries_.front();
  }

  Entry& add(std::string_view text, Sql::Dialect dialect, const Sql::Catalogue& catalogue,
             const Sql::Writer& writer) {
    auto source = std::make_shared<const TranslatedStatement>(
        TranslatedStatement{.text = std::string(text),
                            .dialect = dialect,
                            .own = Sql::translate(text, dialect, catalogue, writer),
                            .shape = nullptr,
                            .numbers = {}});
    if (entries_.size() == kCapacity) {
      byText_.erase(keyOf(entries_.back()));
      entries_.pop_back();
    }
    entries_.push_front(Entry{source, Kept()});
    byText_.emplace(keyOf(entries_.front()), entries_.begin());
    return entries_.front();
  }

  /// The entry that serves for all statements of a shape; null for the first of them, and where
  /// numbers and markers do not mean the same.
  [[nodiscard]] Entry* entryOfShape(const Sql::Shape& shape, Sql::Dialect dialect,
                                    const Sql::Catalogue& catalogue, const Sql::Writer& writer) {
    if (shapes_.size() == kMostShapes) shapes_.clear();
    const auto [known, isNew] = shapes_.try_emplace(Hash()({shape.text, dialect}), Shared::Maybe);
    if (isNew || known->second == Shared::Never) return nullptr;
    known->second = Shared::Never;
    Entry* entry = find({shape.text, dialect});
    if (entry == nullptr) {
      try {
        entry = &add(shape.text, dialect, catalogue, writer);
      } catch (const QuorDataLib::Error&) {
        return nullptr;
      }
    }
    const std::vector<Sql::Type>& markers = entry->source->own.markers;
    const auto serves = [&](const Sql::PastedNumber& pasted) {
      const Sql::Type type = markers[pasted.marker];
      return type == Sql::Type::Long || (type == Sql::Type::Integer &&
                                         pasted.number <= std::numeric_limits<std::int16_t>::max());
    };
    if (!std::ranges::all_of(shape.numbers, serves)) return nullptr;
    known->second = Shared::Maybe;
    return entry;
  }

  Entries entries_;  // the most recently used first
  std::unordered_map<Key, typename Entries::iterator, Hash> byText_;
  std::unordered_map<std::size_t, Shared> shapes_;  // that were met, by the hash of their texts
};

}  // namespace QuorHost::Write
