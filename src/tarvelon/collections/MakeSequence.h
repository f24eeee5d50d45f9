#pragma once

#include <cstdint>
#include <memory>

#include <boost/multi_index/identity.hpp>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/collections/ListQImpl.h"
#include "tarvelon/collections/MultiIndexImpl.h"

namespace K7Q {

/// The implementation of a sequence.
enum SequenceImplementation : std::int32_t {
  STD_VECTOR = 0,   ///< ListQImpl
  MULTI_INDEX = 1,  ///< MultiIndexImpl
};

/// The options of makeSequence().
struct SequenceOptions {
  /// The deviant of the returned handle.
  Deviant aDeviant;
  SequenceImplementation aImplementation = STD_VECTOR;
  /// Whether the sequence contains a value at most once. REQUIRES: MULTI_INDEX.
  bool aIsUnique = false;
  /// Whether the sequence counts references, so that the last handle destroys it.
  bool aUseReferenceCountingProxy = false;
};

namespace SequenceCreatorInternal {

/// Throws K7Q::Exception if `options` asks for a unique sequence.
void requireNotUnique(const SequenceOptions& options);
/// Throws K7Q::Exception.
[[noreturn]] void raiseUnknownImplementation();

/// The last step of makeSequence(): puts the sequence behind a reference-counting proxy if the options ask
/// for one. Throws K7Q::Exception for null. createImplementation() never returns null, so only the tests
/// reach this case.
std::unique_ptr<Generic::SequenceIntf> finish(std::unique_ptr<Generic::SequenceIntf> implementation,
                                              const SequenceOptions& options);

template <class T>
std::unique_ptr<Generic::SequenceIntf> createImplementation(const SequenceOptions& options) {
  using Identity = boost::multi_index::identity<T>;
  switch (options.aImplementation) {
    case STD_VECTOR:
      requireNotUnique(options);
      return std::make_unique<ListQImpl<T>>();
    case MULTI_INDEX:
      if (options.aIsUnique) return std::make_unique<MultiIndexImpl<T, true, Identity>>();
      return std::make_unique<MultiIndexImpl<T, false, Identity>>();
  }
  raiseUnknownImplementation();
}

}  // namespace SequenceCreatorInternal

/// Creates an empty sequence of values of enumeration T.
///
/// Ownership: with a reference-counting proxy, the last handle destroys the sequence. Without one, the caller
///            deletes the object that getInterface() returns, after the last use of a handle.
/// Errors:    K7Q::Exception for a unique STD_VECTOR and for an unknown implementation.
template <class T>
Sequence<T> makeSequence(const SequenceOptions& options) {
  namespace creator = SequenceCreatorInternal;
  auto sequence = creator::finish(creator::createImplementation<T>(options), options);
  return Sequence<T>(sequence.release(), options.aDeviant);
}

}  // namespace K7Q
