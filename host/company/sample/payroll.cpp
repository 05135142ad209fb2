#include "host/company/sample/payroll.h"

#include <string_view>

#include "host/company/sample/calendar.h"
#include "host/company/sample/directory.h"
#include "host/company/sample/lists.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;

namespace PayKind {
constexpr std::int32_t kDeduction = 1;
constexpr std::int32_t kContribution = 2;
constexpr std::int32_t kAmount = 3;
constexpr std::int32_t kHours = 4;
}  // namespace PayKind

struct Code {
  const char* code;
  const char* description;
  std::int32_t kind;
  std::int32_t liability;
  std::int32_t expense;
  /// Thousandths of a percent of what is paid; 0 for hours.
  std::int32_t rate;
};

constexpr std::array<Code, Payroll::kPayCodes> kCodes{{
    {"REG", "Heures régulières / Regular hours", PayKind::kHours, 0, Acct::kWages, 0},
    {"SUP", "Heures supplémentaires / Overtime", PayKind::kHours, 0, Acct::kWages, 0},
    {"VAC", "Vacances / Vacation pay", PayKind::kAmount, 0, Acct::kWages, 4'000},
    {"FED", "Federal income tax", PayKind::kDeduction, Acct::kFederalDeductions, 0, 9'200},
    {"IMP", "Impôt du Québec", PayKind::kDeduction, Acct::kQuebecDeductions, 0, 10'400},
    {"RRQ", "Régime de rentes du Québec", PayKind::kDeduction, Acct::kQuebecDeductions, 0, 6'400},
    {"EI", "Employment insurance", PayKind::kDeduction, Acct::kFederalDeductions, 0, 1'320},
    {"RRQE", "Régime de rentes, employeur", PayKind::kContribution, Acct::kQuebecDeductions,
     Acct::kContributions, 6'400},
    {"EIE", "Employment insurance, employer", PayKind::kContribution, Acct::kFederalDeductions,
     Acct::kContributions, 1'848},
    {"FSS", "Fonds des services de santé", PayKind::kContribution, Acct::kQuebecDeductions,
     Acct::kContributions, 1'650},
}};
constexpr std::int32_t kRegular = 1;
constexpr std::int32_t kOvertime = 2;
constexpr std::int32_t kVacation = 3;

constexpr std::int64_t kWhole = 100'000;
constexpr int kPayDays = 14;
constexpr int kFirstPayDay = 6;  // a Thursday
constexpr int kRemittanceDay = 15;
constexpr std::int32_t kHoursOnOwnProject = 18;

}  // namespace

Payroll::Payroll(Store& store, Ledger& ledger, std::int32_t scale, Random random)
    : ledger_(ledger),
      random_(random),
      pays_(store, "TrxPay",
            {"InTrxPayId", "ExEmplId", "ChqDate", "ChqNb", "PeriodBeg", "PeriodEnd", "GrossAmnt",
             "NetAmnt", "Canceled", "ExGLAcctId"}),
      payLines_(
          store, "TrxPayDetails",
          {"ExTrxPayId", "ExPayCodeId", "Units", "Rate", "Amount", "ExProjId", "ExSegmentId"}),
      remittances_(store, "RPDPmtHdr",
                   {"InRPDPmtId", "ChqNo", "ChqDate", "DateFrom", "DateTo", "PayTo", "ChqAmnt",
                    "ExGLAcctId"}),
      remittanceLines_(store, "RPDPmtDet", {"ExRPDPmtId", "ExPayCodeId", "Amount", "ExGLAcctId"}) {
  Table codes(store, "PayCode",
              {"InPayCodeId", "PayCodeId", "Descr", "PayCodeType", "ExLiaAcct", "ExExpAcct"});
  std::int32_t id = 0;
  for (const Code& each : kCodes) {
    codes.add({++id, each.code, each.description, each.kind, keyOrNull(each.liability),
               keyOrNull(each.expense)});
  }
  hire(store, scale + 1);
}

void Payroll::hire(Store& store, std::int32_t count) {
  Table table(store, "Empl",
              {"InEmplId", "EmplId", "FirstName", "LastName", "NameLang", "HireDate", "EndDate",
               "HourlyRate"});
  for (std::int32_t id = 1; id <= count; ++id) {
    const bool french = random_.chance(600);
    Employee employee{.id = id,
                      .name = makePerson(random_, french),
                      .rate = random_.between(1'750, 3'600),
                      .segment = random_.chance(600) ? 1 : random_.between(2, 3),
                      .firstDay = random_.chance(700) ? 0 : random_.between(0, kDays / 2),
                      .lastDay = kDays};
    if (id % 9 == 0) employee.lastDay = random_.between(kDays / 2, kDays - 30);
    const std::size_t blank = employee.name.find(' ');
    table.add({id, "E" + std::to_string(100 + id), employee.name.substr(0, blank),
               blank == std::string::npos ? std::string() : employee.name.substr(blank + 1),
               static_cast<std::int16_t>(french ? 2 : 1), dateOf(employee.firstDay),
               employee.lastDay < kDays ? Value(dateOf(employee.lastDay)) : Value::null(),
               money(employee.rate)});
    employees_.push_back(std::move(employee));
  }
}

void Payroll::day(int day) {
  if (day % kPayDays == kFirstPayDay) {
    for (const Employee& employee : employees_) {
      // Pays are for the two weeks before.
      if (day > employee.firstDay + kPayDays && day <= employee.lastDay) pay(employee, day);
    }
  }
  if (dateOf(day).civil().day == kRemittanceDay) remit(day);
  if (!endsMonth(day)) return;
  for (std::size_t i = 0; i < kPayCodes; ++i) lastMonth_.at(i) += thisMonth_.at(i);
  thisMonth_ = {};
}

/// Pays an employee's hours, some of them on a project. One pay in a hundred is cancelled and
/// written again.
void Payroll::pay(const Employee& employee, int day) {
  std::vector<Hours> hours;
  std::int32_t regular = random_.between(60, 80);
  const std::int32_t project = random_.below(kProjects) + 1;
  if (random_.chance(350) && projectRuns(project, day)) {
    const std::int32_t spent = random_.between(8, 40);
    hours.push_back({kRegular, spent, employee.rate, project});
    regular -= spent;
  } else if (employee.id % 2 == 0 && day / kPayDays % 3 == 0 && projectRuns(kOwnProject, day)) {
    hours.push_back({kRegular, kHoursOnOwnProject, employee.rate, kOwnProject});
    regular -= kHoursOnOwnProject;
  }
  hours.push_back({kRegular, regular, employee.rate, 0});
  if (random_.chance(120)) {
    hours.push_back({kOvertime, random_.between(2, 12), share(employee.rate, 3, 2), 0});
  }
  Amounts amounts{};
  Cents paid = 0;
  for (const Hours& each : hours) {
    amounts.at(static_cast<std::size_t>(each.code) - 1) += each.units * each.rate;
    paid += each.units * each.rate;
  }
  for (std::size_t i = 0; i < kPayCodes; ++i) {
    if (kCodes.at(i).rate != 0) amounts.at(i) = share(paid, kCodes.at(i).rate, kWhole);
  }
  if (random_.chance(10)) write(employee, day, hours, amounts, true);
  write(employee, day, hours, amounts, false);
  for (std::size_t i = 0; i < kPayCodes; ++i) thisMonth_.at(i) += amounts.at(i);
}

void Payroll::write(const Employee& employee, int day, const std::vector<Hours>& hours,
                    const Amounts& amounts, bool canceled) {
  const std::int32_t id = ++lastPay_;
  Cents gross = amounts.at(kVacation - 1);
  for (const Hours& each : hours) gross += each.units * each.rate;
  Cents net = gross;
  for (std::size_t i = 0; i < kPayCodes; ++i) {
    if (kCodes.at(i).kind == PayKind::kDeduction) net -= amounts.at(i);
  }
  pays_.add({id, employee.id, dateOf(day), "P" + std::to_string(10'000 + id),
             dateOf(day - kFirstPayDay).addDays(1 - kPayDays), dateOf(day - kFirstPayDay),
             money(gross), money(net), canceled, Acct::kHomeBank});
  for (const Hours& each : hours) {
    payLines_.add({id, each.code, Currency::fromInteger(each.units), money(each.rate),
                   money(each.units * each.rate), keyOrNull(each.project), employee.segment});
  }
  for (std::size_t i = kVacation - 1; i < kPayCodes; ++i) {
    payLines_.add({id, static_cast<std::int32_t>(i) + 1, Value::null(), Value::null(),
                   money(amounts.at(i)), Value::null(), employee.segment});
  }
  post(employee, day, hours, amounts, 1);
  if (canceled) post(employee, day, hours, amounts, -1);
}

/// Posts a pay, or posts it back with a `sign` of -1.
void Payroll::post(const Employee& employee, int day, const std::vector<Hours>& hours,
                   const Amounts& amounts, int sign) {
  const std::string reference = "P" + std::to_string(10'000 + lastPay_);
  ledger_.begin({.day = day,
                 .source = "PAY",
                 .key = lastPay_,
                 .reference = reference,
                 .description = employee.name,
                 .segment = employee.segment});
  Cents net = 0;
  for (const Hours& each : hours) {
    ledger_.onProject(each.project);
    const Cents wage = Cents{each.units} * each.rate;
    ledger_.line(Acct::kWages, sign * wage);
    net += wage;
  }
  ledger_.onProject(0);
  ledger_.line(Acct::kWages, sign * amounts.at(kVacation - 1));
  net += amounts.at(kVacation - 1);
  Cents contributed = 0;
  Cents federal = 0;
  Cents quebec = 0;
  for (std::size_t i = kVacation; i < kPayCodes; ++i) {
    const Code& code = kCodes.at(i);
    (code.liability == Acct::kFederalDeductions ? federal : quebec) += amounts.at(i);
    if (code.kind == PayKind::kContribution) {
      contributed += amounts.at(i);
    } else {
      net -= amounts.at(i);
    }
  }
  ledger_.line(Acct::kContributions, sign * contributed);
  ledger_.line(Acct::kFederalDeductions, -sign * federal);
  ledger_.line(Acct::kQuebecDeductions, -sign * quebec);
  ledger_.line(Acct::kHomeBank, -sign * net);
  ledger_.end();
}

/// Remits last month's deductions and contributions, to each authority what is owed to it.
void Payroll::remit(int day) {
  const QuorDataLib::Date thisMonth = dateOf(day).addDays(1 - kRemittanceDay);
  struct Authority {
    std::string_view name;
    std::int32_t liability;
  };
  for (const Authority& authority : {Authority{"Receiver General", Acct::kFederalDeductions},
                                     Authority{"Revenu Québec", Acct::kQuebecDeductions}}) {
    Cents total = 0;
    for (std::size_t i = 0; i < kPayCodes; ++i) {
      if (kCodes.at(i).liability == authority.liability) total += lastMonth_.at(i);
    }
    if (total == 0) continue;
    const std::int32_t id = ++lastRemittance_;
    const std::string number = "RP" + std::to_string(id);
    remittances_.add({id, number, dateOf(day), thisMonth.addMonths(-1), thisMonth.addDays(-1),
                      authority.name, money(total), Acct::kHomeBank});
    for (std::size_t i = 0; i < kPayCodes; ++i) {
      if (kCodes.at(i).liability != authority.liability) continue;
      remittanceLines_.add(
          {id, static_cast<std::int32_t>(i) + 1, money(lastMonth_.at(i)), authority.liability});
    }
    ledger_.begin({.day = day,
                   .source = "RPD",
                   .key = id,
                   .reference = number,
                   .description = authority.name});
    ledger_.line(authority.liability, total);
    ledger_.line(Acct::kHomeBank, -total);
    ledger_.end();
  }
  lastMonth_ = {};
}

}  // namespace QuorHost::Sample
