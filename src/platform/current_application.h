// The application object of a thread.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/data_library.h"
#include "platform/foundation.h"

namespace QuorDataLib {

/// Makes the application object of a thread when it is first asked for.
using ApplicationFactory = std::function<Ref<Application>()>;

/// Installs the factory of this thread's application object, in place of any before it, and
/// releases the application object and the foundation helper that the thread holds. An empty
/// factory uninstalls: the thread then uses the default one, where there is one.
void installApplication(ApplicationFactory factory);

/// Installs the factory that threads without one of their own use, in place of any before it; an
/// empty one uninstalls. It may be called on any thread, and the factory is called on any. A thread
/// that has its application object already keeps it until it is released.
void installDefaultApplication(ApplicationFactory factory);

/// The application object of this thread, created through the installed factory on first use.
/// Raises 91 when there is no factory for the thread, when the factory makes no object, and when it
/// asks for the application object itself.
[[nodiscard]] Ref<Application> currentApplication();

/// The application object that this thread holds already; empty when it has not made one.
[[nodiscard]] Ref<Application> heldApplication() noexcept;

/// The foundation helper that the component has looked up on this thread; empty until then. It is
/// kept for the life of the thread, or until another application is installed.
[[nodiscard]] Ref<QuorCastriaFoundation::CCastriaHelper> heldFoundationHelper() noexcept;
void holdFoundationHelper(Ref<QuorCastriaFoundation::CCastriaHelper> helper);

/// Releases the application object and the foundation helper that this thread holds; the factories
/// stay. A platform whose objects belong to an apartment calls it before the apartment ends.
void releaseHeldObjects() noexcept;

/// What becomes of the objects that a thread holds when it ends without having released them.
enum class AtThreadEnd : std::uint8_t {
  Release,
  /// They are left as they are: the apartment that they belong to may have ended already, and its
  /// objects with it.
  Abandon,
};

/// Sets it for threads that end from now on; `Release` until then.
void setAtThreadEnd(AtThreadEnd what) noexcept;

}  // namespace QuorDataLib
