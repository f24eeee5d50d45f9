#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/shared/AtomicFile.h"
#include "tarvelon/platform/files/shared/Schema.h"
#include "tarvelon/platform/files/shared/Suffix.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"

// Writes the metamodel as one Ecore file: a root package that contains all other packages. So another program
// needs only this file.
namespace Tarvelon::files {

using native::ClassMethods;
using native::PackageRow;
using native::Property;
using native::Storage;

namespace {

constexpr std::string_view kEcore = "http://www.eclipse.org/emf/2002/Ecore";
constexpr std::string_view kPlatform = "Tarvelon.metamodel.arplatform";

/// A reference to a package within the file: "#//arplatform/behavior".
std::string pathOf(const PackageRow& package) {
  const bool isBelow = package.name.starts_with(kPlatform);
  return (isBelow ? "#//arplatform/" : "#//") + std::string(prefixOf(package));
}

std::string pathOf(const ClassMethods& cls) {
  return pathOf(packageOf(cls)) + "/" + cls.className().shortName();
}

std::string pathOf(const native::EnumerationType& type) {
  const std::string_view full = type.fullName().view();
  for (const PackageRow& package : native::packageRows()) {
    if (package.name == full.substr(0, full.rfind('.')))
      return pathOf(package) + "/" + std::string(full.substr(full.rfind('.') + 1));
  }
  return {};
}

struct DataType {
  const char* name;
  const char* initial;
};

/// An optional value may be absent. Ecore's primitive types cannot express this, so the object types are
/// used.
DataType dataTypeOf(const Property& property) {
  const bool isOptional = !property.isRequired();
  switch (property.row().type->kind) {
    case metamodel::Kind::Boolean:
      return {isOptional ? "EBooleanObject" : "EBoolean", "false"};
    case metamodel::Kind::Integer:
      return {isOptional ? "EIntegerObject" : "EInt", "0"};
    case metamodel::Kind::Double:
    case metamodel::Kind::Real:
      return {isOptional ? "EDoubleObject" : "EDouble", "0.0"};
    default:
      return {"EString", ""};
  }
}

class EcoreWriter {
 public:
  explicit EcoreWriter(Sink& sink) : mOut(sink) {}

  void write() {
    mOut.raw("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ecore:EPackage xmi:version=\"2.0\"");
    for (const auto& [prefix, uri] :
         {std::pair("xmi", kXmi), std::pair("xsi", kXsi), std::pair("ecore", kEcore)})
      mOut.raw("\n    xmlns:" + std::string(prefix) + "=\"" + std::string(uri) + "\"");
    mOut.raw("\n    name=\"Tarvelon\" nsURI=\"urn:tarvelon:metamodel\" nsPrefix=\"Tarvelon\">\n");
    for (const PackageRow& package : native::packageRows()) {
      if (!package.name.starts_with(kPlatform)) writePackage(package, "  ");
    }
    mOut.raw(
        "  <eSubpackages name=\"arplatform\" nsURI=\"urn:tarvelon:metamodel:arplatform\""
        " nsPrefix=\"arplatform\">\n");
    for (const PackageRow& package : native::packageRows()) {
      if (package.name.starts_with(kPlatform)) writePackage(package, "    ");
    }
    mOut.raw("  </eSubpackages>\n</ecore:EPackage>\n");
    mOut.flush();
  }

 private:
  void writePackage(const PackageRow& package, const std::string& indent) {
    const std::string prefix(prefixOf(package));
    mOut.raw(indent + "<eSubpackages name=\"" + prefix + "\" nsURI=\"" + namespaceOf(package) +
             "\" nsPrefix=\"" + prefix + "\">\n");
    for (const ClassMethods* cls : package.classes) writeClass(*cls, indent + "  ");
    for (const auto* enumeration : package.enumerations) {
      writeEnumeration(native::EnumerationType::of(*enumeration), indent + "  ");
    }
    mOut.raw(indent + "</eSubpackages>\n");
  }

  void writeClass(const ClassMethods& cls, const std::string& indent) {
    mOut.raw(indent + "<eClassifiers xsi:type=\"ecore:EClass\" name=\"" + cls.className().shortName() + "\"");
    if (cls.isAbstract()) mOut.raw(" abstract=\"true\"");
    std::string bases;
    for (const auto* base : cls.bases()) {
      if (!bases.empty()) bases += ' ';
      bases += pathOf(*static_cast<const ClassMethods*>(base));
    }
    if (!bases.empty()) mOut.raw(" eSuperTypes=\"" + bases + "\"");
    bool isOpen = false;
    for (const auto& property : cls.data().properties) {
      // A redefinition shares the feature of the redefined property.
      if (!property || property->row().redefined) continue;
      if (!isOpen) mOut.raw(">\n");
      isOpen = true;
      writeFeature(*property, indent + "  ");
    }
    mOut.raw(isOpen ? indent + "</eClassifiers>\n" : "/>\n");
  }

  void writeFeature(const Property& property, const std::string& indent) {
    const bool isReference = property.row().type->kind == metamodel::Kind::ClassObject;
    std::string line =
        indent + "<eStructuralFeatures xsi:type=\"ecore:" + (isReference ? "EReference" : "EAttribute") +
        "\" name=\"" + property.row().name + "\"";
    if (property.isRequired()) line += " lowerBound=\"1\"";
    if (property.isMany()) line += " upperBound=\"-1\"";
    line += isReference ? referenceOf(property) : attributeOf(property);
    if (property.storage() == Storage::None) {
      line += " changeable=\"false\" volatile=\"true\" transient=\"true\" derived=\"true\"";
    }
    mOut.raw(line + "/>\n");
  }

  static std::string referenceOf(const Property& property) {
    std::string text = " eType=\"" + pathOf(*property.type()) + "\"";
    // A derived property does not contain objects. It shows objects that another property contains.
    if (property.holds() && property.storage() != Storage::None) text += " containment=\"true\"";
    if (const Property* back = property.opposite()) {
      text += " eOpposite=\"" + pathOf(back->ownerClass()) + "/" + back->row().name + "\"";
    }
    return text;
  }

  static std::string attributeOf(const Property& property) {
    std::string text;
    // A list of texts or literals may contain duplicates.
    if (property.isMany()) text += " unique=\"false\"";
    if (const auto* enumeration = property.enumeration()) {
      text += " eType=\"" + pathOf(*enumeration) + "\"";
      // The default is the first literal. Unsettable distinguishes it from an absent value.
      return property.isRequired() || property.isMany() ? text : text + " unsettable=\"true\"";
    }
    const DataType type = dataTypeOf(property);
    text += " eType=\"ecore:EDataType " + std::string(kEcore) + "#//" + type.name + "\"";
    // A required property that is not set reads as this value.
    if (property.isRequired()) text += " defaultValueLiteral=\"" + std::string(type.initial) + "\"";
    return text;
  }

  void writeEnumeration(const native::EnumerationType& type, const std::string& indent) {
    const std::string_view full = type.fullName().view();
    mOut.raw(indent + "<eClassifiers xsi:type=\"ecore:EEnum\" name=\"" +
             std::string(full.substr(full.rfind('.') + 1)) + "\">\n");
    std::size_t value = 0;
    for (const std::string_view literal : type.literals()) {
      mOut.raw(indent + "  <eLiterals name=\"" + std::string(literal) + "\" value=\"" +
               std::to_string(value++) + "\"/>\n");
    }
    mOut.raw(indent + "</eClassifiers>\n");
  }

  Output mOut;
};

}  // namespace

void saveEcore(const std::filesystem::path& path) {
  requireSuffix(path, {".ecore"});
  AtomicFile file(path);
  EcoreWriter(file).write();
  file.commit(true);
}

std::string ecoreText() {
  TextSink text;
  EcoreWriter(text).write();
  return text.take();
}

}  // namespace Tarvelon::files
