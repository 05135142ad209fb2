// What QuorAccQueries.dll offers.
#include "com/server/library.h"

#include "com/component/thread_host.h"
#include "core/member_table.h"
#include "platform/collection.h"
#include "platform/member_table.h"

namespace QuorCom {

using QuorDataLib::ClassInfo;
using QuorDataLib::describeContract;
using QuorDataLib::Object;
using QuorDataLib::propertyGet;
using QuorDataLib::propertyPut;
using QuorDataLib::Ref;

const ClassInfo& ThreadHost::info() {
  static const ClassInfo info = describeContract<ThreadHost>(
      "Where a thread's application object comes from.",
      {
          propertyGet<&ThreadHost::ApplicationClass>(
              "ApplicationClass", "The class that the application object is made of."),
          propertyPut<&ThreadHost::SetApplicationClass>(
              "ApplicationClass", "The class that the application object is made of."),
          propertyGet<&ThreadHost::Application>("Application", "The application object."),
          propertyPut<&ThreadHost::SetApplication>(
              "Application", "Assigns the application object; nothing: made by its class."),
          propertyGet<&ThreadHost::LiveObjects>("LiveObjects",
                                                "Objects of the DLL that clients hold."),
      });
  return info;
}

const Library& componentLibrary() {
  static const Library library = [] {
    Library all{"QuorAccQueries", "Queries and helpers of the accounting application", {}, {}};
    for (const ClassInfo* const info : QuorAccQueries::allClasses()) {
      all.interfaces.push_back(info);
      all.classes.push_back({info, all.name, [info]() -> Ref<Object> { return info->create(); }});
    }
    all.interfaces.push_back(&ThreadHost::info());
    all.classes.push_back({&ThreadHost::info(), all.name, newThreadHost});
    all.interfaces.push_back(&QuorDataLib::Collection::info());
    return all;
  }();
  return library;
}

}  // namespace QuorCom
