#include "host/engines/sqlite/functions/like_pattern.h"

#include <algorithm>

#include "host/engines/sqlite/functions/letters.h"

namespace QuorHost::Sqlite {

LikePattern::LikePattern(std::string_view pattern, Wildcards wildcards) {
  const bool desktop = wildcards == Wildcards::Desktop;
  const std::u32string characters = folded(pattern);
  for (std::size_t i = 0; i < characters.size();) {
    const char32_t c = characters[i];
    if (c == U'[') {
      const std::size_t length =
          readSet(std::u32string_view(characters).substr(i), desktop ? U'!' : U'^');
      i += length;
      if (length > 0) continue;
    }
    ++i;
    if (c == U'%' || (desktop && c == U'*')) {
      parts_.push_back({.kind = Part::Kind::Run});
    } else if (c == U'_' || (desktop && c == U'?')) {
      parts_.push_back({.kind = Part::Kind::Any});
    } else if (desktop && c == U'#') {
      parts_.push_back({.kind = Part::Kind::Digit});
    } else {
      parts_.push_back({.kind = Part::Kind::Character, .character = c});
    }
  }
}

/// Reads `[...]` at the front of `pattern` and returns its length; 0 when the bracket is not closed
/// and so stands for itself.
std::size_t LikePattern::readSet(std::u32string_view pattern, char32_t negation) {
  const std::size_t end = pattern.find(U']', 1);
  if (end == std::u32string_view::npos) return 0;
  std::u32string_view body = pattern.substr(1, end - 1);
  Part set{.kind = Part::Kind::Set};
  set.negated = body.size() > 1 && body.front() == negation;
  if (set.negated) body.remove_prefix(1);
  for (std::size_t i = 0; i < body.size(); ++i) {
    const bool range = i + 2 < body.size() && body[i + 1] == U'-';
    set.ranges.emplace_back(body[i], body[range ? i + 2 : i]);
    if (range) i += 2;
  }
  parts_.push_back(std::move(set));
  return end + 1;
}

bool LikePattern::Part::takes(char32_t c) const noexcept {
  switch (kind) {
    case Kind::Run:
    case Kind::Any:
      return true;
    case Kind::Digit:
      return c >= U'0' && c <= U'9';
    case Kind::Set:
      return negated != std::ranges::any_of(ranges, [c](const auto& range) {
               return c >= range.first && c <= range.second;
             });
    case Kind::Character:
      break;
  }
  return c == character;
}

bool LikePattern::matches(std::u32string_view text) const noexcept {
  std::size_t at = 0;
  std::size_t part = 0;
  // Where to take up again, one character further, when what follows the last run does not match.
  bool inRun = false;
  std::size_t runPart = 0;
  std::size_t runAt = 0;
  while (at < text.size()) {
    if (part < parts_.size() && parts_[part].kind == Part::Kind::Run) {
      inRun = true;
      runPart = ++part;
      runAt = at;
    } else if (part < parts_.size() && parts_[part].takes(text[at])) {
      ++part;
      ++at;
    } else if (inRun) {
      part = runPart;
      at = ++runAt;
    } else {
      return false;
    }
  }
  return std::all_of(parts_.begin() + static_cast<std::ptrdiff_t>(part), parts_.end(),
                     [](const Part& rest) { return rest.kind == Part::Kind::Run; });
}

}  // namespace QuorHost::Sqlite
