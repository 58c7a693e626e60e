#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace campotipo::records {

enum class ErrorCode {
  kArgument,  // what was asked for cannot be done
  kMemory,
  kLayout,  // a layout that cannot be used
  kInput,   // a file that cannot be opened or read
  kOutput,  // one that cannot be written
  kRecord,  // bytes that do not follow the layout
  kValue,   // a value that is invalid, or does not fit where it should go
};

// What went wrong and where. Thrown inside, a value at the C face.
class Error : public std::exception {
 public:
  Error(ErrorCode code, std::string text) : code_(code), text_(std::move(text)) {}

  const char *what() const noexcept override { return text_.c_str(); }
  ErrorCode code() const { return code_; }
  const std::string &text() const { return text_; }

  std::uint32_t line = 0;    // of a layout or of a CSV file, from 1; 0: none
  std::uint32_t column = 0;  // of a layout
  std::uint64_t record = 0;  // from 1; 0: none
  std::uint64_t byte = 0;    // in the file
  std::string reason;        // of a layout: the text without the place
  std::string kind;
  std::string field;

 private:
  ErrorCode code_;
  std::string text_;
};

}  // namespace campotipo::records
