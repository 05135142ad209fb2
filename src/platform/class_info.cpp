#include "platform/class_info.h"

#include <algorithm>

namespace QuorDataLib {
namespace {

char lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// The first of `members` that meets `test`, or null.
template <class Test>
const Member* first(const std::vector<Member>& members, Test test) noexcept {
  const auto found = std::ranges::find_if(members, test);
  return found == members.end() ? nullptr : &*found;
}

}  // namespace

bool sameMemberName(std::string_view a, std::string_view b) noexcept {
  return std::ranges::equal(a, b, {}, lower, lower);
}

const Member* ClassInfo::find(std::string_view memberName, Member::Kind kind) const noexcept {
  return first(members, [&](const Member& member) {
    return member.kind == kind && sameMemberName(member.name, memberName);
  });
}

const Member* ClassInfo::find(std::int32_t number, Member::Kind kind) const noexcept {
  return first(members, [&](const Member& member) {
    return member.kind == kind && member.number == number;
  });
}

std::int32_t ClassInfo::numberOf(std::string_view memberName) const noexcept {
  const Member* const member =
      first(members, [&](const Member& each) { return sameMemberName(each.name, memberName); });
  return member == nullptr ? kNoNumber : member->number;
}

std::vector<Member> numbered(std::vector<Member> members, std::int32_t first) {
  for (auto member = members.begin(); member != members.end(); ++member) {
    if (member->number != kNoNumber) continue;
    const auto before = std::find_if(members.begin(), member, [&](const Member& each) {
      return sameMemberName(each.name, member->name);
    });
    member->number = before != member ? before->number : first++;
  }
  return members;
}

}  // namespace QuorDataLib
