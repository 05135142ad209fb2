#include "platform/error.h"

#include <new>
#include <utility>

namespace QuorDataLib {

Error::Error(std::int32_t number, std::string source, std::string description)
    : number_(number), source_(std::move(source)), description_(std::move(description)) {}

Error::Error(ErrorNumber number, std::string source, std::string description)
    : Error(static_cast<std::int32_t>(number), std::move(source), std::move(description)) {}

Error currentError() {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return {ErrorNumber::OutOfMemory, "QuorDataLib", "Out of memory"};
  } catch (const std::exception& error) {
    return {ErrorNumber::InternalError, "QuorDataLib", error.what()};
  } catch (...) {
    return {ErrorNumber::InternalError, "QuorDataLib",
            "Something was thrown that is no error and has no description"};
  }
}

void raise(ErrorNumber number, std::string description) {
  throw Error(number, "QuorDataLib", std::move(description));
}

}  // namespace QuorDataLib
