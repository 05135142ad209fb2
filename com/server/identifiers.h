// The identifiers of libraries, classes and interfaces. Clients are built with them: they never
// change, and new ones are added at the end.
#pragma once

#include <string>
#include <string_view>

namespace QuorCom {

/// The identifier of a library's type library ("QuorAccQueries").
[[nodiscard]] std::string_view libraryId(std::string_view library);

/// The identifier of a class of a library.
[[nodiscard]] std::string_view classId(std::string_view library, std::string_view className);

/// The identifier of the interface of a class or a contract.
[[nodiscard]] std::string_view interfaceId(std::string_view library, std::string_view className);

/// The identifier of the interface by which a DLL knows its own objects.
[[nodiscard]] std::string_view ownInterfaceId(std::string_view library);

}  // namespace QuorCom
