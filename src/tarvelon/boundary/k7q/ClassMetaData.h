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

/// Class information for everything that a host object holds by an id of DeviantRegistry.
class TARVELON_API ClassMetaData : public ruvo::factory::HandleClassInfo<ReferenceCountingIntf, false> {
 public:
  /// Both texts must outlive the info (literals or interned).
  ClassMetaData(const char* name, const char* description) noexcept;
  ~ClassMetaData() override;
  /// Forgets the binding and drops the reference that it held.
  void destroyInstance(ruvo::RVOClass* cls, const ruvo::RVOClient* client, void* instance) override;
};

/// Class information for the dummy that MetaProperty() hands out.
template <class T>
class MetaPropertyMetaData : public ruvo::factory::HandleClassInfo<T, false> {
 public:
  using ruvo::factory::HandleClassInfo<T, false>::HandleClassInfo;
  /// Forgets the binding and frees the one byte.
  void destroyInstance(ruvo::RVOClass* cls, const ruvo::RVOClient* client, void* instance) override;
};

TARVELON_API void destroyMetaPropertyInstance(void* instance);

template <class T>
void MetaPropertyMetaData<T>::destroyInstance(ruvo::RVOClass* /*cls*/, const ruvo::RVOClient* /*client*/,
                                              void* instance) {
  destroyMetaPropertyInstance(instance);
}

/// What other modules add to a class after its members are defined. Threads: any; a callback runs on the
/// thread that asks for the class first, while others that ask for any class wait.
class TARVELON_API RuvoExtensionsRegistryImpl {
 public:
  using Callback = std::function<void(ruvo::RVOClass* cls, const ruvo::RVOClient* client)>;

  /// `className` is the dotted name of the mutable class.
  void addNonConstCallback(const std::string& className, Callback callback);
  /// Runs the callbacks of that class in the order they were added; an exception goes through.
  void executeNonConstCallbacks(const std::string& className, ruvo::RVOClass* cls,
                                const ruvo::RVOClient* client);
  bool hasCallbacks() const noexcept;
  /// Drops every callback.
  void clear() noexcept;

  RuvoExtensionsRegistryImpl();
  ~RuvoExtensionsRegistryImpl();
  RuvoExtensionsRegistryImpl(const RuvoExtensionsRegistryImpl&) = delete;
  RuvoExtensionsRegistryImpl& operator=(const RuvoExtensionsRegistryImpl&) = delete;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

class TARVELON_API RuvoExtensionsRegistry {
 public:
  static RuvoExtensionsRegistryImpl& instance();
};

/// The eight companions of a metamodel class: sequences and iterators of its objects. Each returns a new
/// class info, which belongs to whoever it is added to. `superClasses` are the dotted names of the direct
/// bases of the mutable element class.
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

/// What a set of an optional scalar says to more than one element.
TARVELON_API const char* getTooManyElementsMessage();

}  // namespace k7q
