#include "tarvelon/platform/files/shared/Source.h"

#include <memory>

#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::files {

std::size_t Source::read(char* buffer, std::size_t room, const std::function<void()>& interrupted) {
  if (mPeeked.empty()) return readNext(buffer, room, interrupted);
  const std::size_t count = std::min(room, mPeeked.size());
  std::memcpy(buffer, mPeeked.data(), count);
  mPeeked.erase(0, count);
  return count;
}

std::string_view Source::peek(std::size_t most, const std::function<void()>& interrupted) {
  const std::size_t done = mPeeked.size();
  if (done >= most) return std::string_view(mPeeked).substr(0, most);
  std::string more(most - done, '\0');
  std::size_t count = 0;
  while (count != more.size()) {
    const std::size_t read = readNext(more.data() + count, more.size() - count, interrupted);
    if (read == 0) break;
    count += read;
  }
  mPeeked.append(more, 0, count);
  return mPeeked;
}

std::string Source::readAll(const std::function<void()>& interrupted) {
  constexpr std::size_t kChunk = std::size_t{1} << 16;
  std::string all = std::move(mPeeked);
  mPeeked.clear();
  // One byte more than the file has: reading it shows that the file has ended.
  std::size_t room = std::max(size() + 1, all.size() + 1) - all.size();
  for (;;) {
    const std::size_t done = all.size();
    all.resize(done + room);
    const std::size_t count = readFully(*this, all.data() + done, room, interrupted);
    all.resize(done + count);
    if (count < room) break;
    room = std::max(kChunk, done);
  }
  if (all.capacity() - all.size() > all.size() / 8) all.shrink_to_fit();
  return all;
}

std::size_t TextSource::readNext(char* buffer, std::size_t room,
                                 const std::function<void()>& /*interrupted*/) {
  const std::size_t count = std::min(room, mText.size());
  if (count != 0) std::memcpy(buffer, mText.data(), count);
  mText.remove_prefix(count);
  return count;
}

std::size_t readFully(Source& source, char* buffer, std::size_t room,
                      const std::function<void()>& interrupted) {
  std::size_t done = 0;
  while (done != room) {
    const std::size_t count = source.read(buffer + done, room - done, interrupted);
    if (count == 0) break;
    done += count;
  }
  return done;
}

void sortByPlace(Problems& problems) {
  std::ranges::stable_sort(problems.kept, {},
                           [](const Problem& each) { return std::pair(each.line, each.column); });
}

void refuse(std::string_view name, Problems problems) {
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

void keepProblems(const K7Q::Model& model, Problems& problems) {
  sortByPlace(problems);
  if (problems.count == 0) return;
  metamodel::native::NativeModel::require(model).keepReport(std::make_shared<const Problems>(problems));
}

}  // namespace Tarvelon::files
