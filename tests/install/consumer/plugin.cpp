// A library that an application loads at run time and that holds the component.
#include "core/member_table.h"

extern "C" __attribute__((visibility("default"))) int classCount() {
  return static_cast<int>(QuorAccQueries::allClasses().size());
}
