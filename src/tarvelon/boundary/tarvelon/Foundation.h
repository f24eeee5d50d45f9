#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the kernel and of the metamodels `foundation` and `types`, in the order of
// their registration. The metamodel `arplatform` builds on them.
//
// The list macros call CLASS for each class and ENUMERATION for each enumeration with its literals.
// clang-format off
#define TARVELON_KERNEL_NAMES(CLASS, ENUMERATION) \
  CLASS(ClassObject)                              \
  CLASS(Model)

#define TARVELON_FOUNDATION_NAMES(CLASS, ENUMERATION)                \
  CLASS(Element)                                                     \
  CLASS(Comment)                                                     \
  CLASS(NamedElement)                                                \
  CLASS(PackageableElement)                                          \
  CLASS(Namespace)                                                   \
  CLASS(Package)                                                     \
  CLASS(Domain)                                                      \
  CLASS(DomainRoot)                                                  \
  CLASS(ValueType)                                                   \
  CLASS(ValueSpecification)                                          \
  CLASS(NumericalValueSpecification)                                 \
  CLASS(TextValueSpecification)                                      \
  CLASS(ArrayValueSpecification)                                     \
  CLASS(RecordValueSpecification)                                    \
  ENUMERATION(VisibilityKind, Public, Private, Protected, Package)   \
  ENUMERATION(SwCalibrationAccessKind, ReadOnly, ReadWrite, NotAccessible)

#define TARVELON_TYPES_NAMES(CLASS, ENUMERATION)                                            \
  CLASS(CompuMethod)                                                                        \
  CLASS(SwBaseType)                                                                         \
  CLASS(ImplementationDataType)                                                             \
  CLASS(ApplicationPrimitiveDataType)                                                       \
  CLASS(ImplementationDataTypeElement)                                                      \
  CLASS(SymbolProps)                                                                        \
  CLASS(AutosarDataType)                                                                    \
  CLASS(ApplicationDataType)                                                                \
  CLASS(ApplicationCompositeDataType)                                                       \
  CLASS(ApplicationArrayDataType)                                                           \
  CLASS(ApplicationRecordDataType)                                                          \
  CLASS(ApplicationCompositeElementDataPrototype)                                           \
  CLASS(ApplicationArrayElement)                                                            \
  CLASS(ApplicationRecordElement)                                                           \
  CLASS(SwDataDefProps)                                                                     \
  CLASS(SwPointerTargetProps)                                                               \
  CLASS(SwTextProps)                                                                        \
  CLASS(SwRecordLayout)                                                                     \
  CLASS(Compu)                                                                              \
  CLASS(CompuScale)                                                                         \
  CLASS(CompuConst)                                                                         \
  CLASS(CompuRationalCoeffs)                                                                \
  CLASS(Limit)                                                                              \
  CLASS(DataConstr)                                                                         \
  CLASS(DataConstrRule)                                                                     \
  CLASS(InternalConstrs)                                                                    \
  CLASS(PhysConstrs)                                                                        \
  CLASS(ScaleConstr)                                                                        \
  CLASS(Unit)                                                                               \
  CLASS(UnitGroup)                                                                          \
  CLASS(PhysicalDimension)                                                                  \
  CLASS(ConstantSpecification)                                                              \
  CLASS(ConstantReference)                                                                  \
  CLASS(ApplicationValueSpecification)                                                      \
  CLASS(SwAxisCont)                                                                         \
  CLASS(SwValueCont)                                                                        \
  CLASS(SwValues)                                                                           \
  CLASS(NotAvailableValueSpecification)                                                     \
  CLASS(ReferenceValueSpecification)                                                        \
  ENUMERATION(ArrayImplPolicyEnum, PayloadAsArray, PayloadAsPointerToArray)                 \
  ENUMERATION(ArraySizeHandlingEnum, AllIndicesDifferentArraySize, AllIndicesSameArraySize, \
              InheritedFromArrayElementTypeSize)                                            \
  ENUMERATION(ArraySizeSemanticsEnum, FixedSize, VariableSize)                              \
  ENUMERATION(ByteOrderEnum, MostSignificantByteFirst, MostSignificantByteLast, Opaque)     \
  ENUMERATION(DisplayPresentationEnum, PresentationContinuous, PresentationDiscrete)        \
  ENUMERATION(IntervalTypeEnum, Closed, Open, Infinite)                                     \
  ENUMERATION(MonotonyEnum, NoMonotony, Increasing, Decreasing, StrictlyIncreasing,         \
              StrictlyDecreasing, Monotonous, StrictMonotonous)                             \
  ENUMERATION(ScaleConstrValidityEnum, Valid, NotValid, NotAvailable, NotDefined)           \
  ENUMERATION(SwImplPolicyEnum, Standard, Const, Fixed, MeasurementPoint, Queued)
// clang-format on

/// The native handles of the kernel's classes. Every class of the metamodel derives from ClassObject. The
/// model library publishes the kernel's host classes in the package `K7Q`; the rows add meta properties to
/// them.
namespace Tarvelon::metamodel::kernel {

#define KERNEL_CLASS(X) TARVELON_DECLARE_CLASS("K7Q.", X)
#define KERNEL_ENUMERATION(E, ...) TARVELON_DECLARE_ENUMERATION("K7Q.", E, __VA_ARGS__)
TARVELON_KERNEL_NAMES(KERNEL_CLASS, KERNEL_ENUMERATION)
#undef KERNEL_CLASS
#undef KERNEL_ENUMERATION

}  // namespace Tarvelon::metamodel::kernel

/// The native handles of the general metamodel: elements, names, packages and value specifications.
namespace Tarvelon::metamodel::foundation {

#define FOUNDATION_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.foundation.", X)
#define FOUNDATION_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.foundation.", E, __VA_ARGS__)
TARVELON_FOUNDATION_NAMES(FOUNDATION_CLASS, FOUNDATION_ENUMERATION)
#undef FOUNDATION_CLASS
#undef FOUNDATION_ENUMERATION

}  // namespace Tarvelon::metamodel::foundation

/// The native handles of the data types that several packages of `arplatform` use.
namespace Tarvelon::metamodel::types {

#define TYPES_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.types.", X)
#define TYPES_ENUMERATION(E, ...) TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.types.", E, __VA_ARGS__)
TARVELON_TYPES_NAMES(TYPES_CLASS, TYPES_ENUMERATION)
#undef TYPES_CLASS
#undef TYPES_ENUMERATION

}  // namespace Tarvelon::metamodel::types
