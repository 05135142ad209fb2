#include "core/column_list.h"

#include <algorithm>
#include <vector>

#include "platform/blanks.h"

namespace QuorAccQueries {
namespace {

std::vector<std::string_view> namesIn(std::string_view list) {
  std::vector<std::string_view> names;
  while (true) {
    const std::size_t comma = list.find(',');
    names.push_back(QuorDataLib::withoutBlanks(list.substr(0, comma)));
    if (comma == std::string_view::npos) return names;
    list.remove_prefix(comma + 1);
  }
}

}  // namespace

std::string columnsWithout(const QuorDataLib::Ref<QuorDataLib::Recordset>& rows,
                           std::string_view table, std::string_view exclusions) {
  const auto excluded = namesIn(exclusions);
  std::string list;
  const std::int32_t count = rows->FieldCount();
  for (std::int32_t index = 0; index < count; ++index) {
    const std::string name = rows->FieldName(index);
    if (std::ranges::find(excluded, name) != excluded.end()) continue;
    if (!list.empty()) list += ", ";
    list.append(table).append(".").append(name);
  }
  return list;
}

}  // namespace QuorAccQueries
