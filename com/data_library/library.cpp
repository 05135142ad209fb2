// What QuorDataLib.dll offers.
#include "com/server/library.h"

#include "com/data_library/reference_application.h"
#include "platform/collection.h"
#include "platform/contracts.h"
#include "platform/foundation.h"

namespace QuorCom {

using QuorCastriaFoundation::CCastriaHelper;
using QuorDataLib::ClassInfo;
using QuorDataLib::Object;
using QuorDataLib::Ref;

namespace {

constexpr const char* kHelperClass = "QuorCastriaFoundation.CCastriaHelper";

/// A foundation helper of the company that is open on this thread.
Ref<Object> newHelper() {
  return ReferenceApplication::ofThread()->Context()->Factory()->Create(kHelperClass, 0,
                                                                        &CCastriaHelper::info());
}

}  // namespace

const Library& dataLibrary() {
  static const Library library = [] {
    Library all{"QuorDataLib", "Reference host of the accounting components", {}, {}};
    for (const ClassInfo* const info : QuorDataLib::allContracts()) {
      // Walkers are the system's own; of the application object there is more than its contract.
      if (info == &QuorDataLib::Enumerator::info()) continue;
      all.interfaces.push_back(
          info == &QuorDataLib::Application::info() ? &ReferenceApplication::info() : info);
    }
    all.classes = {
        {&ReferenceApplication::info(), all.name,
         []() -> Ref<Object> { return ReferenceApplication::ofThread(); }},
        {&CCastriaHelper::info(), "QuorCastriaFoundation", newHelper},
    };
    return all;
  }();
  return library;
}

}  // namespace QuorCom
