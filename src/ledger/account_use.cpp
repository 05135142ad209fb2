// Whether an account is used anywhere.
#include "core/statement.h"
#include "ledger/account_use_sql.h"
#include "ledger/general_ledger_helper.h"

namespace QuorAccQueries {

namespace Sql = AccountUseSql;

namespace {

Statement lookUp(const Sql::Use& use, std::int32_t account) {
  Statement statement;
  for (const std::string_view piece : {use.first, use.second, use.third}) {
    if (!piece.empty()) statement.text(piece).number(account);
  }
  return statement;
}

}  // namespace

bool CGeneralLedgerHelper::AcctIsUsedInTransaction(std::int32_t AcctId, std::int32_t CurrencyId) {
  return trap("AcctIsUsedInTransaction", [&](Steps& step, bool& result) {
    for (const Sql::Use& use : Sql::kUses) {
      result = anyRow(step, lookUp(use, AcctId), Pass::Nothing);
      if (result) return;
    }
    if (CurrencyId == 0) {
      result = anyRow(step, lookUp(Sql::kCurrencies, AcctId), Pass::Nothing);
    } else {
      Statement others = lookUp(Sql::kOtherCurrencies, AcctId);
      others.text(Sql::kThanCurrency).number(CurrencyId);
      result = anyRow(step, others, Pass::Nothing);
    }
  });
}

}  // namespace QuorAccQueries
