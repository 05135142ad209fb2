// Turns a resolved statement into one storage engine's SQL.
#pragma once

#include <string>

namespace QuorHost::Sql {

namespace Tree {
struct Statement;
}

/// One storage engine's SQL. A second engine is a second class derived from this one.
class Writer {
 public:
  Writer() = default;
  virtual ~Writer() = default;
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  /// The engine's SQL for `statement`. Raises a refused statement for what the engine cannot hold,
  /// such as a statement nested deeper than its parser goes.
  [[nodiscard]] virtual std::string write(const Tree::Statement& statement) const = 0;
};

}  // namespace QuorHost::Sql
