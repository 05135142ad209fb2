#include "core/column_list.h"

#include <algorithm>
#include <vector>

#include "platform/values/blanks.h"

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

void listColumnsWithout(Steps& step, std::string& list,
                        const QuorDataLib::Ref<QuorDataLib::Recordset>& rows,
                        std::string_view table, std::string_view exclusions,
                        std::source_location where) {
  const auto excluded = namesIn(exclusions);
  const std::int32_t count = step([&] { return rows->FieldCount(); }, where);
  for (std::int32_t index = 0; index < count; ++index) {
    const std::string name = step([&] { return rows->FieldName(index); }, where);
    if (name.empty() || std::ranges::find(excluded, name) != excluded.end()) continue;
    if (!list.empty()) list += ", ";
    list.append(table).append(".").append(name);
  }
}

}  // namespace QuorAccQueries
