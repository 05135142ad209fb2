// A project that brings its own host needs the component alone: no reference host, no SQLite.
#include <iostream>

#include "core/member_table.h"
#include "platform/current_application.h"

int main() {
  for (const QuorAccQueries::ClassInfo* info : QuorAccQueries::allClasses()) {
    std::cout << info->name << '\n';
  }
  try {
    static_cast<void>(QuorDataLib::currentApplication());
  } catch (const QuorDataLib::Error& error) {
    std::cout << "without a host: " << error.what() << '\n';
    return QuorAccQueries::findClass("CQueries") == nullptr ? 1 : 0;
  }
  return 1;
}
