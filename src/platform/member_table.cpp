#include "platform/member_table.h"

namespace QuorDataLib::detail {

void refuseCount(std::size_t wanted, std::size_t given) {
  raise(ErrorNumber::WrongArgumentCount,
        "The member takes " + std::to_string(wanted) + " arguments, not " + std::to_string(given));
}

void refuseObject(const Object& object) {
  const ClassInfo* const info = object.table();
  raise(ErrorNumber::TypeMismatch,
        "The object" + (info != nullptr ? " is a " + std::string(info->name) + " and" : "") +
            " has no such member");
}

void refuseNames(std::string_view member) {
  raise(ErrorNumber::InternalError,
        "The member table names other arguments than " + std::string(member) + " has");
}

}  // namespace QuorDataLib::detail
