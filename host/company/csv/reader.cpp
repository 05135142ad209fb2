#include "host/company/csv/reader.h"

#include <algorithm>

#include "platform/error.h"

namespace QuorHost::Csv {

namespace {

/// Length of the well-formed character that begins with `lead`, and the bounds of its second byte;
/// length 0 for a byte that begins none.
struct Form {
  int length;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
};

Form formOf(unsigned char lead) {
  if (lead >= 0x01 && lead < 0x80) return {1};
  if (lead >= 0xC2 && lead <= 0xDF) return {2};
  if (lead == 0xE0) return {3, 0xA0, 0xBF};
  if (lead == 0xED) return {3, 0x80, 0x9F};
  if (lead >= 0xE1 && lead <= 0xEF) return {3};
  if (lead == 0xF0) return {4, 0x90, 0xBF};
  if (lead >= 0xF1 && lead <= 0xF3) return {4};
  if (lead == 0xF4) return {4, 0x80, 0x8F};
  return {0};
}

}  // namespace

std::size_t findIllFormed(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const Form form = formOf(static_cast<unsigned char>(text[i]));
    if (form.length == 0 || text.size() - i < static_cast<std::size_t>(form.length)) return i;
    for (int k = 1; k < form.length; ++k) {
      const auto byte = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
      const bool second = k == 1;
      if (byte < (second ? form.low : 0x80) || byte > (second ? form.high : 0xBF)) return i;
    }
    i += static_cast<std::size_t>(form.length);
  }
  return std::string_view::npos;
}

std::size_t countCharacters(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

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
    if (findIllFormed(text) != std::string_view::npos)
      refuse(extent.line, "text that is not UTF-8");
    fields.push_back({text, extent.quoted, extent.line});
  }
  return true;
}

}  // namespace QuorHost::Csv
