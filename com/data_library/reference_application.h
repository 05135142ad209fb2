// `QuorDataLib.Application`: the reference host's application object, as scripts create it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "host/application/host.h"
#include "platform/data_library.h"

namespace QuorCom {

/// One per thread, for as long as somebody holds it: the one that a script has opened a company
/// with is the one that the component finds.
class ReferenceApplication final : public QuorDataLib::Application {
 public:
  static const QuorDataLib::ClassInfo& info();
  [[nodiscard]] const QuorDataLib::ClassInfo* table() const override { return &info(); }

  /// The one of this thread, made where there is none.
  static QuorDataLib::Ref<ReferenceApplication> ofThread();

  /// Raises 91 before a company was opened and 3704 after it was closed; so does `Connection`.
  QuorDataLib::Ref<QuorDataLib::ApplicationContext> Context() override;

  /// Opens the company file at `Path` in place of the one before, as an engine of that type: 1
  /// presents the desktop engine's dialect, anything else the server's. It is opened for writing
  /// where the file may be written. Raises 75 with what to do, and then keeps the one before.
  void OpenCompany(const std::string& Path, std::int16_t EngineType);

  /// Lets go of the company. The file is closed when nobody holds anything of it.
  void CloseCompany();

  /// Makes a company file, with the sample company's data on request. Raises 5 where a file is.
  void CreateCompany(const std::string& Path, bool Sample);

  /// The connection for `CustomConnection`.
  QuorDataLib::Ref<QuorDataLib::Connection> Connection();

  /// What the error service answers in companies that are opened from then on: "raise" (raises the
  /// error again, which is the beginning), "leave", "continue" or "retry". Raises 5 for another.
  [[nodiscard]] std::string OnError() const { return onError_; }
  void SetOnError(const std::string& Answer);

  /// A foundation value that stands over what companies opened from then on say
  /// ("Company.SessionDate", "Settings.133"); an empty one stands no more.
  void SetFoundationValue(const std::string& Key, const std::string& Value);

  /// Objects of the DLL that clients hold.
  [[nodiscard]] std::int32_t LiveObjects();

 private:
  [[nodiscard]] QuorHost::Host& host() const;

  std::unique_ptr<QuorHost::Host> host_;
  bool wasOpen_ = false;
  std::string onError_ = "raise";
  std::map<std::string, std::string> values_;
};

/// Objects of the DLL that clients hold; the DLL knows.
[[nodiscard]] std::int32_t objectsHeld() noexcept;

}  // namespace QuorCom
