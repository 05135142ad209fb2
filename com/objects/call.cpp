#include "com/objects/call.h"

#include <span>
#include <vector>

#include "com/values/com_error.h"
#include "com/values/variant.h"

namespace QuorCom {

using QuorDataLib::Argument;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Member;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

namespace {

/// The client's variants in the order of the member's arguments; null for those left out.
class Passed {
 public:
  Passed(const Member& member, const DISPPARAMS& arguments)
      : first_(arguments.rgvarg), variants_(member.arguments.size()) {
    const std::size_t wanted = variants_.size();
    const std::span<VARIANT> given(arguments.rgvarg, arguments.cArgs);
    const std::span<DISPID> names(arguments.rgdispidNamedArgs, arguments.cNamedArgs);
    const bool assigns = names.size() == 1 && names[0] == DISPID_PROPERTYPUT;
    const std::size_t named = assigns ? 0 : names.size();
    if (given.size() > wanted || named > given.size() || (named == 0 && given.size() < wanted)) {
      throw Refusal(DISP_E_BADPARAMCOUNT);
    }
    // Named ones stand first, the others behind them from the last to the first.
    const std::size_t inOrder = given.size() - named;
    for (std::size_t i = 0; i < inOrder; ++i) variants_[i] = &given[given.size() - 1 - i];
    for (std::size_t i = 0; i < named; ++i) take(names[i], given[i]);
  }

  [[nodiscard]] const VARIANT* operator[](std::size_t i) const noexcept { return variants_[i]; }

  /// The place of an argument in the client's list.
  [[nodiscard]] UINT placeOf(std::size_t i) const noexcept {
    return static_cast<UINT>(variants_[i] - first_);
  }

 private:
  void take(DISPID name, const VARIANT& variant) {
    const auto place = static_cast<std::size_t>(name);
    if (name < 0 || place >= variants_.size()) throw Refusal(DISP_E_PARAMNOTFOUND);
    if (variants_[place] != nullptr) throw Refusal(DISP_E_BADPARAMCOUNT);  // given twice
    variants_[place] = &variant;
  }

  const VARIANT* first_;
  std::vector<const VARIANT*> variants_;
};

/// The value of an argument, of its type already, so that what fails from here on is the member.
Value readArgument(const VARIANT& variant, const Argument& argument) {
  Value value = readVariant(variant, argument.type);
  const ValueType wanted = argument.type.type;
  if (wanted == ValueType::Empty || wanted == value.type()) return value;
  if (wanted == ValueType::Object) return value.toObject();
  return value.convertedTo(wanted);
}

Value readChecked(const Passed& passed, std::size_t i, const Argument& argument,
                  UINT* wrongArgument) {
  if (passed[i] == nullptr || isOmitted(*passed[i])) return {};
  try {
    return readArgument(*passed[i], argument);
  } catch (const Error& error) {
    if (!error.is(ErrorNumber::TypeMismatch) && !error.is(ErrorNumber::Overflow)) throw;
    if (wrongArgument != nullptr) *wrongArgument = passed.placeOf(i);
    throw Refusal(error.is(ErrorNumber::Overflow) ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH);
  }
}

}  // namespace

void callMember(QuorDataLib::Object& object, const Member& member, const ClientCall& call) {
  const Passed passed(member, call.arguments);
  std::vector<Value> values(member.arguments.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = readChecked(passed, i, member.arguments[i], call.wrongArgument);
  }
  const Value result = member.invoke(object, values);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Argument& argument = member.arguments[i];
    if (argument.written && passed[i] != nullptr) writeBack(*passed[i], values[i], argument.type);
  }
  if (call.result != nullptr && member.result) {
    writeVariant(*call.result, result, *member.result);
  }
}

}  // namespace QuorCom
