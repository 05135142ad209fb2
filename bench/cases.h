// The measurements, one source file for each family.
#pragma once

#include <string>
#include <vector>

#include "bench/companies.h"
#include "bench/suite.h"

namespace QuorBench {

/// The aging statement: assembling it, and running it for all customers and for one. `scales` are
/// thousands of invoices.
void addAging(Suite& suite, Companies& companies, const std::vector<int>& scales);

/// Recordsets: rows read as values, single rows by key, finding in a recordset that is kept.
void addRecordsets(Suite& suite, Companies& companies);

}  // namespace QuorBench
