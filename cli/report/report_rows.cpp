// A report for programs: its lines as rows, without headings and totals.
#include <utility>

#include "cli/report/report.h"

namespace QuorCli {
namespace {

class ReportRows : public Report {
 public:
  ReportRows(Format format, Console& console)
      : console_(console), printer_(makeRowPrinter(format, console)) {}

  void begin(ReportForm form, std::vector<Column> columns) override {
    limit_ = form.limit;
    std::vector<ColumnHead> heads;
    for (std::size_t index = 0; index < columns.size(); ++index) {
      const Column& column = columns[index];
      if (column.audience == Audience::People) continue;
      shown_.push_back(index);
      heads.push_back({column.name, typeOf(column.kind)});
    }
    printer_->begin(std::move(heads));
  }

  void line(Line values) override {
    if (!wantsMore()) {
      complete_ = false;
      return;
    }
    ++printed_;
    Line row;
    row.reserve(shown_.size());
    for (const std::size_t index : shown_) row.push_back(std::move(values[index]));
    printer_->row(row);
  }

  void group(int /*level*/, const std::string& /*name*/, const std::string& /*rest*/) override {}
  void total(int /*level*/, Weight /*weight*/, const std::string& /*label*/,
             Line /*values*/) override {}
  void summary(const std::string& /*heading*/) override {}
  void grandTotal(Weight /*weight*/, const std::string& /*label*/, Line /*values*/) override {}
  void note(const std::string& /*text*/) override {}
  void alarm(const std::string& text) override { console_.err << "quoracc: " << text << '\n'; }

  [[nodiscard]] bool wantsMore() const override { return printed_ != limit_; }

  void end() override { printer_->end(complete_, {}); }

 private:
  Console& console_;
  std::unique_ptr<RowPrinter> printer_;
  std::vector<std::size_t> shown_;
  std::optional<std::int64_t> limit_;
  std::int64_t printed_ = 0;
  bool complete_ = true;
};

}  // namespace

std::unique_ptr<Report> makeReportRows(Format format, Console& console) {
  return std::make_unique<ReportRows>(format, console);
}

std::unique_ptr<Report> makeReport(Format format, Console& console) {
  return format == Format::Table ? makeSheet(console) : makeReportRows(format, console);
}

}  // namespace QuorCli
