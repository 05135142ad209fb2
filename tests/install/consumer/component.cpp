// component PLUGIN: a project that brings its own host needs the component alone: no reference
// host, no SQLite. The plugin has the same component.
#include <dlfcn.h>

#include <iostream>

#include "core/member_table.h"
#include "platform/current_application.h"

int main(int /*argc*/, char** argv) {
  for (const QuorAccQueries::ClassInfo* info : QuorAccQueries::allClasses()) {
    std::cout << info->name << '\n';
  }
  void* const plugin = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (plugin == nullptr) {
    std::cout << dlerror() << '\n';
    return 1;
  }
  const auto count = reinterpret_cast<int (*)()>(dlsym(plugin, "classCount"));
  if (count == nullptr || count() != static_cast<int>(QuorAccQueries::allClasses().size()))
    return 1;
  try {
    static_cast<void>(QuorDataLib::currentApplication());
  } catch (const QuorDataLib::Error& error) {
    std::cout << "without a host: " << error.what() << '\n';
    return QuorAccQueries::findClass("CQueries") == nullptr ? 1 : 0;
  }
  return 1;
}
