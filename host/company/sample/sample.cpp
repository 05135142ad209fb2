#include "host/company/sample/sample.h"

#include "host/company/sample/accounts.h"
#include "host/company/sample/banking.h"
#include "host/company/sample/budgets.h"
#include "host/company/sample/calendar.h"
#include "host/company/sample/lists.h"
#include "host/company/sample/payroll.h"
#include "host/company/sample/plans/project_budgets.h"
#include "host/company/sample/plans/schedules.h"
#include "host/company/sample/stock/items.h"
#include "host/company/sample/stock/stock_room.h"
#include "host/company/sample/trade/payables.h"
#include "host/company/sample/trade/receivables.h"
#include "host/company/sample/trade/terms.h"

namespace QuorHost::Sample {

namespace {

constexpr int kProgressDays = 4;  // a report every so many days

}  // namespace

void writeSample(Store& store, const CreateOptions& options, const Progress& progress) {
  Random random(options.seed);
  const std::int32_t scale = options.scale;
  writeLists(store, options.chart);
  writeAccounts(store, options.chart);
  writeTerms(store);
  writeBudgets(store, scale);
  writeProjectBudgets(store, scale);
  writeItems(store);
  const Rates rates(random.next());
  std::vector<Party> customers = writeCustomers(store, random.fork(), 40 + 20 * scale);
  std::vector<Party> suppliers = writeSuppliers(store, random.fork(), 16 + 4 * scale);

  Ledger ledger(store);
  Stock stock(store, ledger);
  StockRoom stockRoom(store, stock, scale, random.fork());
  Receivables receivables(store, ledger, stock, rates, std::move(customers), scale * 1'000LL,
                          random.fork());
  Payables payables(store, ledger, stock, stockRoom, rates, std::move(suppliers), scale * 200LL,
                    random.fork());
  Payroll payroll(store, ledger, scale, random.fork());
  Banking banking(store, ledger, rates, scale);
  for (int day = 0; day < kDays; ++day) {
    receivables.day(day);
    payables.day(day);
    stockRoom.day(day);
    stock.endDay(day);
    payroll.day(day);
    banking.day(day);
    if (progress && day % kProgressDays == 0) progress("writing the sample", day, kDays);
  }
  writeSchedules(store, {&receivables.schedules(), &payables.schedules(), &banking.schedules()});
  if (progress) progress("writing the sample", kDays, kDays);
}

}  // namespace QuorHost::Sample
