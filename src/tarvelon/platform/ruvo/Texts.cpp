#include "tarvelon/platform/ruvo/Texts.h"

#include <algorithm>
#include <charconv>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/hx/Utf.h"
#include "tarvelon/platform/ruvo/Conversion.h"
#include "tarvelon/platform/ruvo/Registry.h"

namespace ruvo {

namespace {

constexpr std::size_t kShownCharacters = 40;

/// The shortest text that reads back as the same number, independent of the locale.
std::string numberText(double number) {
  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
  return std::string(buffer, end);
}

std::string shownText(std::u16string_view text) {
  if (text.size() <= kShownCharacters) return '"' + hx::toUtf8(text) + '"';
  // Never cuts between the two halves of a surrogate pair.
  const bool isSplit = text[kShownCharacters - 1] >= 0xD800 && text[kShownCharacters - 1] <= 0xDBFF;
  const std::string shown = hx::toUtf8(text.substr(0, kShownCharacters - (isSplit ? 1 : 0)));
  return '"' + shown + "\"... of " + std::to_string(text.size()) + " characters";
}

std::string elementTypeText(const hx::hxArray* array) {
  switch (hx::hxGetClassId(array)) {
    case hx::hxLogical:
      return "logical";
    case hx::hxInt32:
      return "int32";
    case hx::hxDouble:
      return "double";
    case hx::hxChar:
      return "char";
    case hx::hxObject:
      break;
  }
  return "object";
}

/// The parameter names of a signature, from its comma-separated text. If there are fewer names than
/// parameters, the names belong to the last parameters.
std::vector<std::string_view> parameterNames(const RVOMethodSignature& signature) {
  std::vector<std::string_view> names;
  std::string_view rest = signature.parameterNames();
  while (!rest.empty()) {
    const std::size_t comma = std::min(rest.find(','), rest.size());
    std::string_view name = rest.substr(0, comma);
    name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
    names.push_back(name.substr(0, name.find_last_not_of(' ') + 1));
    rest.remove_prefix(std::min(comma + 1, rest.size()));
  }
  const std::size_t count = signature.arguments().size();
  if (names.size() > count) names.erase(names.begin(), names.end() - static_cast<std::ptrdiff_t>(count));
  names.insert(names.begin(), count - names.size(), std::string_view());
  return names;
}

char folded(char letter) noexcept {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// The edit distance of two names, ignoring case: the number of letters to insert, remove, replace or swap
/// with their neighbour. Returns `limit` if the distance is at least `limit`.
///
/// Only computes cells near the diagonal, so the cost is linear in the length of a name.
std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit) {
  const std::size_t width = right.size() + 1;
  std::vector<std::size_t> cells(width * 3, limit);
  std::size_t* before = cells.data();
  std::size_t* above = before + width;
  std::size_t* row = above + width;
  for (std::size_t j = 0; j < std::min(width, limit); ++j) row[j] = j;
  for (std::size_t i = 1; i <= left.size(); ++i) {
    std::size_t* const spare = before;
    before = above;
    above = row;
    row = spare;
    const std::size_t first = i > limit ? i - limit : 0;
    const std::size_t last = std::min(width - 1, i + limit);
    row[first] = first == 0 ? i : limit;
    if (last < width - 1) row[last + 1] = limit;
    for (std::size_t j = first + 1; j <= last; ++j) {
      const bool isEqual = folded(left[i - 1]) == folded(right[j - 1]);
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (isEqual ? 0 : 1)});
      const bool isSwap = i > 1 && j > 1 && folded(left[i - 1]) == folded(right[j - 2]) &&
                          folded(left[i - 2]) == folded(right[j - 1]);
      if (isSwap) row[j] = std::min(row[j], before[j - 2] + 1);
    }
  }
  return row[width - 1];
}

/// A name that differs in up to a third of its letters, and at most 3, counts as a typing error.
std::size_t slipsAllowed(std::size_t length) noexcept { return std::clamp<std::size_t>(length / 3, 1, 3); }

}  // namespace

std::string quotedName(std::string_view name) {
  constexpr std::size_t kWhole = 200;
  constexpr std::size_t kBeginning = 80;
  if (name.size() <= kWhole) return "'" + std::string(name) + "'";
  const auto isInside = [](char unit) { return (unit & 0xC0) == 0x80; };
  std::size_t shown = kBeginning;
  while (shown != 0 && isInside(name[shown])) --shown;  // not within a character
  const auto inside = static_cast<std::size_t>(std::ranges::count_if(name, isInside));
  return "'" + std::string(name.substr(0, shown)) + "...' of " + std::to_string(name.size() - inside) +
         " characters";
}

std::string nearestName(std::string_view name, std::span<const std::string_view> candidates) {
  std::string_view nearest;
  std::size_t least = slipsAllowed(name.size()) + 1;
  for (const std::string_view candidate : candidates) {
    const std::size_t shorter = std::min(name.size(), candidate.size());
    const std::size_t longer = std::max(name.size(), candidate.size());
    // One-letter names are never similar: each is only one replacement away from any other.
    if (shorter == 0 || longer < 2 || longer - shorter >= least) continue;
    const std::size_t distance = editDistance(name, candidate, least);
    if (distance >= least) continue;
    least = distance;
    nearest = candidate;
  }
  return std::string(nearest);
}

std::string didYouMean(std::string_view name, std::span<const std::string_view> candidates) {
  const std::string nearest = nearestName(name, candidates);
  return nearest.empty() ? nearest : "; did you mean '" + nearest + "'?";
}

std::string typeText(const HostValue& value) {
  switch (value.kind()) {
    case HostValue::Kind::Empty:
      return "an empty value";
    case HostValue::Kind::Logical:
      return "logical scalar";
    case HostValue::Kind::Integer:
      return "int32 scalar";
    case HostValue::Kind::Double:
      return "double scalar";
    case HostValue::Kind::Text:
      return "char vector";
    case HostValue::Kind::Object:
      return classOf(*value.object()).getClassName();
    case HostValue::Kind::Array:
      break;
  }
  return elementTypeText(value.array()) + " array of " + std::to_string(hx::hxGetRows(value.array())) +
         " by " + std::to_string(hx::hxGetColumns(value.array()));
}

std::string describeValue(const HostValue& value) {
  std::string type = typeText(value);
  switch (value.kind()) {
    case HostValue::Kind::Logical:
      return type + (value.integer() != 0 ? " true" : " false");
    case HostValue::Kind::Integer:
      // A number beyond the range of int32 must not be described as an int32 scalar.
      if (!fitsInt32(value.integer())) type = "whole number";
      return type + " " + std::to_string(value.integer());
    case HostValue::Kind::Double:
      return type + " " + numberText(value.real());
    case HostValue::Kind::Text:
      return type + " " + shownText(value.text());
    default:
      return type;
  }
}

std::string describeSignature(const RVOMethodInfo& record, std::string_view shownName, bool isOnObject) {
  std::string text(shownName);
  text += '(';
  if (record.getSignature()) {
    const RVOMethodSignature& signature = *record.getSignature();
    const auto names = parameterNames(signature);
    const bool isSelfFirst = isOnObject && (record.getFlags() & factory::kSelfAsArgument) != 0;
    const std::size_t first = isSelfFirst ? 1 : 0;
    for (std::size_t i = first; i < names.size(); ++i) {
      if (i != first) text += ", ";
      text += signature.arguments()[i].view();
      if (!names[i].empty()) text += ' ';
      text += names[i];
    }
  }
  return text += ')';
}

std::string expectedText(const InternedName& type) {
  constexpr std::string_view kOptional = "k7q";
  if (type.kind() == internal::TypeKind::Char) return "char vector";
  if (!type.view().starts_with(kOptional)) return std::string(type.view());
  return std::string(type.view().substr(kOptional.size())) + " scalar or an empty value";
}

std::string rangeText(const InternedName& type) {
  std::string text(type.view());
  if (type.kind() == internal::TypeKind::Int32) text += " (a whole number from -2147483648 to 2147483647)";
  if (type.kind() == internal::TypeKind::Double) text += " (a number that it holds exactly)";
  return text;
}

std::string mismatchText(std::string_view where, std::string_view expected, const HostValue& value) {
  return std::string(where) + ": expected " + std::string(expected) + ", got " + describeValue(value);
}

std::string memberText(const Class& cls, std::string_view member) {
  return std::string(cls.shortName()) + '.' + std::string(member);
}

namespace {

bool isConstructibleBelow(Class& each, Class& cls) {
  try {
    return &each != &cls && each.isKindOf(cls) && each.constructors();
  } catch (const K7Q::Exception&) {
    // A class that cannot be defined cannot be constructed.
    return false;
  }
}

/// The constructible subclasses of `cls` in a package and in all packages below it; a package comes before
/// its children.
std::vector<std::string_view> constructibleIn(Package& top, Class& cls) {
  std::vector<std::string_view> names;
  std::vector<Package*> pending{&top};
  while (!pending.empty()) {
    Package& package = *pending.back();
    pending.pop_back();
    for (Class* each : package.classes()) {
      if (isConstructibleBelow(*each, cls)) names.push_back(each->getFullName().view());
    }
    const auto children = package.packageNames();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      if (Package* below = package.findPackage(*child)) pending.push_back(below);
    }
  }
  return names;
}

}  // namespace

std::string abstractText(std::string_view className, std::span<const std::string_view> constructible) {
  constexpr std::size_t kShown = 12;
  std::string text = "class '" + std::string(className) + "' is abstract: it has no constructor; ";
  if (constructible.empty()) return text + "none of its subclasses has one";
  text += "construct one of its subclasses: ";
  for (std::size_t i = 0; i < std::min(constructible.size(), kShown); ++i) {
    text.append(i ? ", " : "").append(constructible[i]);
  }
  if (constructible.size() <= kShown) return text;
  return text + " and " + std::to_string(constructible.size() - kShown) + " more";
}

void throwAbstract(Class& cls) {
  const std::string_view name = cls.getFullName().view();
  throw K7Q::WrongType(
      abstractText(name, constructibleIn(Package::get(name.substr(0, name.find('.'))), cls)));
}

void throwUnknownMember(Class& cls, std::string_view kind, std::string_view name) {
  const std::string nearest = cls.nearestMember(name);
  throw K7Q::UnknownName("class '" + std::string(cls.getFullName().view()) + "' has no " + std::string(kind) +
                         " " + quotedName(name) +
                         (nearest.empty() ? "" : "; did you mean '" + nearest + "'?"));
}

}  // namespace ruvo
