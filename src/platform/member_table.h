// The lines of member tables, read off the members' own signatures.
#pragma once

#include <concepts>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/automation.h"
#include "platform/class_info.h"

namespace QuorDataLib {

/// The name of an argument in a line.
struct ArgumentName {
  ArgumentName(const char* text) : name(text) {}       // NOLINT(google-explicit-constructor)
  ArgumentName(std::string_view text) : name(text) {}  // NOLINT(google-explicit-constructor)

  std::string_view name;
  /// Callers pass it by reference although the member never writes to it.
  bool unwritten = false;
};

/// An argument that is passed by reference and never written; the member takes it by value or as a
/// reference to const.
[[nodiscard]] inline ArgumentName unwritten(std::string_view name) {
  ArgumentName argument(name);
  argument.unwritten = true;
  return argument;
}

namespace detail {

/// The class, the result and the arguments of a member: of a member function, or of a free one that
/// takes the object first (for a member that has another form in C++).
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
template <class C, class R, class... A>
struct Signature<R (*)(C&, A...)> : Signature<R (C::*)(A...)> {};

template <class A>
inline constexpr bool kWritten =
    std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;

/// The arguments of a member as C++ values, each by its plain type.
template <class Arguments>
struct Held;
template <class... A>
struct Held<std::tuple<A...>> {
  using Tuple = std::tuple<std::remove_cvref_t<A>...>;
};

[[noreturn]] void refuseCount(std::size_t wanted, std::size_t given);
[[noreturn]] void refuseObject(const Object& object);
[[noreturn]] void refuseNames(std::string_view member);

template <auto kMember, std::size_t... kIndex>
Value invokeMember(Object& object, std::span<Value> values, std::index_sequence<kIndex...>) {
  using Sig = Signature<decltype(kMember)>;
  using Arguments = typename Sig::Arguments;
  using Tuple = typename Held<Arguments>::Tuple;
  auto* const self = dynamic_cast<typename Sig::Class*>(&object);
  if (self == nullptr) refuseObject(object);
  if (values.size() != sizeof...(kIndex)) refuseCount(sizeof...(kIndex), values.size());
  // NOLINTNEXTLINE(misc-const-correctness): members may write to their arguments
  Tuple arguments{Automation<std::tuple_element_t<kIndex, Tuple>>::from(values[kIndex])...};
  [[maybe_unused]] const auto writeBack = [&]<std::size_t kAt>() {
    if constexpr (kWritten<std::tuple_element_t<kAt, Arguments>>) {
      values[kAt] = Automation<std::tuple_element_t<kAt, Tuple>>::to(std::get<kAt>(arguments));
    }
  };
  Value result;
  if constexpr (std::is_void_v<typename Sig::Result>) {
    std::invoke(kMember, *self, std::get<kIndex>(arguments)...);
  } else {
    result = Automation<std::remove_cvref_t<typename Sig::Result>>::to(
        std::invoke(kMember, *self, std::get<kIndex>(arguments)...));
  }
  (writeBack.template operator()<kIndex>(), ...);
  return result;
}

template <auto kMember>
Member describe(Member::Kind kind, std::string_view name,
                std::initializer_list<ArgumentName> argumentNames, std::string_view summary) {
  using Sig = Signature<decltype(kMember)>;
  using Arguments = typename Sig::Arguments;
  constexpr std::size_t kCount = std::tuple_size_v<Arguments>;
  if (argumentNames.size() != kCount) refuseNames(name);
  Member member{name, kind, {}, {}, summary, {}};
  [&]<std::size_t... kIndex>(std::index_sequence<kIndex...> indices) {
    (member.arguments.push_back(
         {std::data(argumentNames)[kIndex].name,
          Automation<std::remove_cvref_t<std::tuple_element_t<kIndex, Arguments>>>::type(),
          kWritten<std::tuple_element_t<kIndex, Arguments>> ||
              std::data(argumentNames)[kIndex].unwritten,
          kWritten<std::tuple_element_t<kIndex, Arguments>>}),
     ...);
    member.invoke = [indices](Object& object, std::span<Value> values) {
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
Member method(std::string_view name, std::initializer_list<ArgumentName> argumentNames,
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

/// A line whose dispatch number is fixed.
[[nodiscard]] inline Member withNumber(std::int32_t number, Member member) {
  member.number = number;
  return member;
}

/// The member table of contract `T`, its members numbered from 1.
template <class T>
ClassInfo describeContract(std::string_view summary, std::vector<Member> members) {
  return {T::kClassName, summary, numbered(std::move(members), 1)};
}

}  // namespace QuorDataLib
