// The columns of a report: what kind of thing stands in each, and who gets to see it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/values/value.h"

namespace QuorCli {

/// What the cells of a column are. The kind says how a cell is written for people, on which side it
/// stands, and of which type its value is for programs.
enum class CellKind : std::uint8_t {
  /// A short text by which people know something: a number of a document, an account, an item.
  Code,
  /// A text that may be cut where the sheet is narrow.
  Name,
  Date,
  /// A whole number that counts something.
  Number,
  /// A whole number that names something, without commas.
  Key,
  Money,
  /// A part of a sum of money; a part of nothing stays blank, or is a dash in a total.
  MoneyPart,
  /// An exact quantity with up to four decimals.
  Quantity,
  /// A number of hundredths, of type double.
  Percent,
};

enum class Audience : std::uint8_t { Everyone, People, Programs };

struct Column {
  /// Heading on the sheet.
  std::string title;
  /// Name in the formats for programs.
  std::string name;
  CellKind kind = CellKind::Name;
  Audience audience = Audience::Everyone;
};

/// The values of a line, one for each column whoever sees it; Null stays blank on the sheet.
using Line = std::vector<QuorDataLib::Value>;

/// The type of a column's values for programs.
[[nodiscard]] QuorDataLib::ValueType typeOf(CellKind kind) noexcept;

/// Whether a column adds up, so that labels of totals end before the first of its like.
[[nodiscard]] bool isFigure(CellKind kind) noexcept;

/// A cell as it stands on the sheet. Quantities get `decimals` decimals.
[[nodiscard]] std::string cellText(CellKind kind, const QuorDataLib::Value& value, int decimals);

/// The same in a total, where a part of nothing is a dash.
[[nodiscard]] std::string totalText(CellKind kind, const QuorDataLib::Value& value, int decimals);

/// Decimals that a quantity needs: 0 to 4.
[[nodiscard]] int decimalsOf(const QuorDataLib::Value& quantity);

}  // namespace QuorCli
