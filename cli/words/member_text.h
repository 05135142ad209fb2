// Members of the component in words.
#pragma once

#include <string>
#include <string_view>

#include "core/member_table.h"

namespace QuorCli {

/// A type as signatures show it: the class of an object, "any" where any type may be passed.
[[nodiscard]] std::string_view typeInSignature(const QuorAccQueries::TypeInfo& type) noexcept;

/// What a text must be to be taken for the type: "a date as YYYY-MM-DD".
[[nodiscard]] std::string_view typeInWords(const QuorAccQueries::TypeInfo& type) noexcept;

/// A member in one line: `OpenCustBalance(CustomerId long, AsOfDate date) -> Recordset`. Arguments
/// by reference are marked with `&`, those of them that are never written with `const &`.
[[nodiscard]] std::string signature(const QuorAccQueries::Member& member);

/// The member's arguments, one a line with their types, for messages; no line end after the last.
[[nodiscard]] std::string argumentList(const QuorAccQueries::Member& member);

}  // namespace QuorCli
