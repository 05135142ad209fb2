// The application object of this thread.
#pragma once

#include <functional>

#include "platform/data_library.h"
#include "platform/foundation.h"

namespace QuorDataLib {

/// Makes the application object of a thread when it is first asked for.
using ApplicationFactory = std::function<Ref<Application>()>;

/// Installs the factory of this thread's application object, in place of any before it, and
/// releases the application object and the foundation helper that the thread holds. An empty
/// factory uninstalls.
void installApplication(ApplicationFactory factory);

/// The application object of this thread, created through the installed factory on first use.
/// Raises 91 when the thread has no factory, or when the factory makes no object.
[[nodiscard]] Ref<Application> currentApplication();

/// The foundation helper that the component has looked up on this thread; empty until then. It is
/// kept for the life of the thread, or until another application is installed.
[[nodiscard]] Ref<QuorCastriaFoundation::CCastriaHelper>& currentFoundationHelper();

}  // namespace QuorDataLib
