#include "core/error_trap.h"

#include "platform/current_application.h"
#include "platform/data_library.h"

namespace QuorAccQueries {

bool Steps::retries(const QuorDataLib::Error& error, std::uint_least32_t line) const {
  const QuorDataLib::Ref<QuorDataLib::ErrorService> service =
      QuorDataLib::currentApplication()->Context()->ErrorService();
  if (!service) throw error;
  switch (service->ReportError(error.number(), error.description(), std::string(kComponentName),
                               std::string(className_), std::string(methodName_),
                               static_cast<std::int32_t>(line))) {
    case QuorDataLib::kRetryStep:
      return true;
    case QuorDataLib::kContinueAfterStep:
      return false;
    default:
      throw Leave{};
  }
}

QuorDataLib::Error withPlace(std::string_view className, std::string_view memberName,
                             std::uint_least32_t line) {
  const QuorDataLib::Error error = QuorDataLib::currentError();
  std::string description = error.description();
  description.append(" (").append(kComponentName).append(".").append(className);
  description.append(".").append(memberName).append(" component failure at line:");
  description.append(std::to_string(line)).append(")");
  return {error.number(), std::string(), std::move(description)};
}

}  // namespace QuorAccQueries
