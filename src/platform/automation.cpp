#include "platform/automation.h"

namespace QuorDataLib {

ValueType Automation<ValueType>::from(const Value& value) {
  const std::int16_t number = value.toInteger();
  if (number < 0 || number > static_cast<std::int16_t>(ValueType::Object)) {
    raise(ErrorNumber::TypeMismatch, std::to_string(number) + " is the number of no type");
  }
  return static_cast<ValueType>(number);
}

std::vector<Value> Automation<std::vector<Value>>::from(const Value& value) {
  const Ref<Collection> collection = Automation<Ref<Collection>>::from(value);
  return collection ? collection->values() : std::vector<Value>();
}

Parameters Automation<Parameters>::from(const Value& value) {
  if (value.isEmpty()) return {};
  if (value.type() != ValueType::Object) return Parameters::single(value);
  return Parameters::array(Automation<std::vector<Value>>::from(value));
}

Value Automation<Parameters>::to(const Parameters& parameters) {
  switch (parameters.form()) {
    case Parameters::Form::None:
      return {};
    case Parameters::Form::Single:
      return parameters.values().front();
    case Parameters::Form::Array:
      break;
  }
  return make<Collection>(parameters.values());
}

}  // namespace QuorDataLib
