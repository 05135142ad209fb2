// What differs between the texts that storage engines read.
#pragma once

#include <string_view>

#include "host/engines/write/expression_form.h"
#include "host/engines/write/sql_text.h"
#include "host/sql/tree.h"

namespace QuorHost::Write {

class ExpressionWriter;

/// What an engine calls things that all have.
struct Words {
  std::string_view yes;
  std::string_view no;
  /// Ends an inner select into which the engine shall move no condition.
  std::string_view wall;
  /// Comes behind a derived table whose name nobody uses.
  std::string_view unnamed;
  /// Stands for a constant among keys of groups and orders; empty where it can stand for itself.
  std::string_view constantKey;
  /// A sub-select that stands for a value must be told to give one row.
  bool valuesNeedLimit = false;
  /// The engine's own place of NULL in an order is another than first of all.
  bool ordersNullsItsWay = false;
  /// Of groups it reads no column but their keys.
  bool readsKeysOnly = false;
};

/// One engine's hooks in the walk over queries and expressions. It holds nothing and may be shared.
class EngineForm {
 public:
  EngineForm() = default;
  virtual ~EngineForm() = default;
  EngineForm(const EngineForm&) = delete;
  EngineForm& operator=(const EngineForm&) = delete;

  [[nodiscard]] virtual const TextRules& textRules() const noexcept = 0;
  [[nodiscard]] virtual const Words& words() const noexcept = 0;

  /// The word between the two sides of a join.
  [[nodiscard]] virtual std::string_view joinWord(const Sql::Tree::From& join) const noexcept = 0;

  /// How tightly a literal, an arithmetic operation or a conversion binds as it is written here.
  [[nodiscard]] virtual Level levelOf(const Sql::Tree::Expression& expression) const noexcept = 0;

  virtual void writeColumn(ExpressionWriter& writer, const Sql::Tree::Expression& column) const = 0;
  virtual void writeLiteral(ExpressionWriter& writer,
                            const Sql::Tree::Expression& literal) const = 0;
  virtual void writeMarker(ExpressionWriter& writer, const Sql::Tree::Expression& marker) const = 0;
  virtual void writeNegate(ExpressionWriter& writer, const Sql::Tree::Expression& sign) const = 0;
  virtual void writeArithmetic(ExpressionWriter& writer,
                               const Sql::Tree::Expression& operation) const = 0;
  virtual void writeLike(ExpressionWriter& writer, const Sql::Tree::Expression& like) const = 0;
  virtual void writeCall(ExpressionWriter& writer, const Sql::Tree::Expression& call) const = 0;
  virtual void writeAggregate(ExpressionWriter& writer,
                              const Sql::Tree::Expression& aggregate) const = 0;
  virtual void writeConvert(ExpressionWriter& writer,
                            const Sql::Tree::Expression& conversion) const = 0;

  /// Whether the order of texts has to be said of `value`, and how.
  [[nodiscard]] virtual bool needsCollation(const Sql::Tree::Expression& value) const noexcept = 0;
  [[nodiscard]] virtual std::string_view collation() const noexcept = 0;
};

}  // namespace QuorHost::Write
