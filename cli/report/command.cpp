// `aging`: what customers owe and what suppliers are owed, by age.
#include <CLI/App.hpp>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "cli/commands.h"
#include "cli/report/printer.h"
#include "cli/report/source.h"
#include "cli/session.h"
#include "cli/words/options.h"
#include "core/mutils.h"

namespace QuorCli {
namespace {

using QuorDataLib::Date;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;

struct AgingOptions {
  const AgingSource* source = nullptr;
  std::optional<std::string> asOf;
  std::int32_t party = 0;
  bool byCurrency = false;
  bool all = false;
  std::string buckets = "30,60,90";
  RunOptions run;
};

/// The report's date: a day, without a time of day.
Date parseDay(const std::string& text) {
  const std::optional<Date> date = Date::parse(text);
  if (!date || date->empty() || date->hasTime()) {
    throw UsageError("--as-of wants a date as YYYY-MM-DD, not '" + text + "'");
  }
  return *date;
}

/// Reads what the report says beside the rows. It goes past the host, so that a trace shows what
/// the component does and nothing else.
void readCompany(AgingContext& context, const Session& session) {
  const auto connection = session.store()->connect(QuorHost::Sql::Dialect::Server);
  const auto company = connection->OpenRecordset("SELECT Name FROM CieInfo", 4, 0, {}, 0);
  if (!company->AtEnd()) context.companyName = company->Field(0).toText();
  const auto currencies = connection->OpenRecordset(
      "SELECT InCurrencyId, CurrencyCode FROM WorldCurrency", 4, 0, {}, 0);
  for (; !currencies->AtEnd(); currencies->MoveNext()) {
    context.currencyCodes.emplace(currencies->Field(0).toLong(), currencies->Field(1).toText());
  }
}

int runAging(const AgingOptions& options, Console& console) {
  const AgingSource& source = *options.source;
  AgingContext context{.source = &source,
                       .asOf = options.asOf ? parseDay(*options.asOf) : Date(),
                       .buckets = AgeBuckets::parse(options.buckets),
                       .all = options.all,
                       .byCurrency = options.byCurrency,
                       .companyName = {},
                       .homeCurrency = 1,
                       .currencyCodes = {},
                       .limit = options.run.limit};
  const Target target = agingTarget(source);
  checkOptions(target, options.run);
  Session session(options.run, QuorHost::Access::Read, console);

  const auto company = QuorAccQueries::MUtils::QuorCastriaFoundation()->Application()->Company();
  if (!options.asOf) context.asOf = company->SessionDate().dateOnly();
  const auto currencies = company->CurrencyInfo();
  context.homeCurrency = currencies->CieHomeCurrencyId();
  context.byCurrency = context.byCurrency && currencies->CieIsForeignCurrencyUsed();
  readCompany(context, session);

  const Answer answer =
      callMember(target,
                 agingArguments(target, source,
                                {context.asOf, options.party, options.all, options.byCurrency}),
                 options.run, session);
  const Ref<Recordset> rows = answer.result.toObject().as<Recordset>();
  if (!rows) throw Failure(target.name() + " has returned no rows");
  const auto printer = options.run.format == Format::Table
                           ? makeAgingSheet(context, console)
                           : makeAgingRows(context, options.run.format, console);
  AgingGrouping grouping(context.asOf, context.buckets, context.homeCurrency,
                         [&](const AgingBlock& block) { printer->block(block); });
  printer->begin();
  AgingReader reader(source, rows);
  for (AgingRow row; printer->wantsMore() && reader.next(row);) grouping.add(row);
  grouping.finish();
  printer->end(grouping.totals());
  rows->Close();
  session.finish();
  return kDone;
}

}  // namespace

void addAging(CLI::App& program, Action& action) {
  const auto options = std::make_shared<AgingOptions>();
  CLI::App& command =
      *program.add_subcommand("aging", "Print what customers owe or suppliers are owed, by age");
  addChoice<const AgingSource*>(command, "SIDE", options->source,
                                {{"customers", &kCustomerAging}, {"suppliers", &kSupplierAging}},
                                "customers or suppliers")
      ->option_text(" ")
      ->required();
  command.add_option("--as-of", options->asOf, "The day of the report [the session date]")
      ->type_name("DATE");
  command.add_option("--party", options->party, "Only the customer or supplier with this id")
      ->type_name("ID")
      ->check(wholeNumber(1, std::numeric_limits<std::int32_t>::max()));
  command.add_flag("--by-currency", options->byCurrency, "Sort by currency first");
  command.add_flag("--all", options->all, "Settled documents, too");
  command
      .add_option("--buckets", options->buckets,
                  "The last day of each bucket but the last one\n[30,60,90]")
      ->type_name("DAYS");
  addRunOptions(command, options->run, true);
  command.callback([&action, options] {
    action = [options](Console& console) { return runAging(*options, console); };
  });
}

}  // namespace QuorCli
