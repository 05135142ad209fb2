#include "host/engines/write/sql_text.h"

#include <array>
#include <charconv>

#include "host/sql/names.h"
#include "platform/data_library.h"
#include "platform/error.h"

namespace QuorHost::Write {
namespace {

[[noreturn]] void refuse(std::string what) {
  throw QuorDataLib::Error(QuorDataLib::kStatementRefused, "QuorDataLib", std::move(what));
}

void addQuoted(std::string& text, std::string_view content, char quote) {
  text += quote;
  for (std::size_t from = 0; from <= content.size();) {
    const std::size_t to = std::min(content.find(quote, from), content.size());
    text += content.substr(from, to - from);
    text += quote;
    if (to < content.size()) text += quote;
    from = to + 1;
  }
}

}  // namespace

SqlText& SqlText::name(std::string_view name) {
  if (rules_.longestName > 0 && name.size() > rules_.longestName) {
    refuse("The name '" + std::string(name) + "' is too long for the server, which takes " +
           std::to_string(rules_.longestName) + " bytes; choose a shorter one");
  }
  addQuoted(text_, rules_.foldsNames ? Sql::lowerName(name) : std::string(name), '"');
  return *this;
}

SqlText& SqlText::column(const Sql::Tree::Source& source, std::uint32_t index) {
  const auto renamed = renamed_.find({&source, index});
  if (renamed != renamed_.end()) return add(renamed->second);
  return name(source.name).add(".").name(source.columnName(index));
}

SqlText& SqlText::ownName(std::string_view name) {
  const std::string_view reserved = rules_.reserved;
  if (!reserved.empty() && Sql::sameName(name.substr(0, reserved.size()), reserved)) {
    refuse("The name '" + std::string(name) + "' is kept for the storage engine; choose another");
  }
  return this->name(name);
}

SqlText& SqlText::literal(std::string_view text) {
  addQuoted(text_, text, '\'');
  return *this;
}

SqlText& SqlText::number(double value) {
  std::array<char, 32> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  const std::string_view shortest(digits.data(), static_cast<std::size_t>(end - digits.data()));
  add(shortest);
  // A whole number without a point would be an integer.
  if (shortest.find_first_of(".e") == std::string_view::npos) add(".0");
  return *this;
}

SqlText::Held::Held(SqlText& text, int entries) : text_(text), entries_(entries) {
  text_.held_ += entries_;
  if (text_.held_ > text_.rules_.mostEntries) {
    text_.held_ -= entries_;
    refuse("The statement is nested deeper than the storage engine reads; take it apart");
  }
}

}  // namespace QuorHost::Write
