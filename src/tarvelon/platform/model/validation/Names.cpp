// Rules for short names and namespaces: a path must identify one object.

#include <algorithm>
#include <compare>
#include <utility>
#include <vector>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

constexpr std::size_t kLongest = 128;

/// Objects that have no name in AUTOSAR, or a short label that may be left out.
bool mayBeNameless(const Instance& object) {
  return isA<arplatform::common::AUTOSAR>(object) || isA<arplatform::variant::VariationPoint>(object) ||
         isA<arplatform::behavior::PortDefinedArgumentValue>(object);
}

bool isLetter(char16_t unit) { return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'); }
bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
char16_t small(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

bool isLegal(std::u16string_view name) {
  return isLetter(name[0]) && name.size() <= kLongest && std::ranges::all_of(name, [](char16_t unit) {
           return isLetter(unit) || isDigit(unit) || unit == u'_';
         });
}

/// Names that differ only in case have the same hash.
std::size_t hashOf(std::u16string_view name) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char16_t unit : name) hash = (hash ^ small(unit)) * 0x100000001b3;
  return hash;
}

bool isSameBesidesCase(std::u16string_view left, std::u16string_view right) {
  return std::ranges::equal(left, right, {}, small, small);
}

void addNamed(const Instance& object, Findings& findings) {
  const auto name = ownName(object);
  if (!name.empty()) findings.room().named.push_back({hashOf(name), findings.room().named.size(), &object});
}

/// Adds all objects whose names belong to the object's namespace: the contained objects and, below contained
/// objects without a name, the objects that these contain.
void addHeld(const Instance& object, Findings& findings) {
  auto& open = findings.room().open;
  open.clear();
  pushHeld(object, open);
  while (!open.empty()) {
    const Instance& next = *open.back();
    open.pop_back();
    addNamed(next, findings);
    if (ownName(next).empty()) pushHeld(next, open);
  }
}

/// Whether the object begins a namespace. The names below an object without a name belong to the namespace of
/// its owner.
bool isNamespace(const Instance& object, const Findings& findings) {
  return !ownName(object).empty() || &object == findings.top() ||
         (!object.owner() && !isA<foundation::Package>(object));
}

/// Collects the names of the object's namespace. The result is kept for the next rule.
void gather(const Instance& object, Findings& findings) {
  if (findings.room().namespaceOf == &object) return;
  findings.room().namespaceOf = &object;
  findings.room().named.clear();
  if (isNamespace(object, findings)) addHeld(object, findings);
}

void sortBy(Findings& findings, auto isBefore) {
  if (findings.room().named.size() > 1) std::ranges::sort(findings.room().named, isBefore);
}

/// Reports name clashes in the order of containment.
void report(std::vector<std::pair<Findings::Named, const Instance*>>& clashes, auto add) {
  std::ranges::sort(clashes, {}, [](const auto& each) { return each.first.order; });
  for (const auto& [later, earlier] : clashes) add(*later.object, *earlier);
}

void reportEqual(Findings& findings) {
  sortBy(findings, [](const auto& left, const auto& right) {
    if (left.hash != right.hash) return left.hash < right.hash;
    const auto order = ownName(*left.object) <=> ownName(*right.object);
    return std::is_eq(order) ? left.order < right.order : std::is_lt(order);
  });
  std::vector<std::pair<Findings::Named, const Instance*>> clashes;
  const Findings::Named* first = nullptr;
  for (const auto& each : findings.room().named) {
    if (first && first->hash == each.hash && ownName(*first->object) == ownName(*each.object)) {
      clashes.emplace_back(each, first->object);
    } else {
      first = &each;
    }
  }
  report(clashes, [&](const Instance& later, const Instance& earlier) {
    findings.add<foundation::NamedElement, "Name">(
        later, "the name " + shown(later) + " is already used in this namespace, by the " +
                   earlier.cls().methods->className().shortName() + " before it; rename one of the two");
  });
}

void reportByCase(Findings& findings) {
  sortBy(findings, [](const auto& left, const auto& right) {
    return left.hash != right.hash ? left.hash < right.hash : left.order < right.order;
  });
  std::vector<std::pair<Findings::Named, const Instance*>> clashes;
  const Findings::Named* first = nullptr;
  for (const auto& each : findings.room().named) {
    if (!first || first->hash != each.hash ||
        !isSameBesidesCase(ownName(*first->object), ownName(*each.object))) {
      first = &each;
    } else if (ownName(*first->object) != ownName(*each.object)) {
      clashes.emplace_back(each, first->object);
    }
  }
  report(clashes, [&](const Instance& later, const Instance& earlier) {
    findings.add<foundation::NamedElement, "Name">(
        later, "the name " + shown(later) + " differs from " + shown(earlier) +
                   " of the same namespace only in case, which AUTOSAR ignores; rename one of the two");
  });
}

}  // namespace

void checkShortName(const Instance& object, Findings& findings) {
  const auto name = ownName(object);
  if (name.empty()) {
    if (mayBeNameless(object)) return;
    findings.add<foundation::NamedElement, "Name">(
        object, "is required and not set; give the " +
                    std::string(object.cls().methods->className().shortName()) + " a short name");
  } else if (!isLegal(name)) {
    const std::string found = name.size() > kLongest ? std::to_string(name.size()) + " characters"
                                                     : "\"" + K7Q::String::to_string(name) + "\"";
    findings.add<foundation::NamedElement, "Name">(
        object, "expected a letter, then letters, digits and underscores, 128 at most; found " + found +
                    "; rename it, and store the readable text in longName");
  }
}

void checkDuplicateNames(const Instance& object, Findings& findings) {
  gather(object, findings);
  reportEqual(findings);
}

void checkNamesByCase(const Instance& object, Findings& findings) {
  gather(object, findings);
  reportByCase(findings);
}

void checkRootNames(std::span<const Instance* const> roots, Findings& findings) {
  findings.room().namespaceOf = nullptr;
  findings.room().named.clear();
  for (const Instance* root : roots) {
    if (!isA<foundation::Package>(*root)) continue;
    addNamed(*root, findings);
    if (ownName(*root).empty()) addHeld(*root, findings);
  }
  findings.begin(ruleOf("duplicate-name"));
  reportEqual(findings);
  findings.begin(ruleOf("name-case"));
  reportByCase(findings);
}

}  // namespace Tarvelon::metamodel::native::validation
