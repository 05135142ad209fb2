// Customer queries: aging, histories, balances, credits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// The queries of the receivables. Every `Open...` method hands its recordset to the caller open;
/// the caller closes it. On an error that leaves a method no recordset is returned (an empty
/// reference). Identifiers are keys of the company's tables; the caller's SQL fragments go into the
/// statement as they stand.
class CCustomerQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CCustomerQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// Every receivable item as at a date: the rows of the documents and of what was applied to them,
  /// and the payment credits still open (type 99, negative), each with its balance, the customer
  /// and the currency. Rows are dated on or before `AsOfDate`; the host ages and totals them.
  ///
  /// A payment's credit counts what was applied from it directly whatever its date, and what other
  /// payments drew on it up to the date.
  ///
  /// @param AllTransactions  false keeps only documents outstanding at the date, and open credits
  /// @param CustomerId       one customer, or 0 for all
  /// @param AsOfDate         the aging date; no date means no limit
  /// @param ExtraWhere       a further condition, or empty
  /// @param OrderBy          the ORDER BY list; empty for currency, customer, document, type, date
  /// @param FieldList        the select list; empty for the default list
  /// @param GroupBy          a GROUP BY list, or empty
  /// @param ByCurrency       lists every currency first, also one without rows; ignored where the
  ///                         company trades in its home currency only. The caller's own `FieldList`
  ///                         must then have a column `InnerViewExCurrencyId`.
  /// @param ByOrder          order-linked rows: their order column is `DocOrderId1`, 0 for payments
  ///                         and discounts, and their order date is the row's own date. The default
  ///                         list and order name `DocOrderId`, which these rows do not have, so
  ///                         give `FieldList` and `OrderBy`; without them the engine refuses the
  ///                         statement.
  Ref<Recordset> OpenCustAgingTransactions(bool AllTransactions, std::int32_t CustomerId,
                                           Date AsOfDate, const std::string& ExtraWhere,
                                           const std::string& OrderBy, const std::string& FieldList,
                                           const std::string& GroupBy, bool ByCurrency,
                                           bool ByOrder);

  /// The customer's columns for a select list, as "Cust.Name". Without `Exclusions` a fixed list,
  /// separated by ","; otherwise all columns that the table has in the database but those named
  /// (separated by commas, spelled as the table spells them), separated by ", ".
  std::string GetAgingCustFieldsList(const std::string& Exclusions);

  /// The currency's columns for a select list.
  [[nodiscard]] std::string GetAgingCurrencyFieldsList() const;

  /// One row, `ExInvoiId` and `Balance`: the invoice's amount less every payment and discount
  /// applied to it up to and with `AtDate`. `ExInvoiId` and `Balance` are null for an unknown
  /// invoice.
  Ref<Recordset> OpenInvoiBalanceAtDate(std::int32_t InvoiceId, Date AtDate);

  /// The customer's documents and payments dated from `FromDate` to `ToDate`, both included, by
  /// date. Dates are taken as given.
  Ref<Recordset> OpenCustHistoryList(Date FromDate, Date ToDate, std::int32_t CustomerId);

  /// One row, `TotalToPay`: the sum of the customer's history strictly before `BeforeDate`.
  Ref<Recordset> OpenCustPreviousBalanceInfo(std::int32_t CustomerId, Date BeforeDate);

  /// What customers owe less their open credits, in their own currency (`CustBalance`) and in home
  /// currency (`CustBalanceHome`): one row for each customer and each value of `ExtraFields`, by
  /// these columns. 0 or no date applies no filter.
  Ref<Recordset> OpenCustBalance(std::int32_t CustomerId, Date AsOfDate, std::int32_t SegmentId,
                                 const std::string& ExtraFields);

  /// The customer's payments that still have an open credit.
  Ref<Recordset> OpenCustOpenCredits(std::int32_t CustomerId);

  /// What has been paid on an invoice, in all.
  Ref<Recordset> OpenInvoiPaidAmntAll(std::int32_t InvoiceId);

  /// The part of a payment that is not applied.
  Ref<Recordset> OpenCustPmtUnappl(std::int32_t PaymentId);

  /// The last payment of a customer, or with -1 of every customer who paid: the latest date, then
  /// the highest key.
  Ref<Recordset> OpenCustLastPmt(std::int32_t CustomerId);

  /// The last sale to a customer, or with -1 to every customer who bought, by the same rule.
  Ref<Recordset> OpenCustLastSale(std::int32_t CustomerId);

  /// Ledger amounts of sales posted to projects, by customer, project and `ExtraFields`, without
  /// the two work-in-progress accounts of the accounting parameters. `CustCost` sums the ledger's
  /// own amounts, `CustCostHome` its foreign amounts. A filter of 0 or no date is not applied; the
  /// project alone is no filter either: `ProjectId` counts only beside another filter.
  Ref<Recordset> OpenCustCostByProject(std::int32_t CustomerId, Date AsOfDate,
                                       std::int32_t ProjectId, std::int32_t SegmentId,
                                       const std::string& ExtraFields);

 private:
  /// The detail rows of the aging statement. It has a trap of its own.
  std::string GetCustomerAgingTrxSQL(bool ByOrder) const;

  /// The credit rows of the aging statement, with one marker for the aging date.
  static std::string GetAgingCustPmtCreditsSQL(Steps& step, bool ByOrder);

  std::string defaultFieldList(Steps& step, bool byCurrency);
};

}  // namespace QuorAccQueries
