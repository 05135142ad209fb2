#include "host/engines/rows/passed_value.h"

#include <cmath>
#include <string>

#include "host/engines/rows/refusal.h"
#include "host/sql/utf8.h"
#include "platform/error.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Rows {

using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;
using QuorDataLib::ValueType;
using Sql::Type;

Type typeAsPassed(ValueType type) noexcept {
  switch (type) {
    case ValueType::Boolean:
      return Type::Boolean;
    case ValueType::Integer:
      return Type::Integer;
    case ValueType::Long:
      return Type::Long;
    case ValueType::Double:
      return Type::Double;
    case ValueType::Currency:
      return Type::Currency;
    case ValueType::Date:
      return Type::Date;
    default:
      return Type::Text;
  }
}

void requireStorable(std::string_view text) {
  const std::size_t wrong = Sql::findIllFormed(text);
  if (wrong == std::string_view::npos) return;
  raise(ErrorNumber::InvalidArgument,
        "The text \"" + QuorDataLib::shownText(text.substr(0, wrong)) +
            (text[wrong] == '\0' ? "\" goes on with a zero character, which no text can hold"
                                 : "\" goes on with a byte that is no character of UTF-8"));
}

void requireFinite(double number) {
  if (!std::isfinite(number)) raise(ErrorNumber::Overflow, "Overflow: the number is not finite");
}

void requireOneEach(std::size_t markers, std::size_t values) {
  if (values == markers) return;
  refuseStatement("The statement has " + std::to_string(markers) + " markers (?), but " +
                  std::to_string(values) + " values were given");
}

}  // namespace QuorHost::Rows
