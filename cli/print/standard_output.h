// Standard output as a stream with one large buffer.
#pragma once

#include <array>
#include <streambuf>
#include <system_error>

namespace QuorCli {

/// Standard output could not be written: a full disk, or a reader that has gone away.
class OutputError : public std::system_error {
 public:
  explicit OutputError(int error)
      : std::system_error(error, std::generic_category(), "the output cannot be written") {}

  /// The reader of a pipe has read all it wants; there is nobody left to tell.
  [[nodiscard]] bool readerIsGone() const noexcept;
};

/// A buffer of a file descriptor, which it neither owns nor closes. Raises `OutputError` as soon as
/// the descriptor refuses what was written; a stream on it passes that on when its `exceptions`
/// hold `badbit`. What is still in the buffer at its end is lost: flush the stream.
class DescriptorBuffer : public std::streambuf {
 public:
  explicit DescriptorBuffer(int descriptor);

 protected:
  int_type overflow(int_type next) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  int sync() override;

 private:
  void writeOut(const char* text, std::size_t size) const;
  void empty();

  int descriptor_;
  std::array<char, 1 << 16> buffer_;
};

}  // namespace QuorCli
