// The test's own side of the border: it offers objects and no class.
#include "com/server/server.h"

namespace QuorCom {

const Server& server() {
  static const Library library{"Test", "Objects of the test", {}, {}};
  static const Server server{library,
                             {},
                             guidOf("5A1B2C94-7D1D-4A3E-9F5C-0C6D1E2F3A4B"),
                             []() noexcept { return true; },
                             {}};
  return server;
}

}  // namespace QuorCom
