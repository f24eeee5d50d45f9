#pragma once

#include <cstddef>
#include <typeinfo>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Interface.h"
#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/boundary/ruvo/Value.h"

namespace ruvo {

class RVOClass;
class RVOClassInfo;
class RVODataTypePtr;
class RVOLoadInfo;
class RVOMethodInfo;
class RVOPropInfo;

/// The class under definition.
class TARVELON_API RVOClass {
 public:
  RVOClass(const RVOClass&) = delete;
  RVOClass& operator=(const RVOClass&) = delete;

  /// Registers a class with no package; takes ownership.
  static void addGlobalClass(RVOClassInfo* info);

  /// Records a superclass by name; the class need not exist yet. The generated code passes 1, 0, 1.
  virtual void addSuperClass(const InternedName& fullName, int isPublic, int isVirtual,
                             int isConstructed) = 0;
  /// Takes ownership of a record.
  virtual void addMethod(RVOMethodInfo* record) = 0;
  /// Takes ownership of a property; the same pointer comes twice.
  virtual void addProperty(RVOPropInfo* property, RVOPropInfo* same) = 0;
  /// The full dotted name, under which constructors are registered.
  virtual const char* getClassName() const = 0;
  virtual const InternedName& getFullName() const = 0;

 protected:
  RVOClass() = default;
  virtual ~RVOClass();
};

/// What a class is, told by whoever publishes it. The slot order is fixed.
/// Threads: what it says is asked for by any; members are defined by one, while others wait.
class TARVELON_API RVOClassInfo {
 public:
  RVOClassInfo() = default;
  RVOClassInfo(const RVOClassInfo&) = delete;
  RVOClassInfo& operator=(const RVOClassInfo&) = delete;
  virtual ~RVOClassInfo();

  virtual const char* getName() const = 0;
  virtual const char* getDescription() const = 0;
  virtual const char* getDetailedDescription() const = 0;
  virtual int getAccess() const;
  /// Declares superclasses, methods and properties. Called once per class, when it is first needed.
  virtual void defineMembers(RVOClass* cls, const RVOClient* client) = 0;
  virtual int query8() const = 0;
  /// A host object goes: releases what its binding held.
  virtual void destroyInstance(RVOClass* cls, const RVOClient* client, void* instance) = 0;
  virtual void updateInstance(void* instance);
  virtual bool query11() const = 0;
  virtual bool isHidden() const;
  virtual bool isCompatibleInexactProperties() const;
  virtual bool isFullNameDisplayed() const;
  virtual bool isPropertyNameReservedByThisClass(const char* name) const;
  virtual bool canOtherClassContainThisClass(InternedName other) const;
  virtual bool canThisClassContainOtherClass(InternedName other) const;
  virtual bool query18() const = 0;
  virtual bool isHandleCompatible() const;
  virtual bool isEnumeration() const;
  virtual int getConnectAccess() const;
  virtual int getConnectivity() const;
  virtual bool areChildrenSaved() const;
  virtual bool isAbstract() const;
  virtual bool useClassDefaultsOnLoad() const;
  virtual bool isSealed() const;
  virtual bool isPropertyTruncationAllowed() const;
  virtual bool isConstructedOnLoad() const;
  virtual bool arePropertiesCaseInsensitive() const;
  /// True when query8(), with bit 1 masked off, is 0.
  virtual bool isInstanceLeaf() const;
  virtual bool isDestructible() const;
  virtual bool isLocked() const;
  /// For members that a class does not define at once. Not asked by the object system here, since
  /// defineMembers() brings all members of a class.
  virtual bool attemptToLoadProperty(const char* name);
  virtual bool attemptToLoadMethod(const char* name);
  virtual bool attemptToLoadEvent(const char* name);
  virtual void instanceLoaded(RVOInterfacePtr object, const RVOLoadInfo* info);
  virtual bool customSave(RVOInterfacePtr object, RVOValue& value, RVODataTypePtr& type);
  virtual bool customLoad(RVOInterfacePtr& object, RVOValue value, RVODataTypePtr& type);
  virtual void* getModule();
  virtual bool areClassFunctionsAllowed() const;
  virtual bool areExtensionMethodsAllowed() const;
  virtual bool usesRootRecords() const;
  virtual bool doEventsHaveSeparateNamespace() const;
  virtual bool doesInexactPropertyNameIssueWarning();
  virtual bool usesCustomChildrenList() const;
  virtual int getArrayNature() const;
  virtual void* getChildrenOfInstance(RVOInterface* object) const;
  virtual void classIsAbstract();
  virtual bool allowInstanceUpdates() const;
  virtual bool isIDConsistent() const;

  /// Storage that utFree() can release; throws bedrock::core::except::bad_alloc.
  static void* operator new(std::size_t size);
  static void operator delete(void* storage) noexcept;
};

namespace factory {

/// Class information with a name and a description, which must outlive it (literals or interned): most
/// classes share theirs with others or with their dotted names.
class TARVELON_API RuvoFactoryClassInfo : public RVOClassInfo {
 public:
  RuvoFactoryClassInfo(const char* name, const char* description) noexcept
      : mName(name), mDescription(description) {}
  ~RuvoFactoryClassInfo() override;
  const char* getName() const override;
  const char* getDescription() const override;
  const char* getDetailedDescription() const override;
  int query8() const override;
  bool query11() const override;
  bool query18() const override;

 private:
  const char* mName;
  const char* mDescription;
};

/// Class information for a handle class on native objects of type T.
template <class T, bool HasValueSemantics>
class HandleClassInfo : public RuvoFactoryClassInfo {
 public:
  using RuvoFactoryClassInfo::RuvoFactoryClassInfo;
};

}  // namespace factory
}  // namespace ruvo
