// `aging`: what customers owe and what suppliers are owed, by age.
#include <CLI/App.hpp>
#include <memory>
#include <string>
#include <utility>

#include "cli/commands.h"
#include "cli/report/aging/page.h"
#include "cli/report/aging/source.h"
#include "cli/report/period.h"
#include "cli/report/subject.h"
#include "cli/session.h"
#include "cli/words/options.h"

namespace QuorCli {
namespace {

struct AgingOptions {
  const AgingSource* source = nullptr;
  std::optional<std::string> asOf;
  std::optional<std::string> party;
  bool byCurrency = false;
  bool all = false;
  bool summary = false;
  AgeBy by = AgeBy::Document;
  std::string buckets = "30,60,90";
  RunOptions run;
};

int runAging(const AgingOptions& options, Console& console) {
  const AgingSource& source = *options.source;
  const AgeBuckets buckets = AgeBuckets::parse(options.buckets, options.by);
  if (options.asOf) static_cast<void>(parseDay("--as-of", *options.asOf));
  checkOptions(agingTarget(source), options.run);
  Session session(options.run, QuorHost::Access::Read, console);

  AgingContext context{.source = &source,
                       .asOf = {},
                       .by = options.by,
                       .buckets = buckets,
                       .all = options.all,
                       .byCurrency = options.byCurrency,
                       .summary = options.summary,
                       .company = readCompany(session),
                       .limit = options.run.limit};
  context.asOf = dayOf(options.asOf, context.company.sessionDate);
  context.byCurrency = context.byCurrency && context.company.foreignCurrencies;
  const std::int32_t party =
      options.party ? findSubject(*source.subjects, *options.party, *session.store()).key : 0;

  const AgingAnswer answer = openAging(
      source, {context.asOf, party, context.all, context.byCurrency, context.by, session.dialect()},
      options.run, session);
  const auto report = makeReport(options.run.format, console);
  AgingPage page(context, *report);
  AgingGrouping grouping(context.asOf, context.buckets, context.company.homeCurrency,
                         [&](const AgingBlock& block) { page.block(block); });
  page.begin();
  AgingReader reader(source, context.by, answer.rows);
  for (AgingRow row; report->wantsMore() && reader.next(row);) grouping.add(row);
  grouping.finish();
  page.end(grouping.totals());
  answer.rows->Close();
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
  addAsOf(command, options->asOf);
  command
      .add_option("--party", options->party, "Only the customer or supplier with this code or key")
      ->type_name("CODE|KEY");
  command.add_flag("--by-currency", options->byCurrency, "Sort by currency first");
  command.add_flag("--all", options->all, "Settled documents, too");
  command.add_flag("--summary", options->summary, "One line for each party and currency");
  addChoice<AgeBy>(command, "--by", options->by,
                   {{"document", AgeBy::Document}, {"due", AgeBy::Due}},
                   "The date that ages count from [document]");
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
