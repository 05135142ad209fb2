// The member tables of the component's public classes.
#pragma once

#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/member_table.h"

namespace QuorAccQueries {

using QuorDataLib::Argument;
using QuorDataLib::ClassInfo;
using QuorDataLib::ComponentObject;
using QuorDataLib::Member;
using QuorDataLib::method;
using QuorDataLib::propertyGet;
using QuorDataLib::propertyPut;
using QuorDataLib::TypeInfo;
using QuorDataLib::unwritten;

/// The member tables of all public classes, the root first.
[[nodiscard]] std::span<const ClassInfo* const> allClasses();

/// The class of that name, matched without regard to case, or null.
[[nodiscard]] const ClassInfo* findClass(std::string_view name) noexcept;

/// Where the dispatch numbers of members begin: those of the frames have ranges of their own, so
/// that what a frame gains moves no number of a class that stands on it.
inline constexpr std::int32_t kQueryFrameNumbers = 1;
inline constexpr std::int32_t kHelperFrameNumbers = 101;
inline constexpr std::int32_t kOwnNumbers = 1001;

/// The frame's lines followed by the class's own: the members of a class in interface order.
std::vector<Member> joined(std::vector<Member> frameMembers, std::vector<Member> ownMembers);

/// The member table of class `T`.
template <class T>
ClassInfo describeClass(std::string_view summary, std::vector<Member> members) {
  return {T::kClassName, summary, QuorDataLib::numbered(std::move(members), kOwnNumbers),
          [] { return QuorDataLib::Ref<ComponentObject>(QuorDataLib::make<T>()); }};
}

}  // namespace QuorAccQueries
