// The statements of the component give the rows of a company file on a server, too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <regex>

#include "host/company/schema.h"
#include "platform/error.h"
#include "postgres/cluster.h"
#include "queries/company_fixture.h"
#include "sql/both_forms.h"
#include "sql/component_statements.h"
#include "sql/untidy.h"

namespace QuorHost::Testing {
namespace {

using Sql::Testing::BothForms;
using Sql::Testing::Sent;
using Sql::Testing::Values;

// The release build compares the rows of all statements. With the sanitizers, which slow everything
// down, some of those for one chart do: what they find is in the engine, not in a statement.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kCharts = 1;
constexpr std::size_t kEvery = 6;
constexpr std::size_t kRows = 500;
#else
constexpr std::size_t kCharts = Sql::Testing::kAllCharts;
constexpr std::size_t kEvery = 1;
constexpr std::size_t kRows = 10'000;
#endif

/// One company, in a file and on a server.
struct Twins {
  std::shared_ptr<Store> file;
  std::shared_ptr<Store> server;

  /// On the server a role reads that may do no more.
  Twins(const std::string& path, const Cluster& cluster, const std::string& name) {
    cluster.run("CREATE ROLE statements LOGIN");
    copyCompany(path, cluster.company(name), true, {}, {"statements"});
    file = openCompany(path, Access::Read);
    server = openCompany(cluster.companyAs("statements", name), Access::Read);
  }
};

std::vector<std::string> rowsOf(Store& store, const Sent& sent, const Values& values,
                                std::string& error) {
  try {
    return fixture::lines(
        store.connect(sent.dialect)
            ->OpenRecordset(sent.text, 4, 0, QuorDataLib::Parameters::array(values), 0));
  } catch (const QuorDataLib::Error& raised) {
    error = raised.description();
    return {};
  }
}

std::size_t expectSameRows(const Twins& twins, const Sent& sent, const Values& values,
                           const Sql::Translation& translation) {
  BothForms forms;
  forms.plain = rowsOf(*twins.file, sent, values, forms.plainError);
  forms.faster = rowsOf(*twins.server, sent, values, forms.fasterError);
  EXPECT_EQ(forms.plainError.empty(), forms.fasterError.empty())
      << forms.plainError << forms.fasterError;
  // Rows whose keys differ in nothing but case may come in any order.
  for (std::vector<std::string>* const rows : {&forms.plain, &forms.faster}) {
    for (std::string& row : *rows) {
      std::ranges::transform(row, row.begin(), [](unsigned char c) { return std::tolower(c); });
    }
  }
  EXPECT_EQ(Sql::Testing::difference(forms, sent.text, translation), "");
  return forms.plain.size();
}

TEST(PostgresStatements, GiveTheRowsOfAFile) {
  Cluster* const cluster = Cluster::instance();
  if (cluster == nullptr) GTEST_SKIP() << "no PostgreSQL server is installed";
  const fixture::CompanyFile company(CreateOptions{.sample = true});
  const std::vector<Sent> statements =
      Sql::Testing::componentStatements(openCompany(company.path(), Access::Write), kCharts);
  const Twins sample(company.path(), *cluster, "sample");

  const fixture::CompanyFile empty;
  const std::string path = empty.path() + "-untidy";
  {
    const auto store = createCompanyFile(path, Durability::Full);
    // Rows that keep no rule keep no reference either.
    const auto define = [&](bool ofRows) {
      forEachDefinition([&](std::string_view, const std::string& statement) {
        static const std::regex reference(R"( REFERENCES \w+ \(\w+\))");
        if (holdsRows(statement) == ofRows)
          store->define(std::regex_replace(statement, reference, ""));
      });
    };
    define(false);
    const auto transaction = store->begin();
    std::map<std::string, std::unique_ptr<RowWriter>> writers;
    Sql::Testing::untidyRows(store->catalogue(), 1,
                             [&](const Sql::Relation& table, const Values& row) {
                               auto& writer = writers[table.name];
                               std::vector<std::string> columns;
                               columns.reserve(table.columns.size());
                               for (const Sql::Column& column : table.columns)
                                 columns.push_back(column.name);
                               if (!writer) writer = store->writer(table.name, columns);
                               writer->add(row);
                             });
    transaction->commit();
    define(true);
    store->setSchemaVersion(kNewestSchemaVersion);
  }
  const Twins untidy(path, *cluster, "untidy");

  const Sql::Testing::Database translator(company.path(), sample.file->catalogue());
  std::size_t rows = 0;
  for (std::size_t i = 0; i < statements.size(); i += kEvery) {
    const Sent& sent = statements[i];
    SCOPED_TRACE(sent.text);
    const Sql::Translation translation = translator.translate(sent.text, sent.dialect);
    if (translation.columns.empty()) continue;
    rows += expectSameRows(sample, sent, sent.values, translation);
    rows += expectSameRows(untidy, sent, Sql::Testing::markerValues(translation), translation);
  }
  EXPECT_GT(rows, kRows);
  std::filesystem::remove(path);
}

}  // namespace
}  // namespace QuorHost::Testing
