#include "tarvelon/platform/model/views/Factory.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/Described.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr std::string_view kRoot = "Tarvelon.metamodel.arplatform.";
constexpr std::string_view kKernel = "K7Q.";

/// The name of a class as a script may write it: without the prefix of the platform.
std::string_view relativeName(const ClassMethods& table) {
  std::string_view name(table.className().name);
  if (name.starts_with(kRoot)) name.remove_prefix(kRoot.size());
  return name;
}

/// Calls visit(table) for each class that can be created by name, until visit() returns true.
template <class Visit>
void visitClasses(Visit visit) {
  for (const PackageRow& package : packageRows()) {
    for (const ClassMethods* table : package.classes) {
      if (!table->rows() || relativeName(*table).starts_with(kKernel)) continue;
      if (visit(*table)) return;
    }
  }
}

/// The known class name that is most similar to `name`. A name without a package is compared with the classes
/// of the platform.
std::string nearestTo(std::string_view name) {
  if (name.starts_with(kRoot)) name.remove_prefix(kRoot.size());
  const bool isShort = name.find('.') == std::string_view::npos;
  std::vector<std::string_view> names;
  std::vector<std::string_view> candidates;
  visitClasses([&](const ClassMethods& table) {
    const bool isOfPlatform = relativeName(table) != table.className().name;
    if (isShort && !isOfPlatform) return false;
    names.push_back(relativeName(table));
    candidates.push_back(isShort ? table.className().shortName() : names.back());
    return false;
  });
  const auto found = std::find(candidates.begin(), candidates.end(), ruvo::nearestName(name, candidates));
  if (found == candidates.end()) return {};
  return std::string(names[static_cast<std::size_t>(found - candidates.begin())]);
}

[[noreturn]] void refuseName(std::string_view name) {
  const std::string nearest = nearestTo(name);
  throw K7Q::UnknownName("Factory.createFromString: there is no class " + ruvo::quotedName(name) +
                         (nearest.empty() ? "" : "; did you mean '" + nearest + "'?") +
                         " (write the name with its package, as in 'common.Package')");
}

const ClassMethods& find(std::string_view name) {
  const ClassMethods* found = nullptr;
  visitClasses([&](const ClassMethods& table) {
    if (name == table.className().name || name == relativeName(table)) found = &table;
    return found != nullptr;
  });
  if (!found) refuseName(name);
  return *found;
}

constexpr std::string_view kName = "Name";

}  // namespace

void* Factory::cast(K7Q::CooperativeVisitor::TagPair tag) {
  using namespace K7Q::NSInterface;
  // The first request for the tag of arplatform's FactoryIntf creates this tag, which can fail. So this
  // function asks for it only if `tag` is not one of the kernel's tags.
  if (tag.interface < K7Q::CooperativeVisitor::internal::KernelTags::kCount) {
    return castAmong<FactoryIntf, FactoryObjectIntf, ObjectIntf, K7Q::ReferenceCountingIntf>(this, tag);
  }
  return castAmong<arplatform::NSInterface::FactoryIntf>(this, tag);
}

const ruvo::InternedName& Factory::getRuvoName(bool immutable) const {
  return ruvoNameOf(Described::Factory, immutable);
}

K7Q::ImmutableType Factory::getMetaType(K7Q::Deviant deviant) const {
  mModel.requireValid();
  return metaTypeOf(Described::Factory, deviant);
}

K7Q::Model Factory::getModel(K7Q::Deviant deviant) const { return {mModel.getModelInterface(), deviant}; }

K7Q::ClassObject Factory::create(K7Q::Deviant deviant, const K7Q::IntrospectiveMethods& cls,
                                 unsigned constructor, std::span<const K7Q::Object> arguments) {
  const auto object = cls.create(mModel, constructor, arguments);
  return {object.getClassObject(), deviant};
}

K7Q::Object Factory::createFromString(K7Q::Deviant deviant, const K7Q::String& cls) {
  return create(deviant, find(K7Q::String::to_string(cls)), 0, {});
}

K7Q::Object Factory::createFromString(K7Q::Deviant deviant, const K7Q::String& cls, const K7Q::String& name) {
  const ClassMethods& table = find(K7Q::String::to_string(cls));
  const Property* property = table.data().findProperty(kName);
  // If the class is abstract, create() raises the error that says so.
  if (!property && !table.isAbstract()) {
    throw K7Q::WrongValue("Factory.createFromString: objects of class '" + std::string(relativeName(table)) +
                          "' have no name; give only the class");
  }
  NativeModel& model = NativeModel::require(mModel);
  Batch batch(model);
  auto object = create(deviant, table, 0, {});
  try {
    property->ownerClass().set(object.getClassObject(), mModel.getDeviant(), property->id(), name);
  } catch (...) {
    // With a journal, the batch undoes the creation.
    if (!model.journal()) object.getClassObject()->destroy(mModel.getDeviant());
    throw;
  }
  return object;
}

}  // namespace Tarvelon::metamodel::native

namespace Tarvelon::metamodel::arplatform::NSInterface {

FactoryIntf::~FactoryIntf() = default;

FactoryIntf* FactoryIntf::createNewFactory(const K7Q::Model& model) {
  if (model.isNull()) return nullptr;
  native::NativeModel::require(model);
  return new native::Factory(model);
}

}  // namespace Tarvelon::metamodel::arplatform::NSInterface
