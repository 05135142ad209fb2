// What the registry knows of the DLL.
#pragma once

namespace QuorCom {

/// Writes classes, names, type library and interfaces: for the machine, or for this user where the
/// machine's registry may not be written. Raises what the registry refuses; nothing is left then.
void registerServer();

/// Removes all that was written, for the machine and for this user.
void unregisterServer();

}  // namespace QuorCom
