// What SQLite's SQL has of its own.
#pragma once

#include "host/engines/write/engine_form.h"

namespace QuorHost::Sqlite {

/// SQLite's form of queries and expressions.
[[nodiscard]] const Write::EngineForm& sqliteForm() noexcept;

/// What SQLite's parser takes.
[[nodiscard]] const Write::TextRules& sqliteText() noexcept;

}  // namespace QuorHost::Sqlite
