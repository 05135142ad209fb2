#include "host/company/sample/ledger.h"

#include "host/company/sample/calendar.h"
#include "host/company/sample/random.h"

namespace QuorHost::Sample {

namespace {

constexpr int kLastStatement = kDays - 32;  // 2025-02-28
constexpr int kNeverCashedPerMille = 4;

}  // namespace

Ledger::Ledger(Store& store)
    : lines_(store, "GLDet",
             {"SeqNo", "DetDate", "Source", "ExSrcKeyVal", "DetRef", "DetDesc", "ExAcctId",
              "DetAmnt", "ForeignAmnt", "ExCurrencyID", "ExProjId", "ExSegmentId", "Conciliated",
              "Unconciliated"}),
      balances_(kAccountsEnd) {}

void Ledger::begin(const Heading& heading, std::int32_t sequence) {
  heading_ = heading;
  current_ = sequence == 0 ? ++sequence_ : sequence;
}

void Ledger::line(std::int32_t account, Cents home, Cents foreign) {
  if (home == 0 && foreign == 0) return;
  open_ += home;
  balances_.at(static_cast<std::size_t>(account)) += home;
  const bool ofProject = account >= Acct::kSales || account == Acct::kProjectHours ||
                         account == Acct::kUnrecordedServices;
  const Bank bank = reconciled(account, home > 0);
  lines_.add({current_, dateOf(heading_.day), heading_.source, heading_.key, heading_.reference,
              heading_.description, account, money(home), money(foreign), heading_.currency,
              keyOrNull(ofProject ? heading_.project : 0), keyOrNull(heading_.segment),
              bank == Bank::Conciliated, bank == Bank::Unconciliated});
}

/// Deposits are at the bank the next day, cheques after days or weeks. Chance is the transaction's
/// own, so that no other part of the sample depends on it.
Ledger::Bank Ledger::reconciled(std::int32_t account, bool deposit) const {
  const bool ofBank =
      account == Acct::kHomeBank || account == Acct::kDollarBank || account == Acct::kEuroBank;
  if (!ofBank || heading_.day > kLastStatement) return Bank::NotYet;
  Random random(static_cast<std::uint64_t>(current_));
  const int onTheWay = deposit ? 1 : random.between(1, 9) + (random.chance(100) ? 20 : 0);
  const bool neverCashed = !deposit && random.chance(kNeverCashedPerMille);
  return heading_.day + onTheWay > kLastStatement || neverCashed ? Bank::Unconciliated
                                                                 : Bank::Conciliated;
}

void Ledger::end() {
  if (open_ == 0) return;
  QuorDataLib::raise(
      QuorDataLib::ErrorNumber::InternalError,
      "The sample's ledger transaction " + std::to_string(current_) + " does not balance");
}

}  // namespace QuorHost::Sample
