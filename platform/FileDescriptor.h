#pragma once

#include <unistd.h>

#include <utility>

/// Owns a file descriptor; -1 is none.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~FileDescriptor() {
    if (descriptor_ != -1) close(descriptor_);
  }

  explicit operator bool() const { return descriptor_ != -1; }
  int Get() const { return descriptor_; }

 private:
  int descriptor_ = -1;
};
