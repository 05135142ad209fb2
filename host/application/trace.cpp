#include "host/application/trace.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace QuorHost {

using nlohmann::ordered_json;
using QuorDataLib::Date;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

ordered_json plainJson(const Value& value) {
  switch (value.type()) {
    case ValueType::Boolean:
      return value.toBoolean();
    case ValueType::Integer:
    case ValueType::Long:
      return value.toLong();
    case ValueType::Double:
      return value.toDouble();
    case ValueType::Currency:
      return value.toCurrency().toText();
    case ValueType::Date: {
      const Date date = value.toDate();
      return date.empty() ? std::string() : date.toText('T');
    }
    case ValueType::Text:
      return value.text();
    default:
      return nullptr;
  }
}

ordered_json typedJson(const Value& value) {
  const ValueType type = value.isEmpty() ? ValueType::Null : value.type();
  return {{"type", QuorDataLib::typeName(type)}, {"value", plainJson(value)}};
}

void Trace::write(const ordered_json& event) {
  // A text may hold anything; what is no UTF-8 is shown as such, so that the line is always JSON.
  out_ << event.dump(-1, ' ', false, ordered_json::error_handler_t::replace) << '\n';
}

}  // namespace QuorHost
