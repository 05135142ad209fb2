// Project values.
#pragma once

#include <cstdint>
#include <source_location>
#include <string>
#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// A project's sales, purchases and hours: in total, over a period, and as budgeted. All amounts
/// are in home currency; nothing at all comes to 0, whether no row or a null is why.
///
/// Sales are credits on the ledger and positive here, purchases are debits and positive. In the
/// fixed chart of accounts sales are on accounts of type 4, purchases on those of type 5 and of the
/// further types that the host lists; in any other chart the account types of the income statement
/// tell it by their `ReverseBalance`. Purchases are all expenses of the project, wages among them.
///
/// While `CacheRecordsets` is on, what was read is kept under a member's arguments for the object's
/// life; what is posted meanwhile is not seen. The budgets of sales, purchases and hours come from
/// one recordset.
class CProjectHelper : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CProjectHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// Of all time, as the company's views have them (`ProjSales_View`, `ProjPurchases_View`).
  Currency GetProjSales(std::int32_t ProjId);
  Currency GetProjPurchases(std::int32_t ProjId);

  /// The hours of all time: those paid (pay codes of type 4, cancelled pays apart) and those bought
  /// (purchases of type 3 of items that count as hours).
  ///
  /// The two sums are the rows of a union, and a union has equal rows once: a project with as many
  /// hours paid as bought gets them once, not twice. That is how this member has always counted;
  /// `OpenProjectHoursTransactions` lists every line. It holds for a period, too.
  Currency GetProjHours(std::int32_t ProjId);

  // Of a period, both days included and as they are given.

  /// @param SegmentId  one segment; 0 and below for all
  Currency GetProjSalesRange(std::int32_t ProjId, std::int32_t SegmentId, Date FromDate,
                             Date ToDate);
  Currency GetProjPurchasesRange(std::int32_t ProjId, std::int32_t SegmentId, Date FromDate,
                                 Date ToDate);
  Currency GetProjHoursRange(std::int32_t ProjId, std::int32_t SegmentId, Date FromDate,
                             Date ToDate);

  // Budgets. Every fiscal period that overlaps the days counts whole: none is prorated.

  /// @param SegmentId  the budget of that segment: 0 is a budget of its own, that of the project as
  ///                   a whole, and not the sum of all segments
  Currency GetProjSalesBudgetRange(std::int32_t ProjId, std::int32_t SegmentId, Date FromDate,
                                   Date ToDate);
  Currency GetProjPurchBudgetRange(std::int32_t ProjId, std::int32_t SegmentId, Date FromDate,
                                   Date ToDate);
  Currency GetProjHoursBudgetRange(std::int32_t ProjId, std::int32_t SegmentId, Date FromDate,
                                   Date ToDate);

 private:
  using Where = std::source_location;
  /// What a member's range is of.
  struct Range {
    std::int32_t project;
    std::int32_t segment;
    Date from;
    Date to;
  };

  /// Reads a column of the first of the rows kept under `key`, or else of those of the statement
  /// that `build` makes.
  template <class Build>
  void readValue(Steps& step, RecordsetCache& cache, CacheKey key, const std::string& column,
                 Currency& result, Build&& build, Where where = Where::current());
  /// Reads one of the budgets, which come together.
  void readBudget(Steps& step, const Range& range, const std::string& column, Currency& result,
                  Where where = Where::current());

  RecordsetCache sales_;
  RecordsetCache purchases_;
  RecordsetCache hours_;
  RecordsetCache salesRanges_;
  RecordsetCache purchaseRanges_;
  RecordsetCache hourRanges_;
  RecordsetCache budgetRanges_;
};

}  // namespace QuorAccQueries
