#include "python/host/Docs.h"

#include <algorithm>
#include <vector>

#include "boundary/k7q/PropertyRecords.h"
#include "boundary/ruvo/Method.h"

namespace pyhost {

namespace {

/// A type as a person reads it: words as they are, classes without the packages that all of them share.
std::string_view shownType(const ruvo::InternedName& type) {
  return type.kind() == ruvo::internal::TypeKind::Class ? shownName(type.view()) : type.view();
}

const char* shownMultiplicity(const ruvo::PropertySlot& slot) {
  if (!slot.guard) return "1";
  if (slot.guard->isMany()) return "0..*";
  return slot.guard->isOptional() ? "0..1" : "1";
}

/// The signature as a call on an object is written: without the object, though it may stand among the
/// arguments.
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
    // Each name has a blank in front, as it is to be shown.
    const std::string_view parameter = names.substr(0, names.find(','));
    if (parameter.starts_with(' ')) text += parameter;
    names.remove_prefix(std::min(parameter.size() + 1, names.size()));
  }
  return text += ')';
}

/// What of a name makes a class's name: "common" and "Package" of a dotted one.
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

/// Whether a record makes objects of the class that it gives: "create" and the class's name, run together.
bool isMaker(const ruvo::RVOMethodInfo& record) {
  const std::string_view result = record.getSignature()->result().view();
  std::string name = "create";
  for (const char character : result.substr(std::min(result.find('.') + 1, result.size()))) {
    if (character != '.') name += character;
  }
  return record.getName().view() == name;
}

/// The classes whose objects a factory makes, by package, with what they are made from.
void addMakers(ruvo::Class& cls, std::string& text) {
  std::string_view package;
  for (const auto* record : cls.methods()) {
    if (!isMaker(*record)) continue;
    const ClassPath path = pathOf(record->getSignature()->result().view());
    if (package.empty()) {
      text +=
          "\n\nMakes, by package (create(\"common.Package\", ...) or the method of the long name, "
          "createmetamodelarplatformcommonPackage(...)):";
    }
    if (path.package != package) text.append("\n\n  ").append(path.package).append(":");
    package = path.package;
    text.append("\n    ").append(shownSignature(*record, path.name));
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

std::string describeProperty(const ruvo::PropertySlot& slot) {
  std::string text(shownType(slot.property->getDataType()));
  text.append(", ").append(shownMultiplicity(slot));
  return text.append(slot.guard && slot.guard->isReadOnly() ? ", read-only" : ", writable");
}

std::string describeMethod(const ruvo::OverloadSet& overloads, std::string_view shownName) {
  std::vector<std::string> lines;
  for (const auto* record : overloads.candidates) {
    std::string line = shownSignature(*record, shownName);
    line.append(" -> ").append(shownType(record->getSignature()->result()));
    // A class and its superclasses often say the same.
    if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(std::move(line));
  }
  std::string text;
  for (const std::string& line : lines) text.append(text.empty() ? "" : "\n").append(line);
  return text;
}

std::string describeClass(ruvo::Class& cls) {
  std::string text;
  if (const ruvo::OverloadSet* constructors = cls.constructors()) {
    for (const auto* record : constructors->candidates) {
      text.append(text.empty() ? "" : "\n").append(shownSignature(*record, cls.shortName()));
    }
    text += "\n\n";
  }
  const std::string_view description = cls.info().getDescription();
  text += description.empty() ? "A class of the metamodel: " : std::string(description) + ": ";
  text.append(cls.getFullName().view());
  addProperties(cls, text);
  addMakers(cls, text);
  return text;
}

}  // namespace pyhost
