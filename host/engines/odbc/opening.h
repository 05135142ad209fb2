// Companies behind ODBC drivers: what the rest of the program knows of them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/engines/store.h"

namespace QuorHost::Odbc {

/// How `Find` orders and compares texts: less than, equal to or greater than zero.
using CompareTexts = int (*)(std::string_view, std::string_view) noexcept;

/// Opens the database that the address names. Raises 75 with what to do where there is no driver,
/// data source or server, or none for us; 5 for what is no address.
[[nodiscard]] std::shared_ptr<Store> openOverDriver(const std::string& address, Access access,
                                                    CompareTexts compare);

/// Raises 5: such companies are made with the server's own tools.
[[noreturn]] void refuseToCreate(const std::string& address);

}  // namespace QuorHost::Odbc
