// The aging statements as one would type them for SQLite.
#pragma once

#include <string>

namespace QuorBench {

/// The outstanding items of all customers as at the date of its one marker, with the default
/// columns and order of the component's statement, and its joins and derived tables as they stand
/// there. `customerColumns` is a select list of columns of `Cust`.
std::string customerAgingByHand(const std::string& customerColumns);

/// The same of all suppliers; `supplierColumns` are columns of `Supp`.
std::string supplierAgingByHand(const std::string& supplierColumns);

}  // namespace QuorBench
