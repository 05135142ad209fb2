#include "host/engines/sqlite/functions/collation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <vector>

#include "host/engines/sqlite/functions/collator.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

std::string_view withoutBlanksAtEnd(std::string_view text) noexcept {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// The order of texts, with a short way for plain letters, digits and punctuation.
class TextOrder {
 public:
  TextOrder() : collator_(Collator::Differs::LettersAndAccents) { fillRanks(); }

  [[nodiscard]] int compare(std::string_view a, std::string_view b) const noexcept {
    a = withoutBlanksAtEnd(a);
    b = withoutBlanksAtEnd(b);
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
      const std::uint8_t rankA = rank(a[i]);
      const std::uint8_t rankB = rank(b[i]);
      if (rankA == 0 || rankB == 0) return collator_.compare(a, b);
      if (rankA == rankB) continue;
      // A character beyond ASCII may belong to the one before it (an accent of its own).
      if (isPlainAt(a, i + 1) && isPlainAt(b, i + 1)) return rankA < rankB ? -1 : 1;
      return collator_.compare(a, b);
    }
    if (a.size() == b.size()) return 0;
    const std::string_view longer = a.size() > b.size() ? a : b;
    if (rank(longer[common]) == 0) return collator_.compare(a, b);
    return a.size() < b.size() ? -1 : 1;
  }

  [[nodiscard]] std::string version() const { return collator_.version(); }

 private:
  static constexpr char kFirst = ' ';
  static constexpr char kLast = '~';

  [[nodiscard]] std::uint8_t rank(char c) const noexcept {
    return ranks_[static_cast<unsigned char>(c)];
  }

  [[nodiscard]] bool isPlainAt(std::string_view text, std::size_t i) const noexcept {
    return i >= text.size() || rank(text[i]) != 0;
  }

  /// Ranks the printable ASCII characters by their order alone; two that only case tells apart
  /// share one rank. Such texts then compare as their ranks do, one character after the other,
  /// because none of these characters is ignored or changes the order of its neighbours.
  void fillRanks() {
    const Collator primary(Collator::Differs::Letters);
    std::vector<char> characters(kLast - kFirst + 1);
    std::iota(characters.begin(), characters.end(), kFirst);
    const auto order = [](const Collator& collator, const char& a, const char& b) {
      return collator.compare({&a, 1}, {&b, 1});
    };
    std::ranges::sort(characters,
                      [&](const char& a, const char& b) { return order(primary, a, b) < 0; });
    std::uint8_t next = 0;
    for (std::size_t i = 0; i < characters.size(); ++i) {
      if (i == 0 || order(primary, characters[i - 1], characters[i]) != 0) ++next;
      ranks_[static_cast<unsigned char>(characters[i])] = next;
    }
    // Were a pair told apart by less than their order, one by one would be wrong for them.
    for (std::size_t i = 1; i < characters.size(); ++i) {
      const bool alike = rank(characters[i - 1]) == rank(characters[i]);
      if (alike && order(collator_, characters[i - 1], characters[i]) != 0) {
        ranks_[static_cast<unsigned char>(characters[i - 1])] = 0;
        ranks_[static_cast<unsigned char>(characters[i])] = 0;
      }
    }
  }

  Collator collator_;
  // 0 for every character that only the library can place.
  std::array<std::uint8_t, 256> ranks_{};
};

const TextOrder& textOrder() {
  // Never destroyed: databases may be open, and compare texts, until the program's very end.
  static const auto& order = *new TextOrder;  // NOLINT: see above
  return order;
}

int compareForEngine(void* order, int lengthA, const void* a, int lengthB, const void* b) {
  const std::string_view textA(static_cast<const char*>(a), static_cast<std::size_t>(lengthA));
  const std::string_view textB(static_cast<const char*>(b), static_cast<std::size_t>(lengthB));
  return static_cast<const TextOrder*>(order)->compare(textA, textB);
}

}  // namespace

int compareTexts(std::string_view a, std::string_view b) noexcept {
  return textOrder().compare(a, b);
}

std::string collationVersion() {
  // What is ours of the order: blanks at the end count for nothing.
  return textOrder().version() + " without blanks at the end";
}

void registerCollation(sqlite3* database) {
  void* const order = const_cast<TextOrder*>(&textOrder());  // NOLINT: handed back as const
  if (sqlite3_create_collation_v2(database, kCollation, SQLITE_UTF8, order, compareForEngine,
                                  nullptr) != SQLITE_OK) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::OutOfMemory, "Out of memory");
  }
}

}  // namespace QuorHost::Sqlite
