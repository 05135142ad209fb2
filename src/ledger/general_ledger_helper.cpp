// The member table; the members are in the files beside this one.
#include "ledger/general_ledger_helper.h"

namespace QuorAccQueries {

namespace {

using Self = CGeneralLedgerHelper;

std::vector<Member> balanceMembers() {
  return {
      method<&Self::GetAcctBalance>(
          "GetAcctBalance",
          {"AcctId", "AcctType", "AcctCurrencyId", "AsOfDate", "HomeCurrencyId", "UseForeignAmnt",
           "SegmentId", "ProjId", unwritten("IgnoreFiscalYear"), unwritten("ExtraCondition")},
          "An account's balance at a date, by the rules of the fiscal year and of the two "
          "earnings accounts."),
      method<&Self::GetAcctBalanceRange>(
          "GetAcctBalanceRange",
          {"AcctId", "FromDate", "ToDate", unwritten("ExtraCondition"), unwritten("ProjIdList")},
          "What an account's lines of a period come to."),
      method<&Self::GetAcctBalanceRangeTotRemittence>(
          "GetAcctBalanceRangeTotRemittence",
          {"AcctId", "FromDate", "ToDate", unwritten("ExtraCondition"), unwritten("ProjIdList")},
          "What payroll remittances for the periods between two days come to on an account."),
      method<&Self::GetAcctBalanceRangeForeign>(
          "GetAcctBalanceRangeForeign",
          {"AcctId", "FromDate", "ToDate", unwritten("ExtraCondition"), unwritten("ProjIdList"),
           "CurrencyId", "AcctBalance"},
          "What the lines of an account kept in a currency come to, in it and in home currency."),
      method<&Self::RetainedEarnings>("RetainedEarnings",
                                      {"FiscalYearStart", unwritten("ExtraCondition")},
                                      "The earnings of all years before; a profit is negative."),
      method<&Self::CurrentEarnings>("CurrentEarnings",
                                     {"FromDate", "ToDate", unwritten("ExtraCondition")},
                                     "The earnings of a period; a profit is negative."),
      method<&Self::GetAcctCurrency>("GetAcctCurrency", {"AcctId"},
                                     "The currency that an account is kept in."),
      method<&Self::CheckAccountBalance>("CheckAccountBalance", {"AcctId", "AsOfDate"},
                                         "A sentence about an account's balance."),
      method<&Self::GetTotalEarnings>("GetTotalEarnings", {"FromDate", "ToDate"},
                                      "The sales of a period, in home currency."),
      method<&Self::GetAcctBudget>("GetAcctBudget", {"AcctId", "FromDate", "ToDate"},
                                   "The budget of an account."),
      method<&Self::GetAcctSegmentBudget>("GetAcctSegmentBudget",
                                          {"SegmentBudgetId", "Condition", "FromDate", "ToDate"},
                                          "The budget of an account by segment."),
      method<&Self::GetSeqNoFromExSrcKeyVal>("GetSeqNoFromExSrcKeyVal", {"Source", "ExSrcKeyVal"},
                                             "The ledger transactions of a document."),
      method<&Self::AcctIsUsedInTransaction>("AcctIsUsedInTransaction", {"AcctId", "CurrencyId"},
                                             "Whether anything names an account."),
  };
}

std::vector<Member> chartMembers() {
  return {
      method<&Self::FindNextGLAcctId>("FindNextGLAcctId", {"AcctTypeIds", "AcctPrefix"},
                                      "The next free account number."),
      method<&Self::CreateGLAccount>(
          "CreateGLAccount",
          {"AcctTypeIds", "ChqAcct", "AcctType", "CurrencyId", "Descr", "CreatedByUser"},
          "Adds an account and gives its key."),
      method<&Self::FindGLAcctTypeId>("FindGLAcctTypeId", {"GLAcctId"},
                                      "The account type that a number belongs to."),
      method<&Self::IsAccountIdAndAccountTypeMatch>("IsAccountIdAndAccountTypeMatch",
                                                    {"GLAcctId", "AcctTypeId"},
                                                    "Whether a number is one of a type's."),
      method<&Self::GetAccountTypeDescription>("GetAccountTypeDescription", {"AcctTypeId"},
                                               "The description of an account type."),
      method<&Self::GetAccountTypePrefix>("GetAccountTypePrefix", {"AcctTypeId"},
                                          "What the numbers of an account type begin with."),
      method<&Self::GetAccountTypeTypeDefinition>(
          "GetAccountTypeTypeDefinition", {"AcctTypeId"},
          "1 for a type of the balance sheet, 2 for one of the income statement."),
      method<&Self::IsReversedBalanceAccountType>(
          "IsReversedBalanceAccountType", {"AcctTypeId"},
          "Whether balances of a type are normally credits."),
      method<&Self::ConvertAccountTypeIds>("ConvertAccountTypeIds", {"AcctTypeIds"},
                                           "A list of account types as the other members take it."),
      method<&Self::GetAccountTypeIds>("GetAccountTypeIds", {"AcctTypeDefId", "ReverseBalance"},
                                       "The account types of a definition."),
      method<&Self::ChangeAccountDescription>("ChangeAccountDescription", {"InGLAcctId", "Descr"},
                                              "Gives an account another description."),
      method<&Self::GetAccountCodeDesc>("GetAccountCodeDesc", {"InGLAcctId"},
                                        "An account's description, with its number where used."),
      method<&Self::GetGLAccountCount>("GetGLAccountCount", {"CreatedByUser", "AcctType"},
                                       "The number of accounts of a type."),
      method<&Self::FindInfoForTaxCode>("FindInfoForTaxCode",
                                        {"InTaxCodeId", "ExAcctId", "TaxCodeId", "TaxRate"},
                                        "A tax code's account, code and rate."),
  };
}

std::vector<Member> bankMembers() {
  return {
      method<&Self::ChequeIsConciliated>("ChequeIsConciliated",
                                         {"Source", "DetRef", "GLAcctId", "ExSrcKeyVal"},
                                         "Whether a cheque is reconciled with the bank."),
      method<&Self::ChequeIsUnconciliated>("ChequeIsUnconciliated",
                                           {"Source", "DetRef", "GLAcctId", "ExSrcKeyVal"},
                                           "Whether a cheque was missing at a reconciliation."),
      method<&Self::DepositIsConciliated>("DepositIsConciliated",
                                          {"Source", "DetRef", "GLAcctId", "ExSrcKeyVal"},
                                          "Whether a deposit is reconciled with the bank."),
      method<&Self::DepositIsUnconciliated>("DepositIsUnconciliated",
                                            {"Source", "DetRef", "GLAcctId"},
                                            "Whether a deposit was missing at a reconciliation."),
      method<&Self::IsCheckNumberDuplicateByAccount>(
          "IsCheckNumberDuplicateByAccount", {"UnusedText", "ChqNo", "GLAcctId", "UnusedObject"},
          "Whether a cheque number is taken on a bank account."),
  };
}

}  // namespace

const ClassInfo& CGeneralLedgerHelper::info() {
  static const ClassInfo info = describeClass<CGeneralLedgerHelper>(
      "General ledger values: balances, earnings, budgets, the chart of accounts, bank checks.",
      joined(HelperFrame::members(),
             joined({commandTimeoutLine<Self>()},
                    joined(joined(balanceMembers(), chartMembers()), bankMembers()))));
  return info;
}

void CGeneralLedgerHelper::handOn(const Ref<Connection>& connection) {
  queries_->SetCustomConnection(connection);
}

void CGeneralLedgerHelper::SetCustomCommandTimeout(std::int32_t Timeout) {
  HelperFrame::SetCustomCommandTimeout(Timeout);
  queries_->SetCustomCommandTimeout(Timeout);
}

}  // namespace QuorAccQueries
