#include "host/company/csv/reader.h"

#include <algorithm>

#include "host/sql/utf8.h"
#include "platform/error.h"

namespace QuorHost::Csv {

void Reader::refuse(std::int64_t line, const std::string& what) {
  QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                     "Line " + std::to_string(line) + " of the CSV: " + what);
}

/// The next byte, or `kEnd`.
int Reader::peek() {
  if (position_ == filled_) {
    input_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    if (input_.bad()) refuse(line_, "the input cannot be read any further");
    position_ = 0;
    filled_ = static_cast<std::size_t>(input_.gcount());
    if (filled_ == 0) return kEnd;
  }
  return static_cast<unsigned char>(buffer_[position_]);
}

/// Takes a line end if one comes next; the end of the input is one, too.
bool Reader::endsLine() {
  const int byte = peek();
  if (byte == kEnd) return true;
  if (byte == '\r') {
    take();
    if (peek() != '\n') refuse(line_, "a carriage return without a line feed");
  } else if (byte != '\n') {
    return false;
  }
  take();
  ++line_;
  return true;
}

void Reader::readQuoted(std::int64_t line) {
  take();  // the opening quote
  for (;;) {
    const int byte = peek();
    if (byte == kEnd) refuse(line, "a quote is opened here and never closed");
    take();
    if (byte == '"') {
      if (peek() != '"') return;
      take();
    }
    if (byte == '\n') ++line_;
    record_ += static_cast<char>(byte);
  }
}

void Reader::readPlain(std::int64_t line) {
  for (;;) {
    const int byte = peek();
    if (byte == kEnd || byte == ',' || byte == '\n' || byte == '\r') return;
    if (byte == '"') refuse(line, "a quote inside a field that does not begin with one");
    record_ += static_cast<char>(byte);
    take();
  }
}

bool Reader::next(std::vector<Field>& fields) {
  fields.clear();
  extents_.clear();
  record_.clear();
  if (!started_) {
    started_ = true;
    if (peek() == 0xEF && filled_ >= 3 && buffer_[1] == '\xBB' && buffer_[2] == '\xBF') {
      position_ = 3;
    }
  }
  if (peek() == kEnd) return false;
  for (;;) {
    const std::int64_t line = line_;
    const std::size_t begin = record_.size();
    const bool quoted = peek() == '"';
    quoted ? readQuoted(line) : readPlain(line);
    extents_.push_back({begin, record_.size(), quoted, line});
    if (peek() == ',') {
      take();
    } else if (endsLine()) {
      break;
    } else {
      refuse(line_, "text after the closing quote of a field");
    }
  }
  for (const Extent& extent : extents_) {
    const std::string_view text =
        std::string_view(record_).substr(extent.begin, extent.end - extent.begin);
    if (Sql::findIllFormed(text) != std::string_view::npos)
      refuse(extent.line, "text that is not UTF-8");
    fields.push_back({text, extent.quoted, extent.line});
  }
  return true;
}

}  // namespace QuorHost::Csv
