#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "tests/files/Support.h"

namespace fs = std::filesystem;

class AtomicFile : public testing::Test {
 protected:
  explicit AtomicFile(const fs::path& where = fs::temp_directory_path()) {
    std::string pattern = (where / "tarvelon-files-XXXXXX").string();
    mFolder = ::mkdtemp(pattern.data());
    mFile = mFolder / "brakes.xmi";
  }
  ~AtomicFile() override {
    fs::permissions(mFolder, fs::perms::owner_all);
    fs::remove_all(mFolder);
  }

  static K7Q::Model makeModel(const char16_t* name, int objects = 1) {
    auto model = K7Q::Model::create();
    for (int count = 0; count < objects; ++count) common::Package::create(model, name);
    return model;
  }
  static std::string read(const fs::path& path) {
    std::string text(fs::file_size(path), '\0');
    std::ifstream(path, std::ios::binary).read(text.data(), static_cast<std::streamsize>(text.size()));
    return text;
  }
  std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(mFolder))
      found.push_back(entry.path().filename().string());
    std::ranges::sort(found);
    return found;
  }
  std::string write(const std::string& name, const std::string& text = "old") const {
    std::ofstream(mFolder / name) << text;
    return text;
  }

  fs::path mFolder;
  fs::path mFile;
};

using Names = std::vector<std::string>;

/// The error text of a save that must fail.
inline std::string refusalOfSave(const fs::path& path, const K7Q::Model& model) {
  try {
    files::save(model, path);
  } catch (const files::FileError& refusal) {
    return refusal.what();
  }
  ADD_FAILURE() << "it was saved";
  return {};
}

/// Changes the user for the length of a scope, because root may write to every file.
class AsNobody {
 public:
  AsNobody() {
    if (mUser == 0) mHasFailed = ::seteuid(65534) != 0;
  }
  ~AsNobody() {
    if (mUser == 0) mHasFailed = ::seteuid(0) != 0;
  }
  bool hasFailed() const noexcept { return mHasFailed; }

 private:
  uid_t mUser = ::geteuid();
  bool mHasFailed = false;
};
