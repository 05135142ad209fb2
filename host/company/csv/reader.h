// Reads CSV as RFC 4180 has it.
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace QuorHost::Csv {

/// A field of a record. `text` holds until the next record is read.
struct Field {
  std::string_view text;
  /// Whether it stood in quotes: an empty field is missing, an empty quoted one is an empty text.
  bool quoted = false;
  /// The line that it begins on, counted from 1.
  std::int64_t line = 1;
};

/// A reader of records. Lines may end in LF or CR LF; a byte order mark at the start is skipped.
/// Memory is that of the longest record.
class Reader {
 public:
  explicit Reader(std::istream& input) : input_(input), buffer_(kBufferSize) {}

  /// Reads the next record; false at the end of the input. An empty line is a record of one empty
  /// field. Raises 5, naming the line, for a quote out of place or left open, for text that is not
  /// UTF-8, and for an input that cannot be read.
  bool next(std::vector<Field>& fields);

 private:
  static constexpr std::size_t kBufferSize = std::size_t{1} << 16U;
  static constexpr int kEnd = -1;

  struct Extent {
    std::size_t begin;
    std::size_t end;
    bool quoted;
    std::int64_t line;
  };

  [[noreturn]] static void refuse(std::int64_t line, const std::string& what);
  int peek();
  void take() { ++position_; }
  bool endsLine();
  void readQuoted(std::int64_t line);
  void readPlain(std::int64_t line);

  std::istream& input_;
  std::vector<char> buffer_;
  std::size_t position_ = 0;
  std::size_t filled_ = 0;
  std::int64_t line_ = 1;
  bool started_ = false;
  std::string record_;  // the texts of the fields, one after the other
  std::vector<Extent> extents_;
};

}  // namespace QuorHost::Csv
