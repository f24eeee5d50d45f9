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

/// A class of the object system. RVOClassInfo::defineMembers() gets the class as its argument and adds
/// superclasses, methods and properties to it.
///
/// Ownership: the object system owns the class; the class owns its records.
/// Errors:    the functions that add a member throw a K7Q::Exception when they are called outside of
///            defineMembers(), and free the member.
///
/// Example:
///   void PackageInfo::defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient*) {
///     cls->addSuperClass(elementName, 1, 0, 1);
///     cls->addMethod(new CountElements());
///   }
class TARVELON_API RVOClass {
 public:
  RVOClass(const RVOClass&) = delete;
  RVOClass& operator=(const RVOClass&) = delete;

  /// Registers a class that belongs to no package, and takes ownership of the class info. Throws a
  /// K7Q::Exception if the name contains a dot, is empty, or is in use.
  static void addGlobalClass(RVOClassInfo* info);

  /// Adds a superclass by name. The superclass may be registered later. The three numbers are not used;
  /// existing modules pass 1, 0, 1.
  virtual void addSuperClass(const InternedName& fullName, int isPublic, int isVirtual,
                             int isConstructed) = 0;
  /// Adds a method, constructor or meta-property entry, and takes ownership of the record.
  virtual void addMethod(RVOMethodInfo* record) = 0;
  /// Adds a property, and takes ownership of the record. Both arguments are the same pointer. Throws a
  /// K7Q::Exception if the class has a property of that name.
  virtual void addProperty(RVOPropInfo* property, RVOPropInfo* same) = 0;
  /// The dotted name. The records of constructors have the same name.
  virtual const char* getClassName() const = 0;
  virtual const InternedName& getFullName() const = 0;

 protected:
  RVOClass() = default;
  virtual ~RVOClass();
};

/// Describes a class to the object system. A module derives from this class, usually through
/// RuvoFactoryClassInfo, and passes an instance to RVOPackage::addClass() or RVOClass::addGlobalClass().
///
/// The object system calls getName(), getDescription(), getAccess(), defineMembers() and destroyInstance().
/// The other functions are part of the interface, but the object system does not call them; their defaults
/// describe an ordinary class that is neither abstract nor sealed nor an enumeration. The order of the
/// virtual functions is part of the binary interface and must not change.
///
/// Ownership: the object system owns a class info once it is added.
/// Threads:   any thread may call the functions that describe the class. One thread calls defineMembers()
///            while the other threads that need the definition wait.
class TARVELON_API RVOClassInfo {
 public:
  RVOClassInfo() = default;
  RVOClassInfo(const RVOClassInfo&) = delete;
  RVOClassInfo& operator=(const RVOClassInfo&) = delete;
  virtual ~RVOClassInfo();

  /// The short name, without a dot. The text lives as long as the class info.
  virtual const char* getName() const = 0;
  virtual const char* getDescription() const = 0;
  virtual const char* getDetailedDescription() const = 0;
  /// The access number of a class without a package, 0 by default. Class::access() returns it.
  virtual int getAccess() const;
  /// Adds superclasses, methods and properties to `cls`. The object system calls this function when the
  /// members of the class are first needed. If the function runs out of memory, the next use of the class
  /// calls it again on an empty class. Any other exception is kept, and every later use of the class throws
  /// it.
  virtual void defineMembers(RVOClass* cls, const RVOClient* client) = 0;
  virtual int query8() const = 0;
  /// The object system calls this function when a bound host object is destroyed. `instance` is the pointer
  /// that is bound to the host object. The function removes the binding and releases the native object. The
  /// object system ignores its exceptions.
  virtual void destroyInstance(RVOClass* cls, const RVOClient* client, void* instance) = 0;
  virtual void updateInstance(void* instance);
  virtual bool query11() const = 0;
  /// The functions from here on return false, 0 or null by default, except for these, which return true:
  /// canOtherClassContainThisClass(), canThisClassContainOtherClass(), areChildrenSaved(),
  /// isConstructedOnLoad(), isDestructible() and isLocked(). isInstanceLeaf() depends on query8().
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
  /// For classes that define members later. The object system does not call these three functions, because
  /// defineMembers() adds all members.
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

  /// Allocates with utMalloc(), so that either side of the boundary can free the class info. Throws
  /// bedrock::core::except::bad_alloc.
  static void* operator new(std::size_t size);
  static void operator delete(void* storage) noexcept;
};

namespace factory {

/// A class info that stores a name and a description.
///
/// The class info keeps the pointers and copies no text, because most descriptions are shared by many
/// classes.
class TARVELON_API RuvoFactoryClassInfo : public RVOClassInfo {
 public:
  /// REQUIRES: both texts outlive the class info, as literals and interned names do.
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

/// The class info of a class whose host objects are bound to native objects of type T.
template <class T, bool HasValueSemantics>
class HandleClassInfo : public RuvoFactoryClassInfo {
 public:
  using RuvoFactoryClassInfo::RuvoFactoryClassInfo;
};

}  // namespace factory
}  // namespace ruvo
