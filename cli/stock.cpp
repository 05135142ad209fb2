// `stock`: the running costs of stock.
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>

#include "cli/commands.h"
#include "cli/print/amount_text.h"
#include "cli/print/progress.h"
#include "cli/report/company_facts.h"
#include "cli/report/subject.h"
#include "cli/words/options.h"
#include "host/company/stock/recost.h"

namespace QuorCli {
namespace {

using QuorDataLib::Parameters;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;
using QuorHost::RecostedItem;

struct RecostOptions {
  std::string file;
  std::optional<std::string> item;
};

std::string codeOf(QuorHost::Store& store, std::int32_t item) {
  const Ref<Recordset> rows =
      readBeside(store, "SELECT ItemId FROM Item WHERE InItemId = ?", Parameters::single(item));
  const Value code = rows->AtEnd() ? Value() : rows->Field(0);
  return code.isNull() || code.isEmpty() ? std::to_string(item) : code.toText();
}

std::string movements(std::int64_t count) {
  return grouped(count) + (count == 1 ? " movement" : " movements");
}

/// A cost before and after, or once where it stayed.
std::string change(const char* what, QuorDataLib::Currency before, QuorDataLib::Currency after) {
  if (before == after) return std::string(what) + " " + after.toText() + " as before";
  return std::string(what) + " " + before.toText() + " -> " + after.toText();
}

void print(const RecostedItem& item, const std::string& code, Console& console) {
  console.out << code << ": " << movements(item.computed) << " computed, "
              << (item.changed == 0 ? "none" : grouped(item.changed)) << " changed; "
              << change("average cost", item.averageBefore, item.average) << ", "
              << change("last cost", item.lastBefore, item.last) << '\n';
}

int recost(const RecostOptions& options, Console& console) {
  const auto store = QuorHost::openCompany(options.file, QuorHost::Access::Write);
  const std::int32_t item = options.item ? findSubject(kItems, *options.item, *store).key : 0;
  std::vector<RecostedItem> items;
  {
    ProgressBar bar(console);
    const Interruption interruption;
    items = QuorHost::recostStock(
        *store, item, [&](std::string_view what, std::int64_t done, std::int64_t total) {
          Interruption::check();
          bar.show(what, done, total);
        });
  }
  std::int64_t computed = 0;
  for (const RecostedItem& each : items) {
    print(each, codeOf(*store, each.item), console);
    computed += each.computed;
  }
  if (items.empty()) {
    console.out << "No running costs are stale: nothing to compute\n";
  } else {
    console.out << movements(computed) << " of " << grouped(static_cast<std::int64_t>(items.size()))
                << (items.size() == 1 ? " item" : " items") << " computed\n";
  }
  return kDone;
}

}  // namespace

void addStock(CLI::App& program, Action& action) {
  CLI::App& stock = *program.add_subcommand("stock", "Stock, and what it costs");
  stock.require_subcommand(1);
  addRecost(stock, action);
}

void addRecost(CLI::App& stock, Action& action) {
  const auto options = std::make_shared<RecostOptions>();
  CLI::App& command =
      *stock.add_subcommand("recost", "Compute the running costs that are marked as stale");
  command.add_option("FILE", options->file, "The company file")->option_text(" ")->required();
  command.add_option("--item", options->item, "Only this item")->option_text("KEY|CODE");
  command.footer(
      "Costs become stale from the day of a movement on that is imported or changed, and from "
      "that\n"
      "of a reception on whose purchase is. They are computed from the first stale movement of\n"
      "each item, in one transaction.");
  command.callback([&action, options] {
    action = [options](Console& console) { return recost(*options, console); };
  });
}

}  // namespace QuorCli
