#pragma once

#include "tarvelon/arplatform/ecuc/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::ecuc {

inline constexpr std::string_view kPurpose =
    "The configuration of an ECU's basic software: which parameters a module has, and which values they are given.";

inline constexpr auto kPurposes = purposes(
    of<EcucBooleanParamDef>(
        "Defines a configuration parameter that is true or false."),
    of<EcucContainerValue>(
        "A configured container: the values of its parameters, its references and its containers, as its definition "
        "asks for."),
    of<EcucEnumerationParamDef>(
        "Defines a configuration parameter whose value is one of several literals."),
    of<EcucFloatParamDef>(
        "Defines a configuration parameter whose value is a floating-point number."),
    of<EcucForeignReferenceDef>(
        "Defines a configuration reference to an element outside of the ECU configuration."),
    of<EcucIntegerParamDef>(
        "Defines a configuration parameter whose value is a whole number."),
    of<EcucModuleConfigurationValues>(
        "The configuration of one module: the containers with their values, as the module's definition asks for."),
    of<EcucModuleDef>(
        "Defines what can be configured of one module of the basic software: its containers."),
    of<EcucNumericalParamValue>(
        "The value of a configuration parameter that is a number; a Boolean is 0 or 1."),
    of<EcucParamConfContainerDef>(
        "Defines a container of configuration parameters and references."),
    of<EcucReferenceDef>(
        "Defines a configuration reference to another container of the ECU configuration."),
    of<EcucReferenceValue>(
        "The value of a configuration reference: the element that it refers to."),
    of<EcucTextualParamValue>(
        "The value of a configuration parameter that is a text, such as the literal of an enumeration."),
    of<EcucAbstractExternalReferenceDef>(
        "The base of the definitions of references that leave the ECU configuration."),
    of<EcucAbstractInternalReferenceDef>(
        "The base of the definitions of references that stay within the ECU configuration."),
    of<EcucAbstractReferenceDef>(
        "The base of the definitions of configuration references."),
    of<EcucAbstractReferenceValue>(
        "The base of the values of configuration references. It names the definition of the reference."),
    of<EcucContainerDef>(
        "The base of the definitions of containers, which may hold further ones."),
    of<EcucParameterDef>(
        "The base of the definitions of configuration parameters."),
    of<EcucParameterValue>(
        "The base of the values of configuration parameters. It names the definition of the parameter."));

}  // namespace Tarvelon::metamodel::arplatform::ecuc
// clang-format on
