#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/platform/ruvo/HostValue.h"

namespace ruvo {

/// Names the called member in error texts: the full name of the class or package, and the name of the member.
/// The member is empty for a constructor.
struct CallSite {
  std::string_view owner;
  std::string_view member;
  bool isClass = true;

  /// For example "Runnable.canBeInvokedConcurrently", "Runnable" or "Tarvelon.metamodel.MetaPackage".
  std::string text() const;
};

/// The record chosen for a call, and whether the object goes into the first slot.
struct Choice {
  const RVOMethodInfo* record = nullptr;
  const RVOMethodSignature* signature = nullptr;
  bool takesSelf = false;
};

/// Overload resolution: chooses the best of the candidates that accept the arguments.
///
/// A candidate must have the right number of parameters. Among these, the candidate with the most exact
/// matches wins; then the smallest sum of distances (fitOf()); then the first one in the list, whose class is
/// nearest.
///
/// If `self` is given, an instance method or self-as-argument method takes it as its first value, and a
/// static method ignores it. The distance of `self` is not part of the sum. Without `self`, the first
/// argument is the object.
///
/// Raises K7Q::OutOfRange if the only problem is the range of a number. Otherwise raises K7Q::WrongType with
/// the list of available signatures.
Choice choose(const CallSite& site, std::span<const RVOMethodInfo* const> candidates, RVOInterface* self,
              std::span<const HostValue> arguments);

/// Calls the chosen record and returns its result.
HostResult invoke(const Choice& choice, RVOInterface* self, std::span<const HostValue> arguments);

}  // namespace ruvo
