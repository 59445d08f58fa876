// Failures of the platform layer: a closed kind and, for the system's own failures, its number.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace ledrix {

enum class ErrorKind {
  kSystem,         // the system refused; `system_number` is its errno
  kFolder,         // a folder stands where a file is wanted
  kNotAFile,       // a device or a socket stands where a file is wanted
  kInputAsOutput,  // an output would overwrite one of the inputs
  kOutputTwice,    // two outputs of one pair would be the same file
  kCharset,        // no converter knows the charset
};

struct Error {
  ErrorKind kind = ErrorKind::kSystem;
  int system_number = 0;

  static Error System(int number) { return {ErrorKind::kSystem, number}; }
};

// One line in Japanese for the user; the C library's own text for rare system errors.
std::string DescribeError(const Error& error);

// Success, or why not.
using Status = std::optional<Error>;
inline constexpr std::nullopt_t kNoError = std::nullopt;

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

 private:
  std::variant<T, Error> outcome_;
};

}  // namespace ledrix
