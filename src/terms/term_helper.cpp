#include "terms/term_helper.h"

#include "core/platform_access.h"
#include "core/statement.h"
#include "platform/schedules.h"
#include "terms/term_sql.h"

namespace QuorAccQueries {

namespace Sql = TermSql;
namespace TermMode = QuorDataLib::TermMode;

namespace {

/// A number that the term's rule needs: null is an error.
std::int32_t numberOf(Steps& step, const Ref<Recordset>& rows, const std::string& column,
                      std::source_location where = std::source_location::current()) {
  return step([&] { return rows->Field(column).toLong(); }, where);
}

}  // namespace

const ClassInfo& CTermHelper::info() {
  static const ClassInfo info = describeClass<CTermHelper>(
      "Payment terms.",
      joined(QueryFrame::members(),
             {method<&CTermHelper::GetDueDate>("GetDueDate", {"TermId", "DocDate"},
                                               "When a document is due under a payment term.")}));
  return info;
}

Date CTermHelper::GetDueDate(std::int32_t TermId, Date DocDate) {
  return trap("GetDueDate", [&](Steps& step, Date& result) {
    const Ref<Recordset> term = open(step, Statement(Sql::kTerm).bind(TermId), Pass::Array,
                                     {.mode = QuorDataLib::kOpenDefault});
    result = hasRow(step, term) ? dueDate(step, term, DocDate) : DocDate;
    step([&] { term->Close(); });
  });
}

Date CTermHelper::dueDate(Steps& step, const Ref<Recordset>& term, Date document) {
  std::int32_t mode = 0;
  readField(step, term, "TermMode", mode);
  switch (mode) {
    case TermMode::kNetDays: {
      const std::int32_t days = numberOf(step, term, "Due");
      return step([&] { return document.addDays(days); });
    }
    case TermMode::kDayOfMonth: {
      const std::int32_t due = numberOf(step, term, "Due");
      const std::int32_t next = numberOf(step, term, "DueNxtMonth");
      return step([&] {
        return QuorDataLib::dueOnDayOfMonth(document, due, next, [&](int year, int month) {
          return askUtility(step, [&](QuorDataLib::Utility& utility) {
            return utility.DaysInMonth(year, month);
          });
        });
      });
    }
    case TermMode::kFirstPayment: {
      const std::int32_t days = numberOf(step, term, "FirstPmtDay");
      return step([&] { return document.dateOnly().addDays(days); });
    }
    case TermMode::kFixedDate:
      return fixedDate(step, numberOf(step, term, "InTermId"), document);
    default:
      return {};
  }
}

Date CTermHelper::fixedDate(Steps& step, std::int32_t term, Date otherwise) {
  // An error that leaves the method drops the rows, which closes them.
  const Ref<Recordset> dates = open(step, Statement(Sql::kTermDates).bind(term), Pass::Array,
                                    {.mode = QuorDataLib::kOpenDetails});
  Date due;
  if (hasRow(step, dates)) {
    step([&] { due = dates->Field("DueDate").toDate(); });
  } else {
    due = otherwise;
  }
  step([&] { dates->Close(); });
  return due;
}

}  // namespace QuorAccQueries
