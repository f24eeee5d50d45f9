#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_ECUC_NAMES(CLASS, ENUMERATION) \
  CLASS(EcucBooleanParamDef)                      \
  CLASS(EcucContainerValue)                       \
  CLASS(EcucEnumerationParamDef)                  \
  CLASS(EcucFloatParamDef)                        \
  CLASS(EcucForeignReferenceDef)                  \
  CLASS(EcucIntegerParamDef)                      \
  CLASS(EcucModuleConfigurationValues)            \
  CLASS(EcucModuleDef)                            \
  CLASS(EcucNumericalParamValue)                  \
  CLASS(EcucParamConfContainerDef)                \
  CLASS(EcucReferenceDef)                         \
  CLASS(EcucReferenceValue)                       \
  CLASS(EcucTextualParamValue)                    \
  CLASS(EcucAbstractExternalReferenceDef)         \
  CLASS(EcucAbstractInternalReferenceDef)         \
  CLASS(EcucAbstractReferenceDef)                 \
  CLASS(EcucAbstractReferenceValue)               \
  CLASS(EcucContainerDef)                         \
  CLASS(EcucParameterDef)                         \
  CLASS(EcucParameterValue)
// clang-format on

namespace Tarvelon::metamodel::arplatform::ecuc {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.ecuc.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.ecuc.", E, __VA_ARGS__)
ARPLATFORM_ECUC_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::ecuc
