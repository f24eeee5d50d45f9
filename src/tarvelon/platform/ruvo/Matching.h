#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/platform/ruvo/HostValue.h"

namespace ruvo {

/// What is called, for the errors: the class or package by its full name and the member, empty for a
/// constructor.
struct CallSite {
  std::string_view owner;
  std::string_view member;
  bool isClass = true;

  /// "Runnable.canBeInvokedConcurrently", "Runnable", "Tarvelon.metamodel.MetaPackage".
  std::string text() const;
};

/// The record that a call means, and whether the object on which it was made goes in as the first slot.
struct Choice {
  const RVOMethodInfo* record = nullptr;
  const RVOMethodSignature* signature = nullptr;
  bool takesSelf = false;
};

/// Chooses among the candidates by the count of arguments, then by how many arguments are of exactly the
/// class asked for, then by the distances of the arguments, added up, then by their order, nearest first.
///
/// Called on an object, an instance or self-as-argument record takes it as its first value, and a static
/// record leaves it out; the distance of an object that is not in the argument list does not count. Called
/// without, the first argument is the object.
///
/// Raises K7Q::OutOfRange where only a number's range is at fault, else K7Q::WrongType, which
/// lists the signatures there are.
Choice choose(const CallSite& site, std::span<const RVOMethodInfo* const> candidates, RVOInterface* self,
              std::span<const HostValue> arguments);

/// Calls the record on which the choice fell and packs its result.
HostResult invoke(const Choice& choice, RVOInterface* self, std::span<const HostValue> arguments);

}  // namespace ruvo
