#include "core/error_trap.h"

#include "platform/current_application.h"

namespace QuorAccQueries {

using QuorDataLib::Error;
using QuorDataLib::ErrorService;
using QuorDataLib::Ref;

Steps& Steps::untrapped() {
  thread_local Steps steps({}, {});
  return steps;
}

void Steps::Attempts::tellEnd() noexcept {
  try {
    retrying_->RetryEnded(std::string(steps_.className_), std::string(steps_.methodName_),
                          static_cast<std::int32_t>(steps_.line_));
  } catch (...) {  // NOLINT(bugprone-empty-catch): the step has ended, whatever the service says
  }
}

bool Steps::Attempts::another() {
  const bool isPart = steps_.depth_ > 1;
  try {
    throw;
  } catch (const Leave&) {
    throw;
  } catch (const Skip&) {
    if (isPart) throw;
    return false;
  } catch (...) {
    if (steps_.passing_ || steps_.className_.empty()) throw;
    Ref<ErrorService> service;
    switch (steps_.report(service)) {
      case QuorDataLib::kRetryStep:
        retrying_ = service;
        return true;
      case QuorDataLib::kContinueAfterStep:
        if (isPart) throw Skip{};
        return false;
      default:
        throw Leave{};
    }
  }
}

std::int32_t Steps::report(Ref<ErrorService>& service) {
  const Error error = QuorDataLib::currentError();
  passing_ = true;
  service = QuorDataLib::currentApplication()->Context()->ErrorService();
  if (!service) throw error;
  const std::int32_t answer = service->ReportError(
      error.number(), error.description(), std::string(kComponentName), std::string(className_),
      std::string(methodName_), static_cast<std::int32_t>(line_));
  passing_ = false;
  return answer;
}

void Steps::reportBetweenSteps() {
  if (passing_) throw;
  Ref<ErrorService> service;
  report(service);
}

Error withPlace(std::string_view className, std::string_view memberName, std::uint_least32_t line) {
  const Error error = QuorDataLib::currentError();
  std::string description = error.description();
  description.append(" (").append(kComponentName).append(".").append(className);
  description.append(".").append(memberName).append(" component failure at line:");
  description.append(std::to_string(line)).append(")");
  return {error.number(), std::string(), std::move(description)};
}

}  // namespace QuorAccQueries
