// The order of texts.
#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>

namespace QuorHost::Sqlite {

/// Name of the collation that every text column is declared with.
inline constexpr const char* kCollation = "QUOR";

/// Registers the collation on a connection: case is ignored, accented letters differ from plain
/// ones and sort beside them, as people look names up in English and French. Raises 7 when memory
/// is exhausted and 51 when the library that knows the order cannot be loaded.
void registerCollation(sqlite3* database);

/// Negative, zero or positive as `a` sorts before, with or after `b`.
[[nodiscard]] int compareTexts(std::string_view a, std::string_view b) noexcept;

/// Version of the order ("153.120"). An index on texts keeps the order it was built with, so a
/// file that was filled under another version has to be reindexed.
[[nodiscard]] std::string collationVersion();

}  // namespace QuorHost::Sqlite
