// The functions that programs call: they choose the format of a file.

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/arxml/Loader.h"
#include "tarvelon/platform/files/shared/Source.h"
#include "tarvelon/platform/files/xmi/Loader.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::files {

namespace native = metamodel::native;

WrongFile::WrongFile(const std::string& text, Problems problems)
    : WrongValue(text), mProblems(std::move(problems)) {}
WrongFile::~WrongFile() = default;
FileError::~FileError() = default;

namespace {

/// How many bytes at the beginning of a file are looked at to find its root element.
constexpr std::size_t kBeginning = std::size_t{1} << 16;

std::function<void()> interruption(const LoadOptions& options) {
  return [&options] {
    if (options.progress) options.progress(0);
  };
}

Loaded loadFrom(Source& source, const std::filesystem::path& path, const LoadOptions& options,
                std::string_view name) {
  if (!isArxml(source.peek(kBeginning, interruption(options)))) return loadXmi(source, options, name);
  const ArxmlInput input{path, &source};
  return loadArxml({&input, 1}, options, name);
}

}  // namespace

const Problems& problems(const K7Q::Model& model) noexcept {
  static const Problems none;
  const auto* native = dynamic_cast<const native::NativeModel*>(model.getModelInterface());
  const void* report = native ? native->report() : nullptr;
  return report ? *static_cast<const Problems*>(report) : none;
}

Loaded load(const std::filesystem::path& path, const LoadOptions& options) {
  FileSource source(path, interruption(options));
  return loadFrom(source, path, options, path.string());
}

Loaded loadText(std::string_view text, const LoadOptions& options, std::string_view name) {
  TextSource source(text);
  return loadFrom(source, {}, options, name);
}

}  // namespace Tarvelon::files
