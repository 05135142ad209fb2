// A report for people: headings, columns that stand below each other, totals that stand out.
#include <algorithm>
#include <string_view>
#include <utility>

#include "cli/print/amount_text.h"
#include "cli/print/display_text.h"
#include "cli/report/layout.h"
#include "cli/report/report.h"
#include "cli/report/share.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;

/// Events that are kept back to decide how wide the columns are.
constexpr std::size_t kSample = 500;
/// The width of a sheet that goes to no screen.
constexpr std::size_t kPaperWidth = 100;

class Sheet : public Report {
 public:
  explicit Sheet(Console& console) : console_(console) {}

  void begin(ReportForm form, std::vector<Column> columns) override {
    form_ = std::move(form);
    std::vector<Column> shown;
    for (std::size_t index = 0; index < columns.size(); ++index) {
      if (columns[index].audience == Audience::Programs) continue;
      shown_.push_back(index);
      shown.push_back(std::move(columns[index]));
    }
    const bool known = console_.width > 0;
    layout_ = std::make_unique<Layout>(std::move(shown), static_cast<std::size_t>(2 * form_.depth),
                                       known ? console_.width : kPaperWidth, known);
    if (!form_.company.empty()) write(console_.bold(visible(form_.company)));
    write(console_.bold(form_.title));
    if (!form_.headingInGroups) events_.push_back({Event::Kind::TopHeading, 0, {}, {}, {}, {}});
  }

  void group(int level, const std::string& name, const std::string& rest) override {
    open_.resize(static_cast<std::size_t>(level));
    open_.push_back({name, rest, false});
  }

  void line(Line values) override {
    ++told_;
    if (printed_ == form_.limit) return;
    ++printed_;
    for (std::size_t level = 0; level < open_.size(); ++level) {
      Group& group = open_[level];
      if (group.printed) continue;
      group.printed = true;
      events_.push_back(
          {Event::Kind::Group, static_cast<int>(level), {}, group.name, group.rest, {}});
    }
    keep({Event::Kind::Line, 0, {}, {}, {}, shownOf(std::move(values))});
  }

  void total(int level, Weight weight, const std::string& label, Line values) override {
    if (!open_.at(static_cast<std::size_t>(level)).printed) return;
    keep({Event::Kind::Total, level, weight, label, {}, shownOf(std::move(values))});
  }

  void summary(const std::string& heading) override {
    open_.clear();
    if (hasTotals()) keep({Event::Kind::Summary, 0, {}, heading, {}, {}});
  }

  void grandTotal(Weight weight, const std::string& label, Line values) override {
    if (hasTotals()) keep({Event::Kind::Total, 0, weight, label, {}, shownOf(std::move(values))});
  }

  void note(const std::string& text) override { notes_.push_back({text, false}); }
  void alarm(const std::string& text) override { notes_.push_back({text, true}); }

  [[nodiscard]] bool wantsMore() const override { return true; }

  void end() override {
    flush();
    if (!hasTotals()) write("\nNothing to show.");
    if (printed_ < told_) {
      write(console_.faint("The first " + grouped(printed_) + " of " + grouped(told_) + " " +
                           form_.lines + " are printed; the totals are of all of them."));
    }
    for (const Note& note : notes_) {
      write(note.alarm ? "\n" + console_.alarming("*** " + note.text + " ***")
                       : console_.faint(note.text));
    }
  }

 private:
  struct Group {
    std::string name;
    std::string rest;
    bool printed;
  };
  struct Note {
    std::string text;
    bool alarm;
  };
  struct Event {
    enum class Kind : std::uint8_t { TopHeading, Group, Line, Total, Summary } kind;
    int level;
    Weight weight;
    /// A heading or a label, and what follows a heading.
    std::string text;
    std::string rest;
    Line values;
  };

  [[nodiscard]] bool hasTotals() const { return told_ > 0 || form_.always; }

  Line shownOf(Line values) const {
    Line shown;
    shown.reserve(shown_.size());
    for (const std::size_t index : shown_) shown.push_back(std::move(values[index]));
    return shown;
  }

  void keep(Event event) {
    events_.push_back(std::move(event));
    if (events_.size() >= kSample) flush();
  }

  void flush() {
    measure();
    for (const Event& event : events_) print(event);
    events_.clear();
  }

  void measure() {
    forEachCell([this](std::size_t column, const Value& value, bool /*total*/) {
      if (layout_->column(column).kind == CellKind::Quantity) {
        layout_->growDecimals(column, decimalsOf(value));
      }
    });
    forEachCell([this](std::size_t column, const Value& value, bool total) {
      layout_->grow(column, displayWidth(textOf(column, value, total)));
    });
    layout_->settle();
  }

  template <class Visit>
  void forEachCell(Visit visit) const {
    for (const Event& event : events_) {
      for (std::size_t column = 0; column < event.values.size(); ++column) {
        visit(column, event.values[column], event.kind == Event::Kind::Total);
      }
    }
  }

  [[nodiscard]] std::string textOf(std::size_t column, const Value& value, bool total) const {
    const CellKind kind = layout_->column(column).kind;
    return total ? totalText(kind, value, layout_->decimals(column))
                 : cellText(kind, value, layout_->decimals(column));
  }

  void print(const Event& event) {
    switch (event.kind) {
      case Event::Kind::TopHeading:
        write("");
        heading(false);
        break;
      case Event::Kind::Group:
        printGroup(event);
        break;
      case Event::Kind::Line:
        if (headingDue_) heading(false);
        printCells({}, 0, event.values, false);
        break;
      case Event::Kind::Total:
        if (headingDue_) heading(true);
        printTotal(event);
        break;
      case Event::Kind::Summary:
        write("");
        if (!event.text.empty()) write(console_.bold(event.text));
        headingDue_ = form_.headingInGroups;
        break;
    }
    afterGroup_ = event.kind == Event::Kind::Group;
  }

  void printGroup(const Event& event) {
    if (form_.headingInGroups || event.level == 0 || !afterGroup_) write("");
    const std::string indent(
        static_cast<std::size_t>(2 * (form_.headingInGroups ? 0 : event.level)), ' ');
    const std::string rest = visible(event.rest);
    std::string name = visible(event.text);
    // Where the sheet is narrow, the name gives way to what tells the group apart.
    constexpr std::size_t kLeastOfName = 12;
    const std::size_t taken = indent.size() + displayWidth(rest);
    if (console_.width > 0) {
      name = shortened(name, std::max(kLeastOfName, std::max(console_.width, taken) - taken));
    }
    write(indent + console_.bold(name) + rest);
    headingDue_ = form_.headingInGroups;
  }

  /// The titles of the columns; in front of totals alone only those of figures.
  void heading(bool figuresOnly) {
    headingDue_ = false;
    for (const std::vector<Layout::Place>& places : layout_->lines()) {
      std::string text;
      for (const Layout::Place& place : places) {
        const Column& column = layout_->column(place.column);
        if (figuresOnly && !isFigure(column.kind)) continue;
        cell(text, place, column.title);
      }
      if (!text.empty()) write(console_.faint(trimmed(std::move(text))));
    }
  }

  void printTotal(const Event& event) {
    if (event.weight != Weight::Plain) rule(event.values, '-');
    const std::size_t indent = event.weight == Weight::Plain || form_.headingInGroups
                                   ? static_cast<std::size_t>(2 * form_.depth)
                                   : static_cast<std::size_t>(2 * event.level);
    printCells(event.text, indent, event.values, true);
    if (event.weight == Weight::Grand) rule(event.values, '=');
    if (form_.bars && console_.outIsTerminal) shares(event.values);
  }

  /// The cells of a line; a total has a label in the place of what stands before its figures.
  void printCells(const std::string& label, std::size_t indent, const Line& values, bool total) {
    bool first = true;
    for (const std::vector<Layout::Place>& places : layout_->lines()) {
      std::string text;
      if (first && !label.empty()) {
        text = std::string(indent, ' ') + visible(label);
        const auto figure = std::ranges::find_if(
            places, [&](const Layout::Place& place) { return !values[place.column].isNull(); });
        if (figure != places.end() && displayWidth(text) + 1 > figure->start) {
          write(console_.bold(text));
          text.clear();
        }
      }
      first = false;
      for (const Layout::Place& place : places) {
        if (values[place.column].isNull()) continue;
        const std::string value = textOf(place.column, values[place.column], total);
        cell(text, place,
             layout_->standsRight(place.column) ? value : shortened(value, place.width));
      }
      text = trimmed(std::move(text));
      if (!text.empty()) write(total ? console_.bold(text) : text);
    }
  }

  /// A line of `mark` below or above the figures of a total; none where columns are folded.
  void rule(const Line& values, char mark) {
    if (layout_->lines().size() != 1) return;
    std::string text;
    for (const Layout::Place& place : layout_->lines().front()) {
      if (values[place.column].isNull()) continue;
      cell(text, place, std::string(place.width - 1, mark) + " ");
    }
    write(console_.faint(trimmed(std::move(text))));
  }

  /// A bar for the share of each part, below its amount.
  void shares(const Line& values) {
    std::vector<Currency> parts;
    for (std::size_t column = 0; column < values.size(); ++column) {
      const bool isPart = layout_->column(column).kind == CellKind::MoneyPart;
      if (isPart && !values[column].isNull()) parts.push_back(values[column].toCurrency());
    }
    const std::vector<int> percents = sharesOf(parts);
    auto percent = percents.begin();
    for (const std::vector<Layout::Place>& places : layout_->lines()) {
      std::string text;
      for (const Layout::Place& place : places) {
        const bool isPart = layout_->column(place.column).kind == CellKind::MoneyPart;
        if (!isPart || values[place.column].isNull() || percent == percents.end()) continue;
        if (*percent > 0) cell(text, place, shareBar(*percent, place.width - 1) + " ");
        ++percent;
      }
      text = trimmed(std::move(text));
      if (!text.empty()) write(console_.faint(text));
    }
  }

  /// Puts a text in its place, behind what the line already holds.
  void cell(std::string& line, const Layout::Place& place, std::string_view text) const {
    const std::size_t used = displayWidth(line);
    if (used < place.start) line.append(place.start - used, ' ');
    appendPadded(line, text, place.width, layout_->standsRight(place.column));
  }

  static std::string trimmed(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
  }

  void write(const std::string& text) { console_.out << text << '\n'; }

  Console& console_;
  ReportForm form_;
  /// The columns that people see.
  std::vector<std::size_t> shown_;
  /// There from the beginning of the report on.
  std::unique_ptr<Layout> layout_;
  std::vector<Group> open_;
  std::vector<Event> events_;
  std::vector<Note> notes_;
  bool headingDue_ = false;
  bool afterGroup_ = false;
  std::int64_t printed_ = 0;
  std::int64_t told_ = 0;
};

}  // namespace

std::unique_ptr<Report> makeSheet(Console& console) { return std::make_unique<Sheet>(console); }

}  // namespace QuorCli
