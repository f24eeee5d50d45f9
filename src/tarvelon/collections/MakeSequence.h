#pragma once

#include <cstdint>
#include <memory>

#include <boost/multi_index/identity.hpp>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/collections/ListQImpl.h"
#include "tarvelon/collections/MultiIndexImpl.h"

namespace K7Q {

/// What a sequence is made of.
enum SequenceImplementation : std::int32_t {
  STD_VECTOR = 0,   ///< ListQImpl
  MULTI_INDEX = 1,  ///< MultiIndexImpl
};

/// What makeSequence() is to make.
struct SequenceOptions {
  /// Goes into the handle.
  Deviant aDeviant;
  SequenceImplementation aImplementation = STD_VECTOR;
  /// Each value once; MULTI_INDEX alone can do that.
  bool aIsUnique = false;
  /// The handle's references count, and the sequence goes with the last of them.
  bool aUseReferenceCountingProxy = false;
};

namespace SequenceCreatorInternal {

/// Raise K7Q::Exception for options that do not go together, and for an implementation that there is not.
void requireNotUnique(const SequenceOptions& options);
[[noreturn]] void raiseUnknownImplementation();

/// The last steps of makeSequence(): the implementation, behind a proxy where one is asked for. Raises
/// K7Q::Exception when nothing was created. createImplementation() always creates something or raises, so
/// that only a call of this function with null shows that case: the tests make it.
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

/// A new, empty sequence of values of enumeration T.
///
/// Ownership: with a proxy the handles own the sequence. Without one nothing counts: whoever calls destroys
///            what getInterface() gives, after the last handle.
/// Failure:   K7Q::Exception for a unique STD_VECTOR and for an unknown implementation.
template <class T>
Sequence<T> makeSequence(const SequenceOptions& options) {
  namespace creator = SequenceCreatorInternal;
  auto sequence = creator::finish(creator::createImplementation<T>(options), options);
  return Sequence<T>(sequence.release(), options.aDeviant);
}

}  // namespace K7Q
