#include "host/sql/types.h"

#include <array>

#include "platform/data_library.h"
#include "platform/error.h"

namespace QuorHost::Sql {

using QuorDataLib::ValueType;

ValueType valueType(Type type) noexcept {
  static constexpr std::array kValueTypes{ValueType::Empty, ValueType::Boolean, ValueType::Integer,
                                          ValueType::Long,  ValueType::Double,  ValueType::Currency,
                                          ValueType::Date,  ValueType::Text};
  return kValueTypes.at(static_cast<std::size_t>(type));
}

std::string_view typeName(Type type) noexcept {
  return type == Type::Unknown ? "unknown" : QuorDataLib::typeName(valueType(type));
}

void refuse(const std::string& what, Position where, std::string_view word) {
  // A long text or comment is named by its beginning, cut between characters.
  constexpr std::size_t kLongestWord = 40;
  std::string shown(word.substr(0, kLongestWord));
  if (word.size() > kLongestWord) {
    while (!shown.empty() && (static_cast<unsigned char>(word[shown.size()]) & 0xC0U) == 0x80U) {
      shown.pop_back();
    }
    shown += "...";
  }
  throw QuorDataLib::Error(QuorDataLib::kStatementRefused, "QuorDataLib",
                           what + " (line " + std::to_string(where.line) + ", column " +
                               std::to_string(where.column) +
                               (shown.empty() ? ", at the end" : ", near '" + shown + "'") + ")");
}

}  // namespace QuorHost::Sql
