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

/// Whether a namespace is that of XMI, in any of its versions.
bool isXmi(std::string_view space) noexcept;
/// The beginning of a text between quotes.
std::string inQuotes(std::string_view text);

/// Raised when nothing of a file can be loaded; the problem stands among the others.
struct NotToBeLoaded {};

/// Makes a model of what a parser finds.
class Reader final : public ParserHandler {
 public:
  explicit Reader(native::NativeModel& model, Problems& problems) : mModel(model), mProblems(problems) {}
  /// REQUIRES: before the first byte is parsed.
  void attach(const Parser& parser) noexcept { mParser = &parser; }
  /// Makes the references that had to wait for their objects.
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
  /// What an open element is: the file, an object, a value, to be empty, or left out.
  struct Frame {
    enum class Kind : std::uint8_t { File, Object, Value, Nothing, Skipped } kind = Kind::Skipped;
    bool hasText = false;  ///< of a value: there is one; of another: stray text was reported
    native::Instance* object = nullptr;
    ClassSchema* cls = nullptr;
    const Feature* feature = nullptr;
  };
  /// The attributes that are not an object's own.
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
  /// An object that nothing holds.
  Frame openTop(QualifiedName name, const Marks& marks, const char* const* attributes);
  Frame openMember(const Frame& parent, QualifiedName name, const Marks& marks,
                   const char* const* attributes);
  Frame openHeld(const Frame& parent, const Feature& feature, const Marks& marks,
                 const char* const* attributes);
  Frame openObject(ClassSchema& cls, const Marks& marks, const char* const* attributes);
  void hold(native::Instance& owner, const Feature& feature, native::Instance& held);
  Marks marksOf(const char* const* attributes);
  bool isMark(QualifiedName name) const noexcept;
  /// Reports all other attributes, and those that refer to an object unless it may.
  void requireMarks(const char* const* attributes, bool mayRefer);
  void checkVersions(const Marks& marks);
  void readFormat(const char* text);
  void keepId(native::Instance& object, const char* id);

  /// Null for a name that the class has not.
  const Feature* featureOf(const Frame& frame, QualifiedName name) const noexcept;
  void reportUnknown(const Frame& frame, QualifiedName name, Place place, const char* cure = "");
  void readAttribute(const Frame& frame, QualifiedName name, std::string_view value);
  // `attribute` is the name of the attribute that has the value, empty for an element's text.
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
  /// Why the reference cannot be made, null once it is.
  const char* tie(const PendingReference& reference, native::Instance& target);
  const char* tieInList(const PendingReference& reference, native::Instance& target);
  /// False if the attribute has listed it before.
  bool noteListed(native::Instance& target, bool isInList);
  /// The list that got the last elements is full, and gets its order.
  void arrangeFilled();

  ClassSchema* classOf(QualifiedName name, Place place);
  ClassSchema* classOfType(std::string_view type, Place place);
  void forgetTypes();
  void requireDepth(bool isKept);
  /// Whether no more problems are kept: what they would say need not be found out.
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
  /// The list that got the last elements, and how many of its attribute stand at its front in their order.
  const native::Instance* mFilled = nullptr;
  const Feature* mFilledFeature = nullptr;
  std::uint32_t mFilledCount = 0;
  /// All that the attribute lists, from the first one on that does not stand behind those before it.
  ListedOrder mListedOrder;
  std::vector<Frame> mFrames;
  std::string mValue;
  std::u16string mUnits;
  std::vector<IdTable::Key> mTargets;
  /// Of a long list, to find those that stand in it again.
  KeySet mTargetsSeen;
  /// The namespaces of each prefix, the innermost last.
  Table<std::vector<std::string>> mNamespaces;
  /// Classes by namespace and name, and by what xsi:type calls them here.
  Table<ClassSchema*> mClasses;
  Table<ClassSchema*> mTypes;
};

}  // namespace Tarvelon::files
