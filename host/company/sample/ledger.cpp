#include "host/company/sample/ledger.h"

#include "host/company/sample/calendar.h"

namespace QuorHost::Sample {

Ledger::Ledger(Store& store)
    : lines_(store, "GLDet",
             {"SeqNo", "DetDate", "Source", "ExSrcKeyVal", "DetRef", "DetDesc", "ExAcctId",
              "DetAmnt", "ForeignAmnt", "ExCurrencyID", "ExProjId", "ExSegmentId", "Conciliated",
              "Unconciliated"}),
      balances_(kAccountsEnd) {}

void Ledger::begin(const Heading& heading) {
  heading_ = heading;
  ++sequence_;
}

void Ledger::line(std::int32_t account, Cents home, Cents foreign) {
  if (home == 0 && foreign == 0) return;
  open_ += home;
  balances_.at(static_cast<std::size_t>(account)) += home;
  const bool ofProject = account >= Acct::kSales || account == Acct::kProjectHours ||
                         account == Acct::kUnrecordedServices;
  lines_.add({sequence_, dateOf(heading_.day), heading_.source, heading_.key, heading_.reference,
              heading_.description, account, money(home), money(foreign), heading_.currency,
              keyOrNull(ofProject ? heading_.project : 0), keyOrNull(heading_.segment), false,
              false});
}

void Ledger::end() {
  if (open_ == 0) return;
  QuorDataLib::raise(
      QuorDataLib::ErrorNumber::InternalError,
      "The sample's ledger transaction " + std::to_string(sequence_) + " does not balance");
}

void Ledger::transfer(int day, std::string_view description, std::int32_t from, std::int32_t to,
                      Cents amount) {
  ++journal_;
  const std::string reference = "GJ" + std::to_string(journal_);
  begin({.day = day,
         .source = "GJ",
         .key = journal_,
         .reference = reference,
         .description = description});
  line(to, amount, amount);
  line(from, -amount, -amount);
  end();
}

}  // namespace QuorHost::Sample
