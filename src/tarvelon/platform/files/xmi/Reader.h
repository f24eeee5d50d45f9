#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/shared/ListedOrder.h"
#include "tarvelon/platform/files/shared/Schema.h"
#include "tarvelon/platform/files/xmi/Parser.h"
#include "tarvelon/platform/files/xmi/References.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::files {

/// Whether a namespace is that of XMI, in any version.
bool isXmi(std::string_view space) noexcept;
/// The beginning of a text, in quotes.
std::string inQuotes(std::string_view text);

/// Thrown if nothing of a file can be loaded. The reason was reported as a problem.
struct Unloadable {};

/// Builds a model from the events of a parser.
class Reader final : public ParserHandler {
 public:
  explicit Reader(native::NativeModel& model, Problems& problems) : mModel(model), mProblems(problems) {}
  /// REQUIRES: called before the first byte is parsed.
  void attach(const Parser& parser) noexcept { mParser = &parser; }
  /// Sets the references whose targets came later in the file.
  void finish();
  void report(Place place, std::string text);
  bool hasRoot() const noexcept { return mHasRoot; }

  void startElement(QualifiedName name, const char* const* attributes) override;
  void endElement() override;
  void characters(std::string_view text) override;
  void startNamespace(std::string_view prefix, std::string_view uri) override;
  void endNamespace(std::string_view prefix) override;
  void documentType() override;

 private:
  /// An open element: the file itself, an object, a value, an element that must be empty, or an element that
  /// is skipped.
  struct Frame {
    enum class Kind : std::uint8_t { File, Object, Value, Nothing, Skipped } kind = Kind::Skipped;
    bool hasText = false;  ///< of a value: it has a text; otherwise: a misplaced text was reported
    native::Instance* object = nullptr;
    ClassSchema* cls = nullptr;
    const Feature* feature = nullptr;
  };
  /// The attributes that do not belong to a property: those of XMI, of XSI and of this file format.
  struct Marks {
    const char* id = nullptr;
    const char* type = nullptr;
    const char* href = nullptr;
    const char* idref = nullptr;
    const char* version = nullptr;
    const char* format = nullptr;
    bool isNil = false;
  };

  Frame open(QualifiedName name, const Marks& marks, const char* const* attributes);
  Frame openRoot(QualifiedName name, const Marks& marks, const char* const* attributes);
  /// Opens an object without an owner.
  Frame openTop(QualifiedName name, const Marks& marks, const char* const* attributes);
  Frame openMember(const Frame& parent, QualifiedName name, const Marks& marks,
                   const char* const* attributes);
  Frame openHeld(const Frame& parent, const Feature& feature, const Marks& marks,
                 const char* const* attributes);
  Frame openObject(ClassSchema& cls, const Marks& marks, const char* const* attributes);
  void hold(native::Instance& owner, const Feature& feature, native::Instance& held);
  Marks marksOf(const char* const* attributes);
  bool isMark(QualifiedName name) const noexcept;
  /// Reports all attributes other than marks. Also reports `href` and `idref`, unless `mayRefer` is true.
  void requireMarks(const char* const* attributes, bool mayRefer);
  void checkVersions(const Marks& marks);
  void readFormat(const char* text);
  void keepId(native::Instance& object, const char* id);

  /// Null if the class has no such feature.
  const Feature* featureOf(const Frame& frame, QualifiedName name) const noexcept;
  void reportUnknown(const Frame& frame, QualifiedName name, Place place, const char* cure = "");
  void readAttribute(const Frame& frame, QualifiedName name, std::string_view value);
  // `attribute` is the name of the attribute that contains the value. It is empty for the text of an element.
  void readValue(const Frame& frame, const Feature& feature, std::string_view value,
                 std::string_view attribute);
  void readText(native::Instance& object, const Feature& feature, std::string_view value,
                std::string_view attribute);
  void readWord(native::Instance& object, const Feature& feature, std::string_view value,
                std::string_view attribute);
  void readReferences(const Frame& frame, const Feature& feature, std::string_view ids,
                      std::string_view attribute);
  void readTargets(const Frame& frame, const Feature& feature, std::string_view ids,
                   std::string_view attribute);
  void reportReference(const Frame& frame, const Feature& feature, Place place, std::string_view fault,
                       IdTable::Key target);
  void refer(const PendingReference& reference, std::string_view attribute);
  /// Sets the reference. Returns null, or the reason why it cannot be set.
  const char* link(const PendingReference& reference, native::Instance& target);
  const char* linkInList(const PendingReference& reference, native::Instance& target);
  /// Notes the next target that an attribute lists. Returns false if the attribute has listed this target
  /// before. `isInList` says whether the list contains the target already.
  bool noteListed(native::Instance& target, bool isInList);
  /// Sorts the list that has been filled, if its elements are not in the order of the attribute.
  void arrangeFilled();

  ClassSchema* classOf(QualifiedName name, Place place);
  ClassSchema* classOfType(std::string_view type, Place place);
  void forgetTypes();
  void requireDepth(bool isKept);
  /// Whether the list of problems is full. Details of further problems need not be determined.
  bool isFull() const noexcept { return mProblems.kept.size() >= Problems::kKept; }
  std::string hint(std::string_view name, const std::vector<std::string_view>& names) const;
  Place here() const noexcept { return mParser->place(); }
  Place placeOf(QualifiedName attribute) const noexcept {
    return isFull() ? Place() : mParser->placeOf(attribute);
  }
  Place placeOfValue(std::string_view attribute) const noexcept {
    return attribute.empty() ? here() : placeOf({{}, attribute});
  }
  static std::string nameOf(const native::Instance& object, const Feature& feature);

  template <class Value>
  using Table = std::unordered_map<std::string, Value, native::KeyedTextHash>;

  native::NativeModel& mModel;
  Problems& mProblems;
  const Parser* mParser = nullptr;
  bool mHasRoot = false;
  int mFormat = kFormat;
  Schema mSchema;
  IdTable mIds;
  PendingReferences mPending;
  /// The list of references that is being filled: its object and its property. The first mFilledCount
  /// elements of the list are the first elements that the attribute lists, in the same order.
  const native::Instance* mFilled = nullptr;
  const Feature* mFilledFeature = nullptr;
  std::uint32_t mFilledCount = 0;
  /// The elements that the attribute lists. Empty as long as the list has them in the order of the attribute,
  /// at its front.
  ListedOrder mListedOrder;
  std::vector<Frame> mFrames;
  std::string mValue;
  std::u16string mUnits;
  std::vector<IdTable::Key> mTargets;
  /// The targets of a long list, to find duplicates.
  KeySet mTargetsSeen;
  /// For each prefix: a stack of the namespaces that it stands for, the innermost last.
  Table<std::vector<std::string>> mNamespaces;
  /// Classes by namespace and name, and by the value of xsi:type in the current scope.
  Table<ClassSchema*> mClasses;
  Table<ClassSchema*> mTypes;
};

}  // namespace Tarvelon::files
