#include "cli/print/standard_output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace QuorCli {

bool OutputError::readerIsGone() const noexcept { return code().value() == EPIPE; }

DescriptorBuffer::DescriptorBuffer(int descriptor) : descriptor_(descriptor) {
  setp(buffer_.data(), buffer_.data() + buffer_.size());
}

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type next) {
  empty();
  if (!traits_type::eq_int_type(next, traits_type::eof())) {
    *pptr() = traits_type::to_char_type(next);
    pbump(1);
  }
  return traits_type::not_eof(next);
}

std::streamsize DescriptorBuffer::xsputn(const char* text, std::streamsize size) {
  if (size > epptr() - pptr()) empty();
  if (size > epptr() - pptr()) {
    writeOut(text, static_cast<std::size_t>(size));
  } else {
    std::copy_n(text, size, pptr());
    pbump(static_cast<int>(size));
  }
  return size;
}

int DescriptorBuffer::sync() {
  empty();
  return 0;
}

void DescriptorBuffer::empty() {
  const auto size = static_cast<std::size_t>(pptr() - pbase());
  // Emptied before it is written, so that a refused text is not written again by a later flush.
  setp(buffer_.data(), buffer_.data() + buffer_.size());
  writeOut(buffer_.data(), size);
}

void DescriptorBuffer::writeOut(const char* text, std::size_t size) const {
  while (size > 0) {
    const ssize_t written = ::write(descriptor_, text, size);
    if (written >= 0) {
      text += written;
      size -= static_cast<std::size_t>(written);
    } else if (errno != EINTR) {
      throw OutputError(errno);
    }
  }
}

}  // namespace QuorCli
