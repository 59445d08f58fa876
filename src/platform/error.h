// Failures of the platform layer: a closed kind and, for the system's own failures, its number.
#pragma once

#include <cerrno>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace ledrix {

enum class ErrorKind {
  kSystem,          // the system refused; `system_number` is its errno
  kFolder,          // a folder stands where a file is wanted
  kNotAFile,        // a device or a socket stands where a file is wanted
  kPipe,            // a pipe stands where a file is wanted
  kInputAsOutput,   // an output would overwrite one of the inputs
  kOutputTwice,     // two outputs of one pair would be the same file
  kFolderIsLocked,  // a file cannot be made in the folder, whatever its own rights
  kWrittenByJob,    // the running job has written this file already
  kChanged,         // a file is no longer what it was when the job began to read it
  kCharset,         // no converter knows the charset
};

struct Error {
  ErrorKind kind = ErrorKind::kSystem;
  int system_number = 0;

  static Error System(int number) { return {ErrorKind::kSystem, number}; }
  // True when there is nothing at the path, not even a folder for it.
  bool IsMissing() const {
    return kind == ErrorKind::kSystem && (system_number == ENOENT || system_number == ENOTDIR);
  }
};

// One line in Japanese for the user; the C library's own text for rare system errors.
std::string DescribeError(const Error& error);

// Success, or why not. A default one is success.
class [[nodiscard]] Status {
 public:
  Status() = default;
  Status(Error error) : error_(error) {}  // NOLINT(google-explicit-constructor)

  bool ok() const { return !error_; }
  // REQUIRES: !ok().
  const Error& error() const { return *error_; }
  // The first failure of several steps is the one that counts.
  void KeepFirst(const Status& later) {
    if (ok()) *this = later;
  }
  // For a failure that changes nothing for the caller.
  void Ignore() const {}

 private:
  std::optional<Error> error_;
};

// A value, or why there is none.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : outcome_(std::move(value)) {}  // NOLINT(google-explicit-constructor)
  Result(Error error) : outcome_(error) {}         // NOLINT(google-explicit-constructor)

  bool ok() const { return std::holds_alternative<T>(outcome_); }
  // REQUIRES: ok().
  T& value() { return std::get<T>(outcome_); }
  const T& value() const { return std::get<T>(outcome_); }
  // REQUIRES: !ok().
  const Error& error() const { return std::get<Error>(outcome_); }
  // Success, or the reason why there is no value.
  Status status() const { return ok() ? Status() : Status(error()); }

 private:
  std::variant<T, Error> outcome_;
};

}  // namespace ledrix
