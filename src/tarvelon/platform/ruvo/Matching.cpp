#include "tarvelon/platform/ruvo/Matching.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/ruvo/Conversion.h"
#include "tarvelon/platform/ruvo/Registry.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace ruvo {

namespace {

/// Whether a record takes the object it is called on.
bool takesObject(const RVOMethodInfo& record, const RVOMethodSignature& signature) {
  return !signature.self().empty() || (record.getFlags() & factory::kSelfAsArgument) != 0;
}

std::size_t parameterCount(const RVOMethodSignature& signature) noexcept {
  return signature.arguments().size() + (signature.self().empty() ? 0 : 1);
}

/// One overload, matched against the arguments of one call.
class Candidate {
 public:
  Candidate(const RVOMethodInfo& record, RVOInterface* self, std::span<const HostValue> arguments)
      : mArguments(arguments) {
    const RVOMethodSignaturePtr& signature = record.getSignature();
    if (!signature) return;
    mSignature = &*signature;
    if (self && takesObject(record, *mSignature)) mSelf = self;
  }

  Choice choice(const RVOMethodInfo& record) const noexcept {
    return {&record, mSignature, mSelf != nullptr};
  }
  bool fitsCount() const noexcept {
    return mSignature && parameterCount(*mSignature) == mArguments.size() + (mSelf ? 1 : 0);
  }

  /// The number of inexact matches, times kInexact, plus the sum of the distances; or an error code of
  /// fitOf().
  /// REQUIRES: fitsCount().
  int distance() const {
    if (mSelf && fitOf(*mSelf, parameterType(*mSignature, 0)) < 0) return kWrongKind;
    int sum = 0;
    for (std::size_t i = 0; i < mArguments.size(); ++i) {
      const int fit = fitOf(mArguments[i], typeOf(i));
      if (fit == kWrongKind) return kWrongKind;
      if (fit == kOutOfRange) sum = kOutOfRange;
      if (sum != kOutOfRange) sum += fit + (fit > 0 ? kInexact : 0);
    }
    return sum;
  }

  /// The type of the parameter for argument `index`.
  const InternedName& typeOf(std::size_t index) const noexcept {
    // mSignature is not null here, because fitsCount() was true.
    return parameterType(*mSignature, index + (mSelf ? 1 : 0));  // NOLINT(clang-analyzer-core*)
  }

 private:
  /// Larger than any sum of distances.
  static constexpr int kInexact = 1 << 20;

  std::span<const HostValue> mArguments;
  /// Null if the record takes no object, or if the object is passed as an argument.
  RVOInterface* mSelf = nullptr;
  const RVOMethodSignature* mSignature = nullptr;
};

[[noreturn]] void throwOutOfRange(const CallSite& site, const Candidate& candidate,
                                  std::span<const HostValue> arguments) {
  std::size_t i = 0;
  while (fitOf(arguments[i], candidate.typeOf(i)) != kOutOfRange) ++i;
  const std::string where = site.text() + ", argument " + std::to_string(i + 1);
  throw K7Q::OutOfRange(mismatchText(where, rangeText(candidate.typeOf(i)), arguments[i]));
}

/// The signatures of the candidates without duplicates: a class and its superclass often declare the same
/// one.
std::vector<std::string> signaturesOf(std::span<const RVOMethodInfo* const> candidates, std::string_view name,
                                      bool isOnObject) {
  std::vector<std::string> signatures;
  for (const RVOMethodInfo* record : candidates) {
    std::string signature = describeSignature(*record, name, isOnObject);
    if (std::find(signatures.begin(), signatures.end(), signature) == signatures.end()) {
      signatures.push_back(std::move(signature));
    }
  }
  return signatures;
}

[[noreturn]] void throwNoMatch(const CallSite& site, std::span<const RVOMethodInfo* const> candidates,
                               const RVOInterface* self, std::span<const HostValue> arguments) {
  const std::string shownName = site.text();
  std::string text = shownName;
  text += candidates.front()->isConstructor() ? ": no constructor takes (" : ": no signature takes (";
  for (std::size_t i = 0; i < arguments.size(); ++i) text += (i ? ", " : "") + typeText(arguments[i]);
  const auto signatures =
      signaturesOf(candidates, std::string_view(shownName).substr(shownName.rfind('.') + 1), self != nullptr);
  text += signatures.size() == 1 ? "); there is" : "); there are";
  for (const std::string& signature : signatures) text += "\n    " + signature;
  throw K7Q::WrongType(text);
}

}  // namespace

std::string CallSite::text() const {
  std::string text(isClass ? lastName(owner) : owner);
  if (!member.empty() && !text.empty()) text += '.';
  return text += member;
}

Choice choose(const CallSite& site, std::span<const RVOMethodInfo* const> candidates, RVOInterface* self,
              std::span<const HostValue> arguments) {
  Choice best;
  int bestDistance = std::numeric_limits<int>::max();
  const RVOMethodInfo* outOfRange = nullptr;
  for (const RVOMethodInfo* record : candidates) {
    const Candidate candidate(*record, self, arguments);
    if (!candidate.fitsCount()) continue;
    const int distance = candidate.distance();
    if (distance == kOutOfRange && !outOfRange) outOfRange = record;
    if (distance < 0 || distance >= bestDistance) continue;
    best = candidate.choice(*record);
    bestDistance = distance;
    if (distance == 0) break;
  }
  if (best.record) return best;
  if (outOfRange) throwOutOfRange(site, Candidate(*outOfRange, self, arguments), arguments);
  throwNoMatch(site, candidates, self, arguments);
}

}  // namespace ruvo
