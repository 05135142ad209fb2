#include "host/engines/write/expression_form.h"

namespace QuorHost::Write {

using Sql::Operator;

std::string_view symbol(Operator op) noexcept {
  switch (op) {
    case Operator::Multiply:
      return " * ";
    case Operator::Add:
      return " + ";
    case Operator::Subtract:
      return " - ";
    case Operator::Concatenate:
      return " || ";
    case Operator::Equal:
      return " = ";
    case Operator::NotEqual:
      return " <> ";
    case Operator::Less:
      return " < ";
    case Operator::LessEqual:
      return " <= ";
    case Operator::Greater:
      return " > ";
    default:
      return " >= ";
  }
}

}  // namespace QuorHost::Write
