#include "python/host/members/CallChecks.h"

#include <algorithm>

#include "python/host/objects/IteratorGuard.h"
#include "python/host/objects/NativeViews.h"
#include "tarvelon/boundary/ruvo/Method.h"

namespace pyhost {

namespace {

/// The data of a call that the checks need.
struct Call {
  const HostType& type;
  const ruvo::OverloadSet& overloads;
  PyObject* self;
  std::span<PyObject* const> given;

  /// The name of the method; empty for a constructor.
  std::string_view name() const noexcept {
    return overloads.name == type.cls->getFullName() ? std::string_view() : overloads.name.view();
  }
  std::string where(std::size_t index) const { return Place{*type.cls, name(), index + 1}.text(); }
};

/// The type of the parameter for argument `index`; empty if the record has another number of parameters.
ruvo::InternedName parameterOf(const ruvo::RVOMethodInfo& record, const Call& call, std::size_t index) {
  const auto& signature = *record.getSignature();
  const bool takesSelf = call.self && (record.getFlags() & ruvo::factory::kSelfAsArgument) != 0;
  const std::size_t before = takesSelf ? 1 : 0;
  if (signature.arguments().size() != call.given.size() + before) return {};
  return signature.arguments()[index + before];
}

/// Whether all overloads with this number of arguments expect an enumeration value there.
bool wantsEnumeration(const Call& call, std::size_t index) {
  bool wants = false;
  for (const auto* record : call.overloads.candidates) {
    const auto parameter = parameterOf(*record, call, index);
    if (parameter.empty()) continue;
    const ruvo::Class* cls =
        parameter.kind() == ruvo::internal::TypeKind::Class ? ruvo::Class::find(parameter) : nullptr;
    if (!cls || !isEnumeration(*cls)) return false;
    wants = true;
  }
  return wants;
}

void requireNotEmpty(const Call& call, std::size_t index) {
  const bool isMember = call.self != nullptr;
  const char* expected = nullptr;
  if (call.type.kind == TypeKind::Sequence && isMember) {
    expected = "an element or an iterator";
  } else if (call.type.kind == TypeKind::Sequence) {
    expected = "a model";
  } else if (call.type.kind == TypeKind::Iterator && isMember) {
    expected = "an iterator";
  } else if (wantsEnumeration(call, index)) {
    expected = "a value of the enumeration";
  }
  if (expected) raise(errors().wrongType, call.where(index) + "expected " + expected + ", got None");
}

[[noreturn]] void raiseGone(const Call& call, std::size_t index) {
  raise(errors().staleIterator, call.where(index) +
                                    "expected an iterator at an element of the sequence, got one whose "
                                    "element was removed; take a new one from begin() or end()");
}

/// Checks an iterator that is compared with another one.
void requireNotRetired(const Call& call, std::size_t index) {
  if (reinterpret_cast<const HostIterator*>(call.given[index])->isRetired) raiseGone(call, index);
}

/// Checks an iterator argument of a sequence: it must belong to this sequence and must not be stale.
void requireOwnIterator(const Call& call, std::size_t index) {
  const auto* iterator = reinterpret_cast<const HostIterator*>(call.given[index]);
  const bool isOwn = iterator->sequence && nativeIdentity(interfaceOf(iterator->sequence)) ==
                                               nativeIdentity(interfaceOf(call.self));
  if (!isOwn) {
    raise(errors().wrongValue, call.where(index) +
                                   "expected an iterator of this sequence, got one of another sequence; take "
                                   "it from begin() or end()");
  }
  if (isStale(*iterator)) raiseGone(call, index);
}

bool isIterator(PyObject* object) {
  return isHostObject(object) && typeOf(object)->kind == TypeKind::Iterator;
}

[[noreturn]] void raiseAtEdge(const Call& call, const char* edge) {
  raise(errors().staleIterator, std::string(call.type.cls->shortName()) + "." + std::string(call.name()) +
                                    ": the iterator is at the " + edge + " of its sequence");
}

[[noreturn]] void raiseElementGone(const Call& call) {
  raise(errors().staleIterator,
        std::string(call.type.cls->shortName()) + "." + std::string(call.name()) +
            ": the element of the iterator was removed, or the sequence has changed; take a new iterator "
            "from begin() or end(), or use the one that the change returned");
}

void requireInside(const Call& call) {
  const auto& iterator = *reinterpret_cast<const HostIterator*>(call.self);
  // A retired iterator is at no end of the sequence: another element may be at its position now.
  if (iterator.isRetired) raiseElementGone(call);
  if ((call.name() == "item" || call.name() == "getNext") && standsAtEnd(iterator)) raiseAtEdge(call, "end");
  if (call.name() == "getPrev" && standsAtBegin(iterator)) raiseAtEdge(call, "beginning");
  const bool isStep = call.name() == "item" || call.name() == "getNext" || call.name() == "getPrev";
  if (isStep && isStale(iterator)) raiseElementGone(call);
}

}  // namespace

void requireMeaningful(const HostType& type, const ruvo::OverloadSet& overloads, PyObject* self,
                       const Arguments& converted, std::span<PyObject* const> given) {
  const Call call{type, overloads, self, given};
  for (std::size_t index = 0; index < given.size(); ++index) {
    if (converted.span()[index].kind() == ruvo::HostValue::Kind::Empty) requireNotEmpty(call, index);
    if (!self || !isIterator(given[index])) continue;
    if (type.kind == TypeKind::Sequence) requireOwnIterator(call, index);
    if (type.kind == TypeKind::Iterator) requireNotRetired(call, index);
  }
  if (self && type.kind == TypeKind::Iterator) requireInside(call);
}

void keepSequence(PyObject* result, PyObject* self) {
  if (!isIterator(result)) return;
  const TypeKind kind = typeOf(self)->kind;
  PyObject* sequence = kind == TypeKind::Sequence   ? self
                       : kind == TypeKind::Iterator ? reinterpret_cast<HostIterator*>(self)->sequence
                                                    : nullptr;
  auto* iterator = reinterpret_cast<HostIterator*>(result);
  if (sequence && !iterator->sequence) watchIterator(*iterator, sequence);
}

}  // namespace pyhost
