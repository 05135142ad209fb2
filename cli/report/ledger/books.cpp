#include "cli/report/ledger/books.h"

#include "cli/report/period.h"
#include "cli/report/subject.h"
#include "core/mutils.h"

namespace QuorCli {

using QuorAccQueries::CGeneralLedgerHelper;
using QuorAccQueries::CGeneralLedgerQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Parameters;
using QuorDataLib::Value;

namespace {

constexpr std::int32_t kIncomeStatement = 2;

/// Accounts that meet a condition, by statement, type and number.
std::vector<LedgerAccount> readAccounts(const Session& session, const std::string& condition,
                                        const Parameters& parameters) {
  const auto rows = readBeside(
      *session.store(),
      "SELECT GLAcct.InGLAcctId, GLAcct.GLAcctId, GLAcct.Descr, GLAcct.ExCurrencyId, "
      "GLAcct.ChqAcct, GLAcct.AcctType, AccountType.Description, AccountType.ExAcctTypeDefId, "
      "AccountType.ReverseBalance "
      "FROM GLAcct LEFT JOIN AccountType ON AccountType.ID = GLAcct.AcctType" +
          condition +
          " ORDER BY AccountType.ExAcctTypeDefId, AccountType.AcctPrefix, AccountType.ID, "
          "GLAcct.GLAcctId, GLAcct.InGLAcctId",
      parameters);
  std::vector<LedgerAccount> accounts;
  const auto field = [&](std::int32_t index) {
    const Value value = rows->Field(index);
    return value.isNull() ? Value() : value;
  };
  for (; !rows->AtEnd(); rows->MoveNext()) {
    LedgerAccount account;
    account.key = field(0).toLong();
    account.code = field(1).toText();
    account.name = field(2).toText();
    account.currency = field(3).toLong();
    account.bank = field(4).toBoolean();
    account.type = field(5).toLong();
    account.typeName = field(6).toText();
    if (account.typeName.empty()) {
      account.typeName =
          account.type == 0 ? "Without a type" : "Type " + std::to_string(account.type);
    }
    account.onIncomeStatement = field(7).toLong() == kIncomeStatement;
    account.reversed = field(8).toBoolean();
    accounts.push_back(std::move(account));
  }
  return accounts;
}

}  // namespace

Books::Books(const RunOptions& options, Console& console)
    : session_(options, QuorHost::Access::Read, console),
      snapshot_(session_.store()->hold()),
      company_(readCompany(session_)),
      helper_(QuorDataLib::make<CGeneralLedgerHelper>()),
      queries_(QuorDataLib::make<CGeneralLedgerQueries>()) {
  if (!options.defaultConnection) {
    helper_->SetCustomConnection(session_.connection());
    queries_->SetCustomConnection(session_.connection());
  }
  // One statement for the balances of all accounts, where the company allows it.
  helper_->SetCacheRecordsets(true);
}

std::vector<LedgerAccount> Books::accounts() const { return readAccounts(session_, "", {}); }

LedgerAccount Books::account(const std::string& word) const {
  const Subject subject = findSubject(kAccounts, word, *session_.store());
  return readAccounts(session_, " WHERE GLAcct.InGLAcctId = ?", Parameters::array({subject.key}))
      .at(0);
}

Date Books::fiscalYearStart(Date day) const {
  return QuorAccQueries::MUtils::QuorCastriaFoundation()
      ->Application()
      ->Company()
      ->GetFiscalYearStartDate(day);
}

std::int32_t Books::currentEarningsAccount() const {
  return QuorAccQueries::MUtils::GetAcctParamLong("GLCurntEarn", 0, session_.connection());
}

Currency Books::balance(const LedgerAccount& account, Date day) {
  const bool ignoreFiscalYear = false;
  const std::string noCondition;
  return helper_->GetAcctBalance(account.key, account.type, account.currency, endOfDay(day),
                                 company_.homeCurrency, false, 0, 0, ignoreFiscalYear, noCondition);
}

}  // namespace QuorCli
