// What the catalogue of the database says of a table.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "host/engines/odbc/driver/session.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Odbc {

/// Whether there is a table or a view of that name, in any of the schemas.
[[nodiscard]] bool hasTable(const std::shared_ptr<Session>& session, std::string_view name);

/// The table of that name with its columns and its primary key, spelled as they are there; nothing
/// where there is none, or where several schemas have one.
[[nodiscard]] std::optional<Sql::Relation> findTable(const std::shared_ptr<Session>& session,
                                                     std::string_view name);

}  // namespace QuorHost::Odbc
