#include "tarvelon/platform/files/xmi/Writer.h"

#include <optional>
#include <vector>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/shared/AtomicFile.h"
#include "tarvelon/platform/files/shared/Contents.h"
#include "tarvelon/platform/files/shared/Ids.h"
#include "tarvelon/platform/files/shared/ScalarText.h"
#include "tarvelon/platform/model/changes/AuditHooks.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"

namespace Tarvelon::files {

using native::Instance;
using native::NativeModel;
using native::Storage;
using native::Word;
using native::WordList;

namespace {

/// The indentation of attributes and of elements relative to their element.
constexpr unsigned kAttributeIndent = 4;
constexpr unsigned kElementIndent = 2;

class Writer {
 public:
  Writer(NativeModel& model, Sink& sink, const Progress& progress)
      : mModel(model), mOut(sink), mProgress(progress) {
    if (progress) mWatch.emplace(model);
  }

  void write() {
    mModel.forEachInstance([this](const Instance& /*object*/) { ++mTotal; });
    assignIds(mModel, mSchema);
    native::auditAfter(mModel);
    begin();
    mModel.forEachInstance([this](const Instance& object) {
      if (object.owner()) return;
      writeTree(object);
    });
    mOut.raw("\n</xmi:XMI>\n");
    mOut.flush();
    if (mProgress) mProgress(1);
  }

 private:
  /// All namespaces are declared, used or not. So the first object of a package adds only its own lines to
  /// the file.
  void begin() {
    mOut.raw("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xmi:XMI xmi:version=\"2.0\"");
    declare("xmi", kXmi);
    declare("xsi", kXsi);
    for (const native::PackageRow& package : native::packageRows())
      declare(prefixOf(package), namespaceOf(package));
    declare("tarvelon", kOwn);
    mOut.line(kAttributeIndent);
    mOut.raw("tarvelon:format=\"" + std::to_string(kFormat) + "\">");
  }
  void declare(std::string_view prefix, std::string_view uri) {
    mOut.line(kAttributeIndent);
    mOut.raw("xmlns:");
    mOut.raw(prefix);
    mOut.raw("=\"");
    mOut.raw(uri);
    mOut.put('"');
  }

  /// An object whose tag is open, and the position in its elements.
  struct Level {
    Cursor elements;
    const ClassSchema* cls;
    std::string_view tag;
  };

  void writeTree(const Instance& root) {
    const ClassSchema& cls = mSchema.of(root.cls());
    open(root, cls, cls.type, false);
    while (!mOpen.empty()) {
      Level& level = mOpen.back();
      if (level.elements.next()) {
        writeElement(level.cls->features[level.elements.slot()], level.elements.value());
      } else {
        close(level.tag);
      }
    }
  }

  unsigned indent() const noexcept { return static_cast<unsigned>(mOpen.size()) * kElementIndent; }

  void open(const Instance& object, const ClassSchema& cls, std::string_view tag, bool isTyped) {
    requireDepth(object, mOpen.size() + 1);
    mOpen.push_back({Cursor(object, cls.elementSlots), &cls, tag});
    mOut.line(indent());
    mOut.put('<');
    mOut.raw(tag);
    if (isTyped) {
      mOut.raw(" xsi:type=\"");
      mOut.raw(cls.type);
      mOut.put('"');
    }
    mOut.raw(" xmi:id=\"");
    writeId(object);
    mOut.put('"');
    const Extent extent = writeAttributes(object, cls, indent());
    // The end of the tag has a line of its own. So this line does not change when the last attribute is added
    // or removed.
    if (extent.hasAttributes) mOut.line(indent());
    if (extent.hasElements) {
      mOut.put('>');
    } else {
      mOut.raw("/>");
      leave();
    }
  }

  void close(std::string_view tag) {
    mOut.line(indent());
    mOut.raw("</");
    mOut.raw(tag);
    mOut.put('>');
    leave();
  }

  void leave() {
    mOpen.pop_back();
    report();
  }

  void report() {
    constexpr std::size_t kEach = 1 << 14;
    if (++mDone % kEach != 0 || !mProgress) return;
    mProgress(static_cast<double>(mDone) / static_cast<double>(mTotal));
    // The callback is foreign code: it may have changed the model, and the objects of this walk may not exist
    // any more.
    if (mWatch->hasChanged()) refuseChange();
  }

  void writeId(const Instance& object) {
    if (const Word* id = numberedId(object)) {
      const auto text = idText(id->bits);
      mOut.raw({text.data(), text.size()});
    } else {
      mOut.attributeText(foreignId(object)->text->view());
    }
  }

  [[noreturn]] static void refuseChange() {
    throw K7Q::Exception(
        "the model was changed or closed while it was saved; the progress function and other threads must "
        "not change it");
  }

  /// Calls visit(const Feature&, Word) for each value, in the order of the features.
  template <class Visit>
  static void forEachValue(const Instance& object, const ClassSchema& cls, Visit visit) {
    const std::uint64_t slots = object.presence() & ((std::uint64_t{1} << cls.features.size()) - 1);
    for (std::uint64_t left = slots; left != 0; left &= left - 1) {
      const auto slot = static_cast<unsigned>(std::countr_zero(left));
      visit(cls.features[slot], *object.find(slot));
    }
  }

  struct Extent {
    bool hasAttributes = false;
    bool hasElements = false;
  };

  Extent writeAttributes(const Instance& object, const ClassSchema& cls, unsigned indent) {
    Extent extent;
    forEachValue(object, cls, [&](const Feature& feature, Word word) {
      if (feature.declared->isMany() && word.list->empty()) return;
      if (feature.isElement()) {
        extent.hasElements = true;
        return;
      }
      extent.hasAttributes = true;
      mOut.line(indent + kAttributeIndent);
      mOut.raw(feature.name());
      mOut.raw("=\"");
      writeAttribute(feature, word, indent);
      mOut.put('"');
    });
    return extent;
  }

  void writeAttribute(const Feature& feature, Word word, unsigned indent) {
    const Storage storage = feature.declared->storage();
    if (storage == Storage::Text) {
      if (word.text) mOut.attributeText(word.text->view());
    } else if (storage == Storage::Reference) {
      writeId(*word.object);
    } else if (storage == Storage::References) {
      writeReferences(*word.list, indent);
    } else {
      mOut.raw(ScalarText(*feature.declared, word).view());
    }
  }

  /// Each id and the closing quote have a line of their own. So adding an id at the end adds only one line.
  void writeReferences(const WordList& list, unsigned indent) {
    for (std::uint32_t index = 0; index < list.size(); ++index) {
      mOut.line(indent + 2 * kAttributeIndent);
      writeId(*list.at(index).object);
    }
    mOut.line(indent + kAttributeIndent);
  }

  void writeElement(const Feature& feature, Word word) {
    if (!feature.declared->holds()) return writeValue(feature, word);
    const Instance& held = *word.object;
    const bool isTyped = &held.cls() != &feature.declared->type()->data();
    open(held, mSchema.of(held.cls()), feature.name(), isTyped);
  }

  void writeValue(const Feature& feature, Word word) {
    mOut.line(indent() + kElementIndent);
    mOut.put('<');
    mOut.raw(feature.name());
    mOut.put('>');
    if (feature.declared->storage() == Storage::Texts) {
      mOut.elementText(word.text->view());
    } else {
      mOut.raw(ScalarText(*feature.declared, word).view());
    }
    mOut.raw("</");
    mOut.raw(feature.name());
    mOut.put('>');
  }

  NativeModel& mModel;
  Output mOut;
  const Progress& mProgress;
  Schema mSchema;
  std::vector<Level> mOpen;
  std::size_t mTotal = 0;
  std::size_t mDone = 0;
  std::optional<native::ChangeWatch> mWatch;
};

}  // namespace

// The progress callback may release the caller's handle.
void saveXmi(const K7Q::Model& model, const std::filesystem::path& path, const SaveOptions& options) {
  NativeModel& native = NativeModel::require(model);
  const K7Q::Model kept(model);  // NOLINT(performance-unnecessary-copy-initialization)
  AtomicFile file(path);
  Writer(native, file, options.progress).write();
  file.commit(options.isDurable);
}

std::string saveText(const K7Q::Model& model, const SaveOptions& options) {
  TextSink text;
  NativeModel& native = NativeModel::require(model);
  const K7Q::Model kept(model);  // NOLINT(performance-unnecessary-copy-initialization)
  Writer(native, text, options.progress).write();
  return text.take();
}

}  // namespace Tarvelon::files
