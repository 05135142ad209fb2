#include "core/row_steps.h"

namespace QuorAccQueries {

using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

Value valueOrEmpty(const Ref<Recordset>& rows, const std::string& column) {
  Value value = rows->Field(column);
  if (value.isNull()) return {};
  return value;
}

bool hasRow(Steps& step, const Ref<Recordset>& rows, std::source_location where) {
  bool atEnd = false;
  step([&] { atEnd = rows->AtEnd(); }, where);
  return !atEnd;
}

bool moreRows(Steps& step, const Ref<Recordset>& rows, std::source_location where) {
  return step([&] { return !rows->AtEnd(); }, where);
}

bool moveOn(Steps& step, const Ref<Recordset>& rows, std::source_location where) {
  const bool moved = step(
      [&] {
        rows->MoveNext();
        return true;
      },
      where);
  return moved && moreRows(step, rows, where);
}

}  // namespace QuorAccQueries
