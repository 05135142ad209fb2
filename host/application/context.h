// The application object and its context, made of their parts.
#pragma once

#include <string>

#include "platform/data_library.h"
#include "platform/foundation.h"

namespace QuorHost {

/// The parts of an application context; none is empty.
struct ContextParts {
  QuorDataLib::Ref<QuorDataLib::DataServices> dataServices;
  QuorDataLib::Ref<QuorDataLib::ErrorService> errorService;
  QuorDataLib::Ref<QuorDataLib::SettingsReader> settingsReader;
  QuorDataLib::Ref<QuorDataLib::Utility> utility;
  QuorDataLib::Ref<QuorCastriaFoundation::CastriaApplication> foundation;
};

/// An application object with these parts. Its registry holds one foundation helper as
/// "castria-helper", and its factory makes further ones.
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Application> makeApplication(const ContextParts& parts);

}  // namespace QuorHost
