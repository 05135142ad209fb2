// Texts, counted in characters and compared without regard to case.
#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "host/engines/sqlite/functions/function_call.h"
#include "host/engines/sqlite/functions/letters.h"
#include "host/engines/sqlite/functions/like_pattern.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Sqlite {
namespace {

bool startsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }

std::int64_t characters(std::string_view text) {
  return std::ranges::count_if(text, startsCharacter);
}

/// The text from character `from`, counted from 0, at most `count` characters long.
std::string_view slice(std::string_view text, std::int64_t from, std::int64_t count) {
  const auto skip = [](std::string_view rest, std::int64_t n) {
    std::size_t i = 0;
    while (i < rest.size() && n > 0) {
      do ++i;
      while (i < rest.size() && !startsCharacter(rest[i]));
      --n;
    }
    return i;
  };
  text.remove_prefix(skip(text, from));
  return text.substr(0, skip(text, count));
}

std::int64_t lengthArgument(const Call& call, std::size_t i) {
  const std::int64_t length = call.whole(i);
  if (length < 0) throw CallError("a text cannot have a length of " + std::to_string(length));
  return length;
}

void left(const Call& call) { call.returnText(slice(call.text(0), 0, lengthArgument(call, 1))); }

void right(const Call& call) {
  const std::string_view text = call.text(0);
  const std::int64_t length = lengthArgument(call, 1);
  const std::int64_t before = std::max<std::int64_t>(characters(text) - length, 0);
  call.returnText(slice(text, before, length));
}

/// (text, start[, length]), start from 1.
void middle(const Call& call) {
  const std::string_view text = call.text(0);
  const std::int64_t start = call.whole(1);
  if (start < 1) throw CallError("a text has no character " + std::to_string(start));
  const std::int64_t length =
      call.count() == 3 ? lengthArgument(call, 2) : static_cast<std::int64_t>(text.size());
  call.returnText(slice(text, start - 1, length));
}

/// (text, start, length): a start before the text takes from the length.
void substring(const Call& call) {
  const std::int64_t start = call.whole(1);
  const std::int64_t end = start + lengthArgument(call, 2);
  const std::int64_t first = std::max<std::int64_t>(start, 1);
  call.returnText(slice(call.text(0), first - 1, std::max<std::int64_t>(end - first, 0)));
}

/// The text with the letters from `first` to `last` in the other case, or as `change` has it when
/// it has others.
void changeCase(const Call& call, char first, char last, std::string (*change)(std::string_view)) {
  const std::string_view text = call.text(0);
  if (std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80U; })) {
    return call.returnText(change(text));
  }
  std::string changed(text);
  for (char& c : changed) {
    if (c >= first && c <= last) c = static_cast<char>(c ^ ('a' ^ 'A'));
  }
  call.returnText(changed);
}

void lower(const Call& call) { changeCase(call, 'A', 'Z', inLowerCase); }

void upper(const Call& call) { changeCase(call, 'a', 'z', inUpperCase); }

/// (text, found, start): place of `found` from 1, or 0. No text is in none, or anywhere within.
template <bool IsAnywhere>
void find(const Call& call) {
  const std::u32string text = folded(call.text(0));
  const std::u32string found = folded(call.text(1));
  const auto start = static_cast<std::size_t>(std::max<std::int64_t>(call.whole(2), 1)) - 1;
  const bool nothing = found.empty() && (!IsAnywhere || start >= text.size());
  const std::size_t place = nothing ? std::u32string::npos : text.find(found, start);
  call.returnWhole(place == std::u32string::npos ? 0 : static_cast<std::int64_t>(place) + 1);
}

/// (text, pattern, flavour). The pattern is mostly the same for all rows, so it is kept.
void like(const Call& call) {
  constexpr int kPattern = 1;
  const auto* pattern =
      static_cast<const LikePattern*>(sqlite3_get_auxdata(call.context(), kPattern));
  std::unique_ptr<LikePattern> fresh;
  if (pattern == nullptr) {
    const Wildcards wildcards = call.whole(2) == 1 ? Wildcards::Desktop : Wildcards::Server;
    fresh = std::make_unique<LikePattern>(call.text(1), wildcards);
    pattern = fresh.get();
  }
  std::u32string text = folded(call.text(0));
  bool matches = pattern->matches(text);
  // Blanks at the end of a text count for nothing, except where the pattern asks for them.
  if (!matches && text.ends_with(U' ')) {
    text.resize(text.find_last_not_of(U' ') + 1);
    matches = pattern->matches(text);
  }
  call.returnWhole(matches ? 1 : 0);
  // The engine may give the pattern up at once, so it is handed over last.
  if (fresh) {
    sqlite3_set_auxdata(call.context(), kPattern, fresh.release(),
                        [](void* kept) { delete static_cast<LikePattern*>(kept); });
  }
}

/// (value, column, table, what is wrong): ends the statement that would store the value. Checks of
/// columns call it.
void misfit(const Call& call) {
  const std::string value = call.isText(0)       ? "'" + QuorDataLib::shownText(call.text(0)) + "'"
                            : call.isWhole(0)    ? std::to_string(call.whole(0))
                            : call.number(0) < 0 ? "minus infinity"
                                                 : "infinity";
  throw CallError("Column " + std::string(call.text(1)) + " of table " + std::string(call.text(2)) +
                  " cannot hold " + value + ", which " + std::string(call.text(3)));
}

constexpr std::array kFunctions{
    FunctionEntry{"quor_left", 2, left},
    FunctionEntry{"quor_right", 2, right},
    FunctionEntry{"quor_middle", 2, middle},
    FunctionEntry{"quor_middle", 3, middle},
    FunctionEntry{"quor_substring", 3, substring},
    FunctionEntry{"quor_lower", 1, lower},
    FunctionEntry{"quor_upper", 1, upper},
    FunctionEntry{"quor_find", 3, find<false>},
    FunctionEntry{"quor_find_from", 3, find<true>},
    FunctionEntry{"quor_like", 3, like},
    FunctionEntry{"quor_misfit", 4, misfit},
};

}  // namespace

std::span<const FunctionEntry> textFunctions() noexcept { return kFunctions; }

}  // namespace QuorHost::Sqlite
