#pragma once

#include <cstring>
#include <string>
#include <utility>

#include "errors/error.hpp"
#include "files/source.hpp"

// Bytes that are in memory, or that a host hands over.
namespace campotipo::records {

class MemorySource : public Source {
 public:
  MemorySource(const void *bytes, std::size_t count, std::string name)
      : all_(static_cast<const unsigned char *>(bytes)),
        at_(static_cast<const char *>(bytes)),
        left_(count),
        size_(count),
        name_(std::move(name)) {}

  std::size_t read(void *dest, std::size_t room) override {
    const std::size_t count = room < left_ ? room : left_;
    if (count != 0) std::memcpy(dest, at_, count);
    at_ += count;
    left_ -= count;
    return count;
  }

  bool skip(std::uint64_t bytes) override {
    if (bytes > left_) return false;
    at_ += bytes;
    left_ -= static_cast<std::size_t>(bytes);
    return true;
  }

  std::uint64_t size() const override { return size_; }
  const unsigned char *memory() const override { return all_; }
  const std::string &name() const override { return name_; }

 private:
  const unsigned char *all_;
  const char *at_;
  std::size_t left_;
  std::size_t size_;
  std::string name_;
};

class CallbackSource : public Source {
 public:
  struct Calls {
    std::int64_t (*read)(void *context, void *dest, std::size_t room);
    int (*skip)(void *context, std::uint64_t bytes);
    void *context;
    std::uint64_t size;
  };

  CallbackSource(const Calls &calls, std::string name) : calls_(calls), name_(std::move(name)) {}

  std::size_t read(void *dest, std::size_t room) override {
    std::size_t done = 0;
    while (done < room && !ended_) {
      const std::int64_t got =
          calls_.read(calls_.context, static_cast<char *>(dest) + done, room - done);
      if (got < 0 || static_cast<std::uint64_t>(got) > room - done) {
        throw Error(ErrorCode::kInput, name_ + ": cannot be read");
      }
      ended_ = got == 0;
      done += static_cast<std::size_t>(got);
    }
    return done;
  }

  bool skip(std::uint64_t bytes) override {
    return calls_.skip != nullptr && calls_.skip(calls_.context, bytes) == 0;
  }

  std::uint64_t size() const override { return calls_.size; }
  const std::string &name() const override { return name_; }

 private:
  Calls calls_;
  std::string name_;
  bool ended_ = false;
};

}  // namespace campotipo::records
