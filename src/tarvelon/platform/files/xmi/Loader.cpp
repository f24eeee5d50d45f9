#include "tarvelon/platform/files/xmi/Loader.h"

#include <algorithm>

#include "tarvelon/platform/files/xmi/Parser.h"
#include "tarvelon/platform/files/xmi/Reader.h"
#include "tarvelon/platform/model/changes/AuditHooks.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::files {

namespace {

constexpr std::size_t kFirstChunk = std::size_t{1} << 16;
constexpr std::size_t kLargestChunk = std::size_t{1} << 30;

/// Feeds the parser. Returns false if the text ends too early or is not well-formed XML.
bool parseAll(Parser& parser, Source& source, const Progress& progress) {
  constexpr std::size_t kEach = std::size_t{1} << 20;
  std::size_t chunk = kFirstChunk;
  std::size_t done = 0;
  std::size_t reported = 0;
  const auto report = [&] {
    const auto size = static_cast<double>(source.size());
    if (progress) progress(size == 0 ? 0 : std::min(1.0, static_cast<double>(done) / size));
  };
  for (;;) {
    const std::size_t count = readFully(source, parser.buffer(chunk), chunk, report);
    const auto before = parser.offset();
    if (!parser.parse(count, count == 0)) return false;
    if (count == 0) return true;
    done += count;
    // If the parser has made no progress, a token is longer than the piece and is parsed again from its
    // beginning with the next piece. So the next piece must be larger.
    chunk = parser.offset() == before ? std::min(2 * chunk, kLargestChunk) : kFirstChunk;
    if (done - reported < kEach || done == source.size()) continue;
    reported = done;
    report();
  }
}

}  // namespace

Loaded loadXmi(Source& source, const LoadOptions& options, std::string_view name) {
  Loaded loaded{K7Q::Model::create(), {}};
  Problems& problems = loaded.problems;
  Reader reader(native::NativeModel::require(loaded.model), problems);
  Parser parser(reader);
  reader.attach(parser);
  try {
    if (!parseAll(parser, source, options.progress)) {
      reader.report(parser.place(), "the file is not well-formed XML: " + parser.fault());
      if (!reader.hasRoot()) throw Unloadable();
    }
    reader.finish();
    native::auditAfter(native::NativeModel::require(loaded.model));
  } catch (const Unloadable&) {
    refuse(name, std::move(problems));
  }
  if (problems.count != 0 && !options.isLenient) refuse(name, std::move(problems));
  keepProblems(loaded.model, problems);
  if (options.progress) options.progress(1);
  return loaded;
}

}  // namespace Tarvelon::files
