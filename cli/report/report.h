// A report on its way out: told line by line, printed for people or for programs.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/console.h"
#include "cli/print/row_printer.h"
#include "cli/report/column.h"

namespace QuorCli {

/// What stands above a report and how it is laid out.
struct ReportForm {
  std::string company;
  /// "Customer aging as at 2025-12-31".
  std::string title;
  /// What lines are, for the note about a limit.
  std::string lines;
  /// Column headings below each group's own heading, or once at the top.
  bool headingInGroups = false;
  /// Blanks before each line, in steps of two; headings of groups stand before their lines.
  int depth = 1;
  /// Totals of the whole, also where there is no line.
  bool always = false;
  /// Bars for the shares of parts below totals on a terminal.
  bool bars = false;
  /// Lines to print at most.
  std::optional<std::int64_t> limit;
};

/// How much a total sums up, and so how it stands out.
enum class Weight : std::uint8_t {
  /// Stands as it is.
  Plain,
  /// A line above it.
  Subtotal,
  /// A line above and a double one below.
  Grand,
};

/// Receives a report in the order in which it is read: `begin`, then groups with their lines and
/// totals, then what is said of the whole, then `end`. A printer keeps a fixed number of lines.
class Report {
 public:
  virtual ~Report() = default;

  virtual void begin(ReportForm form, std::vector<Column> columns) = 0;

  /// Opens a group below those of smaller `level` (from 0) and ends those that are not: a heading,
  /// `name` and what follows it. A group in which no line is printed does not appear.
  virtual void group(int level, const std::string& name, const std::string& rest) = 0;

  /// One value for each column.
  virtual void line(Line values) = 0;

  /// The total of the open group of `level`. Values that are Null stay blank.
  virtual void total(int level, Weight weight, const std::string& label, Line values) = 0;

  /// Ends all groups: what follows is said of the whole, and printed whatever the limit. `heading`
  /// may be empty. Nothing of it is printed where there was no line.
  virtual void summary(const std::string& heading) = 0;

  /// A total of the whole.
  virtual void grandTotal(Weight weight, const std::string& label, Line values) = 0;

  /// A sentence at the end. An alarm is for what must not be so; programs find it on standard
  /// error.
  virtual void note(const std::string& text) = 0;
  virtual void alarm(const std::string& text) = 0;

  /// False once no further line would be printed and no total needs it.
  [[nodiscard]] virtual bool wantsMore() const = 0;

  virtual void end() = 0;
};

/// The report for people: as wide as `console.width` allows, names giving way before amounts.
[[nodiscard]] std::unique_ptr<Report> makeSheet(Console& console);

/// The lines alone, in one of the formats for programs.
[[nodiscard]] std::unique_ptr<Report> makeReportRows(Format format, Console& console);

/// The one that `format` asks for.
[[nodiscard]] std::unique_ptr<Report> makeReport(Format format, Console& console);

}  // namespace QuorCli
