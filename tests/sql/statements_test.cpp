// The statements of the application, in the dialects that they are written in.
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/error.h"
#include "queries/company_fixture.h"
#include "sql/both_forms.h"
#include "sql/component_statements.h"
#include "sql/database.h"
#include "sql/untidy.h"

namespace QuorHost::Sql::Testing {
namespace {

void expectUnderstood(const Database& database, const std::string& statement, Dialect dialect) {
  const Translation translation = database.translate(statement, dialect);
  EXPECT_EQ(database.preparationError(translation), "") << translation.sql;
  EXPECT_EQ(std::ranges::count(translation.markers, Type::Unknown), 0);
  EXPECT_EQ(std::ranges::count(translation.columns, Type::Unknown, &ResultColumn::type), 0);
  EXPECT_EQ(std::ranges::count(statement, '?'),
            static_cast<std::ptrdiff_t>(translation.markers.size()));
}

/// Rows found, to see that there was something to compare.
std::size_t expectBothForms(Database& database, const std::string& statement, Dialect dialect,
                            const Values& values) {
  const BothForms forms = runBoth(database, statement, dialect, values);
  EXPECT_EQ(forms.plainError, forms.fasterError);
  EXPECT_EQ(difference(forms, statement, database.translate(statement, dialect)), "")
      << forms.fasterSql;
  return forms.plain.size();
}

TEST(Statements, OfTheComponentKeepTheirRows) {
  const fixture::CompanyFile company(CreateOptions{.sample = true});
  const auto store = openCompany(company.path(), Access::Write);
  const std::vector<Sent> sent = componentStatements(store);
  Database sample(company.path(), store->catalogue());
  Database untidy(companySchema());
  fillUntidily(untidy, 1);
  std::size_t rows = 0;
  for (const auto& [dialect, text, values] : sent) {
    SCOPED_TRACE(text);
    try {
      expectUnderstood(sample, text, dialect);
      if (sample.translate(text, dialect).columns.empty()) continue;
      rows += expectBothForms(sample, text, dialect, values);
      const Values others = markerValues(sample.translate(text, dialect));
      rows += expectBothForms(untidy, text, dialect, others);
    } catch (const QuorDataLib::Error& error) {
      ADD_FAILURE() << error.description();
    }
  }
  EXPECT_GT(rows, 10'000U);
}

}  // namespace
}  // namespace QuorHost::Sql::Testing
