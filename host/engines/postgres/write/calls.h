// Calls, aggregates and conversions in PostgreSQL's SQL, and what they share with arithmetic.
#pragma once

#include <string_view>

#include "host/engines/write/expression_writer.h"
#include "host/sql/tree.h"

namespace QuorHost::Postgres {

/// What makes a text one that is compared as texts are.
inline constexpr std::string_view kOrder = "::bpchar COLLATE \"quor\"";

[[nodiscard]] constexpr bool isWhole(Sql::Type type) noexcept {
  return type == Sql::Type::Integer || type == Sql::Type::Long;
}

/// A number as an operand of arithmetic: a whole one as a bigint, so that computing with it cannot
/// leave 32 bits.
void writeOperand(Write::ExpressionWriter& writer, const Sql::Tree::Expression& value,
                  Write::Level level);

/// `value`, cast to a type of the server's.
void writeAs(Write::ExpressionWriter& writer, const Sql::Tree::Expression& value,
             std::string_view type);

void writeCall(Write::ExpressionWriter& writer, const Sql::Tree::Expression& call);
void writeAggregate(Write::ExpressionWriter& writer, const Sql::Tree::Expression& aggregate);
void writeConversion(Write::ExpressionWriter& writer, const Sql::Tree::Expression& conversion);

}  // namespace QuorHost::Postgres
