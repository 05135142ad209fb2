#include <exception>

#include "host/application/services.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::Error;

constexpr int kMostRetries = 3;

/// The source of the error that is being handled, when it is the one of this number and
/// description.
std::string sourceInHand(std::int32_t number, const std::string& description) {
  if (std::current_exception() == nullptr) return {};
  try {
    throw;
  } catch (const Error& error) {
    if (error.number() == number && error.description() == description) return error.source();
  } catch (...) {  // NOLINT(bugprone-empty-catch): something else is being handled
  }
  return {};
}

}  // namespace

std::int32_t HostErrorService::ReportError(std::int32_t number, const std::string& description,
                                           const std::string& component,
                                           const std::string& className, const std::string& method,
                                           std::int32_t line) {
  switch (onError_) {
    case OnError::Leave:
      return QuorDataLib::kLeaveMethod;
    case OnError::Continue:
      return QuorDataLib::kContinueAfterStep;
    case OnError::Retry:
      return retry({className, method, line, number});
    case OnError::Raise:
      break;
  }
  std::string source = component;
  source.append(".").append(className).append(".").append(method);
  source.append(":").append(std::to_string(line));
  const std::string inner = sourceInHand(number, description);
  if (inner.starts_with(component + ".")) source.insert(0, inner + ", called by ");
  throw Error(number, source, description);
}

std::int32_t HostErrorService::retry(const ErrorAtStep& error) {
  const auto entry = retries_.try_emplace(error, 0).first;
  if (++entry->second <= kMostRetries) return QuorDataLib::kRetryStep;
  retries_.erase(entry);
  return QuorDataLib::kLeaveMethod;
}

void HostErrorService::RetryEnded(const std::string& className, const std::string& method,
                                  std::int32_t line) {
  std::erase_if(retries_, [&](const auto& entry) {
    const auto& [errorClass, errorMethod, errorLine, number] = entry.first;
    return errorLine == line && errorMethod == method && errorClass == className;
  });
}

}  // namespace QuorHost
