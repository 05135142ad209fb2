// The members of the DLL by which a host tells a thread where its application object comes from.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/data_library.h"

namespace QuorCom {

/// `QuorAccQueries.CThreadHost`: what counts for the thread that uses it.
class ThreadHost : public QuorDataLib::Contract<ThreadHost> {
 public:
  static constexpr std::string_view kClassName = "CThreadHost";
  static const QuorDataLib::ClassInfo& info();

  /// The class whose object is made when the component first asks for the application object; what
  /// registration has fixed until the thread is told otherwise. Assigning it lets go of the object
  /// that the thread holds.
  virtual std::string ApplicationClass() = 0;
  virtual void SetApplicationClass(const std::string& classId) = 0;

  /// The application object itself, for hosts that have one already. Empty: made by its class
  /// again. Reading it makes it where there is none yet.
  virtual QuorDataLib::Ref<QuorDataLib::Application> Application() = 0;
  virtual void SetApplication(const QuorDataLib::Ref<QuorDataLib::Application>& application) = 0;

  /// Objects of the DLL that clients hold, this one included.
  virtual std::int32_t LiveObjects() = 0;
};

/// The one of this DLL.
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Object> newThreadHost();

}  // namespace QuorCom
