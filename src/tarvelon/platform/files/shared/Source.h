#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/shared/AtomicFile.h"

namespace Tarvelon::files {

/// A source of bytes: a file or a text. Its first bytes can be looked at before they are read.
class Source {
 public:
  Source() = default;
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  virtual ~Source() = default;
  /// As InputFile::read().
  std::size_t read(char* buffer, std::size_t room, const std::function<void()>& interrupted);
  /// The first bytes, at most `most`; fewer only if the source has no more. REQUIRES: nothing was read.
  std::string_view peek(std::size_t most, const std::function<void()>& interrupted);
  /// Everything that was not read yet.
  std::string readAll(const std::function<void()>& interrupted);
  virtual std::size_t size() const noexcept = 0;

 protected:
  virtual std::size_t readNext(char* buffer, std::size_t room, const std::function<void()>& interrupted) = 0;

 private:
  std::string mPeeked;
};

class FileSource final : public Source {
 public:
  FileSource(const std::filesystem::path& path, const std::function<void()>& interrupted)
      : mFile(path, interrupted) {}
  std::size_t size() const noexcept override { return mFile.size(); }

 protected:
  std::size_t readNext(char* buffer, std::size_t room, const std::function<void()>& interrupted) override {
    return mFile.read(buffer, room, interrupted);
  }

 private:
  InputFile mFile;
};

class TextSource final : public Source {
 public:
  explicit TextSource(std::string_view text) noexcept : mText(text), mSize(text.size()) {}
  std::size_t size() const noexcept override { return mSize; }

 protected:
  std::size_t readNext(char* buffer, std::size_t room, const std::function<void()>& interrupted) override;

 private:
  std::string_view mText;
  std::size_t mSize;
};

/// Fills the buffer; reads less only at the end of the source. A pipe delivers a few bytes at a time.
std::size_t readFully(Source& source, char* buffer, std::size_t room,
                      const std::function<void()>& interrupted);

/// Orders problems by line and column.
void sortByPlace(Problems& problems);
/// Raises WrongFile with the first twenty problems in its text.
[[noreturn]] void refuse(std::string_view name, Problems problems);
/// Orders the problems of a file that was loaded leniently, and keeps them with the model.
void keepProblems(const K7Q::Model& model, Problems& problems);

}  // namespace Tarvelon::files
