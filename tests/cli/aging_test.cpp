// The aging report's arithmetic and grouping, on rows written by hand.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/report/aging/page.h"
#include "cli/report/buckets.h"
#include "cli/report/exchange.h"
#include "cli/report/share.h"
#include "tests/cli/rows_in_memory.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Error;
using QuorDataLib::Value;
using QuorDataLib::ValueType;
using QuorTest::RowsInMemory;
using QuorTest::TextConsole;

Currency amount(const char* text) { return *Currency::parse(text); }

TEST(AgeBuckets, bordersBelongToTheYoungerBucket) {
  const AgeBuckets buckets = AgeBuckets::parse("30,60,90");
  ASSERT_EQ(buckets.count(), 4U);
  const std::vector<std::pair<std::int64_t, std::size_t>> cases{
      {-5, 0}, {0, 0}, {30, 0}, {31, 1}, {60, 1}, {61, 2}, {90, 2}, {91, 3}, {100'000, 3}};
  for (const auto& [days, bucket] : cases) EXPECT_EQ(buckets.bucketOf(days), bucket) << days;
  EXPECT_EQ(buckets.title(0), "0-30");
  EXPECT_EQ(buckets.title(2), "61-90");
  EXPECT_EQ(buckets.title(3), "over 90");
  EXPECT_EQ(buckets.columnName(1), "Days31To60");
  EXPECT_EQ(buckets.columnName(3), "DaysOver90");
  EXPECT_EQ(AgeBuckets::parse("45").count(), 2U);

  const AgeBuckets overdue = AgeBuckets::parse("30,60", AgeBy::Due);
  EXPECT_EQ(overdue.bucketOf(0), 0U);
  EXPECT_EQ(overdue.bucketOf(1), 1U);
  EXPECT_EQ(overdue.title(0) + " " + overdue.title(1) + " " + overdue.title(3),
            "not due 1-30 over 60");
  EXPECT_EQ(overdue.columnName(0) + " " + overdue.columnName(1), "NotDue Days1To30");
}

TEST(AgeBuckets, refuseWhatIsNoAscendingList) {
  for (const char* text :
       {"", "0", "-1", "30,", ",30", "30,30", "60,30", "30;60", "30, 60", "x", "99999999999"}) {
    EXPECT_THROW(AgeBuckets::parse(text), UsageError) << text;
  }
}

TEST(HomeCurrency, isExactToTheCent) {
  EXPECT_EQ(inHomeCurrency(amount("100"), 1.3675), amount("136.75"));
  // 0.35 * 1.1 = 0.385, a half that binary numbers cannot hold
  EXPECT_EQ(inHomeCurrency(amount("0.35"), 1.1), amount("0.39"));
  EXPECT_EQ(inHomeCurrency(amount("-0.35"), 1.1), amount("-0.39"));
  EXPECT_EQ(inHomeCurrency(amount("1000000"), 1.23456789), amount("1234567.89"));
  EXPECT_EQ(inHomeCurrency(amount("10"), amount("1.25")), amount("12.5"));
  EXPECT_EQ(inHomeCurrency(amount("7.77"), Value::null()), amount("7.77"));
  EXPECT_EQ(inHomeCurrency(amount("7.77"), 0.0), amount("7.77"));
  EXPECT_THROW(static_cast<void>(inHomeCurrency(amount("900000000000000"), 2.0)), Error);
}

TEST(HomeCurrency, aDocumentPaidInPartsComesToZero) {
  HomeSum sum;
  sum.add(amount("100"), 1.3333);
  for (int part = 0; part < 3; ++part) sum.add(amount("-33.33"), 1.3333);
  sum.add(amount("-0.01"), 1.3333);
  EXPECT_EQ(sum.total(), Currency());
  sum.add(amount("10"), 1.5);
  sum.add(amount("0.0001"), Value::null());
  EXPECT_EQ(sum.total(), amount("15.0001"));
}

TEST(Shares, addUpOverWhatIsOwed) {
  EXPECT_EQ(sharesOf({amount("50"), amount("-20"), amount("150")}), (std::vector<int>{25, 0, 75}));
  EXPECT_TRUE(sharesOf({amount("-1"), Currency()}).empty());
  EXPECT_EQ(shareBar(100, 13), "████████ 100%");
  EXPECT_EQ(shareBar(44, 13), "███▌      44%");
  EXPECT_EQ(shareBar(1, 13), "           1%");
  EXPECT_EQ(shareBar(44, 7), "44%");
}

/// A row of customer aging. `order` is the document that it stands under.
struct Item {
  std::int32_t party;
  const char* name;
  Value currency;
  std::int32_t order;
  Date orderDate;
  std::int32_t key;
  const char* number;
  std::int32_t type;
  Date date;
  const char* balance;
  Value rate = Value::null();
  Value due = Value::null();
};

QuorDataLib::Ref<QuorDataLib::Recordset> recordset(const std::vector<Item>& items) {
  std::vector<std::vector<Value>> rows;
  for (const Item& item : items) {
    const bool nothing = item.party == 0;  // a currency without items
    const auto orNull = [&](Value value) { return nothing ? Value::null() : std::move(value); };
    rows.push_back({orNull(item.party), orNull("C" + std::to_string(item.party)), item.due,
                    orNull(item.name), item.currency, orNull(item.order), orNull(item.orderDate),
                    orNull(item.key), orNull(item.number), orNull(item.type), orNull(item.date),
                    orNull(amount(item.balance)), item.rate});
  }
  const auto text = ValueType::Text;
  const auto whole = ValueType::Long;
  return QuorDataLib::make<RowsInMemory>(
      std::vector<ColumnHead>{{"ExCustID", whole},
                              {"CustId", text},
                              {"DueDate", ValueType::Date},
                              {"Name", text},
                              {"ExCurrencyId", whole},
                              {"DocOrderId", whole},
                              {"DocOrderDate", ValueType::Date},
                              {"InInvoiId", whole},
                              {"InvoiID", text},
                              {"InvoiType", whole},
                              {"InvoiDate", ValueType::Date},
                              {"Balance", ValueType::Currency},
                              {"ExchangeRate", ValueType::Double}},
      std::move(rows));
}

AgingContext context() {
  return {.source = &kCustomerAging,
          .asOf = Date::of(2025, 12, 31),
          .buckets = AgeBuckets::parse("30,60,90"),
          .company = {.name = "Maple Trading Ltd.",
                      .sessionDate = {},
                      .currencyCodes = {{1, "CAD"}, {2, "USD"}}},
          .limit = {}};
}

std::string report(const std::vector<Item>& items, const AgingContext& context, Format format,
                   bool terminal = false, std::size_t width = 0) {
  TextConsole text;
  text.console.outIsTerminal = terminal;
  text.console.width = width;
  const auto printer = makeReport(format, text.console);
  AgingPage page(context, *printer);
  AgingGrouping grouping(context.asOf, context.buckets, context.company.homeCurrency,
                         [&](const AgingBlock& block) { page.block(block); });
  AgingReader reader(*context.source, context.by, recordset(items));
  page.begin();
  for (AgingRow row; printer->wantsMore() && reader.next(row);) grouping.add(row);
  grouping.finish();
  page.end(grouping.totals());
  return text.out.str();
}

const Date kOctober = Date::of(2025, 10, 1);
const Date kDecember = Date::of(2025, 12, 15);

/// Customer 7 owes 1,000.00 less a payment and a discount, has a credit note, an open credit that
/// bears the key of nothing else, and a payment on a document dated later; customer 9 owes dollars.
std::vector<Item> twoCustomers() {
  return {
      {7, "L\xC3\xA9ger", 1, 10, kOctober, 10, "F-10", 1, kOctober, "1000"},
      {7, "L\xC3\xA9ger", 1, 10, kOctober, 20, "C-1", 99, Date::of(2025, 11, 1), "-300"},
      {7, "L\xC3\xA9ger", 1, 10, kOctober, 20, "C-1", 100, Date::of(2025, 11, 1), "-6.25"},
      {7, "L\xC3\xA9ger", 1, 11, Date::of(2025, 11, 15), 11, "N-11", 4, Date::of(2025, 11, 15),
       "-50"},
      {7, "L\xC3\xA9ger", 1, 21, kDecember, 21, "C-2", 99, kDecember, "-200"},
      {7, "L\xC3\xA9ger", 1, 12, Date::of(2026, 1, 5), 22, "C-3", 99, Date::of(2025, 12, 30),
       "-40"},
      {0, "", 3, 0, {}, 0, "", 0, {}, "0"},
      {9, "Acme", 2, 13, kDecember, 13, "F-13", 2, kDecember, "100.10", 1.3675},
  };
}

TEST(AgingReport, printsBlocksBucketsAndTotals) {
  EXPECT_EQ(
      report(twoCustomers(), context(), Format::Table),
      "Maple Trading Ltd.\n"
      "Customer aging as at 2025-12-31\n"
      "\n"
      "C7 Léger (customer 7), CAD\n"
      "  Document  Type          Date        Days  Balance      0-30    31-60   61-90   over 90\n"
      "  F-10      invoice       2025-10-01    91   693.75                               693.75\n"
      "  N-11      credit note   2025-11-15    46   (50.00)            (50.00)\n"
      "  C-2       credit        2025-12-15    16  (200.00)  (200.00)\n"
      "  C-3       payment       2025-12-30     1   (40.00)   (40.00)\n"
      "  Total CAD                                  403.75   (240.00)  (50.00)      -    693.75\n"
      "\n"
      "C9 Acme (customer 9), USD\n"
      "  Document  Type          Date        Days  Balance      0-30    31-60   61-90   over 90\n"
      "  F-13      counter sale  2025-12-15    16   100.10    100.10\n"
      "  Total USD                                  100.10    100.10        -       -         -\n"
      "\n"
      "All customers\n"
      "                                            Balance      0-30    31-60   61-90   over 90\n"
      "  Total CAD, 1 customer, 4 documents         403.75   (240.00)  (50.00)      -    693.75\n"
      "  Total USD, 1 customer, 1 document          100.10    100.10        -       -         -\n"
      "  All in CAD, at the documents' rates        540.64   (103.11)  (50.00)      -    693.75\n");
}

TEST(AgingReport, oneCurrencyNeedsNoConversion) {
  std::vector<Item> items = twoCustomers();
  items.pop_back();
  EXPECT_THAT(report(items, context(), Format::Table),
              testing::Not(testing::HasSubstr("All in CAD")));
  EXPECT_THAT(report({}, context(), Format::Table), testing::EndsWith("Nothing to show.\n"));
}

TEST(AgingReport, rowsForProgramsCarryTheSameFigures) {
  const auto document = nlohmann::json::parse(report(twoCustomers(), context(), Format::Json));
  std::vector<std::string> names;
  for (const auto& column : document["columns"]) names.push_back(column["name"]);
  EXPECT_THAT(names,
              testing::ElementsAre("PartyId", "PartyCode", "PartyName", "Currency", "Kind", "Type",
                                   "DocumentId", "Number", "Date", "Days", "Balance", "HomeBalance",
                                   "Days0To30", "Days31To60", "Days61To90", "DaysOver90"));
  ASSERT_EQ(document["rows"].size(), 5U);
  EXPECT_EQ(document["rows"][0].dump(),
            R"([7,"C7","Léger","CAD","invoice",1,10,"F-10","2025-10-01",91,"693.7500","693.7500",)"
            R"("0.0000","0.0000","0.0000","693.7500"])");
  EXPECT_EQ(
      document["rows"][4].dump(),
      R"([9,"C9","Acme","USD","counter sale",2,13,"F-13","2025-12-15",16,"100.1000","136.8900",)"
      R"("100.1000","0.0000","0.0000","0.0000"])");
}

TEST(AgingReport, differentCurrenciesOfOnePartyAreNeverAdded) {
  const std::vector<Item> items{
      {7, "A", 1, 10, kOctober, 10, "F-10", 1, kOctober, "10"},
      {7, "A", 2, 11, kDecember, 11, "F-11", 1, kDecember, "20", 2.0},
      {7, "A", Value::null(), 12, kDecember, 12, "F-12", 1, kDecember,
       "5"},  // counts as currency 1
  };
  const std::string text = report(items, context(), Format::Table);
  EXPECT_THAT(text, testing::HasSubstr("A (customer 7), CAD"));
  EXPECT_THAT(text, testing::HasSubstr("A (customer 7), USD"));
  EXPECT_THAT(text, testing::ContainsRegex("Total CAD, 1 customer, 2 documents +15\\.00 "));
  EXPECT_THAT(text, testing::ContainsRegex("All in CAD, at the documents' rates +55\\.00 "));
}

TEST(AgingReport, aCreditIsTiedToNothingEvenWhereNumbersCoincide) {
  // The payment applied on the day of the document bears the document's own key; the credit further
  // down shares the key of a document of another day.
  const std::vector<Item> items{
      {7, "A", 1, 5, kOctober, 5, "F-5", 1, kOctober, "100"},
      {7, "A", 1, 5, kOctober, 5, "C-5", 99, kOctober, "-60"},
      {7, "A", 1, 5, kDecember, 5, "C-6", 99, kDecember, "-10"},
  };
  const auto rows = nlohmann::json::parse(report(items, context(), Format::Json))["rows"];
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0][10], "40.0000");
  EXPECT_EQ(rows[1][4], "credit");
  EXPECT_EQ(rows[1][10], "-10.0000");
}

TEST(AgingReport, aLimitCutsLinesButNoTotals) {
  AgingContext limited = context();
  limited.limit = 1;
  const std::string text = report(twoCustomers(), limited, Format::Table);
  EXPECT_THAT(text, testing::Not(testing::HasSubstr("N-11")));
  EXPECT_THAT(text, testing::Not(testing::HasSubstr("Acme")));
  EXPECT_THAT(text, testing::ContainsRegex("Total USD, 1 customer, 1 document +100\\.10 "));
  EXPECT_THAT(text, testing::HasSubstr("The first 1 of 5 documents are printed"));
  EXPECT_EQ(nlohmann::json::parse(report(twoCustomers(), limited, Format::Json))["rows"].size(),
            1U);
}

TEST(AgingReport, barsAreForTerminals) {
  EXPECT_THAT(report(twoCustomers(), context(), Format::Table, true), testing::HasSubstr("100%"));
}

TEST(AgingReport, aSummaryHasALineForEachParty) {
  AgingContext summary = context();
  summary.summary = true;
  EXPECT_EQ(report(twoCustomers(), summary, Format::Csv),
            "PartyId,PartyCode,PartyName,Currency,Documents,Balance,HomeBalance,Days0To30,"
            "Days31To60,Days61To90,DaysOver90\r\n"
            "7,C7,L\xC3\xA9ger,CAD,4,403.7500,403.7500,-240.0000,-50.0000,0.0000,693.7500\r\n"
            "9,C9,Acme,USD,1,100.1000,136.8900,100.1000,0.0000,0.0000,0.0000\r\n");
  EXPECT_THAT(report(twoCustomers(), summary, Format::Table),
              testing::AllOf(testing::ContainsRegex("\nC7 +L\xC3\xA9ger +CAD +4 +403\\.75 "),
                             testing::ContainsRegex("All in CAD.* 540\\.64 ")));
}

TEST(AgingReport, agesCountFromTheDueDateWhereThereIsOne) {
  AgingContext byDue = context();
  byDue.by = AgeBy::Due;
  byDue.buckets = AgeBuckets::parse("30", AgeBy::Due);
  const std::vector<Item> items{
      {7, "A", 1, 10, kOctober, 10, "F-10", 1, kOctober, "9", {}, Date::of(2025, 12, 30)},
      {7, "A", 1, 10, kOctober, 20, "C-1", 99, kDecember, "-2", {}, Date::of(2025, 12, 30)},
      {7, "A", 1, 11, kOctober, 11, "F-11", 1, kOctober, "5", {}, Date::of(2025, 12, 31)},
      {7, "A", 1, 12, kOctober, 12, "F-12", 1, kOctober, "3"},
  };
  const auto rows = nlohmann::json::parse(report(items, byDue, Format::Json))["rows"];
  EXPECT_EQ(rows[0].dump(), R"([7,"C7","A","CAD","invoice",1,10,"F-10","2025-10-01","2025-12-30",)"
                            R"(1,"7.0000","7.0000","0.0000","7.0000","0.0000"])");
  EXPECT_EQ(rows[1][13], "5.0000") << "what is due on the day is not overdue";
  EXPECT_EQ(rows[2][15], "3.0000") << "without a due date the document's own counts";
}

}  // namespace
}  // namespace QuorCli
