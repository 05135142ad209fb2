// Member tables: conversions on the way in and out, and dispatch numbers that never move.
#include "core/member_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <string>

#include "core/fake_platform.h"
#include "platform/contracts.h"

namespace {

using namespace QuorAccQueries;
using QuorDataLib::Currency;
using QuorDataLib::Error;
using QuorDataLib::numbered;
using QuorDataLib::Ref;
using QuorDataLib::Value;

TEST(MemberTables, ConvertArgumentsAndReadRecordsBack) {
  const ClassInfo* info = findClass("ccustpmtinfo");
  ASSERT_NE(info, nullptr);
  const Ref<ComponentObject> record = info->create();
  std::vector<Value> amount{Value("12.3456")};
  info->find("lastpmtamnt", Member::Kind::Put)->invoke(*record, amount);
  EXPECT_EQ(info->find("LastPmtAmnt", Member::Kind::Get)->invoke(*record, {}),
            Value(Currency::fromUnits(123'456)));
  std::vector<Value> wrong{Value("a lot")};
  EXPECT_THROW(info->find("LastPmtAmnt", Member::Kind::Put)->invoke(*record, wrong), Error);
  EXPECT_THROW(info->find("LastPmtAmnt", Member::Kind::Put)->invoke(*record, {}), Error);
  EXPECT_EQ(info->find("LastPmtType", Member::Kind::Get)->result->type,
            QuorDataLib::ValueType::Text);
  EXPECT_EQ(findClass("CCustSaleInfo")->find("LastSaleType", Member::Kind::Get)->result->type,
            QuorDataLib::ValueType::Long);
  const fake::Platform platform;
  const Ref<ComponentObject> other = findClass("CQueries")->create();
  EXPECT_THROW(info->find("LastPmtType", Member::Kind::Get)->invoke(*other, {}), Error);
}

std::vector<const ClassInfo*> allTables() {
  std::vector<const ClassInfo*> all(allClasses().begin(), allClasses().end());
  const auto contracts = QuorDataLib::allContracts();
  all.insert(all.end(), contracts.begin(), contracts.end());
  return all;
}

TEST(DispatchNumbers, ANameHasOneAndANumberOneName) {
  for (const ClassInfo* info : allTables()) {
    std::map<std::int32_t, std::string> names;
    for (const Member& member : info->members) {
      EXPECT_EQ(names.try_emplace(member.number, member.name).first->second, member.name);
      EXPECT_EQ(info->numberOf(member.name), member.number);
      EXPECT_EQ(info->find(member.number, member.kind), &member);
    }
  }
  const ClassInfo* const collection = QuorDataLib::findContract("collection");
  EXPECT_EQ(collection->numberOf("item"), 0);
  EXPECT_EQ(collection->numberOf("_NewEnum"), -4);
  EXPECT_EQ(collection->numberOf("Nothing"), QuorDataLib::kNoNumber);
}

TEST(DispatchNumbers, WhatIsAddedMovesNothing) {
  const auto line = [](const char* name, std::int32_t number = QuorDataLib::kNoNumber) {
    Member member{.name = name};
    member.number = number;
    return member;
  };
  const auto numbers = [](const std::vector<Member>& members) {
    std::vector<std::int32_t> all;
    all.reserve(members.size());
    for (const Member& member : members) all.push_back(member.number);
    return all;
  };
  EXPECT_EQ(numbers(numbered({line("A"), line("a"), line("B", -4), line("C")}, 5)),
            (std::vector<std::int32_t>{5, 5, -4, 6}));
  // A frame that grows, and a class that grows at its end.
  EXPECT_EQ(
      numbers(numbered(joined(numbered({line("F"), line("G")}, 1), {line("A"), line("C")}), 1001)),
      (std::vector<std::int32_t>{1, 2, 1001, 1002}));
}

// The numbers that have been given out. Clients are built with them: this list only grows.
TEST(DispatchNumbers, AreThoseGivenOut) {
  std::ifstream list(DISPATCH_NUMBERS);
  std::map<std::string, std::map<std::int32_t, std::string>> given;
  std::string table;
  std::int32_t number = 0;
  std::string name;
  while (list >> table >> number >> name) given[table][number] = name;
  ASSERT_FALSE(given.empty());
  for (const ClassInfo* info : allTables()) {
    const auto& numbers = given[std::string(info->name)];
    std::int32_t last = 0;
    for (const auto& [known, knownName] : numbers) {
      EXPECT_EQ(info->numberOf(knownName), known) << info->name << "." << knownName;
      last = known;
    }
    for (const Member& member : info->members) {
      if (member.number >= kOwnNumbers && !numbers.contains(member.number)) {
        EXPECT_GT(member.number, last)
            << info->name << "." << member.name << " stands before older members";
      }
    }
    given.erase(std::string(info->name));
  }
  EXPECT_TRUE(given.empty()) << given.begin()->first << " is gone";
}

}  // namespace
