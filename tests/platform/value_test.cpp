#include "platform/values/value.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "platform/raised.h"

namespace QuorDataLib {
namespace {

using QuorTest::raisedBy;
using Type = ValueType;

struct Thing : Object {};

Value number16(int number) { return static_cast<std::int16_t>(number); }

/// What `value` raises when it is converted to `type`, 0 for nothing.
int raisedConverting(const Value& value, Type type) {
  return raisedBy([&] { return value.convertedTo(type); });
}

const Type kContentTypes[] = {Type::Boolean,  Type::Integer, Type::Long, Type::Double,
                              Type::Currency, Type::Date,    Type::Text};

TEST(Value, KnowsItsType) {
  const std::pair<Value, const char*> cases[] = {
      {Value(), "empty"},
      {Value::null(), "null"},
      {true, "boolean"},
      {number16(1), "integer"},
      {1, "long"},
      {1.5, "double"},
      {Currency(), "currency"},
      {Date(), "date"},
      {"x", "text"},
      {make<Thing>(), "object"},
  };
  for (const auto& [value, name] : cases) {
    EXPECT_EQ(typeName(value.type()), name);
    EXPECT_EQ(value.convertedTo(value.type()), value) << name;
  }
  EXPECT_NE(Value(1), Value(1.0));
}

TEST(Value, EveryRuleOfTheNumbers) {
  struct Case {
    Value from;
    Value to;
  };
  const Case cases[] = {
      {true, number16(-1)},
      {true, -1},
      {true, -1.0},
      {true, Currency::fromInteger(-1)},
      {true, Date::of(1899, 12, 29)},
      {true, "True"},
      {false, "False"},
      {2, true},
      {0.0, false},
      {0.1, true},
      {Currency::fromUnits(1), true},
      {Date(), false},
      {2.5, 2},
      {3.5, 4},
      {-2.5, number16(-2)},
      {0.5, number16(0)},
      {Currency::fromUnits(25'000), 2},
      {Currency::fromUnits(25'001), 3},
      {Date::of(1900, 1, 1, 12), 2},
      {Date::of(1899, 12, 29, 6), -1.25},
      {Date::of(1899, 12, 29, 6), Currency::fromUnits(-12'500)},
      {-1.25, Date::of(1899, 12, 29, 6)},
      {45'000, Date::of(2023, 3, 15)},
      {Currency::fromUnits(5'000), Date::of(1899, 12, 30, 12)},
      {0.03125, Currency::fromUnits(312)},
      {32'767.4, number16(32'767)},
      {-32'768.5, number16(-32'768)},
      {2'147'483'647.25, 2'147'483'647},
      {number16(-7), "-7"},
      {std::numeric_limits<std::int32_t>::min(), "-2147483648"},
      {number16(-32'768), "-32768"},
      {100'000.0, "100000"},
      {0.1, "0.1"},
      {-0.0, "0"},
      {1e20, "1e+20"},
      {Currency::fromUnits(125'000), "12.5"},
      {Currency::fromUnits(30'000), "3"},
      {Currency::fromUnits(-1), "-0.0001"},
      {Currency::fromUnits(1'000'000), "100"},
      {Currency(), "0"},
      {Date::of(2024, 2, 29), "2024-02-29"},
      {Date::of(2024, 2, 29, 1, 2, 3), "2024-02-29 01:02:03"},
  };
  for (const auto& [from, to] : cases) {
    EXPECT_EQ(from.convertedTo(to.type()), to) << from.toText() << " to " << typeName(to.type());
  }
}

TEST(Value, EveryRuleOfTheTexts) {
  const std::pair<const char*, Value> cases[] = {
      {" 12 ", 12},
      {"\t-12.5", -12},
      {"+3.5", number16(4)},
      {".5", 0.5},
      {"7.", 7.0},
      {"1e3", 1000.0},
      {"2E-2", 0.02},
      {" 0.30 ", Currency::fromUnits(3'000)},
      {"922337203685477.5807", Currency::fromUnits(std::numeric_limits<std::int64_t>::max())},
      {"tRUE", true},
      {" False ", false},
      {"-1", true},
      {"0.0", false},
      {"2024-02-29T01:02:03", Date::of(2024, 2, 29, 1, 2, 3)},
      {"", Date()},
  };
  for (const auto& [text, to] : cases) EXPECT_EQ(Value(text).convertedTo(to.type()), to) << text;

  for (const char* text : {"", " ", "12a", "1 2", "+-1", "--1", "-", ".", "1e", "e5", "0x10", "inf",
                           "-nan", "1,5", "True1", "\xC3\xA9"}) {
    EXPECT_FALSE(Value(text).isNumeric()) << text;
    for (const Type type : kContentTypes) {
      if (type == Type::Text || (type == Type::Date && *text == '\0')) continue;
      EXPECT_EQ(raisedConverting(text, type), 13) << text << " to " << typeName(type);
    }
  }
  EXPECT_EQ(raisedConverting("true", Type::Long), 13);
  EXPECT_EQ(raisedConverting("1e3", Type::Currency), 13);
  EXPECT_EQ(raisedConverting("45000", Type::Date), 13);
  try {
    static_cast<void>(Value("12a").toLong());
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.description(), "\"12a\" is no number");
  }
}

TEST(Value, WhatDoesNotFitOverflows) {
  const double infinity = std::numeric_limits<double>::infinity();
  const std::pair<Value, Type> cases[] = {
      {32'768, Type::Integer},       {32'767.5, Type::Integer},
      {-32'768.51, Type::Integer},   {Date::of(2023, 3, 15), Type::Integer},
      {2'147'483'647.5, Type::Long}, {-2'147'483'648.51, Type::Long},
      {std::nan(""), Type::Long},    {infinity, Type::Currency},
      {infinity, Type::Date},        {1e15, Type::Currency},
      {2'958'466, Type::Date},       {"1e400", Type::Double},
      {"32768", Type::Integer},      {"922337203685477.5808", Type::Currency},
  };
  for (const auto& [value, type] : cases) {
    EXPECT_EQ(raisedConverting(value, type), 6) << value.toText() << " to " << typeName(type);
  }
}

TEST(Value, EmptyNullAndObjects) {
  const Value object = make<Thing>();
  const Value noObject = Ref<Thing>();
  for (const Type type : kContentTypes) {
    const Value content = Value().convertedTo(type);
    EXPECT_EQ(content.type(), type);
    EXPECT_FALSE(type == Type::Text ? !content.text().empty() : content.toBoolean());
    EXPECT_EQ(raisedConverting(Value::null(), type), 94) << typeName(type);
    EXPECT_EQ(raisedConverting(object, type), 13) << typeName(type);
    EXPECT_EQ(raisedConverting(noObject, type), 91) << typeName(type);
    EXPECT_EQ(raisedConverting(content, Type::Object), 13) << typeName(type);
    EXPECT_EQ(raisedConverting(content, Type::Null), 13) << typeName(type);
  }
  EXPECT_TRUE(object.toObject().as<Thing>());
  EXPECT_FALSE(noObject.toObject());
  EXPECT_FALSE(Value().toObject());
  EXPECT_EQ(raisedConverting(Value::null(), Type::Object), 13);

  for (const Value& numeric :
       {Value(), Value(true), Value(1.5), Value(Currency()), Value(" 1e400")}) {
    EXPECT_TRUE(numeric.isNumeric());
  }
  for (const Value& other : {Value::null(), Value(Date()), object, noObject}) {
    EXPECT_FALSE(other.isNumeric());
  }
}

TEST(Value, TextsReadBackAsTheValue) {
  std::mt19937_64 random{4};
  for (int i = 0; i < 20'000; ++i) {
    const std::uint64_t bits = random();
    const auto any = std::bit_cast<double>(bits);
    const double ordinary = std::ldexp(static_cast<double>(static_cast<std::int64_t>(bits)), -40);
    for (const Value& value :
         {Value(std::isfinite(any) ? any : 0.0), Value(ordinary),
          Value(static_cast<std::int32_t>(bits)), number16(static_cast<std::int16_t>(bits)),
          Value(Currency::fromUnits(static_cast<std::int64_t>(bits)))}) {
      const Value text = value.toText();
      ASSERT_EQ(text.convertedTo(value.type()), value) << text.text();
      ASSERT_TRUE(text.isNumeric()) << text.text();
    }
  }
}

}  // namespace
}  // namespace QuorDataLib
