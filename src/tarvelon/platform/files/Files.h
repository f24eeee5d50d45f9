#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/k7q/Object.h"

/// Saving models to files and loading them: ARXML, the format of AUTOSAR 4 in the releases 4.0.1 to R25-11,
/// and XMI 2, described by an Ecore file of the metamodel.
///
/// Example:
///   Tarvelon::files::save(model, "brakes.arxml");
///   const K7Q::Model again = Tarvelon::files::load("brakes.arxml").model;
///
/// ARXML:   What has no class, such as a CAN frame, a comment or the extension of a tool, stays where it
///          stands in the text of the file. A file that was loaded and not changed is saved with the same
///          bytes; a change of the model changes only the lines it affects.
///
/// In an XMI file, contained objects are nested in their owner, a reference is the id of its target, and
/// unset properties are left out. The URI of the model is not part of the file.
///
/// Ids:     An object that has no id gets one when it is first saved; the id is computed from the place of
///          the object at that time. A loaded object keeps the id from the file. An object keeps its id until
///          it is destroyed. So loading and saving a file gives the same bytes again, and a change of the
///          model changes only the lines it affects.
/// Threads: Any number of threads, each with its own model. Several threads may save to the same file; the
///          last one that finishes wins.
namespace Tarvelon::files {

/// The version of the file format that save() writes. load() reads this and older versions, and refuses newer
/// ones.
inline constexpr int kFormat = 1;
/// How many levels deep objects may be nested in a file.
inline constexpr int kMaxDepth = 1000;

/// A callback that receives the progress of a save or load as a number from 0 to 1. It is called now and
/// then, and once at the end with 1. If the size of the input is not known, as for a pipe, the number is 0
/// until the end.
///
/// The callback must not change the model; a save then ends with K7Q::Exception. If the callback raises an
/// exception, the save or load ends without any effect, and the caller receives the exception.
using Progress = std::function<void(double done)>;

struct SaveOptions {
  /// Called while the model is saved. May be empty.
  Progress progress;
  /// Wait until the data is on the disk. Without this, a crash of the machine (not of the program) may leave
  /// an empty file.
  bool isDurable = true;
  /// ARXML only: the release of the file, such as "R22-11" or "4.3.0". Empty: the release of the file from
  /// which the model was loaded; for any other model the usual one, R22-11.
  std::string release{};  // NOLINT(readability-redundant-member-init): callers may leave it out
  /// ARXML only: leave out what the release does not have instead of raising K7Q::WrongValue.
  bool isLenient = false;
};

struct LoadOptions {
  /// Called while the model is loaded. May be empty.
  Progress progress;
  /// Load the correct parts of a file with problems instead of raising WrongFile.
  bool isLenient = false;
};

/// One problem in a file.
struct Problem {
  /// The position in the file. Both count from 1; the column counts characters, not bytes.
  std::uint32_t line = 0;
  std::uint32_t column = 0;
  std::string text;
};

/// The problems found in a file.
struct Problems {
  /// How many problems are kept at most.
  static constexpr std::size_t kKept = 1000;
  /// The first kKept problems that were found, ordered by line and column.
  std::vector<Problem> kept;
  /// How many problems were found in total.
  std::size_t count = 0;
};

/// Raised for a file that contains no model or has problems. The text names the first twenty problems.
class TARVELON_API WrongFile : public K7Q::WrongValue {
 public:
  WrongFile(const std::string& text, Problems problems);
  ~WrongFile() override;
  const Problems& problems() const noexcept { return mProblems; }

 private:
  Problems mProblems;
};

/// Raised for a file or folder that cannot be read or written.
class TARVELON_API FileError : public K7Q::Exception {
 public:
  FileError(const std::string& text, int number) : Exception(text), mNumber(number) {}
  ~FileError() override;
  /// The errno of the system call that failed.
  int number() const noexcept { return mNumber; }

 private:
  int mNumber;
};

/// The result of load().
struct Loaded {
  K7Q::Model model;
  /// What was wrong in the file. Always empty unless the file was loaded leniently.
  Problems problems;
};

/// Saves a model to a file. The file is replaced atomically: at every moment the path leads to the complete
/// old file or to the complete new one. The new content is written to a temporary file in the same folder,
/// which then replaces the old file. Temporary files that a killed save of the same file has left behind are
/// removed.
///
/// - Symbolic links: the target of the link is replaced. The path is resolved once, at the beginning.
/// - Hard links: other names of the old file keep the old content.
/// - Mode, owner, group, access control list and extended attributes of the old file are kept. Only root can
///   keep another owner; for other users the file then belongs to the user who saves. If the user is not a
///   member of the file's group, the new group gets no more permissions than everybody has. FileError is
///   raised if an access control list or a user's extended attribute cannot be kept.
///
/// The suffix decides the format: `.arxml`, or `.xmi`, which is also that of a name without a suffix.
///
/// Raises FileError, K7Q::WrongValue for any other suffix, for an unknown release and, as ARXML, for a model
/// that the release cannot have, and K7Q::Exception if objects are nested deeper than kMaxDepth. After an
/// exception the file is unchanged.
TARVELON_API void save(const K7Q::Model& model, const std::filesystem::path& path,
                       const SaveOptions& options = {});
/// Saves a model that was loaded from ARXML files back to them: those alone in which something has changed.
/// Nothing is written if one of the texts cannot be made. Raises as save(), and K7Q::WrongValue if the model
/// was not loaded from files.
/// Returns the paths of the files that were written.
TARVELON_API std::vector<std::filesystem::path> saveBack(const K7Q::Model& model,
                                                         const SaveOptions& options = {});
/// Returns the text that save() would write as XMI.
TARVELON_API std::string saveText(const K7Q::Model& model, const SaveOptions& options = {});
/// Returns the bytes that save() would write as ARXML.
TARVELON_API std::string saveArxmlText(const K7Q::Model& model, const SaveOptions& options = {});

/// Loads a file into a new model, which has no URI. The content of the file decides its format. A folder
/// stands for all `.arxml` files in it and below.
/// Raises FileError if the file cannot be read. Raises WrongFile if the file has problems, unless it is
/// loaded leniently. Raises WrongFile in any case if the file is not well-formed at its beginning, has
/// another root element, is of AUTOSAR 3, has a newer format or a document type, or nests objects deeper than
/// kMaxDepth.
TARVELON_API Loaded load(const std::filesystem::path& path, const LoadOptions& options = {});
/// Loads several ARXML files into one model. References may lead from one file into another, and packages of
/// the same path become one object. Raises as load(), and K7Q::WrongValue for a file in another format.
TARVELON_API Loaded load(const std::vector<std::filesystem::path>& paths, const LoadOptions& options = {});
/// As load(), for a text. Error texts call the input `name`.
TARVELON_API Loaded loadText(std::string_view text, const LoadOptions& options = {},
                             std::string_view name = "text");

/// Returns the problems that were found when the model was loaded leniently. Empty for any other model. The
/// reference is valid as long as the model is held, even if the model is closed.
TARVELON_API const Problems& problems(const K7Q::Model& model) noexcept;

/// Returns the objects without an owner, in the order in which save() writes them. Raises K7Q::Exception for
/// a closed model.
TARVELON_API std::vector<K7Q::ClassObject> roots(const K7Q::Model& model);

/// Content of a loaded ARXML file that has no class, or a reference whose target is not in the model.
struct KeptContent {
  std::string tag;             ///< the name of the element
  std::string name;            ///< its SHORT-NAME; of a reference: the path of the target as it stands
  std::string path;            ///< the path of the named elements around it and its own name
  std::string dest;            ///< of a reference: its DEST
  std::filesystem::path file;  ///< empty for a text
  std::uint32_t line = 0;      ///< counts from 1
  std::string xml;             ///< the element as it stands
};

/// The content without a class that an object has in its files, in their order. Content inside of contained
/// objects belongs to those. Empty for an object that was not loaded from ARXML.
TARVELON_API std::vector<KeptContent> foreign(const K7Q::ClassObject& object);
/// The same for all objects of a model.
TARVELON_API std::vector<KeptContent> foreign(const K7Q::Model& model);
/// The references of an object, or of all objects, whose targets are not in the model. They are saved as they
/// stand.
TARVELON_API std::vector<KeptContent> unresolved(const K7Q::ClassObject& object);
TARVELON_API std::vector<KeptContent> unresolved(const K7Q::Model& model);
/// The files of a model that was loaded from ARXML, in the order of loading.
TARVELON_API std::vector<std::filesystem::path> filesOf(const K7Q::Model& model);
/// The file in which an object stands: that from which it was loaded, for a new object that of its owner.
/// Empty if there is none.
TARVELON_API std::filesystem::path fileOf(const K7Q::ClassObject& object);

/// Saves the metamodel as an Ecore file, which other programs need to read saved models; ecoreText() returns
/// its text. Raises FileError, and K7Q::WrongValue if the name has a suffix other than `.ecore`.
TARVELON_API void saveEcore(const std::filesystem::path& path);
TARVELON_API std::string ecoreText();

}  // namespace Tarvelon::files
