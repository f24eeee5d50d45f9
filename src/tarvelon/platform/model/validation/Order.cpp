// Rules against cycles.

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

using namespace arplatform;  // NOLINT(google-build-using-namespace): the rules name the packages below it

/// One object of the current path, and its successors that were not visited yet.
struct Step {
  const Instance* object;
  std::vector<const Instance*> next;
};

/// "'A' -> 'B' -> 'A'". Of a long cycle, only the first steps and the last are shown.
std::string circleOf(const std::vector<Step>& way, std::size_t first) {
  constexpr std::size_t kShown = 6;
  const std::size_t length = way.size() - first;
  const std::size_t shownFirst = length <= kShown ? length : kShown - 1;
  std::string circle;
  for (std::size_t step = 0; step < shownFirst; ++step) circle += shown(*way[first + step].object) + " -> ";
  if (shownFirst < length) {
    circle += "... " + std::to_string(length - kShown) + " more ... -> ";
    circle += shown(*way.back().object) + " -> ";
  }
  return circle + shown(*way[first].object);
}

/// Calls report(object, cycle) for each cycle that can be reached from `start`. Objects that an earlier
/// search has visited are not visited again; so all searches of a pass together visit each object once.
template <class Next, class Report>
void searchCircles(const Instance& start, Findings& findings, Next next, Report report) {
  using State = Findings::Search::State;
  if (findings.search(start).state != State::New) return;
  std::vector<Step> way;
  const auto enter = [&](const Instance& object) {
    findings.search(object) = {State::Open, way.size()};
    way.push_back({&object, next(object)});
  };
  enter(start);
  while (!way.empty()) {
    Step& step = way.back();
    if (step.next.empty()) {
      findings.search(*step.object).state = State::Done;
      way.pop_back();
      continue;
    }
    const Instance* object = step.next.back();
    step.next.pop_back();
    if (!object) continue;
    const Findings::Search found = findings.search(*object);
    if (found.state == State::New) enter(*object);
    if (found.state == State::Open) report(*object, circleOf(way, found.depth));
  }
}

std::vector<const Instance*> reversed(const Objects& objects) {
  const auto list = objects.copied();
  return {list.rbegin(), list.rend()};
}

template <class X, FixedString Name>
void requireNoCircle(const Instance& object, Findings& findings, const char* cure) {
  const auto next = [](const Instance& from) {
    return isA<X>(from) ? reversed(all<X, Name>(from)) : std::vector<const Instance*>();
  };
  searchCircles(object, findings, next, [&](const Instance& at, const std::string& circle) {
    findings.add<X, Name>(at, "forms a cycle: " + circle + "; " + cure);
  });
}

}  // namespace

void checkExecutionOrder(const Instance& object, Findings& findings) {
  requireNoCircle<timingExtension::EOCExecutableEntityRef, "Successor">(object, findings,
                                                                        "remove one of the successors");
}

void checkSuccessors(const Instance& object, Findings& findings) {
  for (const Instance* after : all<timingExtension::EOCExecutableEntityRef, "Successor">(object)) {
    if (!after || !object.owner() || after->owner() == object.owner()) continue;
    findings.add<timingExtension::EOCExecutableEntityRef, "Successor">(
        object,
        shownPath(*after) + " belongs to another constraint; refer to a step of " + shown(*object.owner()));
  }
}

void checkCompositionCircle(const Instance& object, Findings& findings) {
  const auto next = [](const Instance& from) {
    std::vector<const Instance*> types;
    if (!isA<composition::CompositionComponent>(from)) return types;
    for (const Instance* part : all<composition::CompositionComponent, "Components">(from))
      types.push_back(getOf<composition::ComponentPrototype, "Type">(part));
    return types;
  };
  searchCircles(object, findings, next, [&](const Instance& at, const std::string& circle) {
    findings.add<composition::CompositionComponent, "Components">(
        at, "contains itself: " + circle + "; give one of the components another type");
  });
}

void checkVariantCircle(const Instance& object, Findings& findings) {
  requireNoCircle<variant::PredefinedVariant, "IncludedVariant">(object, findings,
                                                                 "remove one of the variants");
}

void checkGroupCircle(const Instance& object, Findings& findings) {
  requireNoCircle<port::PortGroup, "innerGroup">(object, findings, "remove one of the groups");
}

}  // namespace Tarvelon::metamodel::native::validation
