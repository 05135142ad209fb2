// Calling an object that is known by its members' names alone.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <oleauto.h>

#include <array>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "com/objects/identity.h"
#include "com/values/com_ptr.h"
#include "platform/automation.h"
#include "platform/class_info.h"

namespace QuorCom {

/// The value of a member of any object, with one argument where `place` is not 0. Raises 438 for an
/// unknown name.
[[nodiscard]] QuorDataLib::Value getValue(IDispatch& object, const wchar_t* name,
                                          std::int32_t place = 0);

/// An object of a host's that serves a contract by the names in the contract's member table.
class LateBound {
 public:
  LateBound(ComPtr<IDispatch> object, const QuorDataLib::ClassInfo& contract)
      : object_(std::move(object)), contract_(contract) {}

  [[nodiscard]] IDispatch* object() const noexcept { return object_.get(); }

  /// Calls the method `name`. Arguments that the member writes are variables of the caller's.
  /// Raises what the object raises, 438 when it has no such member, and 13 for a result of a wrong
  /// type.
  template <class R, class... A>
  R call(std::string_view name, A&&... arguments) {
    return invoke<R>(name, QuorDataLib::Member::Kind::Method, std::forward<A>(arguments)...);
  }

  /// Reads the property `name`.
  template <class R>
  R get(std::string_view name) {
    return invoke<R>(name, QuorDataLib::Member::Kind::Get);
  }

  /// Assigns the property `name`.
  template <class T>
  void put(std::string_view name, const T& value) {
    invoke<void>(name, QuorDataLib::Member::Kind::Put, value);
  }

  /// Reads the property `name`, or the first member of the object's interface, however it is named.
  template <class R>
  R first(std::string_view name) {
    firstMember_ = true;
    return get<R>(name);
  }

  /// Calls a method that gives an object, as one of `wanted` where that is not null.
  template <class... A>
  QuorDataLib::Ref<QuorDataLib::Object> callFor(const QuorDataLib::ClassInfo* wanted,
                                                std::string_view name, const A&... arguments) {
    std::array<QuorDataLib::Value, sizeof...(A)> values{
        QuorDataLib::Automation<A>::to(arguments)...};
    QuorDataLib::TypeInfo type{QuorDataLib::ValueType::Object, "Object"};
    if (wanted != nullptr) type.className = wanted->name;
    return invoke(member(name, QuorDataLib::Member::Kind::Method), values, type).toObject();
  }

  /// Calls the object; `values` hold what it has written afterwards.
  QuorDataLib::Value invoke(const QuorDataLib::Member& called, std::span<QuorDataLib::Value> values,
                            const QuorDataLib::TypeInfo& result);

 private:
  template <class R, class... A>
  R invoke(std::string_view name, QuorDataLib::Member::Kind kind, A&&... arguments) {
    using QuorDataLib::Automation;
    const QuorDataLib::Member& called = member(name, kind);
    std::array<QuorDataLib::Value, sizeof...(A)> values{
        Automation<std::remove_cvref_t<A>>::to(arguments)...};
    const QuorDataLib::Value result =
        invoke(called, values, called.result.value_or(QuorDataLib::TypeInfo{}));
    [[maybe_unused]] std::size_t place = 0;
    [[maybe_unused]] const auto takeBack = [&]<class T>(T& argument) {
      if constexpr (!std::is_const_v<T>) {
        if (called.arguments[place].written) argument = Automation<T>::from(values[place]);
      }
      ++place;
    };
    (takeBack(arguments), ...);
    if constexpr (!std::is_void_v<R>) return Automation<R>::from(result);
  }

  /// The line of the contract's table.
  [[nodiscard]] const QuorDataLib::Member& member(std::string_view name,
                                                  QuorDataLib::Member::Kind kind) const;
  /// The object's own number of a member.
  [[nodiscard]] DISPID numberOf(const QuorDataLib::Member& called);

  ComPtr<IDispatch> object_;
  const QuorDataLib::ClassInfo& contract_;
  bool firstMember_ = false;
  std::vector<std::pair<const QuorDataLib::Member*, DISPID>> numbers_;
};

}  // namespace QuorCom
