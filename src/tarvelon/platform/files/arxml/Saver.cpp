#include "tarvelon/platform/files/arxml/Saver.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/platform/files/arxml/Foreign.h"
#include "tarvelon/platform/files/arxml/Writer.h"
#include "tarvelon/platform/files/shared/AtomicFile.h"
#include "tarvelon/platform/files/shared/Source.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/metamodel/Registry.h"

namespace Tarvelon::files {

namespace native = metamodel::native;
using arxml::Refused;
using arxml::SourceFile;
using arxml::Sources;

namespace {

/// The root element's object. Raises K7Q::WrongValue unless there is exactly one object of AUTOSAR without an
/// owner, and no other object without one.
native::Instance& rootOf(const native::NativeModel& model) {
  const native::ClassData& cls =
      native::tableOf(metamodel::arplatform::common::AUTOSAR::Interface::kName).data();
  native::Instance* root = nullptr;
  std::size_t roots = 0;
  std::size_t others = 0;
  const native::Instance* other = nullptr;
  model.forEachInstance([&](native::Instance& object) {
    if (object.owner()) return;
    if (&object.cls() == &cls) {
      root = &object;
      ++roots;
    } else {
      other = &object;
      ++others;
    }
  });
  if (roots != 1) {
    throw K7Q::WrongValue(
        "cannot save as ARXML: expected one object of common.AUTOSAR without an owner, got " +
        std::to_string(roots) + "; put all packages into PackagedElement of one object");
  }
  if (others != 0) {
    throw K7Q::WrongValue("cannot save as ARXML: " + std::to_string(others) +
                          (others == 1 ? " object has" : " objects have") + " no owner, the first of " +
                          other->cls().methods->className().name +
                          "; put each of them into an object below common.AUTOSAR, or destroy it");
  }
  return *root;
}

unsigned releaseFor(const Sources* sources, std::size_t file, const SaveOptions& options) {
  if (options.release.empty()) return sources ? sources->files[file].release : arxml::usualRelease();
  const unsigned release = arxml::releaseOf(options.release);
  if (release != 0) return release;
  throw K7Q::WrongValue("cannot save as ARXML: there is no release '" + options.release + "'; there are " +
                        arxml::releaseNames());
}

/// Raises K7Q::WrongValue for what the release cannot have.
void requireAccepted(const std::vector<Refused>& refused, unsigned release, const SaveOptions& options) {
  constexpr std::size_t kShown = 20;
  if (refused.empty() || options.isLenient) return;
  std::string text = std::string("cannot save as ARXML ") + arxml::releaseRow(release).name + ": " +
                     std::to_string(refused.size()) + (refused.size() == 1 ? " problem" : " problems") +
                     ", so nothing was written";
  for (std::size_t each = 0; each < std::min(kShown, refused.size()); ++each)
    text += "\n  " + (refused[each].path.empty() ? std::string("/") : refused[each].path) + ": " +
            refused[each].text;
  if (refused.size() > kShown) text += "\n  and " + std::to_string(refused.size() - kShown) + " more";
  throw K7Q::WrongValue(text);
}

/// Raises K7Q::WrongValue if content without a class stands in a package that is divided between files: one
/// file has no place for it yet.
void requireOnePart(const Sources& sources, const native::NativeModel& model) {
  if (sources.files.size() == 1) return;
  arxml::ClassShapes shapes;
  model.forEachInstance([&sources, &shapes](const native::Instance& object) {
    arxml::SourcePlace source;
    if (!arxml::findSource(object, source)) return;
    for (const arxml::SourcePlace& each : arxml::othersOf(sources, source)) {
      const SourceFile& file = sources.files[each.file];
      if (arxml::foreignIn(file, each.element, object, shapes).empty()) continue;
      throw K7Q::WrongValue("cannot save the " + std::to_string(sources.files.size()) +
                            " files of the model as one: '" + file.document.pathOf(each.element) + "' in " +
                            file.path.string() +
                            " has content without a class; save them where they came from, without a path");
    }
  });
}

/// Writes a model as one file, in the encoding of the file from which it was loaded.
void write(native::NativeModel& model, const SaveOptions& options, Sink& sink) {
  const Sources* sources = arxml::sourcesOf(model);
  const unsigned release = releaseFor(sources, 0, options);
  native::Instance& root = rootOf(model);
  if (sources) requireOnePart(*sources, model);
  arxml::Writer writer(model, sources, release);
  const arxml::Encoding encoding = sources ? sources->files[0].encoding : arxml::Encoding();
  if (encoding.isPlain()) {
    writer.writeAll(root, sink);
  } else {
    TextSink text;
    writer.writeAll(root, text);
    const std::string bytes = arxml::encoded(text.take(), encoding);
    sink.write(bytes.data(), bytes.size());
  }
  requireAccepted(writer.refused(), release, options);
}

/// Calls the progress function, which must not change the model.
void reportProgress(const SaveOptions& options, const std::optional<native::ChangeWatch>& watch,
                    double done) {
  if (!options.progress) return;
  options.progress(done);
  if (!watch->hasChanged()) return;
  throw K7Q::Exception(
      "the model was changed or closed while it was saved; the progress function and other threads must not "
      "change "
      "it");
}

std::size_t hashOfBytes(std::string_view bytes) noexcept { return std::hash<std::string_view>{}(bytes); }

/// The bytes of a file. Nothing if it does not exist.
std::optional<std::string> bytesOf(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return std::nullopt;
  FileSource source(path, [] {});
  return source.readAll([] {});
}

/// If a model was saved to one of its own files, saving it back must know that.
void noteWritten(const native::NativeModel& model, const std::filesystem::path& path) {
  const Sources* sources = arxml::sourcesOf(model);
  if (!sources || !model.ownsSources()) return;
  for (const SourceFile& file : sources->files) {
    std::error_code error;
    if (!std::filesystem::equivalent(file.absolute, path, error) || error) continue;
    if (const std::optional<std::string> bytes = bytesOf(file.absolute)) file.written = hashOfBytes(*bytes);
  }
}

}  // namespace

std::string saveArxmlText(const K7Q::Model& model, const SaveOptions& options) {
  TextSink text;
  write(native::NativeModel::require(model), options, text);
  return text.take();
}

void saveArxml(const K7Q::Model& model, const std::filesystem::path& path, const SaveOptions& options) {
  native::NativeModel& native = native::NativeModel::require(model);
  const K7Q::Model kept(model);  // NOLINT(performance-unnecessary-copy-initialization)
  AtomicFile file(path);
  std::optional<native::ChangeWatch> watch;
  if (options.progress) watch.emplace(native);
  write(native, options, file);
  reportProgress(options, watch, 0.9);
  file.commit(options.isDurable);
  noteWritten(native, path);
  if (options.progress) options.progress(1);
}

namespace {

/// Raises K7Q::WrongValue if the file no longer has what was loaded from it or last written to it.
void requireUnchanged(const SourceFile& file, std::size_t expected) {
  const std::optional<std::string> present = bytesOf(file.absolute);
  if (!present || hashOfBytes(*present) == expected) return;
  throw K7Q::WrongValue(
      "cannot save '" + file.path.string() +
      "': the file was changed by another program since it was loaded, so nothing was written; "
      "load it again, or save the model under another name");
}

/// A file whose new content is complete, but not in its place yet.
struct Changed {
  std::unique_ptr<AtomicFile> output;
  const SourceFile* file;
  std::size_t hash;
};

}  // namespace

std::vector<std::filesystem::path> saveBack(const K7Q::Model& handle, const SaveOptions& options) {
  native::NativeModel& model = native::NativeModel::require(handle);
  const K7Q::Model kept(handle);  // NOLINT(performance-unnecessary-copy-initialization)
  const Sources* sources = arxml::sourcesOf(model);
  if (!sources || sources->files.front().path.empty() || !model.ownsSources()) {
    throw K7Q::WrongValue(
        "cannot save without a path: the model was not loaded from an ARXML file; name the file");
  }
  native::Instance& root = rootOf(model);
  std::optional<native::ChangeWatch> watch;
  if (options.progress) watch.emplace(model);
  std::map<unsigned, arxml::Writer> writers;  // by release
  std::vector<Changed> changed;
  for (std::uint32_t index = 0; index < sources->files.size(); ++index) {
    const SourceFile& file = sources->files[index];
    const unsigned release = releaseFor(sources, index, options);
    arxml::Writer& writer = writers.try_emplace(release, model, sources, release).first->second;
    TextSink text;
    writer.writeFile(index, root, text);
    requireAccepted(writer.refused(), release, options);
    const std::string bytes = arxml::encoded(text.take(), file.encoding);
    const std::size_t before =
        file.written.value_or(hashOfBytes(arxml::encoded(std::string(file.document.text()), file.encoding)));
    if (hashOfBytes(bytes) != before) {
      requireUnchanged(file, before);
      changed.push_back({std::make_unique<AtomicFile>(file.absolute), &file, hashOfBytes(bytes)});
      changed.back().output->write(bytes.data(), bytes.size());
    }
    reportProgress(options, watch,
                   static_cast<double>(index + 1) / static_cast<double>(sources->files.size()));
  }
  std::vector<std::filesystem::path> paths;
  for (const Changed& each : changed) {
    each.output->commit(options.isDurable);
    each.file->written = each.hash;
    paths.push_back(each.file->path);
  }
  return paths;
}

}  // namespace Tarvelon::files
