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

/// Models in files: XMI 2 with the metamodel as an Ecore file beside it.
///
///   Tarvelon::files::save(model, "brakes.xmi");
///   const K7Q::Model again = Tarvelon::files::load("brakes.xmi").model;
///
/// What is held is nested in what holds it, references name the id of their object, and what is not set is
/// not written. An object gets its id at its first save, from where it then stands, and keeps it while it
/// lives; a loaded object keeps the id of the file. So saving what was loaded gives the same bytes, and a
/// change in the model changes its own lines alone. The model's URI is no part of it.
///
/// Threads: any, each with a model of its own; several may write one file, of which the last one stands.
namespace Tarvelon::files {

/// The format that is written. Older ones are read, newer ones are refused.
inline constexpr int kFormat = 1;
/// How deep objects may be nested in a file.
inline constexpr int kMaxDepth = 1000;

/// Is told how much is done, from 0 to 1, now and then and at the end; where the size is not known, as that
/// of a pipe, it is 0 until then. It must not change the model, which ends a save. What it raises ends the
/// work, as if it had never begun, and reaches the caller.
using Progress = std::function<void(double done)>;

struct SaveOptions {
  Progress progress;
  /// Wait until the file is on the disk: without it a crash of the machine, not of the program, may leave the
  /// file empty.
  bool isDurable = true;
};

struct LoadOptions {
  Progress progress;
  /// Keep what is right of a file with problems.
  bool isLenient = false;
};

/// Something that is wrong with a file.
struct Problem {
  /// Both from 1; a column counts characters.
  std::uint32_t line = 0;
  std::uint32_t column = 0;
  std::string text;
};

/// What is wrong with a file, in the order in which it was found.
struct Problems {
  static constexpr std::size_t kKept = 1000;
  /// The first of them, up to kKept.
  std::vector<Problem> kept;
  /// How many there are.
  std::size_t count = 0;
};

/// A file that holds no model, or not a right one. The text names the first twenty problems.
class TARVELON_API WrongFile : public K7Q::WrongValue {
 public:
  WrongFile(const std::string& text, Problems problems);
  ~WrongFile() override;
  const Problems& problems() const noexcept { return mProblems; }

 private:
  Problems mProblems;
};

/// A file or folder that cannot be read or written.
class TARVELON_API FileError : public K7Q::Exception {
 public:
  FileError(const std::string& text, int number) : Exception(text), mNumber(number) {}
  ~FileError() override;
  /// The system's errno.
  int number() const noexcept { return mNumber; }

 private:
  int mNumber;
};

struct Loaded {
  K7Q::Model model;
  /// Empty unless the file was loaded leniently.
  Problems problems;
};

/// Writes a model, so that at every instant the file is the old or the new one: into a temporary file in its
/// folder, which takes its place at the end. The file keeps its mode, a symbolic link keeps pointing at it; a
/// hard link does not. What a killed save of the same file left behind is removed. Where the path leads is
/// looked up once, at the beginning.
///
/// Owner, group, access control list and extended attributes are kept as well. The owner can be kept by root
/// alone: else the file is then the saver's, and a group that the saver is not in has no more rights in it
/// than everybody. FileError where an access control list, or an attribute of the person's, cannot be kept.
///
/// Raises FileError, K7Q::WrongValue for a name with another suffix than `.xmi`, and K7Q::Exception for
/// objects nested deeper than kMaxDepth; then nothing has changed.
TARVELON_API void save(const K7Q::Model& model, const std::filesystem::path& path,
                       const SaveOptions& options = {});
/// The same text.
TARVELON_API std::string saveText(const K7Q::Model& model, const SaveOptions& options = {});

/// A new model, bound to no URI, with what a file holds.
/// Raises FileError, and WrongFile for a file with problems unless it is loaded leniently. Not to be loaded
/// at all are what is not XML at its beginning, a newer format, a document type, and what is nested deeper
/// than kMaxDepth.
TARVELON_API Loaded load(const std::filesystem::path& path, const LoadOptions& options = {});
/// The same of a text that errors call `name`.
TARVELON_API Loaded loadText(std::string_view text, const LoadOptions& options = {},
                             std::string_view name = "text");

/// What the file of a model had that was loaded leniently: none for other models. It is there as long as the
/// model is held, closed or not.
TARVELON_API const Problems& problems(const K7Q::Model& model) noexcept;

/// The objects that nothing holds, in the order in which a file has them at its top. Raises kNullReference
/// for a closed model.
TARVELON_API std::vector<K7Q::ClassObject> roots(const K7Q::Model& model);

/// The metamodel as an Ecore file, with which other programs read the models, and its text. Raises FileError,
/// and K7Q::WrongValue for a name with another suffix than `.ecore`.
TARVELON_API void saveEcore(const std::filesystem::path& path);
TARVELON_API std::string ecoreText();

}  // namespace Tarvelon::files
