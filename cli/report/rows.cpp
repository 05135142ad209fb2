// The aging report for programs: a row for each document, with its balance in the bucket of its
// age.
#include <utility>

#include "cli/report/printer.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

class AgingRows : public AgingPrinter {
 public:
  AgingRows(AgingContext context, std::unique_ptr<RowPrinter> printer)
      : context_(std::move(context)), printer_(std::move(printer)) {}

  void begin() override {
    std::vector<ColumnHead> columns{
        {"PartyId", ValueType::Long},
        {"PartyName", ValueType::Text},
        {"Currency", ValueType::Text},
        {"Kind", ValueType::Text},
        {"Type", ValueType::Long},
        {"DocumentId", ValueType::Long},
        {"Number", ValueType::Text},
        {"Date", ValueType::Date},
        {"Days", ValueType::Long},
        {"Balance", ValueType::Currency},
        {"HomeBalance", ValueType::Currency},
    };
    for (std::size_t bucket = 0; bucket < context_.buckets.count(); ++bucket) {
      columns.push_back({context_.buckets.columnName(bucket), ValueType::Currency});
    }
    printer_->begin(std::move(columns));
  }

  void block(const AgingBlock& block) override {
    const std::string currency = context_.currencyCode(block.currencyId);
    for (const AgedDocument& document : block.documents) {
      if (!wantsMore()) {
        complete_ = false;
        return;
      }
      ++printed_;
      std::vector<Value> row{block.partyId,
                             block.partyName,
                             currency,
                             documentKind(*context_.source, document),
                             document.type,
                             document.id,
                             document.number,
                             document.date,
                             static_cast<std::int32_t>(document.age),
                             document.balance,
                             document.home.total()};
      for (std::size_t bucket = 0; bucket < context_.buckets.count(); ++bucket) {
        row.emplace_back(bucket == document.bucket ? document.balance : Currency());
      }
      printer_->row(row);
    }
  }

  [[nodiscard]] bool wantsMore() const override { return printed_ != context_.limit; }

  void end(const AgingTotals& /*totals*/) override { printer_->end(complete_, {}); }

 private:
  AgingContext context_;
  std::unique_ptr<RowPrinter> printer_;
  std::int64_t printed_ = 0;
  bool complete_ = true;
};

}  // namespace

std::unique_ptr<AgingPrinter> makeAgingRows(AgingContext context, Format format, Console& console) {
  return std::make_unique<AgingRows>(std::move(context), makeRowPrinter(format, console));
}

}  // namespace QuorCli
