#include "python/host/objects/Docs.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tarvelon/boundary/k7q/PropertyRecords.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/platform/model/metamodel/Documentation.h"

namespace pyhost {

namespace native = Tarvelon::metamodel::native;

namespace {

/// The short form of a type: a scalar type as it is, a class with the last two parts of its name.
std::string_view shownType(const ruvo::InternedName& type) {
  return type.kind() == ruvo::internal::TypeKind::Class ? shownName(type.view()) : type.view();
}

/// Shorter names for types of optional scalars and of sequences of texts. The multiplicity is shown
/// separately.
constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kPlainTypes{
    {{"k7qint32", "int32 scalar"},
     {"k7qdouble", "double scalar"},
     {"k7qlogical", "logical scalar"},
     {"K7Q.ImmutableSequenceOfString", "char"}}};

const char* shownMultiplicity(const ruvo::PropertySlot& slot) {
  if (!slot.guard) return "1";
  if (slot.guard->isMany()) return "0..*";
  return slot.guard->isOptional() ? "0..1" : "1";
}

/// The signature of a call on an object, without the object. The object is left out even if it is the first
/// argument.
std::string shownSignature(const ruvo::RVOMethodInfo& record, std::string_view name) {
  std::string text(name);
  text += '(';
  const auto& signature = *record.getSignature();
  const auto arguments = signature.arguments();
  const bool isSelfFirst = (record.getFlags() & ruvo::factory::kSelfAsArgument) != 0 && !arguments.empty();
  const std::size_t first = isSelfFirst ? 1 : 0;
  std::string_view names = signature.parameterNames();
  for (std::size_t i = first; i < arguments.size(); ++i) {
    text.append(i == first ? "" : ", ").append(shownType(arguments[i]));
    // Each name starts with a blank, which separates it from the type.
    const std::string_view parameter = names.substr(0, names.find(','));
    if (parameter.starts_with(' ')) text += parameter;
    names.remove_prefix(std::min(parameter.size() + 1, names.size()));
  }
  return text += ')';
}

using ArgumentNames = std::vector<std::string>;

/// The signature of a call in Python: "Sd(model: K7Q.Model, gid: char vector, value: char vector)". The names
/// are left out if they are not known.
std::string shownCall(const ruvo::RVOMethodInfo& record, std::string_view name, const ArgumentNames& names) {
  std::string text(name);
  text += '(';
  const auto arguments = record.getSignature()->arguments();
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    text += i == 0 ? "" : ", ";
    if (names.size() == arguments.size()) text.append(names[i]).append(": ");
    text += shownType(arguments[i]);
  }
  return text += ')';
}

/// The two last parts of a class's full name: "common" and "Package" for example.
struct ClassPath {
  std::string_view package;
  std::string_view name;
};

ClassPath pathOf(std::string_view fullName) {
  const std::string_view shown = shownName(fullName);
  const std::size_t dot = shown.find('.');
  if (dot == std::string_view::npos) return {{}, shown};
  return {shown.substr(0, dot), shown.substr(dot + 1)};
}

/// Whether a method is a factory method: its name is "create", followed by the full name of its result class
/// without the part before the first dot and without dots.
bool isMaker(const ruvo::RVOMethodInfo& record) {
  const std::string_view result = record.getSignature()->result().view();
  std::string name = "create";
  for (const char character : result.substr(std::min(result.find('.') + 1, result.size()))) {
    if (character != '.') name += character;
  }
  return record.getName().view() == name;
}

/// Lists the classes that a factory can create, by package, with the arguments.
void addMakers(ruvo::Class& cls, std::string& text) {
  std::string_view package;
  for (const auto* record : cls.methods()) {
    if (!isMaker(*record)) continue;
    const ClassPath path = pathOf(record->getSignature()->result().view());
    if (package.empty()) {
      text +=
          "\n\nCreates, by package (with create(\"common.Package\", ...) or the method with the long name, "
          "createmetamodelarplatformcommonPackage(...)):";
    }
    if (path.package != package) text.append("\n\n  ").append(path.package).append(":");
    package = path.package;
    const auto names = native::splitArgumentNames(record->getSignature()->parameterNames());
    text.append("\n    ").append(shownCall(*record, path.name, names));
  }
}

void addProperties(ruvo::Class& cls, std::string& text) {
  bool isFirst = true;
  for (ruvo::Class* base : cls.linearization()) {
    for (const ruvo::PropertySlot& slot : base->properties()) {
      if (cls.findProperty(slot.name) != &slot) continue;
      text += isFirst ? "\n\nProperties:" : "";
      isFirst = false;
      text.append("\n    ").append(slot.name.view()).append(": ").append(describeProperty(slot));
    }
  }
}

}  // namespace

std::string plainType(std::string_view type) {
  for (const auto& [own, plain] : kPlainTypes) {
    if (type == own) return std::string(plain);
  }
  const std::string_view shown = shownName(type);
  std::string_view name = shown.substr(shown.rfind('.') + 1);
  const std::string package(shown.substr(0, shown.size() - name.size()));
  for (const std::string_view wrapper : {"ImmutableSequenceOf", "SequenceOf", "Immutable"}) {
    if (name.starts_with(wrapper)) name.remove_prefix(wrapper.size());
  }
  return package + std::string(name);
}

std::string describeProperty(const ruvo::PropertySlot& slot) {
  std::string text = plainType(slot.property->getDataType().view());
  text.append(", ").append(shownMultiplicity(slot));
  return text.append(slot.guard && slot.guard->isReadOnly() ? ", read-only" : ", writable");
}

std::vector<std::vector<std::string>> constructorNames(std::string_view className) {
  auto constructors = native::argumentNames(className);
  for (auto& names : constructors) names.insert(names.begin(), "model");
  return constructors;
}

std::string describeMethod(const ruvo::OverloadSet& overloads, std::string_view shownName) {
  std::vector<std::string> lines;
  for (const auto* record : overloads.candidates) {
    std::string line = shownSignature(*record, shownName);
    line.append(" -> ").append(shownType(record->getSignature()->result()));
    // A class and its superclasses often declare the same signature.
    if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(std::move(line));
  }
  std::string text;
  for (const std::string& line : lines) text.append(text.empty() ? "" : "\n").append(line);
  return text;
}

std::string describeClass(ruvo::Class& cls) {
  std::string text(native::purposeOf(cls.getFullName().view()));
  if (!text.empty()) text += "\n\n";
  if (const ruvo::OverloadSet* constructors = cls.constructors()) {
    const auto names = constructorNames(cls.getFullName().view());
    for (std::size_t i = 0; i < constructors->candidates.size(); ++i) {
      text += shownCall(*constructors->candidates[i], cls.shortName(),
                        i < names.size() ? names[i] : ArgumentNames{});
      text += '\n';
    }
    text += '\n';
  }
  const std::string_view description = cls.info().getDescription();
  text += description.empty() ? "A class of the metamodel: " : std::string(description) + ": ";
  text.append(cls.getFullName().view());
  addProperties(cls, text);
  addMakers(cls, text);
  return text;
}

}  // namespace pyhost
