// What PostgreSQL's SQL has of its own.
#pragma once

#include "host/engines/write/engine_form.h"

namespace QuorHost::Postgres {

/// PostgreSQL's form of queries and expressions.
///
/// Every expression has one type of the server's: boolean; smallint, integer or bigint, which go
/// together everywhere, and bigint where something was computed; numeric; double precision;
/// timestamp; bpchar under the collation "quor", whatever the column is stored as, because with
/// bpchar blanks at the end count for nothing.
[[nodiscard]] const Write::EngineForm& postgresForm() noexcept;

/// What PostgreSQL's parser takes.
[[nodiscard]] const Write::TextRules& postgresText() noexcept;

/// The server's type of expressions of a type.
[[nodiscard]] std::string_view serverType(Sql::Type type) noexcept;

}  // namespace QuorHost::Postgres
