#pragma once

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::common {

inline constexpr std::string_view kPurpose =
    "What all other packages build upon: names and identity, packages, modes, data in general, data type mappings, "
    "and data of tools.";

inline constexpr auto kPurposes = purposes(
    of<Referrable>(
        "The base of all that has a short name and can be referred to by it."),
    of<Identifiable>(
        "The base of all elements with an identity: a name, a category, descriptions and administrative data."),
    of<Data>(
        "The base of all data prototypes: data elements, arguments, parameters and variables. It has the type, the "
        "initial value and how the data is calibrated."),
    of<ApplicationError>(
        "An error that an operation may return to its client, with the error code that stands for it."),
    of<Packageable>(
        "The base of all elements that stand directly in a package."),
    of<ModeDeclarationGroup>(
        "A set of modes of which exactly one is active at a time, such as ignition off, on and cranking. One of "
        "them is the initial mode."),
    of<ModeDeclaration>(
        "One mode of a group, optionally with the number that stands for it in code."),
    of<Sd>(
        "One named value within a special data group. The gid tells what the value means."),
    of<SdgContents>(
        "The base of all that a special data group may contain: values, references and further groups."),
    of<SdgCaption>(
        "The caption of a special data group, which gives the group an identity of its own."),
    of<Sdg>(
        "A special data group: data that a tool keeps with an element and that AUTOSAR has no place for. The gid "
        "tells whose data it is."),
    of<AdminData>(
        "Administrative data of an element: its languages, its revision history and the special data of tools."),
    of<AUTOSAR>(
        "The root of an AUTOSAR model, which holds the top-level packages. In a file it is the outermost element."),
    of<Package>(
        "A package, which groups elements and gives them a namespace. Packages may hold further packages."),
    of<ReferenceBase>(
        "A package that relative references start from, known within its own package by a short label."),
    of<Sdx>(
        "A reference to another element, kept within a special data group."),
    of<DataTypeMappingSet>(
        "A set of mappings from application data types, and from mode groups, to implementation data types. "
        "Components and behaviors name the sets that apply to them."),
    of<DataTypeMap>(
        "A pair of types: the implementation data type that realizes an application data type."),
    of<ArxmlFilePackagingKind>(
        "How a model is distributed over ARXML files: one file, or several."),
    of<ModeRequestTypeMap>(
        "A pair of a mode group and the implementation data type by which its modes are represented in code."),
    of<SwAddrMethod>(
        "A way of addressing memory. Code and data that name the same method are placed in the same kind of memory "
        "section."),
    of<SymbolProps>(
        "A symbol for use in code where the short name will not do, such as a namespace of a service interface."));

}  // namespace Tarvelon::metamodel::arplatform::common
// clang-format on
