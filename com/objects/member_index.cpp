#include "com/objects/member_index.h"

#include <oleauto.h>

#include <memory>
#include <mutex>

#include "com/values/text.h"

namespace QuorCom {

using QuorDataLib::ClassInfo;
using QuorDataLib::Member;

namespace {

std::string lowered(std::string_view name) {
  std::string result(name);
  for (char& c : result) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return result;
}

std::size_t placeOf(Member::Kind kind) { return static_cast<std::size_t>(kind); }

}  // namespace

const MemberIndex& MemberIndex::of(const ClassInfo& info) {
  static std::mutex mutex;
  static std::unordered_map<const ClassInfo*, std::unique_ptr<const MemberIndex>> indexes;
  const std::lock_guard lock(mutex);
  auto& index = indexes[&info];
  if (!index) index = std::make_unique<const MemberIndex>(info);
  return *index;
}

MemberIndex::MemberIndex(const ClassInfo& info) : info_(&info) {
  for (const Member& member : info.members) {
    members_[member.number][placeOf(member.kind)] = &member;
    numbers_[lowered(member.name)] = member.number;
  }
}

std::optional<std::int32_t> MemberIndex::numberOf(std::wstring_view name) const {
  const auto found = numbers_.find(lowered(narrow(name)));
  if (found == numbers_.end()) return std::nullopt;
  return found->second;
}

std::optional<std::int32_t> MemberIndex::argumentOf(std::int32_t number,
                                                    std::wstring_view name) const {
  const auto found = members_.find(number);
  if (found == members_.end()) return std::nullopt;
  const std::string wanted = narrow(name);
  for (const Member* const member : found->second) {
    if (member == nullptr) continue;
    for (std::size_t place = 0; place < member->arguments.size(); ++place) {
      if (QuorDataLib::sameMemberName(member->arguments[place].name, wanted)) {
        return static_cast<std::int32_t>(place);
      }
    }
  }
  return std::nullopt;
}

const Member* MemberIndex::find(std::int32_t number, WORD flags) const noexcept {
  const auto found = members_.find(number);
  if (found == members_.end()) return nullptr;
  const ByKind& kinds = found->second;
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
    return kinds[placeOf(Member::Kind::Put)];
  }
  const Member* member = nullptr;
  if ((flags & DISPATCH_METHOD) != 0) member = kinds[placeOf(Member::Kind::Method)];
  if (member == nullptr && (flags & DISPATCH_PROPERTYGET) != 0) {
    member = kinds[placeOf(Member::Kind::Get)];
  }
  // Collections call their items a property, as clients do; who reads a method calls it.
  if (member == nullptr && (flags & DISPATCH_PROPERTYGET) != 0) {
    member = kinds[placeOf(Member::Kind::Method)];
  }
  return member;
}

}  // namespace QuorCom
