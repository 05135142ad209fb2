// The fixed texts of payment terms and of recurring transactions.
#pragma once

#include <string_view>

namespace QuorAccQueries::TermSql {

inline constexpr std::string_view kTerm = "SELECT * FROM Term WHERE InTermId=?";
/// The first row as the database gives it: there is no order to go by.
inline constexpr std::string_view kTermDates = "SELECT * FROM TermDet WHERE ExTermId = ?";

inline constexpr std::string_view kSchedule = "SELECT * FROM TrxRec WHERE TrxType=? AND ExTrxId=?";
// The row's key stands here in the other order than above, and so do the values.
inline constexpr std::string_view kAdvance =
    "UPDATE TrxRec SET LastRun=?,NextRun=? WHERE ExTrxId=? AND TrxType=?";
inline constexpr std::string_view kEndSchedule =
    "UPDATE TrxRec SET LastRun=?,NextRun=NULL WHERE ExTrxId=? AND TrxType=?";

}  // namespace QuorAccQueries::TermSql
