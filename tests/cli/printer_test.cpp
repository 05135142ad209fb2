// Rows in every output format.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/print/row_printer.h"
#include "cli/result.h"
#include "platform/collection.h"
#include "tests/cli/rows_in_memory.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Value;
using QuorDataLib::ValueType;
using QuorTest::RowsInMemory;
using QuorTest::TextConsole;

const std::vector<ColumnHead> kColumns{{"Name", ValueType::Text},
                                       {"Amount", ValueType::Currency},
                                       {"Day", ValueType::Date},
                                       {"Open", ValueType::Empty}};

std::vector<std::vector<Value>> someRows() {
  return {{"L\xC3\xA9ger, \"Fils\"", Currency::fromUnits(-1'234'5678), Date::of(2025, 3, 1),
           Value::null()},
          {"", Currency(), Date::of(2025, 3, 1, 9, 30), Value::null()},
          {Value::null(), Value::null(), Date(), Value::null()}};
}

std::string print(Format format, std::optional<std::int64_t> limit = {},
                  const std::vector<NamedValue>& outputs = {}) {
  TextConsole text;
  RowsInMemory rows(kColumns, someRows());
  printRows(rows, limit, outputs, *makeRowPrinter(format, text.console));
  return text.out.str();
}

TEST(RowPrinter, jsonCarriesTypesOnce) {
  const auto document = nlohmann::ordered_json::parse(print(Format::Json));
  EXPECT_EQ(document.dump(),
            R"({"columns":[{"name":"Name","type":"text"},{"name":"Amount","type":"currency"},)"
            R"({"name":"Day","type":"date"},{"name":"Open","type":"null"}],)"
            R"("rows":[["Léger, \"Fils\"","-1234.5678","2025-03-01",null],)"
            R"(["","0.0000","2025-03-01T09:30:00",null],[null,null,"",null]]})");
  EXPECT_EQ(nlohmann::json::parse(print(Format::Json, 0))["rows"].size(), 0U);
  const auto withOutputs =
      nlohmann::json::parse(print(Format::Json, 1, {{"SuppID", std::int32_t{7}}}));
  EXPECT_EQ(withOutputs["rows"].size(), 1U);
  EXPECT_EQ(withOutputs["outputs"]["SuppID"].dump(), R"({"type":"long","value":7})");
}

TEST(RowPrinter, jsonLinesAreObjectsWithDistinctKeys) {
  TextConsole text;
  RowsInMemory rows({{"Total", ValueType::Long}, {"Total", ValueType::Long}, {"", ValueType::Text}},
                    {{std::int32_t{1}, std::int32_t{2}, "x"}});
  printRows(rows, {}, {}, *makeRowPrinter(Format::Jsonl, text.console));
  EXPECT_EQ(text.out.str(), "{\"Total\":1,\"Total_2\":2,\"\":\"x\"}\n");
  EXPECT_EQ(nlohmann::json::parse(print(Format::Jsonl, 1))["Amount"], "-1234.5678");
}

TEST(RowPrinter, csvTellsNullFromTheEmptyText) {
  EXPECT_EQ(print(Format::Csv),
            "Name,Amount,Day,Open\r\n"
            "\"L\xC3\xA9ger, \"\"Fils\"\"\",-1234.5678,2025-03-01,\r\n"
            "\"\",0.0000,2025-03-01T09:30:00,\r\n"
            ",,,\r\n");
}

TEST(RowPrinter, tableAlignsByWhatIsSeen) {
  EXPECT_EQ(print(Format::Table),
            "Name               Amount  Day                  Open\n"
            "-------------  ----------  -------------------  ----\n"
            "L\xC3\xA9ger, \"Fils\"  -1234.5678  2025-03-01           null\n"
            "                   0.0000  2025-03-01T09:30:00  null\n"
            "null                 null                       null\n"
            "(3 rows)\n");
  EXPECT_THAT(print(Format::Table, 2), testing::HasSubstr("(first 2 rows)"));
  EXPECT_THAT(print(Format::Table, 3), testing::HasSubstr("\n(3 rows)"));
  EXPECT_THAT(print(Format::Table, 3, {{"Next", Date::of(2026, 1, 31)}}),
              testing::HasSubstr("Next = 2026-01-31\n"));
}

TEST(RowPrinter, longTablesKeepTheirWidthAndCount) {
  TextConsole text;
  std::vector<std::vector<Value>> many(2'000, {std::int32_t{7}});
  many.back() = {std::int32_t{1'000'000}};
  RowsInMemory rows({{"N", ValueType::Long}}, std::move(many));
  printRows(rows, {}, {}, *makeRowPrinter(Format::Table, text.console));
  EXPECT_THAT(text.out.str(), testing::EndsWith("7\n1000000\n(2000 rows)\n"));
  EXPECT_EQ(std::ranges::count(text.out.str(), '\n'), 2'003);
}

TEST(RowPrinter, colourMarksNullsWithoutMovingThem) {
  TextConsole text;
  text.console.colour = true;
  RowsInMemory rows({{"N", ValueType::Long}, {"Name", ValueType::Text}}, {{Value::null(), "null"}});
  printRows(rows, {}, {}, *makeRowPrinter(Format::Table, text.console));
  EXPECT_THAT(text.out.str(), testing::HasSubstr("\x1b[2mnull\x1b[0m  null\n"));
}

std::string printSingle(const Value& value, Format format,
                        const std::vector<NamedValue>& outputs = {}) {
  TextConsole text;
  printValue(value, outputs, format, text.console);
  return text.out.str();
}

TEST(PrintValue, aCollectionIsAnArrayOrRows) {
  using QuorDataLib::Collection;
  using QuorDataLib::make;
  const auto empty = make<Collection>();
  const auto accounts = make<Collection>(std::vector<Value>{std::int32_t{1200}, "12,10", empty});
  EXPECT_EQ(printSingle(accounts, Format::Json),
            "{\"result\":[1200,\"12,10\",[]],\"outputs\":{}}\n");
  EXPECT_EQ(printSingle(empty, Format::Json), "{\"result\":[],\"outputs\":{}}\n");
  EXPECT_EQ(printSingle(accounts, Format::Csv), "result\r\n1200\r\n\"12,10\"\r\n\r\n");
  EXPECT_THAT(printSingle(accounts, Format::Table), testing::HasSubstr("(3 rows)\n"));
  const auto records = make<Collection>(
      std::vector<Value>{QuorAccQueries::findClass("CCustSaleInfo")->create(), Value::null()});
  EXPECT_EQ(printSingle(records, Format::Csv),
            "LastSaleDate,LastSaleAmnt,LastSaleCode,LastSaleType\r\n,0.0000,0,0\r\n,,,\r\n");
}

TEST(PrintValue, hasAFormForEveryFormat) {
  const Value amount = Currency::fromUnits(150'000);
  const std::vector<NamedValue> outputs{{"FromDate", Date::of(1900, 1, 1)}, {"Rest", ""}};
  EXPECT_EQ(printSingle(amount, Format::Table, outputs),
            "15.0000\nFromDate = 1900-01-01\nRest = \n");
  EXPECT_EQ(printSingle(amount, Format::Csv, outputs),
            "result,FromDate,Rest\r\n15.0000,1900-01-01,\"\"\r\n");
  for (const Format format : {Format::Json, Format::Jsonl}) {
    EXPECT_EQ(printSingle(amount, format, outputs),
              R"({"result":{"type":"currency","value":"15.0000"},"outputs":{)"
              R"("FromDate":{"type":"date","value":"1900-01-01"},)"
              R"("Rest":{"type":"text","value":""}}})"
              "\n");
  }
  EXPECT_EQ(printSingle(Value(), Format::Table), "");
  EXPECT_EQ(printSingle(Value::null(), Format::Table), "null\n");
  EXPECT_EQ(printSingle(Value(), Format::Json),
            "{\"result\":{\"type\":\"null\",\"value\":null},\"outputs\":{}}\n");
}

}  // namespace
}  // namespace QuorCli
