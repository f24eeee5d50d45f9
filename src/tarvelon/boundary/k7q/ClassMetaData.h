#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Reference.h"
#include "tarvelon/boundary/ruvo/Class.h"

namespace K7Q::mi {

/// Base of the class infos of all metamodel classes, sequences and iterators. Host objects of these classes
/// are bound to an id of DeviantRegistry and own one reference on the native object.
///
/// A derived class overrides defineMembers() to add superclasses, methods and properties.
/// Ownership: the object system owns a class info from addClass() on.
class TARVELON_API ClassMetaData : public ruvo::factory::HandleClassInfo<ReferenceCountingIntf, false> {
 public:
  /// REQUIRES: both texts outlive the class info, as literals and interned names do.
  ClassMetaData(const char* name, const char* description) noexcept;
  ~ClassMetaData() override;
  /// Removes the binding of the host object and releases the reference on the native object.
  void destroyInstance(ruvo::RVOClass* cls, const ruvo::RVOClient* client, void* instance) override;
};

/// Class info for the placeholder objects that `MetaProperty()` returns. Such an object has no state; one
/// allocated byte gives it an address to which the host object is bound.
template <class T>
class MetaPropertyMetaData : public ruvo::factory::HandleClassInfo<T, false> {
 public:
  using ruvo::factory::HandleClassInfo<T, false>::HandleClassInfo;
  /// Removes the binding of the host object and frees the byte.
  void destroyInstance(ruvo::RVOClass* cls, const ruvo::RVOClient* client, void* instance) override;
};

/// The part of MetaPropertyMetaData::destroyInstance() that does not depend on T.
TARVELON_API void destroyMetaPropertyInstance(void* instance);

template <class T>
void MetaPropertyMetaData<T>::destroyInstance(ruvo::RVOClass* /*cls*/, const ruvo::RVOClient* /*client*/,
                                              void* instance) {
  destroyMetaPropertyInstance(instance);
}

/// A registry of callbacks with which another module adds members to a metamodel class. The definition of the
/// immutable class calls them after it has added its properties. So `cls` is the immutable class, and the
/// mutable class inherits the added members.
///
/// Threads: any. A callback runs on the thread that first uses the class, under the lock of the object
///          system. Other threads that need a class definition wait meanwhile, so a callback must not wait
///          for another thread.
///
/// Example:
///   RuvoExtensionsRegistry::instance().addNonConstCallback(
///       "Tarvelon.metamodel.arplatform.common.Package",
///       [](ruvo::RVOClass* cls, const ruvo::RVOClient*) { cls->addMethod(new CountElements()); });
class TARVELON_API RuvoExtensionsRegistryImpl {
 public:
  using Callback = std::function<void(ruvo::RVOClass* cls, const ruvo::RVOClient* client)>;

  /// Adds a callback for the class with that dotted name. `className` names the mutable class. The callback
  /// has no effect on a class that is already defined.
  void addNonConstCallback(const std::string& className, Callback callback);
  /// Runs the callbacks of the class in the order in which they were added. An exception of a callback
  /// propagates, and the definition of the class fails with it.
  void executeNonConstCallbacks(const std::string& className, ruvo::RVOClass* cls,
                                const ruvo::RVOClient* client);
  /// Whether any class has a callback.
  bool hasCallbacks() const noexcept;
  /// Removes the callbacks of all classes.
  void clear() noexcept;

  RuvoExtensionsRegistryImpl();
  ~RuvoExtensionsRegistryImpl();
  RuvoExtensionsRegistryImpl(const RuvoExtensionsRegistryImpl&) = delete;
  RuvoExtensionsRegistryImpl& operator=(const RuvoExtensionsRegistryImpl&) = delete;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

/// Gives access to the one registry of the process, which is never destroyed.
class TARVELON_API RuvoExtensionsRegistry {
 public:
  static RuvoExtensionsRegistryImpl& instance();
};

/// The next eight functions create the class infos of the sequences and iterators of a metamodel class: with
/// mutable and immutable elements, and for sequences that can be changed or not.
///
/// Each function returns a new class info. The caller owns it until it passes the class info to addClass().
///   name         the short name of the new class, such as "SequenceOfPackage"
///   fullName     its dotted name
///   element      the dotted name of the element class
///   iterator     the dotted name of the iterator class that begin() and end() return
///   superClasses the dotted names of the direct bases of the mutable element class; the new class inherits
///                from the sequence classes of these bases
TARVELON_API ruvo::RVOClassInfo* createSequenceOfRefClassInfo(
    const std::string& name, const std::string& description, const std::string& fullName,
    const std::string& element, const std::string& iterator, const std::vector<std::string>& superClasses);
TARVELON_API ruvo::RVOClassInfo* createSequenceOfImmutableRefClassInfo(
    const std::string& name, const std::string& description, const std::string& fullName,
    const std::string& element, const std::string& iterator, const std::vector<std::string>& superClasses);
TARVELON_API ruvo::RVOClassInfo* createImmutableSequenceOfRefClassInfo(
    const std::string& name, const std::string& description, const std::string& fullName,
    const std::string& element, const std::string& iterator, const std::vector<std::string>& superClasses);
TARVELON_API ruvo::RVOClassInfo* createImmutableSequenceOfImmutableRefClassInfo(
    const std::string& name, const std::string& description, const std::string& fullName,
    const std::string& element, const std::string& iterator, const std::vector<std::string>& superClasses);
TARVELON_API ruvo::RVOClassInfo* createIteratorOfRefClassInfo(const std::string& name,
                                                              const std::string& description,
                                                              const std::string& fullName,
                                                              const std::string& element);
TARVELON_API ruvo::RVOClassInfo* createIteratorOfImmutableRefClassInfo(const std::string& name,
                                                                       const std::string& description,
                                                                       const std::string& fullName,
                                                                       const std::string& element);
TARVELON_API ruvo::RVOClassInfo* createImmutableIteratorOfRefClassInfo(const std::string& name,
                                                                       const std::string& description,
                                                                       const std::string& fullName,
                                                                       const std::string& element);
TARVELON_API ruvo::RVOClassInfo* createImmutableIteratorOfImmutableRefClassInfo(
    const std::string& name, const std::string& description, const std::string& fullName,
    const std::string& element);

}  // namespace K7Q::mi

namespace k7q {

/// The error text for an array with more than one element that is assigned to an optional scalar property.
TARVELON_API const char* getTooManyElementsMessage();

}  // namespace k7q
