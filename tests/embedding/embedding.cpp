#include <iostream>

#include "core/queries.h"
#include "host/application/host.h"
#include "host/company/company.h"
#include "receivables/customer_queries.h"

int main(int argc, char** argv) try {
  // A real application installs its own objects; the reference host opens a company file.
  QuorHost::Host host(
      {.store = QuorHost::openCompany(argc > 1 ? argv[1] : "company.db", QuorHost::Access::Read)});
  host.install();

  const auto queries = QuorDataLib::make<QuorAccQueries::CQueries>();
  queries->SetCustomConnection(host.connection());

  const QuorDataLib::Date noLimit;
  const auto rows = queries->Customer()->OpenCustAgingTransactions(false, 0, noLimit, "", "", "",
                                                                   "", false, false);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    std::cout << rows->Field("InvoiDate").toText() << "  " << rows->Field("Name").toText() << "  "
              << rows->Field("Balance").toText() << '\n';
  }
  rows->Close();
} catch (const QuorDataLib::Error& error) {
  std::cerr << error.description() << '\n';
  return 1;
}
