// What there is to say about a company file.
#pragma once

#include <string>

#include "cli/console.h"
#include "host/company/company.h"

namespace QuorCli {

/// One line about a file that was just made.
void printMade(const std::string& file, const QuorHost::CompanyInfo& info, Console& console);

/// Engine, size and document dates, then every table and view with its rows.
void printInfo(const std::string& file, const QuorHost::CompanyInfo& info, Console& console);

}  // namespace QuorCli
