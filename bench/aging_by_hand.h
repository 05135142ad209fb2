// The customer aging statement as one would type it for SQLite.
#pragma once

#include <string>

namespace QuorBench {

/// The outstanding items of all customers as at the date of its one marker, with the default
/// columns and order of the component's statement, and its joins and derived tables as they stand
/// there. `customerColumns` is a select list of columns of `Cust`.
std::string agingByHand(const std::string& customerColumns);

}  // namespace QuorBench
