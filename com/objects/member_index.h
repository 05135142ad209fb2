// A member table in the form that dispatch asks: names to numbers, numbers to members.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/class_info.h"

namespace QuorCom {

class MemberIndex {
 public:
  /// The index of a table, made when it is first asked for and kept.
  static const MemberIndex& of(const QuorDataLib::ClassInfo& info);

  explicit MemberIndex(const QuorDataLib::ClassInfo& info);

  [[nodiscard]] const QuorDataLib::ClassInfo& info() const noexcept { return *info_; }

  /// The dispatch number of a name, matched without regard to case.
  [[nodiscard]] std::optional<std::int32_t> numberOf(std::wstring_view name) const;

  /// The place of a named argument of the member of that number, from 0.
  [[nodiscard]] std::optional<std::int32_t> argumentOf(std::int32_t number,
                                                       std::wstring_view name) const;

  /// The member that a call with these flags means, or null. A call that does not tell reading a
  /// property from calling a method means either.
  [[nodiscard]] const QuorDataLib::Member* find(std::int32_t number, WORD flags) const noexcept;

 private:
  using ByKind = std::array<const QuorDataLib::Member*, 3>;

  const QuorDataLib::ClassInfo* info_;
  std::unordered_map<std::int32_t, ByKind> members_;
  std::unordered_map<std::string, std::int32_t> numbers_;
};

}  // namespace QuorCom
