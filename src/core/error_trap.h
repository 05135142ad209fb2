// The error trap of public methods, and the trap that raises again.
#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/data_library.h"
#include "platform/error.h"

namespace QuorAccQueries {

/// The component's name in every error report.
inline constexpr std::string_view kComponentName = "QuorAccQueries";

/// Runs the steps of one call of one method under the method's trap.
///
/// A step is one statement of the method: a callable without arguments that makes one call of the
/// platform and takes over what it gives. When it throws, the application's error service is told
/// the error, the class, the method and the step's source line, and answers what follows: the step
/// is done again, the method goes on after it (a step that returns a value then yields its type's
/// empty value), or the method is left. What the service itself throws passes through to the
/// caller.
///
/// A statement that needs several calls (to get at an object, for instance) makes each of them in a
/// step within its step: such a part is done again alone, while going on leaves the whole
/// statement, and its line is the statement's.
class Steps {
 public:
  Steps(std::string_view className, std::string_view methodName)
      : className_(className), methodName_(methodName) {}

  /// Steps of code that runs under no trap: what they throw passes.
  [[nodiscard]] static Steps& untrapped();

  template <std::invocable Step>
  std::invoke_result_t<Step> operator()(
      Step&& step, std::source_location where = std::source_location::current()) {
    Attempts attempts(*this, where.line());
    while (true) {
      try {
        return step();
      } catch (...) {
        if (!attempts.another()) return std::invoke_result_t<Step>();
      }
    }
  }

  /// A statement along a row of objects: `first` gives the first one, each link is asked of the
  /// object before it (a member or a callable on the object), and the last one gives the value.
  template <class First, class... Links>
  auto along(std::source_location where, First&& first, Links&&... links) {
    return (*this)([&] { return follow((*this)(first), links...); }, where);
  }

 private:
  template <class Body>
  friend auto trap(std::string_view className, std::string_view methodName, Body&& body);

  /// Leaves the method; thrown by a step, caught by the method's own trap and by nothing between.
  struct Leave {};
  /// Leaves the statement that a part belongs to.
  struct Skip {};

  /// The attempts at one step.
  class Attempts {
   public:
    Attempts(Steps& steps, std::uint_least32_t line) : steps_(steps) {
      if (++steps_.depth_ == 1) steps_.line_ = line;
    }
    ~Attempts() {
      --steps_.depth_;
      if (retrying_) tellEnd();
    }
    Attempts(const Attempts&) = delete;
    Attempts& operator=(const Attempts&) = delete;

    /// Deals with what the step threw; called while it is being handled. True to do the step again,
    /// false to go on after it; everything else is thrown.
    bool another();

   private:
    void tellEnd() noexcept;

    Steps& steps_;
    /// The service that answered with a retry.
    QuorDataLib::Ref<QuorDataLib::ErrorService> retrying_;
  };

  template <class T, class Link, class... Links>
  auto follow(const QuorDataLib::Ref<T>& object, Link&& link, Links&&... links) {
    if constexpr (sizeof...(links) == 0) {
      return (*this)([&] { return std::invoke(link, *object); });
    } else {
      return follow((*this)([&] { return std::invoke(link, *object); }), links...);
    }
  }

  /// Reports the error being handled and returns the service's answer.
  std::int32_t report(QuorDataLib::Ref<QuorDataLib::ErrorService>& service);

  /// Reports an error that was met between steps, which nothing can do again: the method is left,
  /// whatever the service answers.
  void reportBetweenSteps();

  std::string_view className_;
  std::string_view methodName_;
  std::uint_least32_t line_ = 0;  // of the statement last reached
  int depth_ = 0;                 // 1 in a statement, more in its parts
  bool passing_ = false;          // what is thrown comes from the service and passes
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
  const auto run = [&](auto&... result) {
    try {
      body(step, result...);
    } catch (const Steps::Leave&) {  // NOLINT(bugprone-empty-catch): the result stands as it is
    } catch (...) {
      step.reportBetweenSteps();
    }
  };
  if constexpr (std::is_void_v<Result>) {
    run();
  } else {
    Result result{};
    run(result);
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
  } catch (...) {
    throw withPlace(className, memberName, where.line());
  }
}

}  // namespace QuorAccQueries
