// QuorAccQueries.dll.
#include "com/server/server.h"

#include "com/component/thread_application.h"
#include "com/server/identifiers.h"

namespace QuorCom {

const Server& server() {
  static const Server server = [] {
    serveApplications();
    const Library& library = componentLibrary();
    return Server{library,
                  guidOf(libraryId(library.name)),
                  guidOf(ownInterfaceId(library.name)),
                  holdsNothing,
                  {"CQueries", kApplicationKey, L"QuorDataLib.Application"}};
  }();
  return server;
}

}  // namespace QuorCom
