#include "bench/companies.h"

#include <cstdio>
#include <filesystem>

#include "host/company/company.h"
#include "host/engines/sqlite/file/opening.h"

namespace QuorBench {

Company::Company(const std::string& path)
    : store_(QuorHost::openCompany(path, QuorHost::Access::Read)),
      host_({.store = store_}),
      connection_(host_.connection()),
      customers_(QuorDataLib::make<QuorAccQueries::CCustomerQueries>()),
      suppliers_(QuorDataLib::make<QuorAccQueries::CSupplierQueries>()),
      byHand_(QuorHost::isServer(path)
                  ? nullptr
                  : QuorHost::Sqlite::openDatabase(path, QuorHost::Access::Read,
                                                   QuorHost::Sqlite::kBusyTimeout)) {
  customers_->SetCustomConnection(connection_);
  suppliers_->SetCustomConnection(connection_);
}

void Company::use() {
  static const Company* inUse = nullptr;
  if (inUse != this) host_.install();
  inUse = this;
}

QuorAccQueries::CCustomerQueries& Company::customers() {
  use();
  return *customers_;
}

QuorAccQueries::CSupplierQueries& Company::suppliers() {
  use();
  return *suppliers_;
}

std::string Companies::file(int scale) const {
  std::filesystem::create_directories(folder_);
  std::string path = folder_ + "/sample-" + std::to_string(QuorHost::kNewestSchemaVersion) + "-" +
                     std::to_string(scale) + ".db";
  if (!std::filesystem::exists(path)) {
    std::fprintf(stderr, "making %s, a company of %d,000 invoices\n", path.c_str(), scale);
    QuorHost::createCompany(path, {.sample = true, .scale = scale});
  }
  return path;
}

std::shared_ptr<Company> Companies::openApart(int scale) const {
  return std::make_shared<Company>(file(scale));
}

std::shared_ptr<Company> Companies::open(int scale) {
  std::shared_ptr<Company>& company = open_[scale];
  if (!company) company = openApart(scale);
  return company;
}

}  // namespace QuorBench
