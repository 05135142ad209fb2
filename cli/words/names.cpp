#include "cli/words/names.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace QuorCli {
namespace {

char lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string lower(std::string_view text) {
  std::string out(text);
  std::ranges::transform(out, out.begin(), [](char c) { return lower(c); });
  return out;
}

/// Letters to insert, delete or replace to make `b` of `a`.
std::size_t editDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), 0U);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
    }
  }
  return row.back();
}

/// Whether the letters of `part` stand in `whole` in their order.
bool isSubsequence(std::string_view part, std::string_view whole) {
  std::size_t found = 0;
  for (const char c : whole) {
    if (found < part.size() && part[found] == c) ++found;
  }
  return found == part.size();
}

/// Whether somebody who typed `name` may have meant `candidate`, which differs by `edits` letters:
/// a slip or two, or a word left out. Both in lower case.
bool isNear(std::string_view name, std::string_view candidate, std::size_t edits) {
  return edits <= std::max<std::size_t>(2, name.size() / 3) ||
         (name.size() >= 3 && isSubsequence(name, candidate));
}

struct Ranked {
  std::size_t edits;
  bool near;
  std::string_view name;
};

/// The names, each once: those that are near first, then by the letters that differ, then by name.
std::vector<Ranked> ranked(std::string_view name, const std::vector<std::string_view>& names) {
  const std::string wanted = lower(name);
  std::vector<Ranked> list;
  for (const std::string_view candidate : names) {
    if (std::ranges::find(list, candidate, &Ranked::name) != list.end()) continue;
    const std::string other = lower(candidate);
    const std::size_t edits = editDistance(wanted, other);
    list.push_back({edits, isNear(wanted, other, edits), candidate});
  }
  std::ranges::sort(list, [](const Ranked& a, const Ranked& b) {
    return std::tuple(!a.near, a.edits, a.name) < std::tuple(!b.near, b.edits, b.name);
  });
  return list;
}

constexpr std::size_t kMostNames = 3;

std::string listed(std::string_view before, const std::vector<Ranked>& names,
                   std::string_view lastWord, std::string_view after) {
  if (names.empty()) return {};
  std::string text(before);
  for (std::size_t index = 0; index < names.size(); ++index) {
    if (index > 0) text += index + 1 == names.size() ? lastWord : ", ";
    text += names[index].name;
  }
  return text + std::string(after);
}

}  // namespace

bool sameName(std::string_view a, std::string_view b) noexcept {
  const auto fold = [](char c) { return lower(c); };
  return std::ranges::equal(a, b, {}, fold, fold);
}

std::string suggestion(std::string_view name, const std::vector<std::string_view>& names) {
  std::vector<Ranked> list = ranked(name, names);
  std::erase_if(list, [](const Ranked& one) { return !one.near; });
  if (list.size() > kMostNames) list.resize(kMostNames);
  return listed(" Did you mean ", list, " or ", "?");
}

std::string nearestNames(std::string_view name, const std::vector<std::string_view>& names) {
  std::string near = suggestion(name, names);
  if (!near.empty()) return near;
  std::vector<Ranked> list = ranked(name, names);
  if (list.size() > kMostNames) list.resize(kMostNames);
  return listed(" The nearest names are ", list, " and ", ".");
}

}  // namespace QuorCli
