#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_INTERFACE_NAMES(CLASS, ENUMERATION)                                                     \
  CLASS(PortInterface)                                                                                     \
  CLASS(ArgumentData)                                                                                      \
  CLASS(ClientServerInterface)                                                                             \
  CLASS(DataInterface)                                                                                     \
  CLASS(FlowData)                                                                                          \
  CLASS(ModeSwitchInterface)                                                                               \
  CLASS(NvDataInterface)                                                                                   \
  CLASS(Operation)                                                                                         \
  CLASS(ParameterData)                                                                                     \
  CLASS(ParameterInterface)                                                                                \
  CLASS(SenderReceiverInterface)                                                                           \
  CLASS(TriggerInterface)                                                                                  \
  ENUMERATION(ArgumentDataDirectionKind, In, Out, InOut, Error)                                            \
  ENUMERATION(InvalidationPolicyKind, None, DontInvalidate, Keep, Replace)                                 \
  ENUMERATION(ServerArgumentImplPolicyKind, UseArgumentType, UseArrayBaseType, UseVoid)                    \
  CLASS(ModeDeclarationGroupElement)                                                                       \
  CLASS(VariableData)                                                                                      \
  CLASS(Trigger)                                                                                           \
  ENUMERATION(CseCodeType, None, CSE0, CSE1, CSE2, CSE3, CSE4, CSE5, CSE6, CSE7, CSE8, CSE9, CSE10, CSE20, \
              CSE21, CSE22, CSE23, CSE24, CSE25, CSE26, CSE27, CSE28, CSE100, CSE101, CSE102, CSE997,      \
              CSE998, CSE999, CSE1000)                                                                     \
  CLASS(ServiceInterface)                                                                                  \
  CLASS(FieldData)                                                                                         \
  CLASS(PersistencyKeyValueInterface)                                                                      \
  ENUMERATION(PersistencyRedundancyEnum, Redundant, None)                                                  \
  ENUMERATION(PersistencyUpdateStrategyEnum, Overwrite, KeepExisting, Delete)                              \
  CLASS(PersistencyData)                                                                                   \
  CLASS(PersistencyInterface)
// clang-format on

namespace Tarvelon::metamodel::arplatform::interface {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.interface.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.interface.", E, __VA_ARGS__)
ARPLATFORM_INTERFACE_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::interface
