// What ODBC hands out, and what it says when something fails.
#pragma once

#include <string>
#include <utility>

#include "host/engines/odbc/driver/api.h"

namespace QuorHost::Odbc {

/// A handle of one kind, which is freed with the object.
template <SQLSMALLINT Kind>
class Handle {
 public:
  Handle() = default;
  explicit Handle(SQLHANDLE raw) noexcept : raw_(raw) {}
  ~Handle() { reset(); }
  Handle(Handle&& other) noexcept : raw_(std::exchange(other.raw_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(raw_, other.raw_);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  [[nodiscard]] SQLHANDLE get() const noexcept { return raw_; }

  /// Frees the handle. What a driver fails to free is tried once more, as it would be lost.
  void reset() noexcept {
    const SQLHANDLE raw = std::exchange(raw_, nullptr);
    if (raw != nullptr && SQLFreeHandle(Kind, raw) == SQL_ERROR) SQLFreeHandle(Kind, raw);
  }

 private:
  SQLHANDLE raw_ = nullptr;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

/// Why a call failed.
struct Diagnosis {
  /// Five characters; "HY000" where nothing is known.
  std::string state;
  /// In the driver's words, without the names of those who passed it on.
  std::string message;
};

/// What there is to say about the last call on a handle, errors before warnings.
[[nodiscard]] Diagnosis diagnose(SQLSMALLINT kind, SQLHANDLE handle);

}  // namespace QuorHost::Odbc
