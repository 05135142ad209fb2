// Turns a resolved statement into one storage engine's SQL.
#pragma once

#include <string>

namespace QuorHost::Sql {

namespace Tree {
struct Query;
struct Statement;
}  // namespace Tree

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

  /// Whether a column of `query`, or of a derived table in it, may end a statement with an error
  /// where the engine computes it although nothing reads it.
  [[nodiscard]] virtual bool mayRaise(const Tree::Query& query) const = 0;
};

}  // namespace QuorHost::Sql
