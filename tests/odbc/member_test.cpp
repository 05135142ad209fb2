// What the component sends reaches a driver as it stands, and what it answers comes back as from a
// file: every member, in both dialects.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "core/member_table.h"
#include "host/application/host.h"
#include "host/application/trace.h"
#include "host/engines/odbc/driver/api.h"
#include "odbc/driven.h"
#include "platform/collection.h"
#include "queries/company_fixture.h"
#include "sql/component_statements.h"

namespace QuorHost::Testing {
namespace {

using QuorAccQueries::Member;
using QuorDataLib::Collection;
using QuorDataLib::ComponentObject;
using QuorDataLib::Recordset;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

/// Everything that a value holds, with its types.
std::string shown(const Value& value) {
  if (value.type() != ValueType::Object) return typedJson(value).dump();
  std::string text;
  if (const auto rows = value.toObject().as<Recordset>()) {
    for (std::int32_t i = 0; i < rows->FieldCount(); ++i) {
      text += rows->FieldName(i) + ":" + std::to_string(static_cast<int>(rows->FieldType(i))) + " ";
    }
    for (const std::string& line : fixture::lines(rows)) text += "\n" + line;
  } else if (const auto items = value.toObject().as<Collection>()) {
    for (const Value& item : items->values()) text += shown(item) + ",";
  } else if (const auto record = value.toObject().as<ComponentObject>()) {
    for (const Member& member : record->classInfo().members) {
      if (member.kind == Member::Kind::Get && member.result->type != ValueType::Object) {
        text += shown(member.invoke(*record, {})) + ",";
      }
    }
  }
  return text;
}

std::string outcome(const Sql::Testing::Call& call) {
  std::vector<Value> values;
  std::string text = shown(call(values));
  for (const Value& value : values) text += "; " + shown(value);
  return text;
}

/// The statements in the trace that the driver has received, in their order and with their values;
/// those that it has not are failures. What the host asks for itself stands in no trace.
std::size_t expectReceived(std::istream& trace, const std::vector<Received>& received) {
  std::size_t sent = 0;
  auto next = received.begin();
  for (std::string line; std::getline(trace, line);) {
    const auto event = nlohmann::ordered_json::parse(line);
    if (!event.contains("sql")) continue;
    auto wanted = event["parameters"];
    if (wanted.is_null()) wanted = nlohmann::ordered_json::array();
    const auto isIt = [&](const Received& each) {
      if (each.text != event["sql"].get<std::string>()) return false;
      auto values = nlohmann::ordered_json::array();
      for (const Bound& bound : each.values) values.push_back(typedJson(valueOf(bound)));
      return values == wanted;
    };
    next = std::find_if(next, received.end(), isIt);
    if (next == received.end()) {
      ADD_FAILURE() << "it has not reached the driver: " << line;
      return sent;
    }
    ++next;
    ++sent;
  }
  return sent;
}

/// Every so manieth call is answered by a company, and answers what it does on a file; the others
/// get no rows.
constexpr std::size_t kEvery = 4;

bool asksCatalogue(const Received& received) { return received.text.starts_with("SQL"); }

class Members : public testing::TestWithParam<Sql::Dialect> {};

TEST_P(Members, PassThroughADriver) {
  // Some change the company: each side has its own.
  const fixture::CompanyFile here(CreateOptions{.sample = true});
  const fixture::CompanyFile there(CreateOptions{.sample = true});
  Recording& driver = recording();
  driver = {};
  driver.getDataExtensions = 0xFF;
  // The desktop's names stand without quotes: in double ones they are texts.
  if (GetParam() == Sql::Dialect::Desktop) driver.nameQuote = " ";
  bool answered = true;
  driver.answer = [&](const Received& received) -> Answer {
    if (answered || asksCatalogue(received)) {
      return answerOf(there.store(), GetParam(), received);
    }
    return {.columns = {{.name = "None", .type = SQL_INTEGER, .size = 10}}};
  };
  std::stringstream trace;
  const auto host = [&](std::shared_ptr<Store> store, std::ostream* out) {
    return std::make_unique<Host>(HostOptions{
        .store = std::move(store), .dialect = GetParam(), .onError = OnError::Leave, .trace = out});
  };
  const auto onFile = host(openCompany(here.path(), Access::Write), nullptr);
  const auto overDriver = host(openCompany(driven(GetParam()), Access::Write), &trace);
  std::size_t calls = 0;
  std::size_t statements = 0;
  Sql::Testing::forEachCall([&](const std::string& what, const Sql::Testing::Call& call) {
    if (HasFailure()) return;
    SCOPED_TRACE(what);
    answered = ++calls % kEvery == 0;
    std::string expected;
    if (answered) {
      onFile->install();
      expected = outcome(call);
    }
    driver.received.clear();
    overDriver->install();
    const std::string given = outcome(call);
    if (answered) {
      EXPECT_EQ(given, expected);
    }
    statements += expectReceived(trace, driver.received);
    trace.clear();
    trace.str("");
  });
  RecordProperty("statements", std::to_string(statements));
  EXPECT_GT(statements, 1000U);
}

INSTANTIATE_TEST_SUITE_P(Dialects, Members, testing::ValuesIn(fixture::kDialects),
                         [](const auto& test) {
                           return test.param == Sql::Dialect::Server ? "Server" : "Desktop";
                         });

}  // namespace
}  // namespace QuorHost::Testing
