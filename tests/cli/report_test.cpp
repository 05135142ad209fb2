// The frame of reports: what fits on a line, what a limit leaves, what totals look like.
#include "cli/report/report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "cli/print/display_text.h"
#include "tests/cli/rows_in_memory.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Value;
using QuorTest::TextConsole;
using testing::HasSubstr;
using testing::Not;

const std::vector<Column> kSheetColumns{{"Account", "Account", CellKind::Code},
                                        {"Name", "Name", CellKind::Name},
                                        {"", "Key", CellKind::Number, Audience::Programs},
                                        {"Date", "Date", CellKind::Date},
                                        {"On hand", "OnHand", CellKind::Quantity},
                                        {"Debit", "Debit", CellKind::Money},
                                        {"Credit", "Credit", CellKind::Money},
                                        {"0-30", "Days0To30", CellKind::MoneyPart},
                                        {"over 30", "DaysOver30", CellKind::MoneyPart},
                                        {"Share", "Share", CellKind::Percent}};

Line someLine(int number) {
  const Currency amount = Currency::fromUnits(987'654'321'0000 / (number + 1));
  return {"1" + std::to_string(number),
          "Comptes à recevoir des clients étrangers, " + std::to_string(number),
          std::int32_t{number},
          Date::of(2025, 3, 31),
          Currency::fromUnits(std::int64_t{2'500} * number),
          amount,
          Currency::fromUnits(-amount.units()),
          Currency(),
          amount,
          12.345};
}

Line someTotal() {
  Line line(kSheetColumns.size(), Value::null());
  line[5] = line[8] = Currency::fromUnits(1'234'567'8900);
  line[7] = Currency();
  return line;
}

std::string print(ReportForm form, std::size_t width, Format format = Format::Table) {
  TextConsole text;
  text.console.width = width;
  const auto report = makeReport(format, text.console);
  report->begin(std::move(form), kSheetColumns);
  for (int group = 0; group < 3; ++group) {
    report->group(0, "Group " + std::to_string(group), "");
    for (int number = 0; number < group; ++number) report->line(someLine(number));
    report->total(0, Weight::Subtotal, "Total of group " + std::to_string(group), someTotal());
  }
  report->summary("");
  report->grandTotal(Weight::Grand, "All", someTotal());
  report->end();
  return text.out.str();
}

/// The figures of a printed report, whatever lines they stand on.
std::vector<std::string> figures(const std::string& text) {
  std::vector<std::string> found;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (word.find('.') != std::string::npos) found.push_back(word);
  }
  return found;
}

TEST(Sheet, fitsEveryWidthWithoutCuttingAFigure) {
  const ReportForm form{.title = "Sheet"};
  const std::vector<std::string> all = figures(print(form, 200));
  for (const bool inGroups : {false, true}) {
    for (std::size_t width = 60; width <= 200; ++width) {
      ReportForm narrow = form;
      narrow.headingInGroups = inGroups;
      const std::string text = print(narrow, width);
      EXPECT_EQ(figures(text), all) << width;
      std::istringstream lines(text);
      for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(displayWidth(line), width) << line;
      }
    }
  }
}

TEST(Sheet, putsTotalsBelowTheirFigures) {
  const std::string text = print({.title = "Sheet"}, 200);
  EXPECT_THAT(text, Not(HasSubstr("Group 0"))) << "a group without a line";
  EXPECT_THAT(text, HasSubstr("12.3%"));
  EXPECT_THAT(text, testing::ContainsRegex("\n +-+ +-+ +-+\nTotal of group 1 +1,234,567.89 +- "));
  EXPECT_THAT(text, testing::ContainsRegex("\nAll +1,234,567.89 .*\n +=+ +=+ +=+\n$"));
}

TEST(Sheet, aLimitLeavesLinesOutAndSaysSo) {
  const ReportForm limited{.title = "Sheet", .lines = "accounts", .limit = 1};
  const std::string text = print(limited, 100);
  EXPECT_THAT(text, Not(HasSubstr("Group 2")));
  EXPECT_THAT(text, HasSubstr("The first 1 of 3 accounts are printed"));
  EXPECT_THAT(print(limited, 100, Format::Csv),
              testing::MatchesRegex("Account,Name,Key,Date,OnHand,[^\n]*\r\n10,[^\n]*\r\n"));
}

}  // namespace
}  // namespace QuorCli
