#include "tarvelon/factory/FactoryWrapper.h"

#include <array>
#include <string_view>
#include <utility>

#include "tarvelon/arplatform/Tables.h"
#include "tarvelon/binding/Registration.h"
#include "tarvelon/factory/FactoryMethods.h"

namespace Tarvelon::metamodel::arplatform::mi {

namespace {

using binding::InternedName;
using binding::MethodTable;
using binding::named;

constexpr const char* kDescription = "An implementation of the factory design pattern";
constexpr const char* kFactory = "Tarvelon.metamodel.arplatform.Factory";
constexpr const char* kImmutableFactory = "Tarvelon.metamodel.arplatform.ImmutableFactory";

constexpr std::string_view kOwner = "Tarvelon.";
constexpr std::string_view kVerb = "create";

/// The name of the create methods of class X: "create" and the dotted name of X without "Tarvelon." and
/// without dots.
template <class X>
constexpr auto kCreateName = [] {
  constexpr std::string_view kDotted = X::Interface::kName.name;
  std::array<char, kVerb.size() + kDotted.size() + 1> text{};
  auto* next = std::copy(kVerb.begin(), kVerb.end(), text.begin());
  for (const char character : kDotted.substr(kOwner.size())) {
    if (character != '.') *next++ = character;
  }
  return text;
}();

/// The native functions behind the create methods of class X.
template <class X>
struct CreateFunctions {
  template <unsigned Constructor, class... Arguments>
  static K7Q::ClassObject create(const Factory& self, Arguments... arguments) {
    const std::array<K7Q::Object, sizeof...(Arguments)> objects{
        typed::toObject<Arguments>(std::move(arguments))...};
    return self.create(X::Interface::sIntrospectiveMethods, Constructor, objects);
  }

  template <unsigned Constructor, class... Arguments>
  static void addRecord(MethodTable& table, const InternedName& self,
                        TypedConstructor<Arguments...> /*row*/) {
    const InternedName result = named(X::Interface::kName.name);
    const auto* parameterNames = kRow<X>.constructors.rows[Constructor].parameterNames;
    table.add({kCreateName<X>.data(), 0, parameterNames, result, self},
              {binding::typeName(kType<Arguments>)...}, &create<Constructor, Arguments...>);
  }

  template <class... Constructors, std::size_t... Index>
  static void addRecords(MethodTable& table, const InternedName& self,
                         ConstructorRows<Constructors...> /*rows*/, std::index_sequence<Index...> /*index*/) {
    (addRecord<static_cast<unsigned>(Index)>(table, self, Constructors{}), ...);
  }
};

/// Adds the create methods of a class, none for an abstract class.
template <class X>
void addCreateRecords(MethodTable& table, const InternedName& self) {
  constexpr auto kCount = kTable<X>.constructors.size();
  CreateFunctions<X>::addRecords(table, self, kRow<X>.constructors, std::make_index_sequence<kCount>());
}

void addAllCreateRecords(MethodTable& table, const InternedName& self) {
#define ARPLATFORM_NOTHING(...)
#define ARPLATFORM_ADD(X) addCreateRecords<X>(table, self);
#define ARPLATFORM_ADD_PACKAGE(P, NAMES)      \
  {                                           \
    using namespace P; /* NOLINT */           \
    NAMES(ARPLATFORM_ADD, ARPLATFORM_NOTHING) \
  }
  ARPLATFORM_PACKAGES(ARPLATFORM_ADD_PACKAGE)
#undef ARPLATFORM_ADD_PACKAGE
#undef ARPLATFORM_ADD
#undef ARPLATFORM_NOTHING
}

}  // namespace

FactoryWrapper::FactoryWrapper() : ClassMetaData("Factory", kDescription) {}

void FactoryWrapper::defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) {
  const auto factoryObject = named("K7Q.FactoryObject");
  const auto anyObject = named("K7Q.Object");
  const auto model = named("K7Q.Model");
  const auto text = named("char vector");
  const auto self = named(kFactory);
  cls->addSuperClass(factoryObject, 1, 0, 1);
  ruvo::factory::detail::initStringDataTypes();
  MethodTable table(*cls);
  table.add({"createNewFactory", 0, "", self, {}}, {model}, &createNewFactory);
  table.add({"createNewModel", 0, "", model, {}}, {}, &createNewModel);
  table.add({"createFromString", 0, "", anyObject, self}, {text}, &createFromString);
  table.add({"createFromString", 0, "", anyObject, self}, {text, text}, &createNamedFromString);
  addAllCreateRecords(table, self);
  table.add({"cast", 0, "other", self, {}}, {anyObject}, &castToFactory);
  table.add({"toK7QObject", 0, "", anyObject, self}, {}, &toK7QObject);
  table.add({"cast", 0, "other", self, {}}, {factoryObject}, &castToFactory);
  table.add({"toK7QFactoryObject", 0, "", factoryObject, self}, {}, &toK7QFactoryObject);
}

ImmutableFactoryWrapper::ImmutableFactoryWrapper() : ClassMetaData("ImmutableFactory", kDescription) {}

void ImmutableFactoryWrapper::defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) {
  constexpr std::uint32_t kSelf = ruvo::factory::kSelfAsArgument;
  const auto factoryObject = named("K7Q.ImmutableFactoryObject");
  const auto anyObject = named("K7Q.ImmutableObject");
  const auto logical = named("logical scalar");
  const auto self = named(kImmutableFactory);
  cls->addSuperClass(factoryObject, 1, 0, 1);
  ruvo::factory::detail::initStringDataTypes();
  MethodTable table(*cls);
  table.add({"eq", kSelf, "other", logical, {}}, {self, self}, &eq);
  table.add({"ne", kSelf, "other", logical, {}}, {self, self}, &ne);
  table.add({"gt", kSelf, "other", logical, {}}, {self, self}, &gt);
  table.add({"ge", kSelf, "other", logical, {}}, {self, self}, &ge);
  table.add({"lt", kSelf, "other", logical, {}}, {self, self}, &lt);
  table.add({"le", kSelf, "other", logical, {}}, {self, self}, &le);
  table.add({"cast", 0, "other", self, {}}, {anyObject}, &castToImmutableFactory);
  table.add({"toK7QImmutableObject", 0, "", anyObject, self}, {}, &toK7QImmutableObject);
  table.add({"cast", 0, "other", self, {}}, {factoryObject}, &castToImmutableFactory);
  table.add({"toK7QImmutableFactoryObject", 0, "", factoryObject, self}, {}, &toK7QImmutableFactoryObject);
}

void registerFactories(ruvo::RVOPackage* package) {
  binding::addClassInfo(package, new FactoryWrapper);
  binding::addClassInfo(package, new ImmutableFactoryWrapper);
}

}  // namespace Tarvelon::metamodel::arplatform::mi
