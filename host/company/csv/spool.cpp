#include "host/company/csv/spool.h"

#include <filesystem>
#include <vector>

#include "host/engines/paths.h"
#include "host/engines/temporary_file.h"
#include "platform/error.h"

namespace QuorHost::Csv {

namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16U;
constexpr std::streamoff kLargestInMemory = std::streamoff{1} << 20U;

}  // namespace

Spool::Spool(std::istream& input) {
  using QuorDataLib::ErrorNumber;
  std::vector<char> chunk(kChunk);
  std::ostream* output = &memory_;
  while (input.read(chunk.data(), static_cast<std::streamsize>(chunk.size())), input.gcount() > 0) {
    if (output == &memory_ && memory_.tellp() > kLargestInMemory) {
      const TemporaryFile named;
      file_.open(pathOf(named.path()), std::ios::in | std::ios::out | std::ios::binary);
      file_ << memory_.rdbuf();
      memory_.str({});
      output = &file_;
    }
    output->write(chunk.data(), input.gcount());
    if (!*output) {
      QuorDataLib::raise(ErrorNumber::InvalidArgument,
                         "The folder for temporary files has no room for the CSV: make room, or "
                         "name another folder (TMPDIR)");
    }
  }
  if (input.bad()) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument, "The CSV cannot be read to its end");
  }
  if (file_.is_open()) file_.seekg(0);
}

}  // namespace QuorHost::Csv
