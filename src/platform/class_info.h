// Member tables: what a class or a contract says about its members, once, for everything that works
// off names (command line, dispatch, proxies, reference documentation, the failure sweep of the
// tests).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/values/value.h"

namespace QuorDataLib {

/// The type of an argument or a result. `Empty` means that any type may be passed.
struct TypeInfo {
  ValueType type = ValueType::Empty;
  /// The class of an object ("Recordset", "Collection", "Object" for any). With `Empty`, what the
  /// value stands for: "Parameters" are a collection, one bare value, or Empty for none.
  std::string_view className;
};

struct Argument {
  std::string_view name;
  TypeInfo type;
  /// Passed by reference. Callers hand over a variable, also to a member that never writes to it.
  bool byReference = false;
  /// By reference, and the member may write to it: its value after the call is an output.
  bool written = false;
};

/// The number of a member that has none yet.
inline constexpr std::int32_t kNoNumber = -1;
/// Automation's number of the member that an object stands for: a collection's items.
inline constexpr std::int32_t kDefaultMember = 0;
/// Automation's number of the member that gives an enumerator.
inline constexpr std::int32_t kEnumeratorMember = -4;

struct Member {
  enum class Kind : std::uint8_t { Method, Get, Put };

  std::string_view name;
  Kind kind = Kind::Method;
  std::vector<Argument> arguments;
  /// Nothing for a member that returns nothing.
  std::optional<TypeInfo> result;
  std::string_view summary;

  /// Calls the member of `object`, which must be of the table's class (13 otherwise), with as many
  /// values as there are arguments (450 otherwise). Values are converted to the arguments' types by
  /// the automation rules; after the call those that the member writes hold what it wrote.
  std::function<Value(Object& object, std::span<Value> values)> invoke;

  /// The dispatch number. Reading a property and assigning it are one number.
  std::int32_t number = kNoNumber;
};

class ComponentObject;

struct ClassInfo {
  std::string_view name;
  std::string_view summary;
  /// In interface order. New members go to the end: a member's number comes from its place.
  std::vector<Member> members;
  /// Makes an object of a public class of the component; empty for a contract.
  std::function<Ref<ComponentObject>()> create{};

  /// The member of that name (matched without regard to case) and kind, or null. A property that is
  /// read and assigned has two entries.
  [[nodiscard]] const Member* find(std::string_view memberName, Member::Kind kind) const noexcept;
  /// The same by dispatch number.
  [[nodiscard]] const Member* find(std::int32_t number, Member::Kind kind) const noexcept;
  /// The dispatch number of a name, matched without regard to case; `kNoNumber` for an unknown one.
  [[nodiscard]] std::int32_t numberOf(std::string_view memberName) const noexcept;
};

/// Base of the public classes of the component.
class ComponentObject : public Object {
 public:
  /// The member table of the object's class.
  [[nodiscard]] virtual const ClassInfo& classInfo() const = 0;
  [[nodiscard]] const ClassInfo* table() const final { return &classInfo(); }
};

/// `members` with dispatch numbers: those that have none yet get `first`, `first` + 1 and so on in
/// their order, a name that occurs again the number that it has. So a member keeps its number for
/// as long as new ones are added at the end, whatever happens to members numbered elsewhere.
[[nodiscard]] std::vector<Member> numbered(std::vector<Member> members, std::int32_t first);

/// Whether two names of classes or members are the same: letters without regard to case.
[[nodiscard]] bool sameMemberName(std::string_view a, std::string_view b) noexcept;

}  // namespace QuorDataLib
