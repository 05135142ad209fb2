// Finds rows that are kept in memory by the value of one column.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/engines/rows/criterion.h"
#include "host/engines/rows/kept_rows.h"

namespace QuorHost::Rows {

/// An index of one column over kept rows. It must end before the rows change.
class RowIndex {
 public:
  using CompareTexts = std::function<int(std::string_view, std::string_view)>;

  /// `compare` orders texts as the database does.
  RowIndex(const KeptRows& rows, int column, Sql::Type type, CompareTexts compare);

  /// The first row whose value in the column equals the key's, texts as the database compares them.
  [[nodiscard]] std::optional<std::size_t> find(const FindKey& key) const;

 private:
  void addNumbers(const KeptRows& rows, int column, Sql::Type type);
  void addTexts(const KeptRows& rows, int column);

  /// A text of the kept rows.
  struct TextEntry {
    std::string_view text;
    std::size_t row;
  };
  CompareTexts compare_;
  std::unordered_map<std::int64_t, std::size_t> numbers_;
  /// In the order of texts, equal ones in the order of rows. Equal texts may be spelled
  /// differently, which is what a hash of their letters could not see.
  std::vector<TextEntry> texts_;
};

}  // namespace QuorHost::Rows
