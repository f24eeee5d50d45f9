// Saving over a file keeps the file's attributes.

#include <cstdint>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "tests/files/AtomicFileFixture.h"

namespace {

using Attributes = AtomicFile;

struct stat statOf(const fs::path& path) {
  struct stat found {};
  ::stat(path.c_str(), &found);
  return found;
}

TEST_F(Attributes, KeepsItsOwnerAndGroup) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root gives files away";
  write("brakes.xmi");
  ASSERT_EQ(::chown(mFile.c_str(), 4711, 4712), 0);
  ::chmod(mFile.c_str(), 02640);
  files::save(makeModel(u"Brakes"), mFile);
  EXPECT_EQ(statOf(mFile).st_uid, 4711U);
  EXPECT_EQ(statOf(mFile).st_gid, 4712U);
  EXPECT_EQ(statOf(mFile).st_mode & 07777, 02640U);
}

TEST_F(Attributes, OfAnotherPersonsGroupGivesNoMoreRightsThanEverybodyHas) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root makes a file of another person";
  write("brakes.xmi");
  ASSERT_EQ(::chown(mFile.c_str(), 4711, 4712), 0);
  ::chmod(mFile.c_str(), 02666);
  ::chmod(mFolder.c_str(), 0777);
  {
    const AsNobody nobody;
    ASSERT_FALSE(nobody.hasFailed());
    files::save(makeModel(u"Brakes"), mFile);
  }
  EXPECT_EQ(statOf(mFile).st_uid, 65534U);
  EXPECT_NE(statOf(mFile).st_gid, 4712U);
  EXPECT_EQ(statOf(mFile).st_mode & 07777, 0666U);
}

/// An access control list in the system's format, with rights for one more user.
std::string accessListFor(std::uint32_t user, std::uint16_t rights = 4) {
  struct Entry {
    std::uint16_t tag;
    std::uint16_t rights;
    std::uint32_t id;
  };
  const std::uint32_t none = ~0U;
  const Entry entries[] = {{1, 6, none}, {2, rights, user}, {4, 0, none}, {16, 4, none}, {32, 0, none}};
  const std::uint32_t version = 2;
  std::string list(reinterpret_cast<const char*>(&version), sizeof(version));
  return list.append(reinterpret_cast<const char*>(entries), sizeof(entries));
}

std::string attributeOf(const fs::path& path, const char* name) {
  std::string value(256, '\0');
  const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
  value.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
  return size < 0 ? "none" : value;
}

bool setAttribute(const fs::path& path, const char* name, const std::string& value) {
  return ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

constexpr const char* kAccessList = "system.posix_acl_access";

TEST_F(Attributes, KeepsItsAttributesAndItsAccessControlList) {
  write("brakes.xmi");
  if (!setAttribute(mFile, "user.reviewed", "yes") || !setAttribute(mFile, kAccessList, accessListFor(4711)))
    GTEST_SKIP() << "the file system knows no extended attributes";
  const auto mode = statOf(mFile).st_mode;
  files::save(makeModel(u"Brakes"), mFile);
  EXPECT_EQ(attributeOf(mFile, "user.reviewed"), "yes");
  EXPECT_EQ(attributeOf(mFile, kAccessList), accessListFor(4711));
  EXPECT_EQ(statOf(mFile).st_mode, mode);
}

TEST_F(Attributes, GetsNoRightsFromItsFolderThatItHadNot) {
  write("brakes.xmi");
  ::chmod(mFile.c_str(), 0640);
  if (!setAttribute(mFolder, "system.posix_acl_default", accessListFor(4711)))
    GTEST_SKIP() << "the file system knows no access control lists";
  files::save(makeModel(u"Brakes"), mFile);
  EXPECT_EQ(attributeOf(mFile, kAccessList), "none");
  EXPECT_EQ(statOf(mFile).st_mode & 07777, 0640U);
  files::save(makeModel(u"Brakes"), mFolder / "new.xmi");
  EXPECT_NE(attributeOf(mFolder / "new.xmi", kAccessList), "none") << "that of a new file is the folder's";
}

TEST_F(Attributes, StaysAsItIsWhenItsAccessControlListCannotBeKept) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root makes a file of another person";
  const std::string old = write("brakes.xmi");
  ASSERT_EQ(::chown(mFile.c_str(), 4711, 4712), 0);
  if (!setAttribute(mFile, kAccessList, accessListFor(65534, 6)))
    GTEST_SKIP() << "the file system knows no access control lists";
  ::chmod(mFile.c_str(), 0666);
  ::chmod(mFolder.c_str(), 0777);
  {
    const AsNobody nobody;
    ASSERT_FALSE(nobody.hasFailed());
    EXPECT_EQ(refusalOfSave(mFile, makeModel(u"Brakes")),
              "cannot save '" + mFile.string() +
                  "': the access control list of the old file cannot be kept (Operation not permitted); an "
                  "existing file is unchanged");
  }
  EXPECT_EQ(read(mFile), old);
  EXPECT_EQ(names(), Names{"brakes.xmi"});
}

}  // namespace
