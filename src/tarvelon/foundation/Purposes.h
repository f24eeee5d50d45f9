#pragma once

#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::foundation {

inline constexpr std::string_view kPurpose =
    "What models of every domain are made of: elements and what owns them, names, packages, values and types of values.";

inline constexpr auto kPurposes = purposes(
    of<Element>(
        "The base of all elements of a model. An element knows what owns it and what it owns."),
    of<Comment>(
        "An element that is a text, its body, and may annotate other elements."),
    of<NamedElement>(
        "The base of all elements that have a name."),
    of<PackageableElement>(
        "The base of all elements that can stand directly in a package."),
    of<Namespace>(
        "The base of all elements that own others by their names."),
    of<Package>(
        "A package of any domain, which holds elements and further packages in PackagedElement."),
    of<Domain>(
        "The domain that a model belongs to."),
    of<DomainRoot>(
        "The base of the roots of models: a package that no other package holds."),
    of<ValueType>(
        "The base of all data types: what values, data elements, arguments and parameters are typed by."),
    of<ValueSpecification>(
        "The base of all values that a model states, such as initial values."),
    of<NumericalValueSpecification>(
        "A value that is a number."),
    of<TextValueSpecification>(
        "A value that is a text."),
    of<ArrayValueSpecification>(
        "A value that is made of several values of one type, in their order."),
    of<RecordValueSpecification>(
        "A value that is made of one value for each field of a record."),
    of<VisibilityKind>(
        "From where an element can be seen by its name."),
    of<SwCalibrationAccessKind>(
        "Whether tools for measurement and calibration may read data, read and write it, or neither."));

}  // namespace Tarvelon::metamodel::foundation
// clang-format on
