#include "tarvelon/platform/model/validation/Plans.h"

#include <algorithm>
#include <string_view>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

using namespace arplatform;  // NOLINT(google-build-using-namespace): the rows name the packages below it

/// A property of a class, as the rows identify it.
struct Row {
  const K7Q::IntrospectiveMethods* owner;
  unsigned id;
};

template <class X, FixedString Name>
Row rowOf() {
  using Found = PropertyAccess<X, Name>;
  return {&Found::methods(), Found::kProperty.id};
}

/// A property that the metamodel requires, but that has no meaning for one subclass.
struct Exemption {
  const K7Q::IntrospectiveMethods* cls;
  Row row;
};

const auto& exemptions() {
  static const Exemption kRows[] = {
      // A trigger carries no data, so the port info for a trigger names no data element.
      {&port::NSInterface::TriggerReceiverPortInfoIntf::sIntrospectiveMethods,
       rowOf<port::DataPortInfo, "DataElements">()},
  };
  return kRows;
}

struct Expectation {
  Row row;
  const char* without;
};

// Properties that are optional in the metamodel, so that an object can be created before the value is known,
// and what is wrong with an object without the value.
const auto& expectations() {
  static const Expectation kRows[] = {
      {rowOf<behavior::Event, "StartOnEvent">(), "the event starts no runnable"},
      {rowOf<behavior::DataSendCompletedEvent, "dataAccess">(), "nothing can raise the event"},
      {rowOf<behavior::DataWriteCompletedEvent, "dataAccess">(), "nothing can raise the event"},
      {rowOf<behavior::InternalTriggerOccurredEvent, "InternalTriggeringPoint">(),
       "nothing can raise the event"},
      {rowOf<behavior::PortAPIOption, "Port">(), "the option applies to no port"},
      {rowOf<behavior::ServiceDependency, "ServiceNeeds">(), "the dependency asks for no service"},
      {rowOf<common::Data, "Type">(), "the data has no type"},
      {rowOf<common::DataTypeMap, "ApplicationType">(), "the map has no source type"},
      {rowOf<common::DataTypeMap, "ImplementationType">(), "the map has no target type"},
      {rowOf<common::ModeRequestTypeMap, "ModeGroupType">(), "the map has no source type"},
      {rowOf<common::ModeRequestTypeMap, "ImplementationType">(), "the map has no target type"},
      {rowOf<common::ModeDeclarationGroup, "InitialMode">(), "the mode in which the group starts is unknown"},
      {rowOf<composition::AssemblyConnector, "Provider">(), "the connector has only one end"},
      {rowOf<composition::AssemblyConnector, "Requester">(), "the connector has only one end"},
      {rowOf<instance::ModeDeclarationInstanceRef, "groupElement">(), "the group of the mode is unknown"},
      {rowOf<instance::TriggerInstanceRef, "Trigger">(), "the reference has no trigger"},
      {rowOf<instance::TriggerInstanceRef, "Port">(), "the port of the trigger is unknown"},
      {rowOf<interface::ModeDeclarationGroupElement, "ModeGroup">(), "the element has no modes"},
      {rowOf<interface::ModeSwitchInterface, "ModeGroup">(), "the interface switches no modes"},
      {rowOf<manifest::AdaptivePlatformServiceInstance, "Deployment">(), "the instance is not deployed"},
      {rowOf<manifest::ProcessToMachineMapping, "Machine">(), "the process runs on no machine"},
      {rowOf<manifest::ServiceInstanceToPortMapping, "ServiceInstance">(),
       "the port is mapped to no service instance"},
      {rowOf<manifest::ServiceInstanceToPortMapping, "Port">(), "the instance is mapped to no port"},
      {rowOf<manifest::ServiceInterfaceDeployment, "ServiceInterface">(), "no service interface is deployed"},
      {rowOf<timingExtension::EOCExecutableEntityRef, "Executable">(), "the step orders no runnable"},
      {rowOf<timingExtension::SwcTiming, "Behavior">(), "the timing applies to no behavior"},
  };
  return kRows;
}

const ClassData& dataOf(const K7Q::IntrospectiveMethods* methods) {
  return static_cast<const ClassMethods*>(methods)->data();
}

/// The slot that objects of the class have for the property. kNoSlot if the class does not have it.
unsigned slotIn(const ClassData& cls, const Row& row) {
  const ClassData& owner = dataOf(row.owner);
  return cls.isKindOf(owner.ordinal) ? cls.placeOf(owner, row.id).slot : ClassData::kNoSlot;
}

std::uint64_t bit(unsigned slot) { return slot == ClassData::kNoSlot ? 0 : std::uint64_t{1} << slot; }

bool isHoldable(const ClassData& cls) {
  for (const PackageRow& package : packageRows()) {
    for (const ClassMethods* table : package.classes) {
      for (const auto& property : table->data().properties) {
        if (property && property->holds() && property->storage() != Storage::None &&
            cls.isKindOf(property->type()->data().ordinal))
          return true;
      }
    }
  }
  return false;
}

void planSlot(ClassPlan& plan, const Property& property, std::uint64_t slot) {
  switch (property.storage()) {
    case Storage::Reference:
      if (property.isRequired()) plan.requiredReferences |= slot;
      break;
    case Storage::Text:
      if (property.isRequired()) plan.requiredTexts |= slot;
      break;
    case Storage::Enumeration:
    case Storage::Enumerations:
      plan.enumerations |= slot;
      break;
    case Storage::Integer:
    case Storage::Double:
    case Storage::Real:
      plan.numbers |= slot;
      break;
    default:
      break;
  }
}

}  // namespace

const ClassPlan& Plans::make(const ClassData& cls) {
  auto plan = std::make_unique<ClassPlan>();
  for (unsigned slot = 0; slot < cls.slotProperties.size(); ++slot) {
    planSlot(*plan, *cls.slotProperties[slot], bit(slot));
  }
  plan->requiredTexts &= ~bit(slotIn(cls, rowOf<foundation::NamedElement, "Name">()));
  for (const Exemption& row : exemptions()) {
    if (cls.isKindOf(dataOf(row.cls).ordinal)) plan->requiredReferences &= ~bit(slotIn(cls, row.row));
  }
  for (const Expectation& each : expectations()) plan->expected |= bit(slotIn(cls, each.row));
  plan->isHoldable = isHoldable(cls);
  for (const Rule& rule : rules()) {
    if (!rule.cls || cls.isKindOf(dataOf(&rule.cls()).ordinal)) plan->rules.push_back(&rule);
  }
  // Only now, since isHoldable() may have given ordinals to more classes.
  if (cls.ordinal >= mPlans.size()) mPlans.resize(cls.ordinal + 1);
  return *(mPlans[cls.ordinal] = std::move(plan));
}

const char* reasonFor(const ClassData& cls, unsigned slot) {
  for (const Expectation& each : expectations()) {
    if (slotIn(cls, each.row) == slot) return each.without;
  }
  return "";
}

}  // namespace Tarvelon::metamodel::native::validation
