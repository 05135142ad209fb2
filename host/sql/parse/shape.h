// Statements that differ in nothing but the numbers that were pasted into them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/sql/dialect.h"

namespace QuorHost::Sql {

/// A number in a statement's text, and the marker (from 0) that stands for it in the shape.
struct PastedNumber {
  std::size_t marker = 0;
  std::int32_t number = 0;
};

/// A statement without the numbers that whoever wrote it looks up: `... WHERE ExItemId = 5` and
/// `... WHERE ExItemId = 7` are both of the shape `... WHERE ExItemId = ?`.
struct Shape {
  std::string text;
  /// In the order of the text. Empty where the text is a shape of its own.
  std::vector<PastedNumber> numbers;
};

/// The shape of a statement: its whole numbers behind equals signs are taken out, for such are the
/// keys that statements look up. Whether markers in their places mean the same is for the front end
/// to say, which infers the markers' types. Raises what `tokenize` raises.
[[nodiscard]] Shape shapeOf(std::string_view text, Dialect dialect);

}  // namespace QuorHost::Sql
