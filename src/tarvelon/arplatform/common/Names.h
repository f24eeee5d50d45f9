#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_COMMON_NAMES(CLASS, ENUMERATION)        \
  CLASS(Referrable)                                        \
  CLASS(Identifiable)                                      \
  CLASS(Data)                                              \
  CLASS(ApplicationError)                                  \
  CLASS(Packageable)                                       \
  CLASS(ModeDeclarationGroup)                              \
  CLASS(ModeDeclaration)                                   \
  CLASS(Sd)                                                \
  CLASS(SdgContents)                                       \
  CLASS(SdgCaption)                                        \
  CLASS(Sdg)                                               \
  CLASS(AdminData)                                         \
  CLASS(AUTOSAR)                                           \
  CLASS(Package)                                           \
  CLASS(ReferenceBase)                                     \
  CLASS(Sdx)                                               \
  CLASS(DataTypeMappingSet)                                \
  CLASS(DataTypeMap)                                       \
  ENUMERATION(ArxmlFilePackagingKind, Modular, SingleFile) \
  CLASS(ModeRequestTypeMap)                                \
  CLASS(SwAddrMethod)                                      \
  CLASS(SymbolProps)
// clang-format on

namespace Tarvelon::metamodel::arplatform::common {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.common.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.common.", E, __VA_ARGS__)
ARPLATFORM_COMMON_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::common
