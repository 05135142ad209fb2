#include "host/sql/names.h"

namespace QuorHost::Sql {

bool sameLetters(std::string_view a, std::string_view b) noexcept {
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && lowerCase(a[i]) != lowerCase(b[i])) return false;
  }
  return true;
}

std::string lowerName(std::string_view name) {
  std::string lower(name);
  for (char& c : lower) c = lowerCase(c);
  return lower;
}

}  // namespace QuorHost::Sql
