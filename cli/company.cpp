// `company`: making, filling, copying, inspecting and checking a company file.
#include "host/company/company.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <string>

#include "cli/commands.h"
#include "cli/company_summary.h"
#include "cli/print/amount_text.h"
#include "cli/print/progress.h"
#include "cli/words/options.h"
#include "host/engines/paths.h"
#include "host/engines/store.h"

namespace QuorCli {
namespace {

using QuorHost::Access;

struct CompanyOptions {
  std::string file;
  std::string table;
  std::string csv;
  std::string copy;
  bool replace = false;
  QuorHost::CreateOptions create;
};

/// Does `work`, which tells how far it has come, where it can be interrupted.
template <class Work>
void withProgress(Console& console, const Work& work) {
  ProgressBar bar(console);
  const Interruption interruption;
  work([&](std::string_view what, std::int64_t done, std::int64_t total) {
    Interruption::check();
    bar.show(what, done, total);
  });
}

int create(const CompanyOptions& options, Console& console) {
  withProgress(console, [&](const QuorHost::Progress& progress) {
    QuorHost::createCompany(options.file, options.create, progress);
  });
  const auto store = QuorHost::openCompany(options.file, Access::Read);
  printMade(QuorHost::shownCompany(options.file), QuorHost::describeCompany(*store), console);
  return kDone;
}

int backup(const CompanyOptions& options, Console& console) {
  withProgress(console, [&](const QuorHost::Progress& progress) {
    QuorHost::backupCompany(options.file, options.copy, options.create.force, progress);
  });
  console.out << options.file << " copied to " << options.copy << '\n';
  return kDone;
}

int copy(const CompanyOptions& options, Console& console) {
  withProgress(console, [&](const QuorHost::Progress& progress) {
    QuorHost::copyCompany(options.file, options.copy, options.create.force, progress,
                          options.create.readers);
  });
  const auto store = QuorHost::openCompany(options.copy, Access::Read);
  printMade(QuorHost::shownCompany(options.copy), QuorHost::describeCompany(*store), console);
  return kDone;
}

int importRows(const CompanyOptions& options, Console& console) {
  const bool fromInput = options.csv == "-";
  std::ifstream file;
  if (!fromInput) {
    file.open(QuorHost::pathOf(options.csv), std::ios::binary);
    if (!file) throw Failure("the CSV file " + options.csv + " cannot be read");
  }
  const auto store = QuorHost::openCompany(options.file, Access::Write);
  const std::int64_t rows =
      QuorHost::importCsv(*store, options.table, fromInput ? console.in : file, options.replace);
  console.out << grouped(rows) << (rows == 1 ? " row" : " rows") << " loaded into " << options.table
              << '\n';
  return kDone;
}

int exportRows(const CompanyOptions& options, Console& console) {
  const auto store = QuorHost::openCompany(options.file, Access::Read);
  QuorHost::exportCsv(*store, options.table, console.out);
  return kDone;
}

int info(const CompanyOptions& options, Console& console) {
  const auto store = QuorHost::openCompany(options.file, Access::Read);
  printInfo(QuorHost::shownCompany(options.file), QuorHost::describeCompany(*store), console);
  return kDone;
}

int check(const CompanyOptions& options, Console& console) {
  const std::int64_t findings = QuorHost::checkCompany(
      options.file, [&](const std::string& finding) { console.out << finding << '\n'; });
  if (findings == 0) {
    console.out << QuorHost::shownCompany(options.file)
                << ": the file is sound and the books are in balance\n";
    return kDone;
  }
  console.out.flush();
  console.err << "quoracc: " << QuorHost::shownCompany(options.file) << ": " << grouped(findings)
              << (findings == 1 ? " finding" : " findings") << '\n';
  return kFailed;
}

}  // namespace

void addCompany(CLI::App& program, Action& action) {
  const auto options = std::make_shared<CompanyOptions>();
  CLI::App& company =
      *program.add_subcommand("company", "Make, fill, copy, inspect and check company files");
  company.require_subcommand(1);

  const auto add = [&](const std::string& name, const std::string& help,
                       int (*work)(const CompanyOptions&, Console&)) {
    CLI::App* const command = company.add_subcommand(name, help);
    command
        ->add_option("FILE", options->file,
                     "The company file, or a connection (postgresql://user@host/db?schema=NAME)")
        ->option_text(" ")
        ->required();
    command->callback([&action, options, work] {
      action = [options, work](Console& console) { return work(*options, console); };
    });
    return command;
  };

  CLI::App* const creating = add("create", "Make a company file", create);
  creating->add_flag("--sample", options->create.sample, "Fill it with a sample trading company");
  creating
      ->add_option("--scale", options->create.scale,
                   "Size of the sample, in thousands of customer invoices [1]")
      ->type_name("N")
      ->check(wholeNumber(1, QuorHost::kLargestScale));
  creating
      ->add_option("--seed", options->create.seed,
                   "The same scale and seed make the same bytes [1]")
      ->type_name("N")
      ->check(wholeNumber(0, std::numeric_limits<std::uint64_t>::max()));
  addChoice<QuorHost::Chart>(*creating, "--chart", options->create.chart,
                             {{"fixed", QuorHost::Chart::Fixed},
                              {"french", QuorHost::Chart::French},
                              {"custom", QuorHost::Chart::Own}},
                             "Kind of the sample's chart of accounts [fixed]");
  const auto addForce = [&](CLI::App* command) {
    command->add_flag("--force", options->create.force, "Replace what is there");
  };
  addForce(creating);
  const auto addReader = [&](CLI::App* command) {
    command
        ->add_option(
            "--reader", options->create.readers,
            "A role of the server that may read the company and do no more; may be repeated")
        ->type_name("ROLE")
        ->allow_extra_args(false);
  };
  addReader(creating);

  CLI::App* const backing = add("backup", "Copy a company, also while it is in use", backup);
  backing->add_option("TO", options->copy, "The file to copy it to")->option_text(" ")->required();
  addForce(backing);

  CLI::App* const copying = add("copy", "Copy a company between files and servers", copy);
  copying->add_option("TO", options->copy, "The file or the connection to copy it to")
      ->option_text(" ")
      ->required();
  addForce(copying);
  addReader(copying);

  CLI::App* const importing = add("import", "Load a CSV file into a table", importRows);
  importing->add_option("TABLE", options->table, "The table")->option_text(" ")->required();
  importing->add_option("CSV", options->csv, "The CSV file; - is standard input")
      ->option_text(" ")
      ->required();
  importing->add_flag("--replace", options->replace, "Remove the table's rows first");
  importing->footer(
      "UTF-8 with a header row that names columns of the table; an empty field is null, dates are\n"
      "YYYY-MM-DD[ HH:MM:SS]. Either every row is loaded or none.");

  CLI::App* const exporting = add("export", "Write a table or view as CSV", exportRows);
  exporting->add_option("TABLE_OR_VIEW", options->table, "The table or view")
      ->option_text(" ")
      ->required();

  add("info", "Show engine, size, tables and views with their rows", info);
  add("check", "Check the file and the books; exit 1 when something is wrong", check);
}

}  // namespace QuorCli
