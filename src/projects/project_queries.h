// Project queries.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Hours put on projects. The root does not hand this class out: a host creates it directly.
class CProjectQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CProjectQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// Every transaction that put hours on a project from `FromDate` to `ToDate`, both included and
  /// both as they are given: without an upper date there are none. Hours come from pays that are
  /// not cancelled (the lines of pay codes of type 4) and from purchases of type 3 of items that
  /// count as hours (`Item.Hours`).
  ///
  /// `TrxType` (1 a pay, 2 a purchase), `InTrxId` (its key), `TrxDate`, `ResId` and `ResName` (who
  /// worked: the employee or the supplier), `RefNum`, `Detail` (what the hours were), `NbHours`;
  /// pays first, then by `ResId`, `TrxDate` and `RefNum`. Lines that agree in all of this, such as
  /// two of one purchase, are one row: their hours count once. `GetProjHoursRange` counts both.
  ///
  /// For engine type 0 the item's description comes as text of at most 8000 characters.
  Ref<Recordset> OpenProjectHoursTransactions(std::int32_t ProjId, Date FromDate, Date ToDate);
};

}  // namespace QuorAccQueries
