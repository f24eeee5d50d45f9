// Rules that compare the values of data with their types.

#include <bit>
#include <charconv>
#include <cmath>
#include <optional>
#include <ranges>

#include "tarvelon/platform/hx/Utf.h"
#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

using namespace foundation;  // NOLINT(google-build-using-namespace)
using namespace types;       // NOLINT(google-build-using-namespace)
using arplatform::common::Data;

/// A value and what types it: a data type, or an element of one. Null if that is not known.
struct Typed {
  const Instance* value;
  const Instance* type;
  /// The reference to the constant that states the value. Null if the data states it itself.
  const Instance* reference = nullptr;
};

template <class X, FixedString Name>
std::u16string_view textOf(const Instance& object) {
  const Word* word = wordOf<X, Name>(object);
  return word && word->text ? word->text->view() : std::u16string_view();
}

template <class X, FixedString Name>
std::optional<std::int32_t> given(const Instance& object) {
  const Word* word = wordOf<X, Name>(object);
  return word ? std::optional(integerOf(*word)) : std::nullopt;
}

const Instance* propsOf(const Instance& type) {
  if (isA<ImplementationDataType>(type)) return get<ImplementationDataType, "SwDataDefProps">(type);
  if (isA<ImplementationDataTypeElement>(type))
    return get<ImplementationDataTypeElement, "SwDataDefProps">(type);
  if (isA<ApplicationPrimitiveDataType>(type))
    return get<ApplicationPrimitiveDataType, "SwDataDefProps">(type);
  if (isA<AutosarDataType>(type)) return get<AutosarDataType, "SwDataDefProps">(type);
  return getOf<ApplicationCompositeElementDataPrototype, "SwDataDefProps">(&type);
}

bool isImplementation(const Instance& type) {
  return isA<ImplementationDataType>(type) || isA<ImplementationDataTypeElement>(type);
}

/// The parts of an implementation data type.
Objects partsOf(const Instance& type) {
  if (isA<ImplementationDataType>(type)) return all<ImplementationDataType, "SubElements">(type);
  if (isA<ImplementationDataTypeElement>(type))
    return all<ImplementationDataTypeElement, "SubElements">(type);
  return Objects(nullptr);
}

/// The type that a type or an element refers to. Null if it says itself what it is.
const Instance* nextType(const Instance& type) {
  if (isA<ApplicationCompositeElementDataPrototype>(type))
    return get<ApplicationCompositeElementDataPrototype, "Type">(type);
  if (!isImplementation(type) || !partsOf(type).empty()) return nullptr;
  return getOf<SwDataDefProps, "ImplementationDataType">(propsOf(type));
}

/// Calls find(type) for a type and those that it refers to, until the result is not null.
template <class Find>
const Instance* firstAlong(const Instance* type, Find find) {
  constexpr int kMost = 32;  // types may refer to each other in a circle
  for (int step = 0; type && step < kMost; ++step, type = nextType(*type)) {
    if (const Instance* found = find(*type)) return found;
  }
  return nullptr;
}

/// The type that says what a value is made of.
const Instance* lastType(const Instance* type) {
  return firstAlong(type, [](const Instance& each) { return nextType(each) ? nullptr : &each; });
}

struct Array {
  const Instance* entry = nullptr;  ///< what types the elements; null if the type is no array
  std::optional<std::int32_t> size;
  bool isVariable = false;
};

Array arrayOf(const Instance& type) {
  if (isA<ApplicationArrayDataType>(type)) {
    const Instance* entry = get<ApplicationArrayDataType, "Element">(type);
    if (!entry) return {};
    return {entry, given<ApplicationArrayElement, "MaxNumberOfElements">(*entry),
            number<ApplicationArrayElement, "ArraySizeSemantics">(*entry) ==
                ArraySizeSemanticsEnum::VariableSize};
  }
  const Objects parts = partsOf(type);
  if (parts.size() != 1) return {};
  const auto size = given<ImplementationDataTypeElement, "ArraySize">(*parts.at(0));
  if (!size) return {};
  return {parts.at(0), size,
          number<ImplementationDataTypeElement, "ArraySizeSemantics">(*parts.at(0)) ==
              ArraySizeSemanticsEnum::VariableSize};
}

/// The elements of a record, in their order. None for a union, of which a value has one member.
Objects membersOf(const Instance& type) {
  if (isA<ApplicationRecordDataType>(type)) return all<ApplicationRecordDataType, "Elements">(type);
  const bool isUnion =
      (isA<ImplementationDataType>(type) && textOf<ImplementationDataType, "Category">(type) == u"UNION") ||
      (isA<ImplementationDataTypeElement>(type) &&
       textOf<ImplementationDataTypeElement, "Category">(type) == u"UNION");
  return isUnion ? Objects(nullptr) : partsOf(type);
}

/// Puts the values inside of a value on the stack, the first one on top.
void pushInner(const Typed& typed, std::vector<Typed>& left) {
  const Instance* type = lastType(typed.type);
  if (!type) return;
  if (isA<ArrayValueSpecification>(*typed.value)) {
    const Array array = arrayOf(*type);
    const Objects elements = all<ArrayValueSpecification, "Element">(*typed.value);
    for (std::uint32_t index = elements.size(); array.entry && index > 0; --index)
      left.push_back({elements.at(index - 1), array.entry, typed.reference});
  } else if (isA<RecordValueSpecification>(*typed.value)) {
    const Objects fields = all<RecordValueSpecification, "Field">(*typed.value);
    const Objects members = membersOf(*type);
    for (std::uint32_t index = members.size() == fields.size() ? fields.size() : 0; index > 0; --index)
      left.push_back({fields.at(index - 1), members.at(index - 1), typed.reference});
  }
}

/// Calls visit(Typed) for each value that the data states, and for the values inside of it. What a constant
/// says is visited too, but not the constants to which it refers itself, which could form a circle.
template <class Visit>
void forEachTyped(const Instance& data, Visit visit) {
  const Instance* type = get<Data, "Type">(data);
  if (!type) return;
  std::vector<Typed> left;
  left.push_back({get<Data, "DefaultValue">(data), type});
  left.push_back({get<Data, "InitValue">(data), type});
  while (!left.empty()) {
    Typed typed = left.back();
    left.pop_back();
    if (!typed.reference && isA<ConstantReference>(typed.value)) {
      typed.reference = typed.value;
      typed.value =
          getOf<ConstantSpecification, "ValueSpec">(get<ConstantReference, "Constant">(*typed.reference));
    }
    if (!typed.value) continue;
    visit(typed);
    pushInner(typed, left);
  }
}

/// Reports a value where the data states it: a fault of a constant is one of its use here.
template <class X, FixedString Name>
void add(const Typed& typed, const std::string& message, Findings& findings) {
  if (typed.reference) {
    findings.add<ConstantReference, "Constant">(*typed.reference,
                                                "the constant does not fit here: " + message);
  } else {
    findings.add<X, Name>(*typed.value, message);
  }
}

/// The number that a limit is. Nothing for a formula.
std::optional<double> numberIn(std::u16string_view limit) {
  const std::string text = hx::toUtf8(limit);
  std::string_view digits = text;
  const bool isNegative = digits.starts_with('-');
  if (isNegative || digits.starts_with('+')) digits.remove_prefix(1);
  const char mark = digits.size() > 1 && digits[0] == '0' ? digits[1] : '\0';
  const int base = mark == 'x' || mark == 'X'   ? 16
                   : mark == 'b' || mark == 'B' ? 2
                   : mark >= '0' && mark <= '7' ? 8
                                                : 10;
  if (base == 2 || base == 16) digits.remove_prefix(2);
  const char* end = digits.data() + digits.size();
  double value = 0;
  std::from_chars_result result{};
  if (base == 10) {
    result = std::from_chars(digits.data(), end, value);
  } else {
    std::uint64_t whole = 0;
    result = std::from_chars(digits.data(), end, whole, base);
    value = static_cast<double>(whole);
  }
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return isNegative ? -value : value;
}

std::string textOf(double value) {
  std::string text(32, '\0');
  text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.15g", value)));
  return text;
}

/// Whether a number is beyond a limit, which may be null.
bool isBeyond(double value, const Instance* limit, bool isLower) {
  if (!limit) return false;
  const auto kind = given<Limit, "IntervalType">(*limit);
  const auto bound = numberIn(textOf<Limit, "Value">(*limit));
  if (!bound || kind == IntervalTypeEnum::Infinite) return false;
  const bool isOutside = isLower ? value < *bound : value > *bound;
  return isOutside || (kind == IntervalTypeEnum::Open && value == *bound);
}

/// Text such as "above 0".
std::string limitText(const Instance& limit, bool isLower) {
  const bool isOpen = given<Limit, "IntervalType">(limit) == IntervalTypeEnum::Open;
  const char* word = isLower ? isOpen ? "above " : "from " : isOpen ? "below " : "up to ";
  return word + hx::toUtf8(textOf<Limit, "Value">(limit));
}

template <class Constrs>
void checkLimits(const Typed& typed, double value, const Instance& constraint, const Instance* limits,
                 Findings& findings) {
  if (!limits) return;
  const Instance* lower = get<Constrs, "LowerLimit">(*limits);
  const Instance* upper = get<Constrs, "UpperLimit">(*limits);
  const bool isBelow = isBeyond(value, lower, true);
  const Instance* broken = isBelow ? lower : isBeyond(value, upper, false) ? upper : nullptr;
  if (!broken) return;
  add<NumericalValueSpecification, "Value">(
      typed,
      "expected a number " + limitText(*broken, isBelow) + ", as the constraint " + shownPath(constraint) +
          " says; found " + textOf(value) + "; change the number, or refer to another type",
      findings);
}

/// Whether the number is the one that marks data as invalid, which may be outside of the limits.
bool isInvalidValue(const Instance* type, double value) {
  return firstAlong(type, [value](const Instance& each) -> const Instance* {
    const Instance* invalid = getOf<SwDataDefProps, "InvalidValue">(propsOf(each));
    if (!isA<NumericalValueSpecification>(invalid)) return nullptr;
    const Word* word = wordOf<NumericalValueSpecification, "Value">(*invalid);
    return word && std::bit_cast<double>(word->bits) == value ? invalid : nullptr;
  });
}

/// The computation method of a type. What the type says itself counts, not what its properties say.
const Instance* methodOf(const Instance& type) {
  const Instance* own = getOf<ImplementationDataType, "CompuMethod">(&type);
  if (!own) own = getOf<ApplicationPrimitiveDataType, "CompuMethod">(&type);
  return own ? own : getOf<SwDataDefProps, "CompuMethod">(propsOf(type));
}

}  // namespace

void checkArrayLengths(const Instance& object, Findings& findings) {
  forEachTyped(object, [&findings](const Typed& typed) {
    const Instance* type = isA<ArrayValueSpecification>(*typed.value) ? lastType(typed.type) : nullptr;
    if (!type) return;
    const Array array = arrayOf(*type);
    const auto found =
        static_cast<std::int64_t>(all<ArrayValueSpecification, "Element">(*typed.value).size());
    if (!array.size || (array.isVariable ? found <= *array.size : found == *array.size)) return;
    add<ArrayValueSpecification, "Element">(
        typed,
        std::string("expected ") + (array.isVariable ? "at most " : "") + std::to_string(*array.size) +
            (*array.size == 1 ? " element" : " elements") + " for the type " + shownPath(*type) + ", found " +
            std::to_string(found) + "; add or remove elements",
        findings);
  });
}

void checkConstraints(const Instance& object, Findings& findings) {
  forEachTyped(object, [&findings](const Typed& typed) {
    if (!isA<NumericalValueSpecification>(*typed.value)) return;
    const Word* word = wordOf<NumericalValueSpecification, "Value">(*typed.value);
    const double value = word ? std::bit_cast<double>(word->bits) : 0;
    const Instance* type = firstAlong(typed.type, [](const Instance& each) {
      return getOf<SwDataDefProps, "DataConstr">(propsOf(each)) ? &each : nullptr;
    });
    if (!type || std::isnan(value) || isInvalidValue(typed.type, value)) return;
    const Instance& constraint = *get<SwDataDefProps, "DataConstr">(*propsOf(*type));
    for (const Instance* rule : all<DataConstr, "DataConstrRule">(constraint)) {
      // Only level 0 must be met.
      if (number<DataConstrRule, "ConstrLevel">(*rule) != 0) continue;
      if (isImplementation(*type)) {
        checkLimits<InternalConstrs>(typed, value, constraint, get<DataConstrRule, "InternalConstrs">(*rule),
                                     findings);
      } else {
        checkLimits<PhysConstrs>(typed, value, constraint, get<DataConstrRule, "PhysConstrs">(*rule),
                                 findings);
      }
    }
  });
}

void checkTableTexts(const Instance& object, Findings& findings) {
  forEachTyped(object, [&findings](const Typed& typed) {
    if (!isA<TextValueSpecification>(*typed.value)) return;
    const Instance* method = firstAlong(typed.type, methodOf);
    const Instance* table = method ? get<CompuMethod, "CompuInternalToPhys">(*method) : nullptr;
    if (!table) return;
    const std::u16string_view value = textOf<TextValueSpecification, "Value">(*typed.value);
    constexpr unsigned kShown = 5;
    std::string known;
    unsigned count = 0;
    for (const Instance* scale : all<Compu, "CompuScale">(*table)) {
      if (textOf<CompuScale, "Symbol">(*scale) == value || textOf<CompuScale, "ShortLabel">(*scale) == value)
        return;
      const Instance* constant = get<CompuScale, "CompuConst">(*scale);
      const std::u16string_view text = constant ? textOf<CompuConst, "Vt">(*constant) : std::u16string_view();
      if (text.empty()) continue;
      if (text == value) return;
      if (++count <= kShown) known += (count == 1 ? "'" : ", '") + hx::toUtf8(text) + "'";
    }
    if (count == 0) return;
    add<TextValueSpecification, "Value">(typed,
                                         "expected one of the texts " + known +
                                             (count > kShown ? ", ..." : "") + " of " + shownPath(*method) +
                                             ", found '" + hx::toUtf8(value) + "'; set one of these texts",
                                         findings);
  });
}

}  // namespace Tarvelon::metamodel::native::validation
