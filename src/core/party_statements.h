// Statements that the customer and the supplier side build alike, each from its own texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/statement.h"
#include "platform/values/date.h"

namespace QuorAccQueries {

/// The texts of a side's balance statement.
struct BalanceTexts {
  std::string_view party;      // the column that rows are grouped by first
  std::string_view sums;       // the summed columns, and where they come from
  std::string_view ofParty;    // condition on the party
  std::string_view ofSegment;  // condition on the segment
  std::string_view orderBy;    // between the GROUP BY list and the ORDER BY list
};

/// Balances summed by party and `extraFields`, for one party, up to a date and for one segment; 0
/// and no date set no condition.
Statement balanceStatement(const BalanceTexts& texts, std::int32_t party, QuorDataLib::Date upTo,
                           std::int32_t segment, const std::string& extraFields);

/// The texts of a side's statement of ledger amounts on projects.
struct ProjectCostTexts {
  std::string_view list;     // the columns that rows are grouped by first
  std::string_view sums;     // the summed columns
  std::string_view lines;    // where they come from, with markers for the two accounts left out
  std::string_view ofParty;  // condition on the party
  std::string_view groupBy;
  std::string_view orderBy;
};

/// Ledger amounts summed by party, project and `extraFields`. The conditions count only when there
/// is one on the party, the date or the segment: a project alone is no filter, and is then ignored.
Statement projectCostStatement(const ProjectCostTexts& texts, std::int32_t bankAccount,
                               std::int32_t serviceAccount, std::int32_t party,
                               QuorDataLib::Date upTo, std::int32_t project, std::int32_t segment,
                               const std::string& extraFields);

}  // namespace QuorAccQueries
