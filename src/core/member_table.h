// Member tables: what every public class says about its members, once, for everything that works
// off names (command line, COM dispatch, reference documentation, the failure sweep of the tests).
#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/data_library.h"
#include "platform/value.h"

namespace QuorAccQueries {

struct ClassInfo;

/// Base of all public classes of the component.
class ComponentObject : public QuorDataLib::Object {
 public:
  /// The member table of the object's class.
  [[nodiscard]] virtual const ClassInfo& classInfo() const = 0;
};

/// The type of an argument or a result. `Empty` in a result means that nothing is returned, in an
/// argument that any type may be passed.
struct TypeInfo {
  QuorDataLib::ValueType type = QuorDataLib::ValueType::Empty;
  /// The class of an object ("Recordset", "CCustomerQueries"); empty for everything else.
  std::string_view className;
};

struct Argument {
  std::string_view name;
  TypeInfo type;
  /// The member writes to it: its value after the call is an output.
  bool byReference = false;
};

struct Member {
  enum class Kind : std::uint8_t { Method, Get, Put };

  std::string_view name;
  Kind kind = Kind::Method;
  std::vector<Argument> arguments;
  TypeInfo result;
  std::string_view summary;

  /// Calls the member of `object`, which must be of the table's class, with as many values as there
  /// are arguments. Values are converted to the arguments' types by the automation rules; after the
  /// call those passed by reference hold what the member wrote.
  std::function<QuorDataLib::Value(ComponentObject& object, std::span<QuorDataLib::Value> values)>
      invoke;
};

struct ClassInfo {
  std::string_view name;
  std::string_view summary;
  /// In interface order: a member's position is its dispatch number, so new members go to the end.
  std::vector<Member> members;
  std::function<QuorDataLib::Ref<ComponentObject>()> create;

  /// The member of that name (matched without regard to case) and kind, or null. A property that is
  /// read and assigned has two entries.
  [[nodiscard]] const Member* find(std::string_view memberName, Member::Kind kind) const noexcept;
};

/// The member tables of all public classes, the root first.
[[nodiscard]] std::span<const ClassInfo* const> allClasses();

/// The class of that name, matched without regard to case, or null.
[[nodiscard]] const ClassInfo* findClass(std::string_view name) noexcept;

namespace detail {

/// How a C++ type travels in a `Value`.
template <class T>
struct Automation;

template <class T, QuorDataLib::ValueType kType, T (QuorDataLib::Value::*kConvert)() const>
struct SimpleAutomation {
  static constexpr TypeInfo type() { return {kType, {}}; }
  static T from(const QuorDataLib::Value& value) { return (value.*kConvert)(); }
};

template <>
struct Automation<bool>
    : SimpleAutomation<bool, QuorDataLib::ValueType::Boolean, &QuorDataLib::Value::toBoolean> {};
template <>
struct Automation<std::int16_t> : SimpleAutomation<std::int16_t, QuorDataLib::ValueType::Integer,
                                                   &QuorDataLib::Value::toInteger> {};
template <>
struct Automation<std::int32_t>
    : SimpleAutomation<std::int32_t, QuorDataLib::ValueType::Long, &QuorDataLib::Value::toLong> {};
template <>
struct Automation<double>
    : SimpleAutomation<double, QuorDataLib::ValueType::Double, &QuorDataLib::Value::toDouble> {};
template <>
struct Automation<QuorDataLib::Currency>
    : SimpleAutomation<QuorDataLib::Currency, QuorDataLib::ValueType::Currency,
                       &QuorDataLib::Value::toCurrency> {};
template <>
struct Automation<QuorDataLib::Date>
    : SimpleAutomation<QuorDataLib::Date, QuorDataLib::ValueType::Date,
                       &QuorDataLib::Value::toDate> {};
template <>
struct Automation<std::string>
    : SimpleAutomation<std::string, QuorDataLib::ValueType::Text, &QuorDataLib::Value::toText> {};

template <>
struct Automation<QuorDataLib::Value> {
  static constexpr TypeInfo type() { return {}; }
  static QuorDataLib::Value from(const QuorDataLib::Value& value) { return value; }
};

template <class T>
struct Automation<QuorDataLib::Ref<T>> {
  static constexpr TypeInfo type() { return {QuorDataLib::ValueType::Object, className()}; }
  static constexpr std::string_view className() {
    if constexpr (std::same_as<T, QuorDataLib::Recordset>) {
      return "Recordset";
    } else if constexpr (std::same_as<T, QuorDataLib::Connection>) {
      return "Connection";
    } else {
      return T::kClassName;
    }
  }
  static QuorDataLib::Ref<T> from(const QuorDataLib::Value& value) {
    const QuorDataLib::Ref<QuorDataLib::Object> object = value.toObject();
    QuorDataLib::Ref<T> typed = object.template as<T>();
    if (object && !typed) {
      QuorDataLib::raise(QuorDataLib::ErrorNumber::TypeMismatch,
                         "The object passed is no " + std::string(className()));
    }
    return typed;
  }
};

template <class F>
struct Signature;

template <class C, class R, class... A>
struct Signature<R (C::*)(A...)> {
  using Class = C;
  using Result = R;
  using Arguments = std::tuple<A...>;
};
template <class C, class R, class... A>
struct Signature<R (C::*)(A...) const> : Signature<R (C::*)(A...)> {};

template <class A>
inline constexpr bool kByReference =
    std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;

/// The arguments of a member as C++ values, each by its plain type.
template <class Arguments>
struct Held;
template <class... A>
struct Held<std::tuple<A...>> {
  using Tuple = std::tuple<std::remove_cvref_t<A>...>;
};

template <auto kMember, std::size_t... kIndex>
QuorDataLib::Value invokeMember(ComponentObject& object, std::span<QuorDataLib::Value> values,
                                std::index_sequence<kIndex...>) {
  using Sig = Signature<decltype(kMember)>;
  using Arguments = typename Sig::Arguments;
  using Tuple = typename Held<Arguments>::Tuple;
  auto& self = dynamic_cast<typename Sig::Class&>(object);
  // NOLINTNEXTLINE(misc-const-correctness): members may write to their arguments
  Tuple arguments{Automation<std::tuple_element_t<kIndex, Tuple>>::from(values[kIndex])...};
  [[maybe_unused]] const auto writeBack = [&]<std::size_t kAt>() {
    if constexpr (kByReference<std::tuple_element_t<kAt, Arguments>>) {
      values[kAt] = QuorDataLib::Value(std::get<kAt>(arguments));
    }
  };
  QuorDataLib::Value result;
  if constexpr (std::is_void_v<typename Sig::Result>) {
    (self.*kMember)(std::get<kIndex>(arguments)...);
  } else {
    result = QuorDataLib::Value((self.*kMember)(std::get<kIndex>(arguments)...));
  }
  (writeBack.template operator()<kIndex>(), ...);
  return result;
}

template <auto kMember>
Member describe(Member::Kind kind, std::string_view name,
                std::initializer_list<std::string_view> argumentNames, std::string_view summary) {
  using Sig = Signature<decltype(kMember)>;
  using Arguments = typename Sig::Arguments;
  constexpr std::size_t kCount = std::tuple_size_v<Arguments>;
  if (argumentNames.size() != kCount) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InternalError,
                       "The member table names other arguments than " + std::string(name) + " has");
  }
  Member member{name, kind, {}, {}, summary, {}};
  [&]<std::size_t... kIndex>(std::index_sequence<kIndex...> indices) {
    (member.arguments.push_back(
         {std::data(argumentNames)[kIndex],
          Automation<std::remove_cvref_t<std::tuple_element_t<kIndex, Arguments>>>::type(),
          kByReference<std::tuple_element_t<kIndex, Arguments>>}),
     ...);
    member.invoke = [indices](ComponentObject& object, std::span<QuorDataLib::Value> values) {
      return invokeMember<kMember>(object, values, indices);
    };
  }(std::make_index_sequence<kCount>{});
  if constexpr (!std::is_void_v<typename Sig::Result>) {
    member.result = Automation<std::remove_cvref_t<typename Sig::Result>>::type();
  }
  return member;
}

}  // namespace detail

/// A line of a member table: a method with the names of its arguments in order.
template <auto kMember>
Member method(std::string_view name, std::initializer_list<std::string_view> argumentNames,
              std::string_view summary) {
  return detail::describe<kMember>(Member::Kind::Method, name, argumentNames, summary);
}

/// A line of a member table: reading a property.
template <auto kMember>
Member propertyGet(std::string_view name, std::string_view summary) {
  return detail::describe<kMember>(Member::Kind::Get, name, {}, summary);
}

/// A line of a member table: assigning a property.
template <auto kMember>
Member propertyPut(std::string_view name, std::string_view summary) {
  return detail::describe<kMember>(Member::Kind::Put, name, {"Value"}, summary);
}

}  // namespace QuorAccQueries
