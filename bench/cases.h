// The measurements, one source file for each family.
#pragma once

#include <string>
#include <vector>

#include "bench/companies.h"
#include "bench/suite.h"

namespace QuorBench {

/// The aging statements: assembling one, running them for all parties and for one, and how their
/// time grows. `scales` are thousands of invoices.
void addAging(Suite& suite, Companies& companies, const std::vector<int>& scales);

/// Histories and balances of one party or account, and balances of all accounts, in the company of
/// `scale` thousand invoices.
void addAccounts(Suite& suite, Companies& companies, int scale);

/// Statements that a rewriting could make slow, each against itself as it is written.
void addTraps(Suite& suite, Companies& companies, int scale);

/// The ledger: the history of an account and a trial balance in that company, and new account
/// numbers in a large chart.
void addLedger(Suite& suite, Companies& companies, int scale);

/// Sales and hours of one project over a period, in that company.
void addProjects(Suite& suite, Companies& companies, int scale);

/// Recordsets: rows read as values, single rows by key, finding in a recordset that is kept, and
/// the memory of a long scan.
void addRecordsets(Suite& suite, Companies& companies);

/// The company of `scale` thousand invoices on `server`, a connection without a schema, beside the
/// file and beside the same SQL over the server's client library by hand. The company is copied to
/// a schema of its own there, and stays.
void addServer(Suite& suite, Companies& companies, int scale, const std::string& server);

/// The inventory of a company of a million movements, which is kept in `folder`.
void addInventory(Suite& suite, const std::string& folder);

}  // namespace QuorBench
