#pragma once
// The one error vocabulary of the system: an operation that can fail for an expected reason
// returns a Result, carrying either its value or an Error with a code and a message a user
// can act on. Exceptions are kept for programming errors and out-of-memory.
//
// Our own small type rather than std::expected: the clang used for fuzzing does not yet
// provide <expected> with the standard library it builds against.
#include <cstdint>
#include <string>
#include <utility>
#include <variant>

#include "base/Text.hpp"

namespace tq {

enum class ErrorCode {
  NotFound,      // a file, folder, entity or entry that is not there
  CannotRead,    // there, but could not be read
  CannotWrite,   // could not be written, renamed or flushed
  Malformed,     // read, but not what its format requires (the line is named)
  Unsupported,   // a kind of input the system does not handle (named)
  InvalidValue,  // a setting or an argument outside what can work
  TooLarge,      // would pass a limit of the format
  Locked,        // held by another writer, or on a locked layer
  Busy,          // an operation that must not run inside itself
  Cancelled,     // the user said no
};

// What went wrong, in words a user can act on. `line` is the 1-based line of the input the
// error concerns, 0 when none. `systemCode` is the number a platform gives for the failure,
// shown where a message carries one ("(%d)"), 0 when none.
struct Error {
  ErrorCode code = ErrorCode::InvalidValue;
  Text message;
  uint32_t line = 0;
  int32_t systemCode = 0;

  // The message as UTF-8, with "line N: " in front when a line is known.
  std::string Describe() const {
    std::string text = ToUtf8(message);
    return line ? "line " + std::to_string(line) + ": " + text : text;
  }
};

inline Error MakeError(ErrorCode code, TextView message, uint32_t line = 0) { return Error{code, Text(message), line, 0}; }
inline Error MakeError(ErrorCode code, std::string_view utf8Message, uint32_t line = 0) {
  return Error{code, FromUtf8(utf8Message), line, 0};
}

// Either a value or an Error; [[nodiscard]] so that no failure is dropped unseen.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : v_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error) : v_(std::in_place_index<1>, std::move(error)) {}

  bool ok() const { return v_.index() == 0; }
  explicit operator bool() const { return ok(); }

  // Asking for the value of a failed result, or the error of a good one, is a programming error.
  T& value() & { return std::get<0>(v_); }
  const T& value() const& { return std::get<0>(v_); }
  T&& value() && { return std::get<0>(std::move(v_)); }
  T& operator*() & { return value(); }
  const T& operator*() const& { return value(); }
  T* operator->() { return &value(); }
  const T* operator->() const { return &value(); }
  const Error& error() const { return std::get<1>(v_); }

 private:
  std::variant<T, Error> v_;
};

// The result of an operation that gives nothing back but may fail.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Error error) : error_(std::move(error)), failed_(true) {}

  bool ok() const { return !failed_; }
  explicit operator bool() const { return ok(); }
  const Error& error() const { return error_; }

 private:
  Error error_;
  bool failed_ = false;
};

using Status = Result<void>;

}  // namespace tq
