// `describe`: the member tables, for people and for programs.
#include <CLI/App.hpp>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/words/invocation.h"
#include "cli/words/member_text.h"
#include "cli/words/names.h"
#include "cli/words/options.h"
#include "platform/contracts.h"

namespace QuorCli {
namespace {

using nlohmann::ordered_json;
using QuorAccQueries::Argument;
using QuorAccQueries::ClassInfo;
using QuorAccQueries::Member;
using QuorAccQueries::TypeInfo;
using QuorDataLib::ValueType;

/// A class and those of its members that are to be shown.
struct Entry {
  const ClassInfo* info;
  std::vector<const Member*> members;
};

Entry everythingOf(const ClassInfo& info) {
  Entry entry{&info, {}};
  entry.members.reserve(info.members.size());
  for (const Member& member : info.members) entry.members.push_back(&member);
  return entry;
}

/// The class or contract of that name.
const ClassInfo& tableNamed(const std::string& name) {
  const ClassInfo* const contract = QuorDataLib::findContract(name);
  return contract != nullptr ? *contract : classNamed(name);
}

/// What `path` names: all classes (or contracts), one of them, or the entries of one member.
std::vector<Entry> entriesOf(const std::string& path, bool contracts) {
  std::vector<Entry> entries;
  if (path.empty()) {
    for (const ClassInfo* const info :
         contracts ? QuorDataLib::allContracts() : QuorAccQueries::allClasses()) {
      entries.push_back(everythingOf(*info));
    }
    return entries;
  }
  const std::size_t dot = path.find('.');
  Entry entry = everythingOf(tableNamed(path.substr(0, dot)));
  if (dot != std::string::npos) {
    const std::string name = path.substr(dot + 1);
    std::vector<std::string_view> names;
    names.reserve(entry.members.size());
    for (const Member* const member : entry.members) names.push_back(member->name);
    std::erase_if(entry.members, [&](const Member* m) { return !sameName(m->name, name); });
    if (entry.members.empty()) {
      throw UsageError(std::string(entry.info->name) + " has no member '" + name + "'." +
                       nearestNames(name, names));
    }
  }
  entries.push_back(std::move(entry));
  return entries;
}

std::string_view kindName(Member::Kind kind) {
  switch (kind) {
    case Member::Kind::Get:
      return "get";
    case Member::Kind::Put:
      return "put";
    case Member::Kind::Method:
      break;
  }
  return "method";
}

ordered_json typeJson(const TypeInfo& type) {
  ordered_json json{{"type", type.type == ValueType::Empty ? std::string_view("any")
                                                           : QuorDataLib::typeName(type.type)}};
  if (type.type == ValueType::Object) json["class"] = type.className;
  return json;
}

ordered_json memberJson(const Member& member) {
  ordered_json arguments = ordered_json::array();
  for (const Argument& argument : member.arguments) {
    ordered_json json{{"name", argument.name}};
    json.update(typeJson(argument.type));
    json["byReference"] = argument.byReference;
    if (argument.byReference) json["written"] = argument.written;
    arguments.push_back(std::move(json));
  }
  ordered_json json{
      {"name", member.name}, {"kind", kindName(member.kind)}, {"number", member.number}};
  json["arguments"] = std::move(arguments);
  json["result"] = member.result ? typeJson(*member.result) : ordered_json(nullptr);
  json["summary"] = member.summary;
  return json;
}

void printJson(const std::vector<Entry>& entries, Console& console) {
  ordered_json classes = ordered_json::array();
  for (const Entry& entry : entries) {
    ordered_json members = ordered_json::array();
    for (const Member* const member : entry.members) members.push_back(memberJson(*member));
    classes.push_back(ordered_json{{"name", entry.info->name},
                                   {"summary", entry.info->summary},
                                   {"members", std::move(members)}});
  }
  console.out << ordered_json{{"classes", std::move(classes)}}.dump(2) << '\n';
}

void printText(const std::vector<Entry>& entries, Console& console) {
  std::string_view separator;
  for (const Entry& entry : entries) {
    console.out << separator << console.bold(entry.info->name) << "  " << entry.info->summary
                << '\n';
    for (const Member* const member : entry.members) {
      console.out << "  " << signature(*member) << '\n';
      if (!member->summary.empty()) {
        console.out << "      " << console.faint(member->summary) << '\n';
      }
    }
    separator = "\n";
  }
}

}  // namespace

void addDescribe(CLI::App& program, Action& action) {
  struct Options {
    std::string path;
    bool contracts = false;
    bool json = false;
  };
  const auto options = std::make_shared<Options>();
  CLI::App& command = *program.add_subcommand(
      "describe", "Show the component's classes, their members, arguments and results");
  command.add_option("NAME", options->path, "CLASS or CLASS.MEMBER; all classes without it")
      ->option_text(" ");
  command.add_flag("--contracts", options->contracts,
                   "Show the contracts that a host implements, in place of all classes");
  addChoice<bool>(command, "--format", options->json, {{"text", false}, {"json", true}},
                  "How it is shown [text]");
  command.footer(
      "Arguments are shown as NAME TYPE, those by reference as NAME &TYPE, or as NAME const &TYPE\n"
      "where the member never writes to them; -> stands before the result, = before the type of\n"
      "a property that can be assigned. The type is any where every type will do.");
  command.callback([&action, options] {
    action = [options](Console& console) {
      const std::vector<Entry> entries = entriesOf(options->path, options->contracts);
      options->json ? printJson(entries, console) : printText(entries, console);
      return kDone;
    };
  });
}

}  // namespace QuorCli
