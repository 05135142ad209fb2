#include "sql/component_statements.h"

#include <array>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <span>
#include <sstream>
#include <utility>

#include "core/member_table.h"
#include "host/application/host.h"
#include "platform/values/date.h"

namespace QuorHost::Sql::Testing {
namespace {

using QuorAccQueries::Argument;
using QuorAccQueries::ClassInfo;
using QuorAccQueries::Member;
using QuorDataLib::Date;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

/// The arguments of a call. Lists of columns, order and groups must go together, and pieces of
/// statements with the statement that they come to stand in.
class Arguments {
 public:
  /// @param choices  for each argument: 0 leaves it empty, the others are values that it may have
  /// @param lists    the same for all of its lists together
  Arguments(const ClassInfo& info, const Member& member, const std::vector<unsigned>& choices,
            unsigned lists)
      : member_(member),
        supplier_(info.name.find("Supplier") != info.name.npos),
        aging_(member.name.find("Aging") != member.name.npos),
        lists_(lists) {
    for (std::size_t i = 0; i < choices.size(); ++i) {
      values_.push_back(valueFor(member.arguments[i], choices[i]));
    }
  }

  [[nodiscard]] const std::vector<Value>& values() const { return values_; }

 private:
  [[nodiscard]] Value valueFor(const Argument& argument, unsigned choice) const {
    switch (argument.type.type) {
      case ValueType::Boolean:
        // An order for rows that are summed, and rows by order in the list for others, go with
        // nothing.
        if (argument.name == "Sorted" && lists_ > 0) return Value(false);
        if (argument.name == "ByOrder" && lists_ == 0) return Value(false);
        return Value(choice % 2 == 1);
      case ValueType::Date:
        return Value(choice == 0 ? Date() : Date::of(2022 + static_cast<int>(choice), 3, 31));
      case ValueType::Text:
        return Value(textFor(argument.name, choice));
      case ValueType::Object:
      case ValueType::Empty:
        return {};
      default:
        return Value(numberFor(argument.name, static_cast<std::int32_t>(choice)));
    }
  }

  [[nodiscard]] std::string textFor(std::string_view name, unsigned choice) const {
    const std::string view = supplier_ ? "SuppAgingList_View" : "CustAgingList";
    if (name == "OrderBy") return lists_ > 0 ? "TotAmnt" : "";
    if (name == "GroupBy") return lists_ > 1 ? view + ".ExCurrencyId" : "";
    if (name.starts_with("Field")) {
      if (lists_ == 0) return "";
      if (!aging_) return "SUM(Qty) AS Qty";
      return (lists_ > 1 ? "SUM(TotAmnt) AS TotAmnt, " : "TotAmnt, Balance, ") + view +
             ".ExCurrencyId AS InnerViewExCurrencyId";
    }
    if (name == "ExtraFields") return "ExSegmentId";
    if (name == "AcctTypeIds") return choice > 1 ? "3" : "1, 2";
    if (name == "ExtraCondition" && member_.name == "GetAcctBalance") return "";
    if (choice == 0) return "";
    if (name == "ExtraCondition") return "GLDet.DetAmnt <> 0";
    if (name == "Condition") return "GLAcctSegmentBudget.ExSegmentId = 1";
    if (name == "Filter" || name == "ExtraWhere") return aging_ ? "TaxAmnt > 1" : "Qty > 2";
    if (name == "Source" || name == "SrcKey") return choice > 1 ? "SAL,3" : "PUR,2";
    if (name.ends_with("List") || name.ends_with("Ids")) return choice > 1 ? "3" : "1, 2";
    return choice > 1 ? "1210" : "O'Neil";
  }

  static std::int32_t numberFor(std::string_view name, std::int32_t choice) {
    static const std::set<std::string_view> kCodes{"AcctClass", "AcctType",        "AcctTypeDefId",
                                                   "CurType",   "CurSeqNo",        "TrxType",
                                                   "PurcType",  "DebitCreditKind", "AcctTypeId"};
    if (kCodes.contains(name)) return choice;
    if (choice == 0) return 0;
    // What is below zero stands for all of some keys, or for none.
    if (choice == 2) return -1;
    if (name.find("Acct") != name.npos) return 1210;
    // The sample's term 9 has a date of its own, and its item 73 is a kit.
    if (choice == 3) return name == "ItemID" ? 73 : 9;
    return 3;
  }

  const Member& member_;
  bool supplier_;
  bool aging_;
  unsigned lists_;
  std::vector<Value> values_;
};

void forEachCallOf(const ClassInfo& info, const Member& member, const auto& visit) {
  const std::size_t count = member.arguments.size();
  const auto call = [&](const std::vector<unsigned>& choices, unsigned lists) {
    std::string what(info.name);
    what.append(".").append(member.name);
    for (const unsigned choice : choices) what.append(" ").append(std::to_string(choice));
    what.append("/").append(std::to_string(lists));
    visit(what, [&](std::vector<Value>& values) {
      values = Arguments(info, member, choices, lists).values();
      return member.invoke(*info.create(), values);
    });
  };
  for (const unsigned set : {0U, 1U}) {
    std::vector<unsigned> choices(count, set);
    for (const unsigned lists : {0U, 1U}) call(choices, lists);
    for (unsigned& turned : choices) {
      for (const unsigned other : {1 - set, 2U, 3U}) {
        turned = other;
        call(choices, set);
      }
      turned = set;
    }
  }
  std::mt19937 random(1);
  for (std::size_t i = 0; i < count; ++i) {
    std::vector<unsigned> choices(count);
    for (unsigned& choice : choices) choice = random() % 4;
    call(choices, random() % 4);
  }
}

Value valueOf(const nlohmann::json& traced) {
  const nlohmann::json& value = traced["value"];
  if (value.is_null()) return Value::null();
  if (value.is_number_integer()) return Value(value.get<std::int32_t>());
  if (value.is_boolean()) return Value(value.get<bool>());
  if (!value.is_string()) return Value(value.dump());
  if (traced["type"] == "currency") return Value(Value(value.get<std::string>()).toCurrency());
  if (traced["type"] == "date")
    return Value(Date::parse(value.get<std::string>()).value_or(Date()));
  return Value(value.get<std::string>());
}

}  // namespace

void forEachCall(const std::function<void(const std::string& what, const Call& call)>& visit) {
  for (const ClassInfo* const info : QuorAccQueries::allClasses()) {
    for (const Member& member : info->members) forEachCallOf(*info, member, visit);
  }
}

std::vector<Sent> componentStatements(const std::shared_ptr<Store>& company, std::size_t charts) {
  // Kinds of charts, and whether there are foreign currencies.
  constexpr std::array<std::pair<const char*, const char*>, kAllCharts> kCharts{
      {{"1", "True"}, {"2", "False"}, {"3", "True"}}};
  std::vector<Sent> statements;
  for (const Dialect dialect : {Dialect::Server, Dialect::Desktop}) {
    std::stringstream trace;
    for (const auto& [chart, foreign] : std::span(kCharts).first(charts)) {
      Host host({.store = company,
                 .dialect = dialect,
                 .onError = OnError::Leave,
                 .overrides = {{"Company.CieAccountTypeChart", chart},
                               {"CurrencyInfo.CieIsForeignCurrencyUsed", foreign}},
                 .trace = &trace});
      host.install();
      forEachCall([&](const std::string& what, const Call& call) {
        trace << nlohmann::json{{"member", what.substr(0, what.find(' '))}} << '\n';
        std::vector<Value> values;
        (void)call(values);
      });
    }
    std::set<std::string> known;
    std::string member;
    for (std::string line; std::getline(trace, line);) {
      const auto event = nlohmann::json::parse(line);
      if (event.contains("member")) member = event["member"];
      if (!event.contains("sql") || !known.insert(event["sql"]).second) continue;
      Sent& sent = statements.emplace_back(Sent{dialect, event["sql"], {}, member});
      if (event["parameters"].is_null()) continue;
      for (const auto& each : event["parameters"]) sent.values.push_back(valueOf(each));
    }
  }
  return statements;
}

}  // namespace QuorHost::Sql::Testing
