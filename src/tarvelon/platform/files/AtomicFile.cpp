#include "tarvelon/platform/files/AtomicFile.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "tarvelon/platform/files/Files.h"

namespace Tarvelon::files {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSuffix = ".tarvelon-new";
constexpr std::size_t kRandom = 8;
constexpr mode_t kModeBits = 07777;

class Descriptor {
 public:
  explicit Descriptor(int number) noexcept : mNumber(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (mNumber >= 0) ::close(mNumber);
  }
  int number() const noexcept { return mNumber; }

 private:
  int mNumber;
};

std::string meaningOf(int number) { return std::generic_category().message(number); }

std::string randomName() {
  std::array<unsigned char, kRandom> bytes{};
  if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) bytes.fill('x');
  std::string name;
  for (const unsigned char byte : bytes) name += static_cast<char>("0123456789abcdef"[byte & 15]);
  return name;
}

/// ".NAME.", cut so that the name of a temporary file is no longer than any may be.
std::string leadOf(const std::string& name) {
  return "." + name.substr(0, NAME_MAX - 2 - kRandom - kSuffix.size()) + ".";
}

/// Whether a name in the folder is that of a temporary file.
bool isTemporary(std::string_view found, std::string_view lead) noexcept {
  return found.size() == lead.size() + kRandom + kSuffix.size() && found.starts_with(lead) &&
         found.ends_with(kSuffix) &&
         found.substr(lead.size(), kRandom).find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool isSame(int descriptor, const char* path) noexcept {
  struct stat opened {};
  struct stat named {};
  return ::fstat(descriptor, &opened) == 0 && ::lstat(path, &named) == 0 && opened.st_ino == named.st_ino &&
         opened.st_dev == named.st_dev;
}

/// The path behind all symbolic links, whether there is a file or not.
fs::path followed(fs::path path) {
  constexpr int kTooMany = 40;
  std::error_code failed;
  for (int links = 0; links < kTooMany; ++links) {
    const fs::path next = fs::read_symlink(path, failed);
    if (failed) break;
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  return path;
}

}  // namespace

AtomicFile::AtomicFile(const fs::path& path)
    : mShown(path.string()), mTarget(followed(path)), mFolder(mTarget.parent_path()) {
  if (mFolder.empty()) mFolder = ".";
  mLead = leadOf(mTarget.filename().string());
  examine();
  sweep();
  open();
}

AtomicFile::~AtomicFile() {
  if (mFile < 0) return;
  // Before the lock is gone: a sweep must not meet it.
  if (!mTemporary.empty()) ::unlink(mTemporary.c_str());
  ::close(mFile);
}

void AtomicFile::examine() {
  struct stat found {};
  if (!mTarget.has_filename()) refuse("the path names no file", EISDIR);
  if (::stat(mTarget.c_str(), &found) != 0) {
    if (errno != ENOENT) refuse("the file cannot be replaced", errno);
    return;
  }
  if (S_ISDIR(found.st_mode)) refuse("it is a folder", EISDIR);
  if (!S_ISREG(found.st_mode)) refuse("it is no regular file", EINVAL);
  if (::faccessat(AT_FDCWD, mTarget.c_str(), W_OK, AT_EACCESS) != 0)
    refuse("the file may not be written", errno);
  mMode = static_cast<int>(found.st_mode & kModeBits);
}

// What cannot be swept is left for the next save.
void AtomicFile::sweep() const {
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(mFolder.c_str()), &::closedir);
  if (!folder) return;
  while (const dirent* entry = ::readdir(folder.get())) {
    if (!isTemporary(entry->d_name, mLead)) continue;
    const std::string path = (mFolder / entry->d_name).string();
    const Descriptor left(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    // Whoever is writing holds the lock.
    if (left.number() < 0 || ::flock(left.number(), LOCK_EX | LOCK_NB) != 0) continue;
    if (isSame(left.number(), path.c_str())) ::unlink(path.c_str());
  }
}

void AtomicFile::open() {
  constexpr int kTries = 100;
  for (int tries = 0; tries < kTries; ++tries) {
    if (tryOpen()) return;
  }
  refuse("no temporary file can be made beside it", EEXIST);
}

/// False if the name was taken, or if another save swept the file away before it was locked.
bool AtomicFile::tryOpen() {
  mTemporary = mFolder / (mLead + randomName() + std::string(kSuffix));
  // Until it is whole, nobody sees more of it than of the file that it replaces.
  const mode_t mode = mMode < 0 ? 0666 : 0600;
  const int file = ::open(mTemporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
  if (file < 0) {
    const int number = errno;
    mTemporary.clear();
    if (number == EEXIST) return false;
    refuse("no temporary file can be made beside it", number);
  }
  // Where there are no locks, nobody can sweep either.
  const bool isLocked = ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
  if (isLocked && isSame(file, mTemporary.c_str())) {
    mFile = file;
    return true;
  }
  ::close(file);
  return false;
}

void AtomicFile::write(const char* bytes, std::size_t count) {
  while (count != 0) {
    const ssize_t written = ::write(mFile, bytes, count);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) refuse("writing failed", errno);
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
}

void AtomicFile::commit(bool isDurable) {
  if (mMode >= 0 && ::fchmod(mFile, static_cast<mode_t>(mMode)) != 0)
    refuse("its mode cannot be kept", errno);
  if (isDurable && ::fsync(mFile) != 0) refuse("writing failed", errno);
  if (::rename(mTemporary.c_str(), mTarget.c_str()) != 0) refuse("the new file cannot take its place", errno);
  mTemporary.clear();
  if (!isDurable) return;
  const Descriptor folder(::open(mFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // The new file is there; a folder that cannot be synchronised, as on some network disks, changes nothing.
  if (folder.number() >= 0) ::fsync(folder.number());
}

void AtomicFile::refuse(const char* what, int number) const {
  throw FileError(
      "cannot save '" + mShown + "': " + what + " (" + meaningOf(number) + "); what was there is as it was",
      number);
}

InputFile::InputFile(const fs::path& path)
    : mShown(path.string()), mFile(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
  if (mFile < 0) refuse(errno);
  struct stat found {};
  if (::fstat(mFile, &found) == 0 && S_ISREG(found.st_mode)) mSize = static_cast<std::size_t>(found.st_size);
}

InputFile::~InputFile() { ::close(mFile); }

std::size_t InputFile::read(char* buffer, std::size_t room, const std::function<void()>& interrupted) {
  for (;;) {
    const ssize_t count = ::read(mFile, buffer, room);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) refuse(errno);
    interrupted();
  }
}

void InputFile::refuse(int number) const {
  throw FileError("cannot load '" + mShown + "': " + meaningOf(number), number);
}

}  // namespace Tarvelon::files
