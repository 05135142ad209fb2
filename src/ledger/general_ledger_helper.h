// General ledger values: balances, earnings, budgets, the chart of accounts, bank checks.
#pragma once

#include <cstdint>
#include <source_location>
#include <string>
#include <string_view>
#include <vector>

#include "core/frame.h"
#include "core/row_steps.h"
#include "ledger/general_ledger_queries.h"

namespace QuorAccQueries {

/// Answers single questions about the ledger, and keeps the chart of accounts. Its query object has
/// this helper's connection. Amounts are signed as in the ledger, debits positive; a sum over
/// nothing is 0. Conditions and lists of the caller go into the statements as they stand.
///
/// While `CacheRecordsets` is on, the balances of all accounts over a range, the retained earnings
/// and the fiscal years are read once and kept for the object's life, so that a trial balance costs
/// a few statements; what is posted meanwhile is not seen.
class CGeneralLedgerHelper : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CGeneralLedgerHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// Also for the statements that the query object sends for this helper.
  void SetCustomCommandTimeout(std::int32_t Timeout);

  // Balances and earnings.

  /// The balance of an account at the end of a day. Accounts of the income statement start anew
  /// with each fiscal year, unless `IgnoreFiscalYear` is set; all others run on. The current
  /// earnings account has, on top of its own lines, what the income statement's accounts come to in
  /// the fiscal year of the day, and the retained earnings account what they came to in all years
  /// before; so no closing entries are needed.
  ///
  /// @param AcctId           the account; 0 gives 0 and reads nothing
  /// @param AcctType         its type (`AccountType.ID`), which tells what it belongs to
  /// @param AcctCurrencyId   the currency it is kept in, 0 for home currency
  /// @param HomeCurrencyId   the home currency
  /// @param UseForeignAmnt   the balance in the account's own currency, where that is another one
  /// @param SegmentId        one segment; 0 for all; negative for lines without a segment
  /// @param ProjId           one project; 0 for all; negative for lines without a project
  /// @param ExtraCondition   a further condition, or empty. It is followed by " AND " and therefore
  ///                         goes with a segment only: without one the statement is malformed and
  ///                         the engine refuses it.
  Currency GetAcctBalance(std::int32_t AcctId, std::int32_t AcctType, std::int32_t AcctCurrencyId,
                          Date AsOfDate, std::int32_t HomeCurrencyId, bool UseForeignAmnt,
                          std::int32_t SegmentId, std::int32_t ProjId, bool IgnoreFiscalYear,
                          const std::string& ExtraCondition);

  /// What an account's lines from `FromDate` to `ToDate`, both included, come to in home currency.
  /// Without a lower date they count from 1900-12-31. With the cache on, the rows kept are found by
  /// the dates and the condition alone: a call that differs in `ProjIdList` only gets the rows of
  /// the first one.
  Currency GetAcctBalanceRange(std::int32_t AcctId, Date FromDate, Date ToDate,
                               const std::string& ExtraCondition, const std::string& ProjIdList);

  /// The same over the lines of payroll remittances for periods within the dates.
  Currency GetAcctBalanceRangeTotRemittence(std::int32_t AcctId, Date FromDate, Date ToDate,
                                            const std::string& ExtraCondition,
                                            const std::string& ProjIdList);

  /// The same in the currency that the account is kept in, which must be `CurrencyId`; 0 for an
  /// account of another one. `AcctBalance` receives the amount in home currency. Nothing is kept.
  Currency GetAcctBalanceRangeForeign(std::int32_t AcctId, Date FromDate, Date ToDate,
                                      const std::string& ExtraCondition,
                                      const std::string& ProjIdList, std::int32_t CurrencyId,
                                      Currency& AcctBalance);

  /// What the income statement's accounts come to from 1900-12-31 up to the day before
  /// `FiscalYearStart`, as it is added to the retained earnings account: a profit is negative. With
  /// the cache on, the date alone is the key, whatever the condition.
  Currency RetainedEarnings(Date FiscalYearStart, const std::string& ExtraCondition);

  /// What the income statement's accounts come to from `FromDate` to `ToDate`, both included: a
  /// profit is negative, unlike in `OpenCurrentEarnRange`.
  Currency CurrentEarnings(Date FromDate, Date ToDate, const std::string& ExtraCondition);

  /// The currency that an account is kept in (`WorldCurrency.InCurrencyId`), 0 for home currency.
  std::int32_t GetAcctCurrency(std::int32_t AcctId);

  /// A sentence about an account's balance at a date, from 1899-12-31 on, for a user to read before
  /// he does something with the account. It is made of the company settings 1056 and 1057, with a
  /// blank between them, in which every "{0}" stands for the account's number, "{1}" for " - " and
  /// its description, "{2}" for the balance. The settings carry the languages: a company of two
  /// languages has a sentence in each.
  std::string CheckAccountBalance(std::int32_t AcctId, Date AsOfDate);

  /// The sales of a period in home currency: of invoices, bank deposits and journal entries. A
  /// missing or zero exchange rate counts as 1. Where foreign currencies are in use only documents
  /// in home currency count.
  Currency GetTotalEarnings(Date FromDate, Date ToDate);

  // Budgets.

  /// The budget of an account: every fiscal period that overlaps the dates counts whole.
  Currency GetAcctBudget(std::int32_t AcctId, Date FromDate, Date ToDate);

  /// The same by segment. `SegmentBudgetId` is `GLAcctSegmentBudget.ExID`, the account; `Condition`
  /// says of which rows, usually which segment ("GLAcctSegmentBudget.ExSegmentId = 2"); without one
  /// all segments count.
  Currency GetAcctSegmentBudget(std::int32_t SegmentBudgetId, const std::string& Condition,
                                Date FromDate, Date ToDate);

  // Use.

  /// The numbers of a document's ledger transactions, separated by ","; empty when there is none.
  std::string GetSeqNoFromExSrcKeyVal(const std::string& Source, std::int32_t ExSrcKeyVal);

  /// Whether anything names the account: postings, documents, parties, items, parameters, payroll
  /// and tax codes, currencies. Stops at the first place that does.
  ///
  /// @param CurrencyId  a currency whose own accounts do not count, or 0
  bool AcctIsUsedInTransaction(std::int32_t AcctId, std::int32_t CurrencyId);

  // The chart of accounts.

  /// The next free account number for some account types (ids separated by commas).
  ///
  /// In the fixed chart, the first gap in the numbers of the types' accounts, type by type; without
  /// any account `AcctPrefix` and "000" ("00000" with the parameter "Use6DigitAccounts"). In the
  /// French chart and in the user's own, the first number of the first type that no account has:
  /// the type's prefix and 000, 001 and so on, six digits in the French chart.
  std::string FindNextGLAcctId(const std::string& AcctTypeIds, const Value& AcctPrefix);

  /// Adds an account and returns its key. Its number is the next free one of `AcctTypeIds` (empty
  /// for no number), its group follows from that of the account before it.
  ///
  /// Finding the number and storing the account are two statements, so two callers may find the
  /// same number. Where the database keeps numbers unique, as the reference host does, only one of
  /// them stores its account; the other gets the engine's error, has changed nothing, and calls
  /// again. A host whose database does not must hold a lock on `GLAcct` around the call. The
  /// account is stored by one statement: it is there in whole or not at all.
  ///
  /// @param CurrencyId  the currency it is kept in; 0 or anything that is no number for none
  /// @param Descr       cut to 50 characters; empty for the type's description and the number in
  ///                    parentheses, which is cut likewise
  std::int32_t CreateGLAccount(const std::string& AcctTypeIds, bool ChqAcct, std::int32_t AcctType,
                               const Value& CurrencyId, const std::string& Descr,
                               bool CreatedByUser);

  /// The account type whose prefix an account number begins with, without regard to case: the
  /// longest prefix, of equal ones the lowest type. 0 when there is none; a type without a prefix
  /// has no numbers.
  std::int32_t FindGLAcctTypeId(const std::string& GLAcctId);

  /// Whether a number is one of the type's: whether the type that `FindGLAcctTypeId` finds for it
  /// is this one, or has the same prefix.
  bool IsAccountIdAndAccountTypeMatch(const std::string& GLAcctId, std::int32_t AcctTypeId);

  /// What `AccountType` has about a type; empty, 0 or false for an unknown one.
  std::string GetAccountTypeDescription(std::int32_t AcctTypeId);
  std::string GetAccountTypePrefix(std::int32_t AcctTypeId);
  /// 1 for the balance sheet, 2 for the income statement.
  std::int32_t GetAccountTypeTypeDefinition(std::int32_t AcctTypeId);
  bool IsReversedBalanceAccountType(std::int32_t AcctTypeId);

  /// A list of account types as the other members take it and as it can stand in a condition: whole
  /// numbers separated by ",", nothing else. The list given may separate them by commas, semicolons
  /// or blanks, or be a collection of them. Raises 13 for what is no number.
  std::string ConvertAccountTypeIds(const Value& AcctTypeIds);

  /// The types of a definition (1 balance sheet, 2 income statement), separated by ",": with
  /// `ReverseBalance` true those whose balance is normally a credit, with false the others, without
  /// it (Empty, Null or the empty text) all.
  std::string GetAccountTypeIds(std::int32_t AcctTypeDefId, const Value& ReverseBalance);

  /// Gives an account another description. Nothing happens when there is no such account.
  void ChangeAccountDescription(std::int32_t InGLAcctId, const std::string& Descr);

  /// An account as people see it: its description, after its number and " - " where the parameter
  /// "UseAccountNumbers" is on. Empty when there is no such account.
  std::string GetAccountCodeDesc(std::int32_t InGLAcctId);

  /// The number of accounts of a type that users made, or that they did not make. Errors name the
  /// method "GetAccountCount".
  std::int32_t GetGLAccountCount(bool CreatedByUser, std::int32_t AcctType);

  /// The account, the code and the rate of a tax code; 0 and empty for an unknown one.
  void FindInfoForTaxCode(std::int32_t InTaxCodeId, std::int32_t& ExAcctId, std::string& TaxCodeId,
                          double& TaxRate);

  // Bank checks. A cheque is a credit on a bank account, a deposit a debit; `DetRef` is its number,
  // `Source` and `ExSrcKeyVal` the document's. A line may have neither flag, so one question is not
  // the other's negation. An empty `Source` gives false and reads nothing.

  bool ChequeIsConciliated(const std::string& Source, const std::string& DetRef,
                           std::int32_t GLAcctId, std::int32_t ExSrcKeyVal);
  bool ChequeIsUnconciliated(const std::string& Source, const std::string& DetRef,
                             std::int32_t GLAcctId, std::int32_t ExSrcKeyVal);
  /// An `ExSrcKeyVal` of 0 takes the deposit of any document.
  bool DepositIsConciliated(const std::string& Source, const std::string& DetRef,
                            std::int32_t GLAcctId, std::int32_t ExSrcKeyVal);
  bool DepositIsUnconciliated(const std::string& Source, const std::string& DetRef,
                              std::int32_t GLAcctId);

  /// Whether a cheque was issued under the number on the bank account; false for no number. The
  /// first and the last argument are not looked at.
  bool IsCheckNumberDuplicateByAccount(const std::string& UnusedText, const std::string& ChqNo,
                                       std::int32_t GLAcctId, const Value& UnusedObject);

 private:
  using Where = std::source_location;
  using OpenRange = Ref<Recordset> (CGeneralLedgerQueries::*)(std::int32_t, Date, Date,
                                                              const std::string&,
                                                              const std::string&);
  /// One member's account, dates and filters.
  struct Range {
    std::int32_t account;
    Date from;
    Date to;
    const std::string& condition;
    const std::string& projects;
  };

  /// The query object answers on this helper's connection.
  void handOn(const Ref<Connection>& connection) override;

  // The steps below carry the line of the caller.

  /// Reads a field of a statement's first row.
  template <class T>
  void readFirst(Steps& step, const Statement& statement, Pass pass, const std::string& column,
                 T& value, Where where = Where::current()) {
    const Ref<Recordset> rows = open(step, statement, pass, {}, where);
    if (hasRow(step, rows, where)) readField(step, rows, column, value, where);
    step([&] { rows->Close(); }, where);
  }
  /// Reads a column of all rows, separated by ",".
  void readList(Steps& step, const Statement& statement, Pass pass, const std::string& column,
                std::string& list, Where where = Where::current());
  bool anyRow(Steps& step, const Statement& statement, Pass pass, Where where = Where::current());

  /// The text of a company setting, read in the caller's statement.
  std::string companySetting(Steps& step, const std::string& name);
  /// Whether an application parameter is on; one that was never set is off.
  bool parameterIsOn(Steps& step, const std::string& name, Where where = Where::current());
  void readEarningsAccounts(Steps& step, Where where = Where::current());
  void readBalance(Steps& step, OpenRange openRange, RecordsetCache& cache, Range range,
                   Currency& result, Where where = Where::current());
  void readBudget(Steps& step, std::string_view budget, std::int32_t key,
                  const std::string& condition, Date from, Date to, Currency& result,
                  Where where = Where::current());
  /// The first number that is free after those of the accounts of some types, 0 without accounts.
  static std::int64_t firstGap(Steps& step, const Ref<Recordset>& accounts,
                               const std::vector<std::int32_t>& types,
                               Where where = Where::current());
  /// The group of the account with the greatest number below a new one, 0 where there is none.
  std::int32_t previousGroupType(Steps& step, const std::string& number,
                                 Where where = Where::current());

  Ref<CGeneralLedgerQueries> queries_ = make<CGeneralLedgerQueries>();
  std::int32_t currentEarnAcctId_ = 0;
  std::int32_t retainEarnAcctId_ = 0;
  RecordsetCache balances_;
  RecordsetCache remittances_;
  RecordsetCache retainedEarnings_;
  ValueCache fiscalYears_;
};

}  // namespace QuorAccQueries
