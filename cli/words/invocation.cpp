#include "cli/words/invocation.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "cli/print/value_text.h"
#include "cli/words/member_text.h"
#include "cli/words/names.h"
#include "platform/collection.h"

namespace QuorCli {
namespace {

using QuorAccQueries::Argument;
using QuorAccQueries::ClassInfo;
using QuorAccQueries::ComponentObject;
using QuorAccQueries::Member;
using QuorDataLib::Collection;
using QuorDataLib::make;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

constexpr std::string_view kConnectionProperty = "CustomConnection";
constexpr std::string_view kCacheProperty = "CacheRecordsets";

[[noreturn]] void refuseArguments(const Target& target, const std::string& what) {
  throw UsageError(what + "\n" + argumentList(*target.member));
}

std::size_t indexOf(const Target& target, std::string_view name) {
  const std::vector<Argument>& arguments = target.member->arguments;
  const auto found = std::ranges::find_if(
      arguments, [&](const Argument& argument) { return sameName(argument.name, name); });
  if (found == arguments.end()) {
    refuseArguments(target, target.name() + " has no argument named '" + std::string(name) + "'.");
  }
  return static_cast<std::size_t>(found - arguments.begin());
}

bool isCollection(const Argument& argument) {
  return argument.type.className == Collection::kClassName;
}

std::vector<Value> emptyValues(const Member& member) {
  std::vector<Value> values;
  values.reserve(member.arguments.size());
  for (const Argument& argument : member.arguments) {
    values.push_back(isCollection(argument) ? make<Collection>() : emptyValue(argument.type.type));
  }
  return values;
}

/// The collection that a list of values separated by commas writes: whole numbers where they read
/// as such, otherwise texts. An empty text is an empty collection.
std::optional<Value> parseCollection(std::string_view text) {
  std::vector<Value> values;
  for (bool more = !text.empty(); more;) {
    const std::size_t comma = text.find(',');
    const std::string_view item = text.substr(0, comma);
    std::optional<Value> value = parseValue(item, ValueType::Long);
    if (!value) value = parseValue(item, ValueType::Text);
    if (!value) return std::nullopt;
    values.push_back(*std::move(value));
    more = comma != std::string_view::npos;
    if (more) text.remove_prefix(comma + 1);
  }
  return make<Collection>(std::move(values));
}

void assign(ComponentObject& object, std::string_view property, Value value) {
  const Member* const put = object.classInfo().find(property, Member::Kind::Put);
  if (put != nullptr) put->invoke(object, {&value, 1});
}

}  // namespace

std::string Target::name() const {
  return std::string(owner->name) + "." + std::string(member->name);
}

const ClassInfo& classNamed(std::string_view name) {
  const ClassInfo* const found = QuorAccQueries::findClass(name);
  if (found != nullptr) return *found;
  std::vector<std::string_view> names;
  for (const ClassInfo* const info : QuorAccQueries::allClasses()) names.push_back(info->name);
  throw UsageError("there is no class '" + std::string(name) + "'." + nearestNames(name, names) +
                   " 'quoracc describe' lists the classes.");
}

Target findTarget(std::string_view path) {
  const std::size_t dot = path.find('.');
  const ClassInfo& owner = classNamed(path.substr(0, dot));
  if (dot == std::string_view::npos) {
    throw UsageError("name a member of the class, as CLASS.MEMBER. 'quoracc describe " +
                     std::string(owner.name) + "' lists the members.");
  }
  const std::string_view name = path.substr(dot + 1);
  for (const Member::Kind kind : {Member::Kind::Method, Member::Kind::Get}) {
    if (const Member* const found = owner.find(name, kind)) return {&owner, found};
  }
  if (const Member* const found = owner.find(name, Member::Kind::Put)) {
    throw UsageError(Target{&owner, found}.name() + " can be assigned but not read.");
  }
  std::vector<std::string_view> names;
  for (const Member& member : owner.members) {
    if (member.kind != Member::Kind::Put) names.push_back(member.name);
  }
  throw UsageError(std::string(owner.name) + " has no member '" + std::string(name) + "'." +
                   nearestNames(name, names) + " 'quoracc describe " + std::string(owner.name) +
                   "' lists the members.");
}

std::vector<Value> parseArguments(const Target& target, const std::vector<std::string>& texts) {
  std::vector<Value> values = emptyValues(*target.member);
  std::vector<bool> seen(values.size());
  for (const std::string& text : texts) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) {
      refuseArguments(target, "an argument is given as NAME=VALUE, not as '" + text + "'.");
    }
    const std::size_t index = indexOf(target, std::string_view(text).substr(0, equals));
    const Argument& argument = target.member->arguments[index];
    const std::string name(argument.name);
    if (seen[index]) refuseArguments(target, name + " is given twice.");
    seen[index] = true;
    if (argument.type.type == ValueType::Object && !isCollection(argument)) {
      refuseArguments(target, name + " is an object, which the command line cannot give.");
    }
    const std::string given = text.substr(equals + 1);
    std::optional<Value> value =
        isCollection(argument) ? parseCollection(given) : parseValue(given, argument.type.type);
    if (!value) {
      std::string refusal = name;
      refusal.append(" cannot be '").append(given);
      refusal.append("': it takes ").append(typeInWords(argument.type)).append(".");
      refuseArguments(target, refusal);
    }
    values[index] = *std::move(value);
  }
  return values;
}

std::vector<Value> bindArguments(const Target& target, const std::vector<NamedValue>& values) {
  std::vector<Value> bound = emptyValues(*target.member);
  for (const NamedValue& named : values) bound[indexOf(target, named.name)] = named.value;
  return bound;
}

void checkOptions(const Target& target, const RunOptions& options) {
  if (options.cache && target.owner->find(kCacheProperty, Member::Kind::Put) == nullptr) {
    throw UsageError("--cache: " + std::string(target.owner->name) + " has no " +
                     std::string(kCacheProperty) + ".");
  }
}

Answer callMember(const Target& target, std::vector<Value> values, const RunOptions& options,
                  const Session& session) {
  Answer answer;
  answer.object = target.owner->create();
  if (!options.defaultConnection) {
    assign(*answer.object, kConnectionProperty, session.connection());
  }
  if (options.cache) assign(*answer.object, kCacheProperty, true);
  answer.result = target.member->invoke(*answer.object, values);
  // A result of any type may be Empty; only a member that returns nothing has none to print.
  if (target.member->result && answer.result.isEmpty()) answer.result = Value::null();
  for (std::size_t index = 0; index < values.size(); ++index) {
    const Argument& argument = target.member->arguments[index];
    if (argument.written) answer.outputs.push_back({argument.name, std::move(values[index])});
  }
  return answer;
}

}  // namespace QuorCli
