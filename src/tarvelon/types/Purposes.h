#pragma once

#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::types {

inline constexpr std::string_view kPurpose =
    "Data types: what numbers mean to an application, and how they are represented in code.";

inline constexpr auto kPurposes = purposes(
    of<CompuMethod>(
        "A computation method: what the numbers of a data type stand for, and in which unit."),
    of<SwBaseType>(
        "How a value is represented on an ECU: its size in bits, its encoding and its native type."),
    of<ImplementationDataType>(
        "A data type as code sees it: a base type with a computation method, an array, a structure or a pointer."
        " Its own BaseType and CompuMethod count, not those of its SwDataDefProps."),
    of<ApplicationPrimitiveDataType>(
        "A data type as the application sees it: a single physical value, whatever represents it in code."
        " Its own CompuMethod counts, not that of its SwDataDefProps."),
    of<ImplementationDataTypeElement>(
        "A part of an implementation data type: a member of a structure or union, or the elements of an array."),
    of<SymbolProps>(
        "The name that code uses for an implementation data type."),
    of<AutosarDataType>(
        "The base of composite application data types."
        " Implementation types and primitive application types derive from foundation.ValueType directly."),
    of<ApplicationDataType>(
        "The base of data types as the application sees them, except the primitive ones."),
    of<ApplicationCompositeDataType>(
        "The base of application data types that are made of elements: arrays and records."),
    of<ApplicationArrayDataType>(
        "An array as the application sees it: several values of one type."),
    of<ApplicationRecordDataType>(
        "A record as the application sees it: a value for each of its elements."),
    of<ApplicationCompositeElementDataPrototype>(
        "The base of the elements of application arrays and records, which have an application data type."),
    of<ApplicationArrayElement>(
        "What the elements of an application array are: their type and their number."),
    of<ApplicationRecordElement>(
        "An element of an application record, with its name and type."),
    of<SwDataDefProps>(
        "The properties of data for code, measurement and calibration: base type, computation method, limits,"
        " access and more."),
    of<SwPointerTargetProps>(
        "What a pointer points to."),
    of<SwTextProps>(
        "How a text is represented: its greatest length, its characters and what fills the rest."),
    of<SwRecordLayout>(
        "How the parts of a curve, map or other composed parameter follow one another in memory."
        " Only the name and the category can be read; the rest stays in the file as it is."),
    of<Compu>(
        "One direction of a computation method: from internal numbers to physical values, or back."),
    of<CompuScale>(
        "What a range of numbers means: a formula, a fixed value or a text."),
    of<CompuConst>(
        "A constant of a computation method: a number or a text."),
    of<CompuRationalCoeffs>(
        "The coefficients of a quotient of two polynomials, that of the lowest power first, as texts."),
    of<Limit>(
        "A lower or an upper limit, as text, since it may be INF or a formula."),
    of<DataConstr>(
        "Constraints that the values of a data type meet."),
    of<DataConstrRule>(
        "One rule of a data constraint: the limits of the physical values and of the internal ones."),
    of<InternalConstrs>(
        "Limits of the numbers that represent values in code."),
    of<PhysConstrs>(
        "Limits of the physical values, and their unit."),
    of<ScaleConstr>(
        "Whether the values of a range are valid."),
    of<Unit>(
        "A physical unit, with the factor and the offset from the SI unit."),
    of<UnitGroup>(
        "Units that belong together, such as those of one country."),
    of<PhysicalDimension>(
        "The dimension of units: the exponents of the seven base quantities."),
    of<ConstantSpecification>(
        "A value with a name, to which many value specifications can refer."),
    of<ConstantReference>(
        "A value that a constant specification states."),
    of<ApplicationValueSpecification>(
        "A physical value as the application sees it, also a curve or a map with its axes."),
    of<SwAxisCont>(
        "The values of an axis of a curve or map."),
    of<SwValueCont>(
        "The physical values of a parameter, and their unit."),
    of<SwValues>(
        "Physical values in their order, as texts: V has numbers, Vt texts and Vf formulas or numbers."),
    of<NotAvailableValueSpecification>(
        "States that an optional value is not there."),
    of<ReferenceValueSpecification>(
        "The value of a pointer: the data that it points to."),
    of<ArrayImplPolicyEnum>(
        "Whether code has an array itself, or a pointer to the array."),
    of<ArraySizeHandlingEnum>(
        "Where the sizes of the arrays in an array of variable size come from."),
    of<ArraySizeSemanticsEnum>(
        "Whether the size of an array is fixed, or only its greatest size."),
    of<ByteOrderEnum>(
        "Which byte of a number comes first in memory."),
    of<DisplayPresentationEnum>(
        "Whether tools show values as a continuous line or as steps."),
    of<IntervalTypeEnum>(
        "Whether a limit itself is inside (closed) or outside (open), or whether there is no limit."),
    of<MonotonyEnum>(
        "Whether the values of a curve rise or fall."),
    of<ScaleConstrValidityEnum>(
        "What is known about the values of a range."),
    of<SwImplPolicyEnum>(
        "How code implements data: as usual, as a constant, with a queue or for measurement."));

}  // namespace Tarvelon::metamodel::types
// clang-format on
