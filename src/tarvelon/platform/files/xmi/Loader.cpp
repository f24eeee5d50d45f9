#include <algorithm>
#include <cstring>
#include <memory>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/shared/AtomicFile.h"
#include "tarvelon/platform/files/xmi/Parser.h"
#include "tarvelon/platform/files/xmi/Reader.h"
#include "tarvelon/platform/model/changes/AuditHooks.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::files {

WrongFile::WrongFile(const std::string& text, Problems problems)
    : WrongValue(text), mProblems(std::move(problems)) {}
WrongFile::~WrongFile() = default;
FileError::~FileError() = default;

namespace {

constexpr std::size_t kFirstChunk = std::size_t{1} << 16;
constexpr std::size_t kLargestChunk = std::size_t{1} << 30;

/// A source of bytes: a file or a text.
class Source {
 public:
  virtual ~Source() = default;
  /// As InputFile::read().
  virtual std::size_t read(char* buffer, std::size_t room, const std::function<void()>& interrupted) = 0;
  virtual std::size_t size() const noexcept = 0;
};

class FileSource final : public Source {
 public:
  FileSource(const std::filesystem::path& path, const std::function<void()>& interrupted)
      : mFile(path, interrupted) {}
  std::size_t read(char* buffer, std::size_t room, const std::function<void()>& interrupted) override {
    return mFile.read(buffer, room, interrupted);
  }
  std::size_t size() const noexcept override { return mFile.size(); }

 private:
  InputFile mFile;
};

class TextSource final : public Source {
 public:
  explicit TextSource(std::string_view text) noexcept : mText(text), mSize(text.size()) {}
  std::size_t read(char* buffer, std::size_t room, const std::function<void()>& /*interrupted*/) override {
    const std::size_t count = std::min(room, mText.size());
    if (count != 0) std::memcpy(buffer, mText.data(), count);
    mText.remove_prefix(count);
    return count;
  }
  std::size_t size() const noexcept override { return mSize; }

 private:
  std::string_view mText;
  std::size_t mSize;
};

void sortByPlace(Problems& problems) {
  std::ranges::stable_sort(problems.kept, {},
                           [](const Problem& each) { return std::pair(each.line, each.column); });
}

[[noreturn]] void refuse(std::string_view name, Problems problems) {
  constexpr std::size_t kShown = 20;
  sortByPlace(problems);
  std::string text = "cannot load '" + std::string(name) + "': " + std::to_string(problems.count) +
                     (problems.count == 1 ? " problem" : " problems") + ", so nothing was loaded";
  const std::size_t shown = std::min(kShown, problems.kept.size());
  for (std::size_t place = 0; place < shown; ++place) {
    const Problem& each = problems.kept[place];
    text += "\n  line " + std::to_string(each.line) + ", column " + std::to_string(each.column) + ": " +
            each.text;
  }
  if (problems.count > shown) text += "\n  and " + std::to_string(problems.count - shown) + " more";
  throw WrongFile(text, std::move(problems));
}

/// Fills the buffer; reads less only at the end of the source. A pipe delivers a few bytes at a time.
template <class Interrupted>
std::size_t readAll(Source& source, char* buffer, std::size_t room, const Interrupted& interrupted) {
  std::size_t done = 0;
  while (done != room) {
    const std::size_t count = source.read(buffer + done, room - done, interrupted);
    if (count == 0) break;
    done += count;
  }
  return done;
}

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
    const std::size_t count = readAll(source, parser.buffer(chunk), chunk, report);
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

Loaded loadFrom(Source& source, const LoadOptions& options, std::string_view name) {
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
  sortByPlace(problems);
  if (problems.count != 0) {
    native::NativeModel::require(loaded.model).keepReport(std::make_shared<const Problems>(problems));
  }
  if (options.progress) options.progress(1);
  return loaded;
}

}  // namespace

const Problems& problems(const K7Q::Model& model) noexcept {
  static const Problems none;
  const auto* native = dynamic_cast<const native::NativeModel*>(model.getModelInterface());
  const void* report = native ? native->report() : nullptr;
  return report ? *static_cast<const Problems*>(report) : none;
}

Loaded load(const std::filesystem::path& path, const LoadOptions& options) {
  const auto interrupted = [&options] {
    if (options.progress) options.progress(0);
  };
  FileSource source(path, interrupted);
  return loadFrom(source, options, path.string());
}

Loaded loadText(std::string_view text, const LoadOptions& options, std::string_view name) {
  TextSource source(text);
  return loadFrom(source, options, name);
}

}  // namespace Tarvelon::files
