// Values from and to text, JSON and display text.
#include "cli/print/value_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/print/amount_text.h"
#include "cli/print/display_text.h"
#include "cli/print/json_text.h"
#include "cli/words/names.h"
#include "cli/words/statement_word.h"
#include "core/value_records.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

std::string inJson(const Value& value) {
  std::string text;
  appendJson(text, value);
  return text;
}

std::string plain(const Value& value) {
  std::string text;
  appendPlain(text, value);
  return text;
}

TEST(ParseValue, takesWhatTheTypeCanHold) {
  EXPECT_EQ(parseValue("-2147483648", ValueType::Long), Value(std::int32_t{-2147483647 - 1}));
  EXPECT_EQ(parseValue("32767", ValueType::Integer), Value(std::int16_t{32767}));
  EXPECT_EQ(parseValue("-0.5", ValueType::Currency), Value(Currency::fromUnits(-5000)));
  EXPECT_EQ(parseValue("922337203685477.5807", ValueType::Currency),
            Value(Currency::fromUnits(std::numeric_limits<std::int64_t>::max())));
  EXPECT_EQ(parseValue("2024-02-29", ValueType::Date), Value(Date::of(2024, 2, 29)));
  EXPECT_EQ(parseValue("2024-02-29T23:59:58", ValueType::Date),
            Value(Date::of(2024, 2, 29, 23, 59, 58)));
  EXPECT_EQ(parseValue("", ValueType::Date), Value(Date()));
  EXPECT_EQ(parseValue("true", ValueType::Boolean), Value(true));
  EXPECT_EQ(parseValue("1e-3", ValueType::Double), Value(0.001));
  EXPECT_EQ(parseValue(" a = 'b' ", ValueType::Text), Value(" a = 'b' "));
  EXPECT_EQ(parseValue("", ValueType::Text), Value(""));
}

TEST(ParseValue, refusesEverythingElse) {
  const std::vector<std::pair<std::string, ValueType>> refused{
      {"2147483648", ValueType::Long},  {"", ValueType::Long},
      {"1.0", ValueType::Long},         {" 1", ValueType::Long},
      {"+1", ValueType::Long},          {"32768", ValueType::Integer},
      {"1.00001", ValueType::Currency}, {"1,5", ValueType::Currency},
      {"1.", ValueType::Currency},      {".5", ValueType::Currency},
      {"-", ValueType::Currency},       {"922337203685477.5808", ValueType::Currency},
      {"1e3", ValueType::Currency},     {"2023-02-29", ValueType::Date},
      {"29/02/2024", ValueType::Date},  {"2024-2-9", ValueType::Date},
      {"yes", ValueType::Boolean},      {"-1", ValueType::Boolean},
      {"nan", ValueType::Double},       {"1e999", ValueType::Double},
      {"0x10", ValueType::Double},      {"caf\xE9", ValueType::Text},
      {"anything", ValueType::Object},
  };
  for (const auto& [text, type] : refused) {
    EXPECT_FALSE(parseValue(text, type)) << text << " as " << QuorDataLib::typeName(type);
  }
}

TEST(ValueText, hasOneFormForEachType) {
  EXPECT_EQ(plain(Currency::fromUnits(150'000)), "15.0000");
  EXPECT_EQ(plain(Date::of(2025, 1, 2)), "2025-01-02");
  EXPECT_EQ(plain(Date::of(2025, 1, 2, 3, 4, 5)), "2025-01-02T03:04:05");
  EXPECT_EQ(plain(Date()), "");
  EXPECT_EQ(plain(false), "false");
  EXPECT_EQ(inJson(Currency::fromUnits(-1)), R"("-0.0001")");
  EXPECT_EQ(inJson(Date()), R"("")");
  EXPECT_EQ(inJson(Value::null()), "null");
  EXPECT_EQ(inJson(Value()), "null");
  EXPECT_EQ(inJson(std::int16_t{-7}), "-7");
  EXPECT_EQ(printedType(ValueType::Empty), "null");
}

TEST(ValueText, jsonReadsBackExactly) {
  for (const double number : {0.1, -0.0, 15.0, 1e21, 1e-300, 123456789.123456789}) {
    const auto back = nlohmann::json::parse(inJson(number));
    EXPECT_TRUE(back.is_number_float()) << number;
    EXPECT_EQ(back.get<double>(), number);
    EXPECT_EQ(std::signbit(back.get<double>()), std::signbit(number));
  }
  EXPECT_EQ(inJson(std::numeric_limits<double>::infinity()), "null");
  for (const std::string text : {"plain", "\"quoted\\\"", "L\xC3\xA9ger\n\t\x01", "\x7f", ""}) {
    EXPECT_EQ(nlohmann::json::parse(inJson(text)).get<std::string>(), text);
  }
  EXPECT_EQ(nlohmann::json::parse(inJson("caf\xE9!")).get<std::string>(), "caf\xEF\xBF\xBD!");
}

TEST(ValueText, anObjectIsItsReadableProperties) {
  const auto record = QuorDataLib::make<QuorAccQueries::CCustPmtInfo>();
  record->SetLastPmtAmnt(Currency::fromUnits(12'3456));
  record->SetLastPmtDate(Date::of(2025, 6, 30));
  record->SetLastPmtType("CHQ");
  const auto back = nlohmann::ordered_json::parse(inJson(record));
  EXPECT_EQ(back.dump(), R"({"LastPmtDate":"2025-06-30","LastPmtAmnt":"12.3456","LastPmtCode":0,)"
                         R"("LastPmtType":"CHQ"})");
  EXPECT_EQ(inJson(QuorDataLib::Ref<QuorDataLib::Object>()), "null");
}

TEST(DisplayText, measuresWhatATerminalShows) {
  EXPECT_EQ(displayWidth("Leger"), 5U);
  EXPECT_EQ(displayWidth("L\xC3\xA9ger"), 5U);   // one letter with its accent
  EXPECT_EQ(displayWidth("Le\xCC\x81ger"), 5U);  // a letter and a joining accent
  EXPECT_EQ(displayWidth("\xE6\x9D\xB1\xE4\xBA\xAC"), 4U);
  EXPECT_EQ(visible("a\tb\r\n\x1b[1m"), "a\\tb\\r\\n\\x1b[1m");
  EXPECT_EQ(visible("caf\xE9"), "caf\xEF\xBF\xBD");
  std::string padded;
  appendPadded(padded, "\xC3\xA9t\xC3\xA9", 5, true);
  EXPECT_EQ(padded, "  \xC3\xA9t\xC3\xA9");
}

TEST(AmountText, printsAsAccountantsDo) {
  EXPECT_EQ(amountText(Currency::fromUnits(12'345'678'900)), "1,234,567.89 ");
  EXPECT_EQ(amountText(Currency::fromUnits(-9'990'000)), "(999.00)");
  EXPECT_EQ(amountText(Currency::fromUnits(-10'000'000)), "(1,000.00)");
  EXPECT_EQ(amountText(Currency::fromUnits(12'345)), "1.2345 ");
  EXPECT_EQ(amountText(Currency()), "0.00 ");
  EXPECT_EQ(amountText(Currency::fromUnits(std::numeric_limits<std::int64_t>::min())),
            "(922,337,203,685,477.5808)");
  EXPECT_EQ(grouped(-1'000), "-1,000");
  EXPECT_EQ(grouped(999), "999");
}

TEST(Names, nearestOnesComeFirst) {
  const std::vector<std::string_view> names{"OpenCustBalance", "OpenCustOpenCredits",
                                            "OpenCustLastSale", "CacheRecordsets"};
  EXPECT_EQ(suggestion("opencustbalence", names), " Did you mean OpenCustBalance?");
  EXPECT_EQ(suggestion("OpenCustLastSales", names).find(" Did you mean OpenCustLastSale"), 0U);
  EXPECT_EQ(suggestion("credits", names), " Did you mean OpenCustOpenCredits?");
  EXPECT_EQ(suggestion("xyz", names), "");
}

TEST(FirstWord, standsBehindCommentsAndParentheses) {
  EXPECT_EQ(firstWord(" ( select 1)"), "select");
  EXPECT_EQ(firstWord("-- a comment; DELETE\n/* and DROP */ Update T"), "Update");
  EXPECT_EQ(firstWord("/* never closed"), "");
  EXPECT_EQ(firstWord(""), "");
  EXPECT_TRUE(changesRows("delete"));
  EXPECT_FALSE(changesRows("SELECT"));
}

}  // namespace
}  // namespace QuorCli
