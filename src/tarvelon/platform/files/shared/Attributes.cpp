#include "tarvelon/platform/files/shared/Attributes.h"

#include <cerrno>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace Tarvelon::files {

namespace {

constexpr mode_t kModeBits = 07777;
constexpr const char* kAccessList = "system.posix_acl_access";

/// Repeats the query if the result has grown after its size was asked for.
template <class Ask>
bool readAll(std::string& text, Ask ask) {
  for (;;) {
    const ssize_t size = ask(nullptr, 0);
    if (size < 0) return false;
    text.resize(static_cast<std::size_t>(size));
    const ssize_t count = ask(text.data(), text.size());
    if (count >= 0) text.resize(static_cast<std::size_t>(count));
    if (count >= 0 || errno != ERANGE) return count >= 0;
  }
}

std::vector<std::string> attributesOf(int file) {
  std::string names;
  // A file system without extended attributes reports an error.
  if (!readAll(names, [file](char* room, std::size_t size) { return ::flistxattr(file, room, size); }))
    return {};
  std::vector<std::string> found;
  for (std::string_view rest = names; !rest.empty();) {
    found.emplace_back(rest.substr(0, rest.find('\0')));
    rest.remove_prefix(found.back().size() + 1);
  }
  return found;
}

bool copyAttribute(int from, int to, const std::string& name) {
  std::string value;
  const auto get = [&](char* room, std::size_t size) { return ::fgetxattr(from, name.c_str(), room, size); };
  // An attribute that was removed meanwhile is not missing.
  if (!readAll(value, get)) return errno == ENODATA;
  return ::fsetxattr(to, name.c_str(), value.data(), value.size(), 0) == 0;
}

/// Copies the owner and the group, or only the group. Reduces `mode` to the permissions that are then safe.
/// Returns false if the group could not be kept.
bool keepOwner(const struct stat& old, int to, mode_t& mode) noexcept {
  struct stat made {};
  if (::fstat(to, &made) != 0) return false;
  if (made.st_uid == old.st_uid && made.st_gid == old.st_gid) return true;
  if (::fchown(to, old.st_uid, old.st_gid) == 0) return true;
  mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
  constexpr uid_t kSame = static_cast<uid_t>(-1);
  if (made.st_gid == old.st_gid || ::fchown(to, kSame, old.st_gid) == 0) return true;
  const mode_t others = mode & S_IRWXO;
  mode = (mode & ~static_cast<mode_t>(S_IRWXG)) | (mode & S_IRWXG & others << 3);
  return false;
}

}  // namespace

const char* copyAttributes(int from, int to) {
  struct stat old {};
  if (::fstat(from, &old) != 0) return "the mode of the old file cannot be kept";
  mode_t mode = old.st_mode & kModeBits;
  const bool isGroupKept = keepOwner(old, to, mode);
  bool hasAccessList = false;
  for (const std::string& name : attributesOf(from)) {
    const bool isOfSystem = name.starts_with("security.") || name.starts_with("trusted.");
    if (name == kAccessList) {
      hasAccessList = true;
    } else if (!copyAttribute(from, to, name) && !isOfSystem) {
      return "the extended attributes of the old file cannot be kept";
    }
  }
  // The new file may have inherited an access control list from the folder.
  if (!hasAccessList) ::fremovexattr(to, kAccessList);
  if (::fchmod(to, mode) != 0) return "the mode of the old file cannot be kept";
  if (!hasAccessList) return nullptr;
  // The list refers to the old file's group and would now apply to another group.
  if (!isGroupKept) errno = EPERM;
  return isGroupKept && copyAttribute(from, to, kAccessList)
             ? nullptr
             : "the access control list of the old file cannot be kept";
}

}  // namespace Tarvelon::files
