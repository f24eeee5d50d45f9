#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/arxml/ClassShape.h"
#include "tarvelon/platform/files/arxml/PathIndex.h"
#include "tarvelon/platform/files/arxml/Source.h"

namespace Tarvelon::files::arxml {

/// Thrown if nothing of the files can be loaded. The reason was reported as a problem.
struct Unreadable {};

/// Builds a model from the documents of one or more files.
///
/// An element for which no row has a class or a property stays in the document only. It is foreign content:
/// saved as it stands, relative to its neighbours.
class Reader {
 public:
  Reader(native::NativeModel& model, Sources& sources, Problems& problems, const Progress& progress)
      : mModel(model), mSources(sources), mProblems(problems), mProgress(progress) {}

  /// Decides the release of a file. Reports what is wrong with the root element; raises Unreadable if nothing
  /// can be loaded.
  void readRoot(SourceFile& file, bool isLenient);
  /// Creates the objects of file number `index`.
  void read(std::uint32_t index);
  /// Sets the references of all files.
  void resolve();

 private:
  /// An object that reads the children of an open element, and the spot of its shape that the element is.
  struct Part {
    native::Instance* object = nullptr;
    const ClassShape* shape = nullptr;
    std::uint16_t spot = 0;
    bool isSecondary = false;  ///< whether the object has its main element elsewhere
  };
  static constexpr std::size_t kMaxParts = 3;

  /// An open element.
  struct Frame {
    std::uint32_t element = 0;
    std::uint32_t end = 0;
    std::uint64_t path = PathIndex::kRoot;
    const Content* content = nullptr;
    std::uint16_t lastPlace = 0;
    std::uint8_t count = 0;
    Part parts[kMaxParts];
  };

  struct Pending {
    native::Instance* object;
    const Place* place;
    SourcePlace source;
  };

  const Document& document() const noexcept { return mFile->document; }
  void report(std::uint32_t offset, std::string text);
  void reportValue(std::uint32_t offset, const std::string& text);
  void reportAt(std::uint32_t element, const std::string& text);

  bool readElement(std::uint32_t element);
  void checkContent(Frame& frame, std::uint32_t element, std::uint32_t name, const ContentItem* item);
  bool readLeaf(const Part& part, const Place& place, std::uint32_t element, const Content* content);
  bool openWrapper(const Part& part, std::uint16_t spot, std::uint32_t element, const Content* content);
  bool openInside(const Part& part, const Place& place, std::uint32_t element, std::uint32_t name,
                  const Content* content);
  bool openRole(const Part& part, const Place& place, std::uint32_t element, const Content* content);
  bool fits(const Candidate& candidate, const Place& place, std::uint32_t element) const;
  bool openObject(const Part& owner, const Place& place, const native::ClassData& cls,
                  const metamodel::ElementRow* row, std::uint32_t element, const Content* content);
  bool joinPackage(const native::ClassData& cls, std::uint32_t element, const Content* content);
  bool joinInfo(const Part& owner, const Place& place, const native::ClassData& cls,
                const metamodel::ElementRow* row, std::uint32_t element, const Content* content);
  native::Instance* create(const Part& owner, const Place& place, const native::ClassData& cls,
                           std::uint32_t element);
  void pushObject(native::Instance& object, const metamodel::ElementRow* row, std::uint32_t element,
                  const Content* content);
  void makeRequired(native::Instance& object, const ClassShape& shape);
  void enterName(Frame& frame, const ClassShape& shape);
  void choose(native::Instance& object, const metamodel::ChoiceRow& choice);
  void readAttributes(const Part& part, std::uint32_t element);
  void readBody(const Part& part, std::uint32_t element);

  void readScalar(const Part& part, const Place& place, std::uint32_t offset, std::string_view text);
  void store(const Part& part, const Place& place, std::uint32_t offset, std::string_view text);
  void storeText(const Part& part, const Place& place, std::uint32_t offset, std::string_view text);

  native::Instance* targetOf(const Pending& reference);
  void link(const Pending& reference);
  void leave(const Pending& reference);

  native::NativeModel& mModel;
  Sources& mSources;
  Problems& mProblems;
  const Progress& mProgress;
  SourceFile* mFile = nullptr;
  std::uint32_t mFileIndex = 0;
  native::Instance* mRoot = nullptr;
  std::optional<Lines> mLines;  ///< of the file, from its first problem on
  ClassShapes mShapes;
  PathIndex mPaths;
  std::size_t mNamed = 0;               ///< how many SHORT-NAMEs there are
  std::vector<std::uint32_t> mNumbers;  ///< by the number of a name in the document: its number in the format
  std::vector<Frame> mFrames;
  std::vector<Pending> mPending;
  std::u16string mUnits;
};

}  // namespace Tarvelon::files::arxml
