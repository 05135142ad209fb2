#include "cli/words/member_text.h"

#include <algorithm>

#include "cli/print/display_text.h"
#include "platform/collection.h"

namespace QuorCli {

using QuorAccQueries::Argument;
using QuorAccQueries::Member;
using QuorAccQueries::TypeInfo;
using QuorDataLib::ValueType;

std::string_view typeInSignature(const TypeInfo& type) noexcept {
  if (type.type == ValueType::Object) return type.className;
  return type.type == ValueType::Empty ? "any" : QuorDataLib::typeName(type.type);
}

std::string_view typeInWords(const TypeInfo& type) noexcept {
  switch (type.type) {
    case ValueType::Boolean:
      return "true or false";
    case ValueType::Integer:
      return "a whole number from -32768 to 32767";
    case ValueType::Long:
      return "a whole number from -2147483648 to 2147483647";
    case ValueType::Double:
      return "a number with a decimal point";
    case ValueType::Currency:
      return "an amount with a decimal point and at most four decimals";
    case ValueType::Date:
      return "a date as YYYY-MM-DD or YYYY-MM-DDTHH:MM:SS";
    case ValueType::Text:
    case ValueType::Empty:
      return "a text in UTF-8";
    case ValueType::Object:
      if (type.className == QuorDataLib::Collection::kClassName) {
        return "texts in UTF-8 or whole numbers, separated by commas";
      }
      break;
    case ValueType::Null:
      break;
  }
  return "no value";
}

std::string signature(const Member& member) {
  std::string text(member.name);
  if (member.kind == Member::Kind::Put) {
    return text + " = " + std::string(typeInSignature(member.arguments.front().type));
  }
  if (member.kind == Member::Kind::Method) {
    text += '(';
    std::string_view separator;
    for (const Argument& argument : member.arguments) {
      text += separator;
      text += argument.name;
      text += argument.written ? " &" : argument.byReference ? " const &" : " ";
      text += typeInSignature(argument.type);
      separator = ", ";
    }
    text += ')';
  }
  if (member.result) {
    text += " -> ";
    text += typeInSignature(*member.result);
  }
  return text;
}

std::string argumentList(const Member& member) {
  if (member.arguments.empty()) return std::string(member.name) + " takes no arguments.";
  std::size_t width = 0;
  for (const Argument& argument : member.arguments) width = std::max(width, argument.name.size());
  std::string text = "Arguments of " + std::string(member.name) + ":";
  for (const Argument& argument : member.arguments) {
    text += "\n  ";
    appendPadded(text, argument.name, width, false);
    text += "  ";
    text += typeInSignature(argument.type);
    if (argument.byReference) text += ", by reference";
    if (argument.byReference && !argument.written) text += " and never written";
  }
  return text;
}

}  // namespace QuorCli
