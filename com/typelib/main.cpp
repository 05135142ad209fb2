// Prints a library's interface definition: quoracc_idl QuorAccQueries|QuorDataLib
#include <iostream>
#include <string_view>

#include "com/component/thread_host.h"
#include "com/data_library/reference_application.h"
#include "com/typelib/idl_writer.h"
#include "platform/error.h"

namespace QuorCom {

// Nothing is created here: tables are read.
QuorDataLib::Ref<QuorDataLib::Object> newThreadHost() { return nullptr; }
std::int32_t objectsHeld() noexcept { return 0; }

}  // namespace QuorCom

int main(int count, char** arguments) {
  const std::string_view name = count == 2 ? arguments[1] : "";
  for (const auto* const library : {&QuorCom::componentLibrary(), &QuorCom::dataLibrary()}) {
    if (library->name != name) continue;
    try {
      QuorCom::writeIdl(std::cout, *library);
      return 0;
    } catch (const QuorDataLib::Error& error) {
      std::cerr << "quoracc_idl: " << error.description() << '\n';
      return 1;
    }
  }
  std::cerr << "usage: quoracc_idl QuorAccQueries|QuorDataLib\n";
  return 2;
}
