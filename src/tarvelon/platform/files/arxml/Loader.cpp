#include "tarvelon/platform/files/arxml/Loader.h"

#include <memory>

#include "tarvelon/platform/files/arxml/Reader.h"
#include "tarvelon/platform/model/changes/AuditHooks.h"

namespace Tarvelon::files {

namespace native = metamodel::native;

namespace {

using arxml::Decoded;
using arxml::SourceFile;
using arxml::Sources;

[[noreturn]] void refuseAt(std::string_view name, Problem problem) {
  Problems problems;
  problems.count = 1;
  problems.kept.push_back(std::move(problem));
  refuse(name, std::move(problems));
}

SourceFile readFile(const ArxmlInput& input, const Progress& progress, std::string_view name) {
  const auto interrupted = [&progress] {
    if (progress) progress(0);
  };
  const std::string shown = input.path.empty() ? std::string(name) : input.path.string();
  Decoded decoded = arxml::decoded(input.source->readAll(interrupted));
  if (!decoded.fault.empty()) refuseAt(shown, {1, 1, decoded.fault});
  SourceFile file;
  file.path = input.path;
  if (!input.path.empty()) file.absolute = std::filesystem::absolute(input.path);
  file.encoding = decoded.encoding;
  try {
    file.document = arxml::Document(std::move(decoded.text));
  } catch (const arxml::ParseFault& fault) {
    refuseAt(shown, {fault.place.line, fault.place.column, "the file is not well-formed XML: " + fault.text});
  }
  return file;
}

}  // namespace

std::optional<bool> isArxml(std::string_view beginning) {
  const Decoded decoded = arxml::decoded(std::string(beginning.substr(0, beginning.size() / 2 * 2)));
  std::string_view text = decoded.text;
  for (;;) {
    const std::size_t angle = text.find('<');
    if (angle == std::string_view::npos) return std::nullopt;
    text.remove_prefix(angle);
    const bool isComment = text.starts_with("<!--");
    if (!isComment && !text.starts_with("<?")) break;
    const std::size_t end = text.find(isComment ? "-->" : "?>");
    if (end == std::string_view::npos) return std::nullopt;
    text.remove_prefix(end);
  }
  const std::size_t end = text.find('>');
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view tag = text.substr(0, end);
  const std::string_view name = tag.substr(1, tag.find_first_of(" \t\r\n/") - 1);
  if (name.substr(name.rfind(':') + 1) != "AUTOSAR") return false;
  // An XMI file may have an object of the class AUTOSAR as its root element.
  return tag.find("urn:tarvelon:") == std::string_view::npos;
}

Loaded loadArxml(std::span<const ArxmlInput> inputs, const LoadOptions& options, std::string_view name) {
  auto sources = std::make_shared<Sources>();
  for (std::size_t index = 0; index < inputs.size(); ++index) {
    sources->files.push_back(readFile(inputs[index], options.progress, name));
    if (options.progress)
      options.progress(0.5 * static_cast<double>(index + 1) / static_cast<double>(inputs.size()));
  }
  Loaded loaded{K7Q::Model::create(), {}};
  native::NativeModel& model = native::NativeModel::require(loaded.model);
  arxml::Reader reader(model, *sources, loaded.problems, options.progress);
  try {
    for (SourceFile& file : sources->files) reader.readRoot(file, options.isLenient);
    for (std::uint32_t index = 0; index < sources->files.size(); ++index) reader.read(index);
    reader.resolve();
  } catch (const arxml::Unreadable&) {
    refuse(name, std::move(loaded.problems));
  }
  if (loaded.problems.count != 0 && !options.isLenient) refuse(name, std::move(loaded.problems));
  model.forEachInstance([](native::Instance& object) { object.forgetChange(); });
  sources->noteOthers();
  model.keepSources(std::move(sources));
  native::auditAfter(model);
  keepProblems(loaded.model, loaded.problems);
  if (options.progress) options.progress(1);
  return loaded;
}

}  // namespace Tarvelon::files
