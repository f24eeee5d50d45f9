// Rules for values that their types alone do not express.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

using namespace arplatform;  // NOLINT(google-build-using-namespace): the rows name the packages below it

constexpr double kNoLimit = std::numeric_limits<double>::infinity();

/// The allowed range of a numeric property. `isAbove` means that the lower limit itself is not allowed.
struct Range {
  const K7Q::IntrospectiveMethods* owner;
  unsigned id;
  double low;
  double high = kNoLimit;
  bool isAbove = false;
  const char* what = "";
  /// Any number is allowed, including INF, -INF and NaN, which AUTOSAR allows for data values.
  bool isAny = false;
};

template <class X, FixedString Name>
Range above(double low, const char* what) {
  using Found = PropertyAccess<X, Name>;
  return {&Found::methods(), Found::kProperty.id, low, kNoLimit, true, what};
}
template <class X, FixedString Name>
Range from(double low, const char* what, double high = kNoLimit) {
  using Found = PropertyAccess<X, Name>;
  return {&Found::methods(), Found::kProperty.id, low, high, false, what};
}

template <class X, FixedString Name>
Range any() {
  using Found = PropertyAccess<X, Name>;
  return {&Found::methods(), Found::kProperty.id, -kNoLimit, kNoLimit, false, "", true};
}

const auto& ranges() {
  static const Range kRows[] = {
      any<foundation::NumericalValueSpecification, "Value">(),
      any<ecuc::EcucNumericalParamValue, "Value">(),
      any<types::CompuConst, "V">(),
      any<types::CompuConst, "Vf">(),
      above<behavior::TimingEvent, "Period">(0, "a period in seconds"),
      above<composition::InstantiationTimingEventProps, "Period">(0, "a period in seconds"),
      from<behavior::OperationAccess, "Timeout">(0, "a time in seconds"),
      from<port::DataReceiverNonqueuedPortComSpec, "AliveTimeout">(0, "a time in seconds"),
      from<port::DataSenderPortComSpec, "transAcqRequestTimeout">(0, "a time in seconds"),
      from<port::DataReceiverPortAnnotation, "signalAge">(0, "a time in seconds"),
      from<port::DataReceiverQueuedPortComSpec, "QueueLength">(1, "a number of entries"),
      from<port::ServerPortComSpec, "QueueLength">(1, "a number of entries"),
      from<interface::PersistencyInterface, "MinimumSustainedSize">(0, "a number of bytes"),
      from<manifest::PersistencyKeyValueDatabase, "MinimumSustainedSize">(0, "a number of bytes"),
      from<manifest::PersistencyKeyValueDatabase, "MaximumAllowedSize">(0, "a number of bytes"),
      from<manifest::Machine, "DefaultApplicationEnterTimeout">(0, "a time in seconds"),
      from<manifest::Machine, "DefaultApplicationExitTimeout">(0, "a time in seconds"),
      from<manifest::PerStateTimeout, "EnterTimeout">(0, "a time in seconds"),
      from<manifest::PerStateTimeout, "ExitTimeout">(0, "a time in seconds"),
      from<manifest::ResourceGroup, "CpuUsage">(0, "a percentage of the processors", 100),
      from<manifest::ResourceGroup, "MemUsage">(0, "an amount of memory"),
      from<common::ModeDeclaration, "Value">(0, "the number of a mode"),
      from<common::ModeDeclarationGroup, "OnTransitionValue">(0, "the number of a mode"),
      from<types::SwBaseType, "BaseTypeSize">(1, "a number of bits"),
  };
  return kRows;
}

/// Null if the property has no range.
const Range* rangeOf(const Property& property) {
  for (const Range& range : ranges()) {
    if (range.owner == &property.ownerClass() && range.id == property.id()) return &range;
  }
  return nullptr;
}

std::string text(double value) {
  std::array<char, 32> buffer{};
  std::snprintf(buffer.data(), buffer.size(), "%.15g", value);
  return buffer.data();
}

double valueOf(const Property& property, const Word* word) {
  if (!word) return 0;
  return property.storage() == Storage::Integer ? integerOf(*word) : std::bit_cast<double>(word->bits);
}

std::string limitsOf(const Range& range) {
  std::string limits = std::string(range.what) + (range.isAbove ? " above " : " from ") + text(range.low);
  return range.high < kNoLimit ? limits + " to " + text(range.high)
                               : limits + (range.isAbove ? "" : " upwards");
}

bool isWithin(double value, const Range& range) {
  return value <= range.high && (range.isAbove ? value > range.low : value >= range.low);
}

template <class X, FixedString Name>
std::optional<std::int32_t> given(const Instance& object) {
  const Word* word = wordOf<X, Name>(object);
  return word ? std::optional(integerOf(*word)) : std::nullopt;
}

template <FixedString Name>
void requireOperand(const Instance& filter, const char* kind, Findings& findings) {
  if (wordOf<port::DataFilter, Name>(filter)) return;
  findings.add<port::DataFilter, Name>(
      filter, std::string("is not set, and the kind ") + kind + " needs it; set it, or set another kind");
}

void requireBounds(const Instance& filter, const char* kind, Findings& findings) {
  requireOperand<"min">(filter, kind, findings);
  requireOperand<"max">(filter, kind, findings);
  const auto low = given<port::DataFilter, "min">(filter);
  const auto high = given<port::DataFilter, "max">(filter);
  if (low && high && *low > *high)
    findings.add<port::DataFilter, "min">(filter, "expected at most max, which is " + std::to_string(*high) +
                                                      "; found " + std::to_string(*low) +
                                                      "; exchange the two values");
}

void requirePeriod(const Instance& filter, Findings& findings) {
  requireOperand<"Period">(filter, "OneEveryN", findings);
  const auto period = given<port::DataFilter, "Period">(filter);
  const auto offset = given<port::DataFilter, "offset">(filter);
  if (period && *period < 1)
    findings.add<port::DataFilter, "Period">(filter, "expected a number from 1 upwards, found " +
                                                         std::to_string(*period) +
                                                         "; set N, so that one of N values passes");
  if (period && offset && *period >= 1 && (*offset < 0 || *offset >= *period))
    findings.add<port::DataFilter, "offset">(
        filter, "expected a number from 0 to below Period, which is " + std::to_string(*period) + "; found " +
                    std::to_string(*offset) + "; set which of the N values passes, counted from 0");
}

}  // namespace

void checkRanges(const Instance& object, Findings& findings) {
  const std::uint64_t required = findings.planOf(object).numbers;
  for (std::uint64_t slots = required; slots != 0; slots &= slots - 1) {
    const auto slot = static_cast<unsigned>(std::countr_zero(slots));
    const Property& property = *object.cls().slotProperties[slot];
    const Word* word = object.find(slot);
    // An optional property that is unset has no value. A required property that is unset reads as 0.
    if (!word && !property.isRequired()) continue;
    const double value = valueOf(property, word);
    const Range* range = rangeOf(property);
    if (range ? range->isAny || (std::isfinite(value) && isWithin(value, *range)) : std::isfinite(value))
      continue;
    const std::string expected = range ? limitsOf(*range) : "a finite number";
    findings.add(object, slot,
                 "expected " + expected + ", found " + (word ? "" : "no value, which is read as ") +
                     text(value) + "; set a valid number");
  }
}

void checkDataFilter(const Instance& object, Findings& findings) {
  using Kind = port::DataFilterKind;
  if (!wordOf<port::DataFilter, "DataFilterKind">(object)) return;
  switch (number<port::DataFilter, "DataFilterKind">(object)) {
    case Kind::MaskedNewEqualsMaskedOld:
    case Kind::MaskedNewDiffersMaskedOld:
      requireOperand<"mask">(object, "MaskedNew...MaskedOld", findings);
      break;
    case Kind::MaskedNewEqualsX:
    case Kind::MaskedNewDiffersX:
      requireOperand<"mask">(object, "MaskedNew...X", findings);
      requireOperand<"x">(object, "MaskedNew...X", findings);
      break;
    case Kind::NewIsWithin:
      requireBounds(object, "NewIsWithin", findings);
      break;
    case Kind::NewIsOutside:
      requireBounds(object, "NewIsOutside", findings);
      break;
    case Kind::OneEveryN:
      requirePeriod(object, findings);
      break;
    default:
      break;
  }
}

void checkModes(const Instance& object, Findings& findings) {
  using common::ModeDeclaration, common::ModeDeclarationGroup;
  const Instance* initial = get<ModeDeclarationGroup, "InitialMode">(object);
  if (initial && initial->owner() != &object) {
    findings.add<ModeDeclarationGroup, "InitialMode">(
        object, shownPath(*initial) + " is not a mode of this group; refer to a mode of " + shown(object));
  }
  const auto between = given<ModeDeclarationGroup, "OnTransitionValue">(object);
  const Objects modes = all<ModeDeclarationGroup, "Mode">(object);
  for (std::uint32_t index = 0; index < modes.size(); ++index) {
    if (!isA<ModeDeclaration>(modes.at(index))) continue;
    const auto value = given<ModeDeclaration, "Value">(*modes.at(index));
    if (!value) continue;
    if (value == between) {
      findings.add<ModeDeclaration, "Value">(
          *modes.at(index), "the number " + std::to_string(*value) +
                                " is the group's OnTransitionValue; give the mode another number");
    }
    findings.room().values.push_back({static_cast<std::size_t>(*value), index, modes.at(index)});
  }
  std::ranges::sort(findings.room().values, [](const auto& left, const auto& right) {
    return left.hash != right.hash ? left.hash < right.hash : left.order < right.order;
  });
  for (std::size_t index = 1; index < findings.room().values.size(); ++index) {
    const auto& earlier = findings.room().values[index - 1];
    const auto& later = findings.room().values[index];
    if (earlier.hash != later.hash) continue;
    findings.add<ModeDeclaration, "Value">(*later.object, "has the same number as " + shown(*earlier.object) +
                                                              "; give one of the two modes another number");
  }
  findings.room().values.clear();
}

void checkModeCount(const Instance& object, Findings& findings) {
  const Objects references = all<behavior::ModeSwitchEvent, "instanceRef">(object);
  unsigned modes = 0;
  for (const Instance* each : references)
    modes += getOf<instance::ModeDeclarationInstanceRef, "Mode">(each) ? 1 : 0;
  const bool isTransition =
      number<behavior::ModeSwitchEvent, "activation">(object) == behavior::ModeActivationKind::OnTransition;
  const unsigned expected = isTransition ? 2 : 1;
  if (modes == expected && references.size() == expected) return;
  findings.add<behavior::ModeSwitchEvent, "instanceRef">(
      object,
      std::string(isTransition ? "expected two modes, the one that is left and the one that is entered"
                               : "expected one mode, the one that is entered or left") +
          "; found " + std::to_string(references.size()) +
          (modes == references.size()
               ? ""
               : ", of which " + std::to_string(references.size() - modes) +
                     (references.size() - modes == 1 ? " has" : " have") + " no Mode") +
          "; add or remove modes, or change activation");
}

void checkSizes(const Instance& object, Findings& findings) {
  using manifest::PersistencyKeyValueDatabase;
  const auto least = given<PersistencyKeyValueDatabase, "MinimumSustainedSize">(object);
  const auto most = given<PersistencyKeyValueDatabase, "MaximumAllowedSize">(object);
  if (!least || !most || *least <= *most) return;
  findings.add<PersistencyKeyValueDatabase, "MinimumSustainedSize">(
      object, "expected at most MaximumAllowedSize, which is " + std::to_string(*most) + "; found " +
                  std::to_string(*least) + "; raise MaximumAllowedSize or lower MinimumSustainedSize");
}

}  // namespace Tarvelon::metamodel::native::validation
