// Supplier queries: aging, histories, receptions and orders, balances, credits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// The queries of the payables, the counterpart of `CCustomerQueries`. Every `Open...` method hands
/// its recordset to the caller open; the caller closes it. On an error that leaves a method no
/// recordset is returned (an empty reference). Identifiers are keys of the company's tables; the
/// caller's SQL fragments go into the statement as they stand.
class CSupplierQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CSupplierQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// Every payable item as at a date: the rows of the purchases and of what was applied to them,
  /// and the payment credits still open (type 99, negative), each with its balance, the supplier
  /// and the currency. Rows and their documents are dated on or before `AgingDate`.
  ///
  /// A payment's credit counts what was applied from it directly whatever its date, and what other
  /// payments drew on it up to the date; a payment applied for more than its amount shows a
  /// positive row.
  ///
  /// @param ShowAllTransactions  false keeps only purchases outstanding at the date, and open
  /// credits
  /// @param SuppId               one supplier, or 0 for all
  /// @param AgingDate            the aging date; no date means no limit
  /// @param Filter               a further condition, or empty
  /// @param OrderBy              the ORDER BY list; empty for currency, supplier, document, type,
  /// date
  /// @param ByCurrency           lists every currency first, also one without rows; ignored where
  ///                             the company trades in its home currency only. The caller's own
  ///                             `FieldsList` must then have a column `InnerViewExCurrencyId`.
  /// @param FieldsList           the select list; empty for the default list
  /// @param GroupBy              a GROUP BY list, or empty
  Ref<Recordset> OpenSuppAgingTransactions(bool ShowAllTransactions, std::int32_t SuppId,
                                           Date AgingDate, const std::string& Filter,
                                           const std::string& OrderBy, bool ByCurrency,
                                           const std::string& FieldsList,
                                           const std::string& GroupBy);

  /// The supplier's columns for a select list, as "Supp.Name". Without `ExcludeFields` a fixed
  /// list, separated by ","; otherwise all columns that the table has in the database but those
  /// named (separated by commas, spelled as the table spells them), separated by ", ".
  std::string GetAgingSuppFieldsList(const std::string& ExcludeFields);

  /// The currency's columns for a select list, those of the customer side.
  std::string GetAgingCurrencyFieldsList();

  /// The supplier's documents and payments dated from `FromDate` to `ToDate`, both included, by
  /// date. No date means no bound.
  Ref<Recordset> OpenSuppHistoryList(std::int32_t SuppId, Date FromDate, Date ToDate);

  /// The supplier's receptions not yet invoiced, without the purchases listed in `ExcludeIds` (keys
  /// separated by commas).
  Ref<Recordset> OpenSuppOpenRec(std::int32_t SuppId, const std::string& ExcludeIds);

  /// The supplier's open purchase orders, without those listed in `ExcludeIds`.
  Ref<Recordset> OpenSuppOpenPurcOrd(std::int32_t SuppId, const std::string& ExcludeIds);

  /// The supplier's purchases expected to be received, of one type when `PurcType` is above 0.
  Ref<Recordset> OpenSuppPurcOpenExpectedRec(std::int32_t SuppId, std::int32_t PurcType);

  /// One row, `TotalToPay`: the sum of the supplier's history strictly before `BeforeDate`.
  Ref<Recordset> OpenSuppPreviousBalanceInfo(std::int32_t SuppId, Date BeforeDate);

  /// One row, `ExPurcId` and `Balance`: the purchase's amount less every payment and discount
  /// applied to it up to and with `AtDate`; no date means no limit.
  Ref<Recordset> OpenPurcBalanceAtDate(std::int32_t PurcId, Date AtDate);

  /// What is owed to suppliers less open credits, in their own currency (`SuppBalance`) and in home
  /// currency (`SuppBalanceHome`): one row for each supplier and each value of `ExtraFields`, by
  /// these columns. 0 or no date applies no filter.
  Ref<Recordset> OpenSuppBalance(std::int32_t SuppId, Date BalanceDate, std::int32_t SegmentId,
                                 const std::string& ExtraFields);

  /// The payments to the supplier that still have an open credit.
  Ref<Recordset> OpenSuppOpenCredits(std::int32_t SuppId);

  /// The last purchase from a supplier: the latest date, then the highest key.
  Ref<Recordset> OpenSuppLastPurc(std::int32_t SuppId);

  /// The last payment to a supplier: the latest date, then the highest code.
  Ref<Recordset> OpenSuppLastPmt(std::int32_t SuppId);

  /// The part of a payment that is not applied.
  Ref<Recordset> OpenUnappliedPayment(std::int32_t PmtId);

  /// The supplier's expected purchase orders (status 1).
  Ref<Recordset> OpenSuppExpectedPurcOrd(std::int32_t SuppId);

  /// Ledger amounts of purchases and expenses posted to projects, by supplier, project and
  /// `ExtraFields`, without the two work-in-progress accounts of the accounting parameters.
  /// `SuppCost` sums the ledger's own amounts, `SuppCostHome` its foreign amounts. A filter of 0 or
  /// no date is not applied; the project alone is no filter either: `ProjId` counts only beside
  /// another filter. Give `ExtraFields`: without them the engine refuses the statement.
  Ref<Recordset> OpenSuppCostByProject(std::int32_t SuppId, Date AsAtDate, std::int32_t ProjId,
                                       std::int32_t SegmentId, const std::string& ExtraFields);

 private:
  /// The credit rows of the aging statement, with one marker for the aging date.
  static std::string GetAgingSuppPmtCreditsSQL(Steps& step);

  std::string defaultFieldList(Steps& step, bool byCurrency);
};

}  // namespace QuorAccQueries
