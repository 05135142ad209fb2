// Companies on PostgreSQL servers: what the rest of the program knows of them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/engines/store.h"

namespace QuorHost::Postgres {

/// How texts are ordered: less than, equal to or greater than zero. It must be the order of the
/// server's collation "quor", with blanks at the end counting for nothing.
using CompareTexts = int (*)(std::string_view, std::string_view) noexcept;

/// Opens the company that the address names. Raises 75 with what to do where there is no server, no
/// company, or one of a newer version; 5 for what is no address.
[[nodiscard]] std::shared_ptr<Store> openServer(const std::string& address, Access access,
                                                CompareTexts compare);

/// A company that is made with its first transaction, whole or not at all, in a schema that is not
/// there, or empty, or another company's that it replaces. Raises what opening raises.
[[nodiscard]] std::shared_ptr<Store> createServer(const std::string& address, const OnServer& how,
                                                  CompareTexts compare);

}  // namespace QuorHost::Postgres
