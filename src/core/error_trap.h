// The error trap of public methods, and the trap that raises again.
#pragma once

#include <concepts>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/error.h"

namespace QuorAccQueries {

/// The component's name in every error report.
inline constexpr std::string_view kComponentName = "QuorAccQueries";

/// Runs the steps of one call of one method under the method's trap.
///
/// A step is a callable without arguments. When it throws, the application's error service is told
/// the error, the class, the method and the step's source line, and answers what follows: the step
/// is done again, the method goes on after it (a step that returns a value then yields its type's
/// empty value), or the method is left. What the service itself throws passes through to the
/// caller.
///
/// A step may be done again, so it must not leave half of its work behind when it fails: fetch
/// first, change afterwards.
class Steps {
 public:
  Steps(std::string_view className, std::string_view methodName)
      : className_(className), methodName_(methodName) {}

  template <std::invocable Step>
  std::invoke_result_t<Step> operator()(
      Step&& step, std::source_location where = std::source_location::current()) {
    while (true) {
      std::optional<QuorDataLib::Error> error;
      try {
        return step();
      } catch (...) {
        error = QuorDataLib::currentError();
      }
      if (!retries(*error, where.line())) return std::invoke_result_t<Step>();
    }
  }

 private:
  template <class Body>
  friend auto trap(std::string_view className, std::string_view methodName, Body&& body);

  /// Leaves the method; thrown by a step, caught by the method's own trap and by nothing between.
  struct Leave {};

  /// Reports the error. True to do the step again, false to go on after it; throws `Leave`.
  bool retries(const QuorDataLib::Error& error, std::uint_least32_t line) const;

  std::string_view className_;
  std::string_view methodName_;
};

namespace detail {

template <class F>
struct TrapBody;
template <class C>
struct TrapBody<void (C::*)(Steps&) const> {
  using Result = void;
};
template <class C, class R>
struct TrapBody<void (C::*)(Steps&, R&) const> {
  using Result = R;
};

}  // namespace detail

/// Runs the body of a public method under its trap. The body takes the steps and, when the method
/// returns something, a reference to the result, which starts out empty and is returned as it
/// stands when the method is left early.
template <class Body>
auto trap(std::string_view className, std::string_view methodName, Body&& body) {
  using Result =
      typename detail::TrapBody<decltype(&std::remove_cvref_t<Body>::operator())>::Result;
  Steps step(className, methodName);
  if constexpr (std::is_void_v<Result>) {
    try {
      body(step);
    } catch (const Steps::Leave&) {  // NOLINT(bugprone-empty-catch): the method ends here
    }
  } else {
    Result result{};
    try {
      body(step, result);
    } catch (const Steps::Leave&) {  // NOLINT(bugprone-empty-catch): the result stands as it is
    }
    return result;
  }
}

/// The error being handled, its description extended by the place that let it pass: "
/// (QuorAccQueries. <class>.<member> component failure at line:<line>)". Same number, no source.
[[nodiscard]] QuorDataLib::Error withPlace(std::string_view className, std::string_view memberName,
                                           std::uint_least32_t line);

/// Runs `action` under the trap that raises errors again to the caller, with the place added.
template <std::invocable Action>
std::invoke_result_t<Action> raisingAgain(
    std::string_view className, std::string_view memberName, Action&& action,
    std::source_location where = std::source_location::current()) {
  try {
    return action();
  } catch (const std::exception&) {
    throw withPlace(className, memberName, where.line());
  }
}

}  // namespace QuorAccQueries
