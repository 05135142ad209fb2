// The ledger as its reports read it: the chart of accounts, and the component's members for
// figures.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/report/company_facts.h"
#include "cli/session.h"
#include "cli/words/options.h"
#include "ledger/general_ledger_helper.h"
#include "ledger/general_ledger_queries.h"

namespace QuorCli {

struct LedgerAccount {
  std::int32_t key = 0;
  std::string code;
  std::string name;
  std::int32_t currency = 0;
  bool bank = false;
  /// Its type: 0 and a name of its own where the company has no such type.
  std::int32_t type = 0;
  std::string typeName;
  bool onIncomeStatement = false;
  /// Whether its balance is normally a credit.
  bool reversed = false;

  /// An amount of the ledger as it stands on a statement: what is normal for the account is
  /// positive.
  [[nodiscard]] QuorDataLib::Currency shown(QuorDataLib::Currency amount) const {
    return reversed ? -amount : amount;
  }
};

/// Whether accounts that meet `belongs` are of several types, so that types are worth a heading.
template <class Belongs>
[[nodiscard]] bool severalTypes(const std::vector<LedgerAccount>& accounts, Belongs belongs) {
  const LedgerAccount* first = nullptr;
  for (const LedgerAccount& account : accounts) {
    if (!belongs(account)) continue;
    if (first != nullptr && first->type != account.type) return true;
    first = &account;
  }
  return false;
}

/// A company's ledger at one moment: what others write meanwhile is not seen.
class Books {
 public:
  Books(const RunOptions& options, Console& console);

  [[nodiscard]] const CompanyFacts& company() const noexcept { return company_; }
  [[nodiscard]] Session& session() noexcept { return session_; }

  /// All accounts: those of the balance sheet first, by type and number.
  [[nodiscard]] std::vector<LedgerAccount> accounts() const;
  /// The account of a code or key. Raises `Failure` as `findSubject` does.
  [[nodiscard]] LedgerAccount account(const std::string& word) const;

  /// Before the first line that a ledger can have: the members take dates as they are given.
  [[nodiscard]] static QuorDataLib::Date firstDay() { return QuorDataLib::Date::of(1900, 1, 1); }
  [[nodiscard]] QuorDataLib::Date fiscalYearStart(QuorDataLib::Date day) const;
  /// The account that the year's profit is shown on; 0 where none is set.
  [[nodiscard]] std::int32_t currentEarningsAccount() const;

  /// The balance at the end of a day in home currency, as `GetAcctBalance` gives it: earnings of
  /// the year and of those before are part of their two accounts.
  [[nodiscard]] QuorDataLib::Currency balance(const LedgerAccount& account, QuorDataLib::Date day);

  [[nodiscard]] QuorAccQueries::CGeneralLedgerHelper& helper() noexcept { return *helper_; }
  [[nodiscard]] QuorAccQueries::CGeneralLedgerQueries& queries() noexcept { return *queries_; }

 private:
  Session session_;
  std::unique_ptr<QuorHost::Snapshot> snapshot_;
  CompanyFacts company_;
  QuorDataLib::Ref<QuorAccQueries::CGeneralLedgerHelper> helper_;
  QuorDataLib::Ref<QuorAccQueries::CGeneralLedgerQueries> queries_;
};

}  // namespace QuorCli
