// What `company check` looks for. Every area of the books has a list of its own; a new rule is one
// more entry there.
#pragma once

#include <span>
#include <string_view>

#include "host/company/company.h"

namespace QuorHost {

/// A rule of sound books, which either a query or a function looks for breaches of. Neither looks
/// after references that the schema declares: those are the storage engine's to check.
struct Check {
  /// The rule, as the end of the sentence "It could not be checked whether ...".
  std::string_view rule;
  /// A statement of the server dialect whose rows are the breaches, in an order of their own.
  std::string_view query = {};
  /// How a row reads: `{0}` stands for its first field, `{1}` for the second and so on.
  std::string_view finding = {};
  /// Instead of a query: reports what it finds.
  void (*look)(Store& store, const Findings& report) = nullptr;
};

// The areas, each in the file of its name.
[[nodiscard]] std::span<const Check> companyChecks();
[[nodiscard]] std::span<const Check> ledgerChecks();
[[nodiscard]] std::span<const Check> receivablesChecks();
[[nodiscard]] std::span<const Check> payablesChecks();
[[nodiscard]] std::span<const Check> inventoryChecks();
[[nodiscard]] std::span<const Check> termChecks();
[[nodiscard]] std::span<const Check> projectChecks();

/// All areas, in the order in which they are checked.
inline constexpr std::span<const Check> (*kCheckedAreas[])() = {
    companyChecks,   ledgerChecks, receivablesChecks, payablesChecks,
    inventoryChecks, termChecks,   projectChecks,
};

}  // namespace QuorHost
