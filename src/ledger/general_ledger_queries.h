// General ledger queries: histories, balances, earnings, issued cheques.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// The queries of the general ledger. Every `Open...` method hands its recordset to the caller
/// open; the caller closes it. On an error that leaves a method no recordset is returned (an empty
/// reference). Dates are taken as given: none is widened. Amounts are signed as in the ledger,
/// debits positive and credits negative, and a sum over no lines is null unless a method says
/// otherwise.
///
/// `UseForeignAmnt` sums `ForeignAmnt` in place of `DetAmnt` for an account that is kept in another
/// currency than the home currency (`AcctCurrencyId` and `HomeCurrencyId` differ).
///
/// The methods on projects take the income statement's accounts of one side: expenses with an
/// `AcctClass` of 2, revenue with any other. In the fixed chart of accounts revenue is account type
/// 4, expenses are type 5 and the further types that the host lists; in any other chart the account
/// types of the income statement tell it by their `ReverseBalance`. They always sum home currency,
/// whatever `UseForeignAmnt` says: a project has accounts of all currencies.
class CGeneralLedgerQueries : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CGeneralLedgerQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  using QueryFrame::SetCustomCommandTimeout;

  /// The lines of an account from `FromDate` to `ToDate`, both included, by date and transaction:
  /// `DetDate`, `SeqNo`, `ExSrcKeyVal`, `DetRef`, `Source`, `DetDesc`, `DetAmount`.
  Ref<Recordset> OpenGLAcctHistory(bool UseForeignAmnt, std::int32_t AcctCurrencyId,
                                   std::int32_t AcctId, std::int32_t HomeCurrencyId, Date FromDate,
                                   Date ToDate);

  /// One row, `ForwardBalance`: the account's lines from `FromDate` up to the day before `ToDate`.
  /// With the first day of a period as `ToDate` that is the balance brought forward to it.
  Ref<Recordset> OpenGLAcctHistoryForwardBalance(bool UseForeignAmnt, std::int32_t AcctCurrencyId,
                                                 std::int32_t AcctId, std::int32_t HomeCurrencyId,
                                                 Date FromDate, Date ToDate);

  /// One row, `CurrentValue`: the account's credits of the period when `DebitCreditKind` is 2,
  /// otherwise its debits.
  Ref<Recordset> OpenGLAcctHistoryDebitsCredits(bool UseForeignAmnt, std::int32_t AcctCurrencyId,
                                                std::int32_t AcctId, std::int32_t HomeCurrencyId,
                                                Date FromDate, Date ToDate,
                                                std::int32_t DebitCreditKind);

  /// The lines of a project in the period, by date and transaction. Lines of one transaction on
  /// several accounts of the class are one row; lines of zero are left out.
  Ref<Recordset> OpenProjectHistory(bool UseForeignAmnt, std::int32_t CurrencyId,
                                    std::int32_t ProjId, Date FromDate, Date ToDate,
                                    std::int32_t AcctClass);

  /// One row, `CurrentValue`: the project's total from `FromDate` to `ToDate`, both included.
  /// Unlike the account's balance brought forward it takes in the last day: the caller chooses the
  /// range.
  Ref<Recordset> OpenProjHistoryForwardBalance(bool UseForeignAmnt, std::int32_t CurrencyId,
                                               std::int32_t ProjId, Date FromDate, Date ToDate,
                                               std::int32_t AcctClass);

  /// One row, `CurrentValue`: the project's net total of the period where it has the wanted sign,
  /// negative when `DebitCreditKind` is 2 and otherwise positive; null where it has not. It does
  /// not sum the lines of one sign, as the account's member does.
  Ref<Recordset> OpenProjHistoryDebitsCredits(bool UseForeignAmnt, std::int32_t CurrencyId,
                                              std::int32_t ProjId, Date FromDate, Date ToDate,
                                              std::int32_t DebitCreditKind, std::int32_t AcctClass);

  /// `InGLAcctId`, `AcctBalance`, `AcctForeignBalance`: one row for each account that has lines
  /// from `FromDate` to `ToDate`, both included, with their sums.
  ///
  /// The engine type must be 0 or 1: for any other the statement goes out without a select list,
  /// and the engine refuses it. That holds for the three balance queries and the earnings.
  ///
  /// @param AcctId          one account, or 0 for all
  /// @param ProjIdList      keys of projects separated by commas, or empty for all lines
  /// @param ExtraCondition  a further condition on `GLDet`, or empty
  Ref<Recordset> OpenGLAcctBalanceRange(std::int32_t AcctId, Date FromDate, Date ToDate,
                                        const std::string& ProjIdList,
                                        const std::string& ExtraCondition);

  /// The same over the ledger lines whose reference is the cheque number of a payroll remittance
  /// for a period within `FromDate` to `ToDate`. The dates of the lines themselves do not count.
  Ref<Recordset> OpenGLAcctBalanceRangeTotRemittence(std::int32_t AcctId, Date FromDate,
                                                     Date ToDate, const std::string& ProjIdList,
                                                     const std::string& ExtraCondition);

  /// The same as `OpenGLAcctBalanceRange` for the accounts that are kept in a currency.
  Ref<Recordset> OpenGLAcctForeignBalanceRange(std::int32_t CurrencyId, Date FromDate, Date ToDate,
                                               std::int32_t AcctId, const std::string& ProjIdList,
                                               const std::string& ExtraCondition);

  /// One row, `CurrentEarn`: what the income statement's accounts earned from `FromDate` to
  /// `ToDate`, both included; a profit is positive. Without lines it is 0 from the desktop engine
  /// and null from the server engine.
  Ref<Recordset> OpenCurrentEarnRange(Date FromDate, Date ToDate);

  /// The cheques issued on a bank account under a number.
  Ref<Recordset> OpenAllIssuedChecks(const std::string& ChqNo, std::int32_t GLAcctId);

 private:
  /// What the three balance queries have in common: where the lines come from, and the filters.
  struct BalanceRange;
  Ref<Recordset> openBalances(std::string_view methodName, const BalanceRange& range);

  /// Adds the condition on the accounts of one side of the income statement.
  static void addAccountClass(Steps& step, Statement& statement, std::int32_t AcctClass);
};

}  // namespace QuorAccQueries
