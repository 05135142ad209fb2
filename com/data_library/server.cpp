// QuorDataLib.dll.
#include "com/server/server.h"

#include "com/data_library/reference_application.h"
#include "com/objects/live.h"
#include "com/server/identifiers.h"

namespace QuorCom {

const Server& server() {
  static const Server server{dataLibrary(),
                             guidOf(libraryId("QuorDataLib")),
                             guidOf(ownInterfaceId("QuorDataLib")),
                             []() noexcept { return true; },
                             {}};
  return server;
}

std::int32_t objectsHeld() noexcept { return liveObjects(); }

}  // namespace QuorCom
