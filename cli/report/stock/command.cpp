// `stock`: what is on hand, reserved, to come and available, and what it is worth.
#include <CLI/App.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/report/company_facts.h"
#include "cli/report/period.h"
#include "cli/report/report.h"
#include "cli/report/stock/stock_room.h"
#include "cli/report/subject.h"
#include "cli/words/options.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;

struct StockOptions {
  std::optional<std::string> asOf;
  std::optional<std::string> item;
  std::optional<std::string> warehouse;
  std::optional<std::string> project;
  bool belowZero = false;
  /// One line for each item, as it prints in any case.
  bool summary = false;
  RunOptions run;
};

std::vector<Column> columns() {
  using enum CellKind;
  using enum Audience;
  return {{"", "ItemId", Key, Programs},
          {"Item", "ItemCode", Code, Everyone},
          {"Description", "Description", Name, Everyone},
          {"", "Kind", Code, Programs},
          {"Unit", "Unit", Code, Everyone},
          {"On hand", "OnHand", Quantity, Everyone},
          {"Reserved", "Reserved", Quantity, Everyone},
          {"To come", "ToCome", Quantity, Everyone},
          {"Available", "Available", Quantity, Everyone},
          {"Average cost", "AverageCost", Quantity, Everyone},
          {"Last cost", "LastCost", Quantity, Everyone},
          {"Value", "Value", Money, Everyone}};
}

Line lineOf(const StockItem& item, bool ofProject) {
  const auto known = [&](Currency quantity) { return ofProject ? Value::null() : Value(quantity); };
  return {item.key,
          item.code,
          item.description,
          item.kit ? "kit" : "item",
          item.unit,
          item.onHand,
          known(item.reserved),
          known(item.toCome),
          known(item.available()),
          item.averageCost,
          item.lastCost,
          item.kit ? Value::null() : Value(item.value)};
}

Line totalLine(Currency value) {
  Line line(11, Value::null());
  line.emplace_back(value);
  return line;
}

class StockPage {
 public:
  StockPage(StockRoom& room, Report& report, const StockRequest& request, bool belowZero)
      : room_(room), report_(report), request_(request), belowZero_(belowZero) {}

  void tell() {
    std::vector<StockItem> items = room_.items(request_);
    tellItems(items, false, "Items");
    tellItems(items, true, "Kits, as many as can be made");
    report_.summary("");
    if (request_.warehouse == 0) tellWarehouses();
    report_.grandTotal(Weight::Grand, "Total value", totalLine(all_));
  }

 private:
  void tellItems(std::vector<StockItem>& items, bool kits, const std::string& heading) {
    report_.group(0, heading, "");
    for (StockItem& item : items) {
      if (item.kit != kits || !isWanted(item)) continue;
      room_.readCosts(item, request_);
      report_.line(lineOf(item, request_.project != 0));
      all_ += item.value;
      for (const auto& [warehouse, value] : item.valueByWarehouse())
        byWarehouse_[warehouse] += value;
    }
  }

  [[nodiscard]] bool isWanted(const StockItem& item) const {
    if (belowZero_) return item.onHand < Currency();
    return request_.item != 0 || !item.onHand.isZero() || !item.reserved.isZero() ||
           !item.toCome.isZero() || !item.byWarehouse.empty();
  }

  void tellWarehouses() {
    for (const WarehouseName& warehouse : room_.warehouses()) {
      const auto found = byWarehouse_.find(warehouse.key);
      if (found == byWarehouse_.end()) continue;
      report_.grandTotal(Weight::Plain, "Warehouse " + warehouse.code + " " + warehouse.name,
                         totalLine(found->second));
    }
    if (const auto found = byWarehouse_.find(0); found != byWarehouse_.end()) {
      report_.grandTotal(Weight::Plain, "In no warehouse", totalLine(found->second));
    }
  }

  StockRoom& room_;
  Report& report_;
  const StockRequest& request_;
  bool belowZero_;
  Currency all_;
  std::map<std::int32_t, Currency> byWarehouse_;
};

int runStock(const StockOptions& options, Console& console) {
  if (options.run.company.empty()) throw UsageError("--company is required");
  if (options.asOf) static_cast<void>(parseDay("--as-of", *options.asOf));
  Session session(options.run, QuorHost::Access::Read, console);
  const auto snapshot = session.store()->hold();
  const CompanyFacts company = readCompany(session);
  const auto keyOf = [&](const SubjectKind& kind, const std::optional<std::string>& word) {
    return word ? findSubject(kind, *word, *session.store()).key : 0;
  };
  const QuorDataLib::Date day = dayOf(options.asOf, company.sessionDate);
  const StockRequest request{.until = endOfDay(day),
                             .item = keyOf(kItems, options.item),
                             .warehouse = keyOf(kWarehouses, options.warehouse),
                             .project = keyOf(kProjects, options.project)};
  StockRoom room(options.run, session);
  std::string title = "Stock as at " + day.toText();
  if (options.warehouse) title += ", warehouse " + *options.warehouse;
  if (options.project) title += ", project " + *options.project;
  if (options.belowZero) title += ", below zero";
  const auto report = makeReport(options.run.format, console);
  report->begin(
      {.company = company.name, .title = title, .lines = "items", .limit = options.run.limit},
      columns());
  StockPage(room, *report, request, options.belowZero).tell();
  report->end();
  session.finish();
  return kDone;
}

}  // namespace

void addStockReport(CLI::App& program, Action& action) {
  const auto options = std::make_shared<StockOptions>();
  // The report is what `stock` does without one of its commands.
  const auto existing =
      program.get_subcommands([](const CLI::App* one) { return one->get_name() == "stock"; });
  CLI::App& command = existing.empty() ? *program.add_subcommand("stock") : *existing.front();
  command.description("Print what is in stock and what it is worth");
  command.require_subcommand(0, 1);
  addAsOf(command, options->asOf);
  command.add_option("--item", options->item, "Only the item with this code or key")
      ->type_name("CODE|KEY");
  command.add_option("--warehouse", options->warehouse, "Only what lies in the warehouse")
      ->type_name("CODE|KEY");
  command.add_option("--project", options->project, "Only what is kept for the project")
      ->type_name("CODE|KEY");
  command.add_flag("--below-zero", options->belowZero,
                   "Only items of which there is less than none");
  command.add_flag("--summary", options->summary,
                   "One line for each item, as it prints in any case");
  addRunOptions(command, options->run, false);
  command.callback([&command, &action, options] {
    if (!command.get_subcommands().empty()) return;  // that one has its own work
    action = [options](Console& console) { return runStock(*options, console); };
  });
}

}  // namespace QuorCli
