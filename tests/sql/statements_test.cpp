// The statements of the application, in the dialects that they are written in.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "sql/database.h"
#include "sql/statement_files.h"

namespace QuorHost::Sql::Testing {
namespace {

using testing::HasSubstr;

class Statements : public testing::TestWithParam<const char*> {};

TEST_P(Statements, AreReadInTheirOwnDialectsOnly) {
  Database database(fileText(STATEMENTS_DIR "/schema.sql"));
  const std::vector<std::string> statements = statementsOf(GetParam());
  ASSERT_FALSE(statements.empty());
  for (const std::string& statement : statements) {
    SCOPED_TRACE(statement);
    const bool server = statement.starts_with("-- server");
    const bool desktop = statement.starts_with("-- desktop");
    for (const Dialect dialect : kBoth) {
      if (dialect == kServer ? desktop : server) {
        EXPECT_THAT(database.refusal(statement, dialect), HasSubstr("belongs to the"));
        continue;
      }
      const Translation translation = database.translate(statement, dialect);
      EXPECT_EQ(database.preparationError(translation), "") << translation.sql;
      EXPECT_EQ(std::ranges::count(translation.markers, Type::Unknown), 0);
      EXPECT_EQ(std::ranges::count(translation.columns, Type::Unknown, &ResultColumn::type), 0);
      EXPECT_EQ(std::ranges::count(statement, '?'),
                static_cast<std::ptrdiff_t>(translation.markers.size()));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Areas, Statements,
                         testing::Values("inventory", "payables", "projects", "receivables",
                                         "terms"),
                         [](const auto& area) { return std::string(area.param); });

}  // namespace
}  // namespace QuorHost::Sql::Testing
