#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "tarvelon/platform/files/shared/Descriptor.h"
#include "tarvelon/platform/files/shared/Output.h"

namespace Tarvelon::files {

/// A file that takes the place of another, or none, when it is whole.
///
/// Until commit() its bytes lie in a temporary file of the same folder, called `.NAME.XXXXXXXX.tarvelon-new`
/// with as much of NAME as fits, which its writer keeps locked. One that nobody has locked was left by a
/// killed save: the next save of the same file removes it.
///
/// Where the file lies is looked up once, at the beginning: another current folder, a folder of another name
/// or another symbolic link change nothing later.
class AtomicFile final : public Sink {
 public:
  /// Raises FileError.
  explicit AtomicFile(const std::filesystem::path& path);
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;
  /// Takes the temporary file away unless it was committed.
  ~AtomicFile() override;

  void write(const char* bytes, std::size_t count) override;
  void commit(bool isDurable);

 private:
  void openFolder(const std::filesystem::path& target);
  void openOld();
  void sweep() const;
  void open();
  bool tryOpen();
  [[noreturn]] void refuse(const char* what, int number) const;

  std::string mShown;
  /// The folder of the file itself, behind all symbolic links, and the file's name there.
  Descriptor mFolder;
  std::string mName;
  /// The file that is there, if one is.
  Descriptor mOld;
  Descriptor mFile;
  /// Empty for none.
  std::string mTemporary;
  /// How temporary files of this one begin: ".NAME."
  std::string mLead;
};

/// A file that is read from its beginning to its end. Raises FileError.
class InputFile {
 public:
  /// Calls `interrupted`, which may raise, when a signal has come while it waited, as it may with a pipe.
  InputFile(const std::filesystem::path& path, const std::function<void()>& interrupted);
  /// How many bytes were read, 0 at the end.
  std::size_t read(char* buffer, std::size_t room, const std::function<void()>& interrupted);
  /// In bytes, 0 where the system does not say.
  std::size_t size() const noexcept { return mSize; }

 private:
  [[noreturn]] void refuse(int number) const;

  std::string mShown;
  Descriptor mFile;
  std::size_t mSize = 0;
};

}  // namespace Tarvelon::files
