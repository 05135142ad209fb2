// Names for files of the tests.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

/// A path in the folder for temporary files that no other process uses: CTest runs cases side by
/// side, each in a process of its own.
inline std::string temporaryPath(const std::string& name) {
  return testing::TempDir() + "quoracc-" + std::to_string(::getpid()) + "-" + name;
}
