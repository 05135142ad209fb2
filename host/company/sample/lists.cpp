#include "host/company/sample/lists.h"

#include <array>
#include <string>

#include "host/company/sample/accounts.h"
#include "host/company/sample/calendar.h"
#include "host/company/sample/money.h"
#include "host/company/sample/stock/stock.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Date;
using QuorDataLib::Value;

struct Project {
  const char* code;
  const char* description;
  int firstDay;
  int lastDay;  // past the sample's last day for one that goes on
};
constexpr std::array<Project, kAllProjects> kProjectList{{
    {"P22-01", "École Saint-Jean-Baptiste, agrandissement", 20, 420},
    {"P22-02", "Harbourfront condominiums, phase 1", 60, 560},
    {"P22-03", "Réfection de la toiture de l'aréna", 150, 330},
    {"P23-01", "Northgate warehouse", 370, 800},
    {"P23-02", "Clinique des Érables", 450, 980},
    {"P24-01", "Riverside Public Library", 700, kDays + 100},
    {"P24-02", "Coopérative d'habitation Le Carrefour", 760, kDays + 100},
    {"P24-03", "Fire hall no. 6", 900, kDays + 100},
    {"P23-90", "Nouvel entrepôt, aménagement / New warehouse", 480, kDays + 100},
    {"P23-91", "Licences et redevances / Licence fees", 400, 1'020},
}};

struct SegmentName {
  std::int32_t id;
  const char* code;
  const char* description;
};
constexpr std::array<SegmentName, 4> kSegments{
    {{1, "MTL", "Montréal"}, {2, "TOR", "Toronto"}, {3, "CAL", "Calgary"}, {4, "EXP", "Exports"}}};

void writeFiscalYears(Store& store) {
  Table years(store, "FiscalYearHdr", {"ID", "Descr", "BegDate", "EndDate"});
  Table periods(store, "FiscalYearDet", {"ID", "ExID", "BegDate", "EndDate"});
  for (int year = 0; year < kFiscalYears; ++year) {
    const Date first = Date::of(kFirstYear + year, kFirstMonth, 1);
    const int last = kFirstYear + year + 1;
    years.add({year + 1, std::to_string(kFirstYear + year) + "-" + std::to_string(last), first,
               first.addMonths(12).addDays(-1)});
    for (int month = 0; month < 12; ++month) {
      periods.add({(year * 12) + month + 1, year + 1, first.addMonths(month),
                   first.addMonths(month + 1).addDays(-1)});
    }
  }
}

}  // namespace

bool projectRuns(std::int32_t project, int day) {
  const Project& each = kProjectList.at(static_cast<std::size_t>(project) - 1);
  return day >= each.firstDay && day <= each.lastDay;
}

bool projectRunsWithin(std::int32_t project, Date from, Date to) {
  const Project& each = kProjectList.at(static_cast<std::size_t>(project) - 1);
  return dateOf(each.firstDay) <= to && dateOf(each.lastDay) >= from;
}

void writeLists(Store& store, Chart chart) {
  Table company(store, "CieInfo",
                {"InCieId", "Name", "HomeCurrencyId", "ForeignCurrencyUsed", "AccountTypeChart",
                 "SessionDate", "ExGLAcctCurrencyId"});
  company.add({1, "Les Matériaux Boréal / Boreal Supply inc.", kHomeCurrency, true,
               static_cast<std::int32_t>(chart), dateOf(kDays - 1), Acct::kExchangeDifferences});

  writeFiscalYears(store);

  Table currencies(store, "WorldCurrency",
                   {"InCurrencyId", "CurrencyCode", "Descr", "UseCustomRate", "ExGLAcctId",
                    "ExCustAcctId", "ExSuppAcctId"});
  for (const SampleCurrency& each : kCurrencies) {
    currencies.add({each.id, each.code, each.description, each.id == kEuro, each.bankAccount,
                    each.receivablesAccount, each.payablesAccount});
  }

  Table segments(store, "Segment", {"InSegmentId", "SegmentId", "Descr"});
  for (const SegmentName& each : kSegments) segments.add({each.id, each.code, each.description});

  Table warehouses(store, "Warehouse", {"InWarehouseId", "WarehouseId", "Descr", "ExSegmentId"});
  for (std::int32_t i = 0; i < kWarehouses; ++i) {
    const SegmentName& place = kSegments.at(static_cast<std::size_t>(i));
    warehouses.add({place.id, std::string("W-") + place.code,
                    std::string("Entrepôt / Warehouse ") + place.description, place.id});
  }

  Table projects(store, "Proj",
                 {"InProjId", "ProjId", "Descr", "BegDate", "EndDate", "ProjInactive"});
  std::int32_t id = 0;
  for (const Project& each : kProjectList) {
    const bool over = each.lastDay < kDays;
    projects.add({++id, each.code, each.description, dateOf(each.firstDay),
                  over ? Value(dateOf(each.lastDay)) : Value::null(), over});
  }
}

}  // namespace QuorHost::Sample
