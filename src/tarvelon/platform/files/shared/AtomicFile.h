#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "tarvelon/platform/files/shared/Descriptor.h"
#include "tarvelon/platform/files/shared/Output.h"

namespace Tarvelon::files {

/// A file that replaces another file atomically when it is complete.
///
/// Until commit(), the bytes are in a temporary file in the same folder. Its name is
/// `.NAME.XXXXXXXX.tarvelon-new`, with as much of NAME as fits. The writer keeps it locked. A temporary file
/// that nobody has locked was left by a killed save; the next save of the same file removes it.
///
/// The path is resolved once, in the constructor. Later changes of the current folder, of folder names or of
/// symbolic links have no effect.
class AtomicFile final : public Sink {
 public:
  /// Resolves the path and creates the temporary file. Raises FileError.
  explicit AtomicFile(const std::filesystem::path& path);
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;
  /// Removes the temporary file unless commit() was called.
  ~AtomicFile() override;

  void write(const char* bytes, std::size_t count) override;
  /// Replaces the file. Raises FileError; then the old file is unchanged. `isDurable` waits until the data is
  /// on the disk.
  void commit(bool isDurable);

 private:
  void openFolder(const std::filesystem::path& target);
  void openOld();
  void sweep() const;
  void open();
  bool tryOpen();
  [[noreturn]] void refuse(const char* what, int number) const;

  std::string mShown;
  /// The folder of the file, after resolving all symbolic links, and the name of the file in it.
  Descriptor mFolder;
  std::string mName;
  /// The existing file, if there is one.
  Descriptor mOld;
  Descriptor mFile;
  /// The name of the temporary file. Empty if there is none.
  std::string mTemporary;
  /// The beginning of the names of temporary files for this file: ".NAME."
  std::string mLead;
};

/// A file that is read sequentially. Raises FileError.
class InputFile {
 public:
  /// Opens the file. `interrupted` is called if a signal interrupts the waiting, as may happen with a pipe;
  /// it may raise to end the load.
  InputFile(const std::filesystem::path& path, const std::function<void()>& interrupted);
  /// Returns the number of bytes read, 0 at the end of the file.
  std::size_t read(char* buffer, std::size_t room, const std::function<void()>& interrupted);
  /// The size in bytes, 0 if it is not known.
  std::size_t size() const noexcept { return mSize; }

 private:
  [[noreturn]] void refuse(int number) const;

  std::string mShown;
  Descriptor mFile;
  std::size_t mSize = 0;
};

}  // namespace Tarvelon::files
