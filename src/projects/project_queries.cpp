#include "projects/project_queries.h"

#include "core/statement.h"
#include "projects/project_sql.h"

namespace QuorAccQueries {

namespace Sql = ProjectSql;

const ClassInfo& CProjectQueries::info() {
  static const ClassInfo info = describeClass<CProjectQueries>(
      "Project queries.",
      joined(QueryFrame::members(),
             {method<&CProjectQueries::OpenProjectHoursTransactions>(
                 "OpenProjectHoursTransactions", {"ProjId", "FromDate", "ToDate"},
                 "The hours put on a project in a period, by pays and "
                 "purchases.")}));
  return info;
}

Ref<Recordset> CProjectQueries::OpenProjectHoursTransactions(std::int32_t ProjId, Date FromDate,
                                                             Date ToDate) {
  return trap("OpenProjectHoursTransactions", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kPaidHours);
    statement.text(Sql::kBoughtHours).text(Sql::kItemDescription.unlessServer(engineType(step)));
    statement.text(Sql::kBoughtHoursFrom);
    for (int half = 0; half < 2; ++half) statement.bind(ProjId).bind(FromDate).bind(ToDate);
    result = open(step, statement, Pass::Array);
  });
}

}  // namespace QuorAccQueries
