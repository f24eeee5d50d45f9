#include "tarvelon/platform/files/shared/AtomicFile.h"

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
#include "tarvelon/platform/files/shared/Attributes.h"

namespace Tarvelon::files {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSuffix = ".tarvelon-new";
constexpr std::size_t kRandom = 8;
constexpr const char* kNoTemporary = "no temporary file can be created in its folder";
constexpr const char* kNotReplaced = "the file cannot be replaced";

std::string meaningOf(int number) { return std::generic_category().message(number); }

std::string randomName() {
  std::array<unsigned char, kRandom> bytes{};
  if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) bytes.fill('x');
  std::string name;
  for (const unsigned char byte : bytes) name += static_cast<char>("0123456789abcdef"[byte & 15]);
  return name;
}

/// ".NAME.", shortened so that the name of the temporary file does not exceed the system's limit.
std::string leadOf(const std::string& name) {
  return "." + name.substr(0, NAME_MAX - 2 - kRandom - kSuffix.size()) + ".";
}

/// Whether a name in the folder is that of a temporary file.
bool isTemporary(std::string_view found, std::string_view lead) noexcept {
  return found.size() == lead.size() + kRandom + kSuffix.size() && found.starts_with(lead) &&
         found.ends_with(kSuffix) &&
         found.substr(lead.size(), kRandom).find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool isSame(const Descriptor& file, const Descriptor& folder, const char* name) noexcept {
  struct stat opened {};
  struct stat named {};
  return ::fstat(file.number(), &opened) == 0 &&
         ::fstatat(folder.number(), name, &named, AT_SYMLINK_NOFOLLOW) == 0 &&
         opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

/// Resolves all symbolic links; the file need not exist. Empty if there are too many links.
fs::path followed(fs::path path) {
  constexpr int kTooMany = 40;
  std::error_code failed;
  for (int links = 0; links < kTooMany; ++links) {
    const fs::path next = fs::read_symlink(path, failed);
    if (failed) return path;
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  return {};
}

}  // namespace

AtomicFile::AtomicFile(const fs::path& path) : mShown(path.string()) {
  const fs::path target = followed(path);
  if (target.empty() && !path.empty()) refuse("the path leads through too many symbolic links", ELOOP);
  if (!target.has_filename()) refuse("the path has no file name", EISDIR);
  mName = target.filename().string();
  mLead = leadOf(mName);
  openFolder(target);
  openOld();
  sweep();
  open();
}

AtomicFile::~AtomicFile() {
  // While the lock is still held, so that the sweep of another save cannot find the file.
  if (!mTemporary.empty()) ::unlinkat(mFolder.number(), mTemporary.c_str(), 0);
}

void AtomicFile::openFolder(const fs::path& target) {
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  // O_PATH, since a writable folder may not be readable.
  mFolder = Descriptor(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (mFolder.isOpen()) return;
  refuse(errno == ENOENT ? kNoTemporary : kNotReplaced, errno);
}

void AtomicFile::openOld() {
  struct stat found {};
  if (::fstatat(mFolder.number(), mName.c_str(), &found, 0) != 0) {
    if (errno != ENOENT) refuse(kNotReplaced, errno);
    return;
  }
  if (S_ISDIR(found.st_mode)) refuse("the path is a folder", EISDIR);
  if (!S_ISREG(found.st_mode)) refuse("the path is not a regular file", EINVAL);
  if (::faccessat(mFolder.number(), mName.c_str(), W_OK, AT_EACCESS) != 0)
    refuse("the file is not writable", errno);
  // A write-only file is opened too, since its mode and owner are needed.
  for (const int way : {O_RDONLY, O_WRONLY}) {
    if (mOld.isOpen()) return;
    mOld = Descriptor(::openat(mFolder.number(), mName.c_str(), way | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  }
  if (!mOld.isOpen()) refuse(kNotReplaced, errno);
}

// Files that cannot be removed are left for the next save.
void AtomicFile::sweep() const {
  const int listed = ::openat(mFolder.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(listed < 0 ? nullptr : ::fdopendir(listed), &::closedir);
  if (!folder) {
    if (listed >= 0) ::close(listed);
    return;
  }
  while (const dirent* entry = ::readdir(folder.get())) {
    if (!isTemporary(entry->d_name, mLead)) continue;
    const Descriptor left(
        ::openat(mFolder.number(), entry->d_name, O_RDWR | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    // A save that is still writing holds the lock.
    if (!left.isOpen() || ::flock(left.number(), LOCK_EX | LOCK_NB) != 0) continue;
    if (isSame(left, mFolder, entry->d_name)) ::unlinkat(mFolder.number(), entry->d_name, 0);
  }
}

void AtomicFile::open() {
  constexpr int kTries = 100;
  for (int tries = 0; tries < kTries; ++tries) {
    if (tryOpen()) return;
  }
  refuse(kNoTemporary, EEXIST);
}

/// Returns false if the name exists, or if another save has removed the file before it was locked.
bool AtomicFile::tryOpen() {
  mTemporary = mLead + randomName() + std::string(kSuffix);
  // Until the file is complete, only its owner may read it if it replaces a file, since that file may be
  // private.
  const mode_t mode = mOld.isOpen() ? 0600 : 0666;
  constexpr int kWay = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
  Descriptor file(::openat(mFolder.number(), mTemporary.c_str(), kWay, mode));
  if (!file.isOpen()) {
    const int number = errno;
    mTemporary.clear();
    if (number == EEXIST) return false;
    refuse(kNoTemporary, number);
  }
  // On a file system without locks, no sweep can lock and remove the file either.
  const bool isLocked = ::flock(file.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
  if (!isLocked || !isSame(file, mFolder, mTemporary.c_str())) return false;
  mFile = std::move(file);
  return true;
}

void AtomicFile::write(const char* bytes, std::size_t count) {
  while (count != 0) {
    const ssize_t written = ::write(mFile.number(), bytes, count);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) refuse("writing failed", errno);
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
}

void AtomicFile::commit(bool isDurable) {
  if (mOld.isOpen()) {
    if (const char* lost = copyAttributes(mOld.number(), mFile.number())) refuse(lost, errno);
  }
  if (isDurable && ::fsync(mFile.number()) != 0) refuse("writing failed", errno);
  if (::renameat(mFolder.number(), mTemporary.c_str(), mFolder.number(), mName.c_str()) != 0)
    refuse("the new file cannot replace the old one", errno);
  mTemporary.clear();
  if (!isDurable) return;
  const Descriptor folder(::openat(mFolder.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // The new file is in place. Some network file systems cannot synchronise a folder; this is not an error.
  if (folder.isOpen()) ::fsync(folder.number());
}

void AtomicFile::refuse(const char* what, int number) const {
  throw FileError(
      "cannot save '" + mShown + "': " + what + " (" + meaningOf(number) + "); an existing file is unchanged",
      number);
}

InputFile::InputFile(const fs::path& path, const std::function<void()>& interrupted) : mShown(path.string()) {
  while (!mFile.isOpen()) {
    mFile = Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (mFile.isOpen()) break;
    if (errno != EINTR) refuse(errno);
    interrupted();
  }
  struct stat found {};
  if (::fstat(mFile.number(), &found) == 0 && S_ISREG(found.st_mode))
    mSize = static_cast<std::size_t>(found.st_size);
}

std::size_t InputFile::read(char* buffer, std::size_t room, const std::function<void()>& interrupted) {
  for (;;) {
    const ssize_t count = ::read(mFile.number(), buffer, room);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) refuse(errno);
    interrupted();
  }
}

void InputFile::refuse(int number) const {
  throw FileError("cannot load '" + mShown + "': " + meaningOf(number), number);
}

}  // namespace Tarvelon::files
