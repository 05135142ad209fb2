#include "cli/report/due/recurring.h"

#include "cli/report/company_facts.h"

namespace QuorCli {

using QuorAccQueries::CTermHelper;
using QuorAccQueries::CTrxRecHelper;
using QuorDataLib::Date;
using QuorDataLib::Value;

namespace {

/// Every schedule with what its model leaves to be paid. A journal entry moves what its lines on
/// bank accounts come to. Orders and receptions leave nothing to be paid.
constexpr const char* kSchedules =
    "SELECT TrxRec.TrxType, TrxRec.ExTrxId, InvoiHdr.Balance AS Amount, InvoiHdr.ExCurrencyId, "
    "InvoiHdr.ExchangeRate, InvoiHdr.ExTermId FROM TrxRec "
    "INNER JOIN InvoiHdr ON InvoiHdr.InInvoiId = TrxRec.ExTrxId "
    "WHERE TrxRec.TrxType = 1 AND InvoiHdr.InvoiType <> 51 "
    "UNION ALL SELECT TrxRec.TrxType, TrxRec.ExTrxId, -PurcHdr.Balance, PurcHdr.ExCurrencyId, "
    "PurcHdr.ExchangeRate, PurcHdr.ExTermId FROM TrxRec "
    "INNER JOIN PurcHdr ON PurcHdr.InPurcId = TrxRec.ExTrxId "
    "WHERE TrxRec.TrxType = 2 AND PurcHdr.PurcType NOT IN (51, 52) "
    "UNION ALL SELECT TrxRec.TrxType, TrxRec.ExTrxId, "
    "(SELECT SUM(GJTrxDet.Amount) FROM GJTrxDet "
    "INNER JOIN GLAcct ON GLAcct.InGLAcctId = GJTrxDet.ExGLAcctId "
    "WHERE GJTrxDet.ExGJTrxId = GJTrxHdr.InGJTrxId AND GLAcct.ChqAcct = 1), "
    "GJTrxHdr.ExCurrencyId, GJTrxHdr.ExchangeRate, NULL FROM TrxRec "
    "INNER JOIN GJTrxHdr ON GJTrxHdr.InGJTrxId = TrxRec.ExTrxId WHERE TrxRec.TrxType = 3 "
    "ORDER BY 1, 2";

}  // namespace

Recurring::Recurring(const RunOptions& options, Session& session)
    : session_(session),
      schedules_(QuorDataLib::make<CTrxRecHelper>()),
      terms_(QuorDataLib::make<CTermHelper>()) {
  if (options.defaultConnection) return;
  schedules_->SetCustomConnection(session_.connection());
  terms_->SetCustomConnection(session_.connection());
}

ScheduleCount Recurring::forEachRun(Date day, Date until,
                                    const std::function<void(const ScheduledCash&)>& tell) {
  ScheduleCount count;
  const auto rows = readBeside(*session_.store(), kSchedules);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    std::int16_t frequency = 0;
    Date lastRun;
    Date next;
    schedules_->GetTrxRecInfo(rows->Field(0).toLong(), rows->Field(1).toLong(), frequency, lastRun,
                              next);
    ++(next.empty() ? count.ended : count.running);
    if (!next.empty() && next < day) ++count.late;
    const Value amount = rows->Field(2);
    if (amount.isNull() || amount.toCurrency().isZero()) continue;
    const Value currency = rows->Field(3);
    const Value term = rows->Field(5);
    while (!next.empty() && next <= until) {
      tell({.due = term.isNull() ? next : terms_->GetDueDate(term.toLong(), next),
            .amount = amount.toCurrency(),
            .currencyId = currency.isNull() ? 1 : currency.toLong(),
            .rate = rows->Field(4)});
      next = schedules_->GetNextDate(next, frequency);
    }
  }
  return count;
}

}  // namespace QuorCli
