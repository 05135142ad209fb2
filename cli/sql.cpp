// `sql`: one statement in the dialect that the company presents.
#include <CLI/App.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/commands.h"
#include "cli/result.h"
#include "cli/session.h"
#include "cli/words/names.h"
#include "cli/words/options.h"
#include "cli/words/statement_word.h"
#include "host/company/stock/recost.h"

namespace QuorCli {
namespace {

using QuorDataLib::Parameters;
using QuorDataLib::Value;
using QuorHost::Access;

struct SqlOptions {
  std::string statement;
  std::vector<std::string> values;
  bool write = false;
  RunOptions run;
};

Parameters markerValues(const std::vector<std::string>& texts) {
  if (texts.empty()) return {};
  std::vector<Value> values;
  values.reserve(texts.size());
  for (const std::string& text : texts) values.emplace_back(plainArgument(text));
  return Parameters::array(std::move(values));
}

/// Runs a statement that changes rows. Where it changes what running costs of stock depend on, it
/// also marks those that no longer hold.
std::int32_t change(const Session& session, const std::string& statement,
                    const Parameters& values) {
  std::int32_t affected = 0;
  const auto connection = session.connection();
  if (!mentions(statement, QuorHost::kMovements) &&
      !mentions(statement, QuorHost::kPurchaseLines)) {
    connection->Execute(statement, affected, -1, values);
    return affected;
  }
  const auto transaction = session.store()->begin();
  QuorHost::CostWatch costs(*session.store());
  connection->Execute(statement, affected, -1, values);
  costs.markStale();
  transaction->commit();
  return affected;
}

int runSql(const SqlOptions& options, Console& console) {
  if (options.run.cache) {
    throw UsageError("--cache is for 'call': a statement has no object that could keep rows");
  }
  const std::string word = firstWord(options.statement);
  const bool query = sameName(word, "SELECT");
  if (!query && !options.write && changesRows(word)) {
    throw Failure(word +
                  " changes rows, and the company file is open for reading only: add --write");
  }
  Session session(options.run, options.write ? Access::Write : Access::Read, console);
  const auto connection = session.connection();
  const Parameters values = markerValues(options.values);
  if (options.write && !query) {
    const std::int32_t affected = change(session, options.statement, values);
    if (options.run.format == Format::Table) {
      console.out << affected << (affected == 1 ? " row affected\n" : " rows affected\n");
    } else {
      printValue(affected, {}, options.run.format, console);
    }
  } else {
    const auto rows = connection->OpenRecordset(options.statement, 4, 0, values, 0);
    printRows(*rows, options.run.limit, {}, *makeRowPrinter(options.run.format, console));
    rows->Close();
  }
  session.finish();
  return kDone;
}

}  // namespace

void addSql(CLI::App& program, Action& action) {
  const auto options = std::make_shared<SqlOptions>();
  CLI::App& command = *program.add_subcommand("sql", "Run one statement against a company file");
  command.add_option("STATEMENT", options->statement, "A statement in the dialect of --engine")
      ->option_text(" ")
      ->required();
  command.add_option("VALUE", options->values, "The values of its ? markers in order")
      ->option_text("...");
  command.add_flag("--write", options->write, "Allow INSERT, UPDATE and DELETE");
  addRunOptions(command, options->run, true);
  command.footer(
      "Each value is converted to the type of its marker; one that begins with - and is no "
      "number\ngoes behind --.");
  command.callback([&action, options] {
    action = [options](Console& console) { return runSql(*options, console); };
  });
}

}  // namespace QuorCli
