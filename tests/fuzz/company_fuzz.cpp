// A company file with any bytes changed: it is refused with a message, or it can be checked, read
// and copied, and whatever is wrong is an error and no end of the program.
//
// An input is a row of changes, four bytes each: the place (three bytes) and what is toggled there.
// A place beyond the file cuts it.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "host/company/company.h"
#include "platform/error.h"

namespace {

using namespace QuorHost;

/// A folder of this process's own, and the bytes of a sound company.
class Ground {
 public:
  Ground() {
    std::filesystem::create_directory(folder_);
    createCompany(path(), {.force = true});
    std::istringstream customers("InCustId,Name\n1,Aubé\n2,Baker\n");
    const auto store = openCompany(path(), Access::Write);
    importCsv(*store, "Cust", customers, false);
    std::istringstream documents(
        "InInvoiId,InvoiType,ExCustId,InvoiDate,TotAmnt\n1,1,1,2024-01-01,10\n");
    importCsv(*store, "InvoiHdr", documents, false);
  }
  ~Ground() { std::filesystem::remove_all(folder_); }
  Ground(const Ground&) = delete;
  Ground& operator=(const Ground&) = delete;

  [[nodiscard]] std::string path() const { return (folder_ / "company").string(); }

  [[nodiscard]] const std::string& sound() {
    if (sound_.empty()) {
      std::ifstream file(path(), std::ios::binary);
      sound_.assign(std::istreambuf_iterator<char>(file), {});
    }
    return sound_;
  }

 private:
  std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                  ("quoracc-company-fuzz-" + std::to_string(::getpid()));
  std::string sound_;
};

template <class Work>
void attempt(const Work& work) {
  try {
    work();
  } catch (const QuorDataLib::Error&) {
    // Refused, which is an answer.
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Ground ground;
  constexpr std::size_t kChange = 4;
  std::string bytes = ground.sound();
  for (std::size_t i = 0; i + kChange <= size; i += kChange) {
    const std::size_t place = data[i] << 16U | data[i + 1] << 8U | data[i + 2];
    if (place < bytes.size()) {
      bytes[place] = static_cast<char>(bytes[place] ^ data[i + 3]);
    } else {
      bytes.resize(place % bytes.size() + 1);
    }
  }
  for (const char* const beside : {"-wal", "-shm", "-journal"}) {
    std::filesystem::remove(ground.path() + beside);
  }
  std::ofstream(ground.path(), std::ios::binary | std::ios::trunc) << bytes;
  attempt([&] { (void)checkCompany(ground.path(), [](const std::string&) {}); });
  attempt([&] {
    const auto store = openCompany(ground.path(), Access::Write);
    std::ostringstream csv;
    attempt([&] { (void)exportCsv(*store, "CustAgingDet", csv); });
    std::istringstream customers("Name\nCyr\n");
    attempt([&] { (void)importCsv(*store, "Cust", customers, false); });
  });
  attempt([&] { backupCompany(ground.path(), ground.path() + "-copy", true); });
  return 0;
}
