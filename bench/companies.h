// The sample companies that are measured, and the two ways into each.
#pragma once

#include <sqlite3.h>

#include <map>
#include <memory>
#include <string>

#include "host/application/host.h"
#include "host/engines/sqlite/database.h"
#include "payables/supplier_queries.h"
#include "receivables/customer_queries.h"

namespace QuorBench {

/// One company, open through the host and, a file with the host's own settings, by hand.
class Company {
 public:
  explicit Company(const std::string& path);

  /// Makes this company's host the thread's application, which all companies share.
  void use();

  /// The component's customer queries, on the host's connection, with the company in use.
  [[nodiscard]] QuorAccQueries::CCustomerQueries& customers();
  /// The same for suppliers.
  [[nodiscard]] QuorAccQueries::CSupplierQueries& suppliers();
  [[nodiscard]] const QuorDataLib::Ref<QuorDataLib::Connection>& connection() const {
    return connection_;
  }

  [[nodiscard]] QuorHost::Store& store() { return *store_; }

  /// A handle of its own on the same file; none on a server.
  [[nodiscard]] sqlite3* byHand() const { return byHand_->handle(); }

 private:
  std::shared_ptr<QuorHost::Store> store_;
  QuorHost::Host host_;
  QuorDataLib::Ref<QuorDataLib::Connection> connection_;
  QuorDataLib::Ref<QuorAccQueries::CCustomerQueries> customers_;
  QuorDataLib::Ref<QuorAccQueries::CSupplierQueries> suppliers_;
  std::shared_ptr<QuorHost::Sqlite::Database> byHand_;
};

/// Makes and keeps the companies of a run.
class Companies {
 public:
  /// Files are kept in `folder` from run to run.
  explicit Companies(std::string folder) : folder_(std::move(folder)) {}

  /// The sample company with `scale` thousand customer invoices, open until the end.
  std::shared_ptr<Company> open(int scale);
  /// The same file, opened once more for a single measurement.
  std::shared_ptr<Company> openApart(int scale) const;

  /// The file of that company, which is made when it is not there.
  [[nodiscard]] std::string file(int scale) const;
  [[nodiscard]] const std::string& folder() const { return folder_; }

 private:
  std::string folder_;
  std::map<int, std::shared_ptr<Company>> open_;
};

}  // namespace QuorBench
