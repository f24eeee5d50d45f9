// The functions that programs call: they choose the format of a file.

#include <algorithm>
#include <memory>
#include <set>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/arxml/Loader.h"
#include "tarvelon/platform/files/arxml/Saver.h"
#include "tarvelon/platform/files/shared/Source.h"
#include "tarvelon/platform/files/shared/Suffix.h"
#include "tarvelon/platform/files/xmi/Loader.h"
#include "tarvelon/platform/files/xmi/Writer.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::files {

namespace native = metamodel::native;

WrongFile::WrongFile(const std::string& text, Problems problems)
    : WrongValue(text), mProblems(std::move(problems)) {}
WrongFile::~WrongFile() = default;
FileError::~FileError() = default;

namespace {

/// Whether a file is ARXML. Comments may stand before its root element, so more and more is looked at.
bool hasArxml(Source& source, const std::function<void()>& interrupted) {
  for (std::size_t most = std::size_t{1} << 12;; most *= 8) {
    const std::string_view beginning = source.peek(most, interrupted);
    const std::optional<bool> found = isArxml(beginning);
    if (found || beginning.size() < most) return found.value_or(false);
  }
}

std::function<void()> interruption(const LoadOptions& options) {
  return [&options] {
    if (options.progress) options.progress(0);
  };
}

/// The ARXML files in a folder and below, in the order of their names.
std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> found;
  try {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      if (entry.is_regular_file() && hasSuffix(entry.path(), ".arxml")) found.push_back(entry.path());
    }
  } catch (const std::filesystem::filesystem_error& error) {
    throw FileError("cannot read the folder '" + error.path1().string() + "': " + error.code().message(),
                    error.code().value());
  }
  if (found.empty())
    throw K7Q::WrongValue("cannot load '" + folder.string() +
                          "': the folder has no file with the suffix .arxml");
  std::ranges::sort(found);
  return found;
}

Loaded loadFrom(Source& source, const std::filesystem::path& path, const LoadOptions& options,
                std::string_view name) {
  if (!hasArxml(source, interruption(options))) return loadXmi(source, options, name);
  const ArxmlInput input{path, &source};
  return loadArxml({&input, 1}, options, name);
}

Loaded loadOne(const std::filesystem::path& path, const LoadOptions& options) {
  FileSource source(path, interruption(options));
  return loadFrom(source, path, options, path.string());
}

}  // namespace

const Problems& problems(const K7Q::Model& model) noexcept {
  static const Problems none;
  const auto* native = dynamic_cast<const native::NativeModel*>(model.getModelInterface());
  const void* report = native ? native->report() : nullptr;
  return report ? *static_cast<const Problems*>(report) : none;
}

Loaded load(const std::filesystem::path& path, const LoadOptions& options) {
  if (std::filesystem::is_directory(path)) return load(filesBelow(path), options);
  return loadOne(path, options);
}

Loaded load(const std::vector<std::filesystem::path>& paths, const LoadOptions& options) {
  if (paths.empty()) throw K7Q::WrongValue("cannot load a model: expected at least one file, got none");
  if (paths.size() == 1 && !std::filesystem::is_directory(paths.front()))
    return loadOne(paths.front(), options);
  std::vector<std::unique_ptr<FileSource>> sources;
  std::vector<ArxmlInput> inputs;
  std::set<std::filesystem::path> seen;
  for (const std::filesystem::path& path : paths) {
    std::error_code error;
    if (!seen.insert(std::filesystem::weakly_canonical(path, error)).second)
      throw K7Q::WrongValue("cannot load '" + path.string() + "': the file was given twice; give it once");
    sources.push_back(std::make_unique<FileSource>(path, interruption(options)));
    if (!hasArxml(*sources.back(), interruption(options))) {
      throw K7Q::WrongValue("cannot load '" + path.string() +
                            "' together with other files: expected ARXML, got another format; load it alone");
    }
    inputs.push_back({path, sources.back().get()});
  }
  return loadArxml(inputs, options, std::to_string(paths.size()) + " files");
}

void save(const K7Q::Model& model, const std::filesystem::path& path, const SaveOptions& options) {
  if (hasSuffix(path, ".arxml")) return saveArxml(model, path, options);
  requireSuffix(path, {".arxml", ".xmi"});
  if (!options.release.empty())
    throw K7Q::WrongValue("cannot save '" + path.string() + "': a release is only for .arxml files");
  saveXmi(model, path, options);
}

std::vector<K7Q::ClassObject> roots(const K7Q::Model& model) {
  std::vector<K7Q::ClassObject> found;
  native::NativeModel::require(model).forEachInstance([&](native::Instance& object) {
    if (!object.owner()) found.emplace_back(&object, model.getDeviant());
  });
  return found;
}

Loaded loadText(std::string_view text, const LoadOptions& options, std::string_view name) {
  TextSource source(text);
  return loadFrom(source, {}, options, name);
}

}  // namespace Tarvelon::files
