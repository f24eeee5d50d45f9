#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tarvelon/platform/ruvo/ObjectSystem.h"
#include "tests/world/Mirror.h"
#include "tests/world/Program.h"

/// The interpreter of programs.
namespace world {

struct Options {
  /// Prints each step before it runs, and what it does.
  bool isVerbose = false;
  /// Compares all models after this number of steps.
  unsigned checkEvery = 1;
  /// Whether the operation Fail makes allocations fail. Not with several threads, because the counters are
  /// global.
  bool letsFail = true;
  /// Whether calls may also go through the object system. Not with several threads, because hosts serialise
  /// calls.
  bool usesHost = true;
  /// The folder for saved files; empty for none.
  std::string folder;
};

/// Whether a call must succeed, must be refused, or may do either.
enum class Expect { Ok, Refused, Any };

/// An object that a program keeps, as one of its views.
struct HeldObject {
  std::shared_ptr<Mirror> mirror;
  int id;
  K7Q::ClassObject handle;
  bool isFrozen;
  ruvo::RVOInterfacePtr host;
  bool isHostImmutable;
};

/// An iterator that a program keeps, with its sequence.
struct HeldPlace {
  std::shared_ptr<Mirror> mirror;
  int id;
  unsigned slot;
  K7Q::SequenceHandle sequence;
  std::unique_ptr<K7Q::Generic::IteratorIntf> iterator;
  std::size_t index;
  /// The contents of the list and the value of Mirror::touches when the iterator was created.
  Items items;
  std::uint64_t touches;
};

/// A running program. Its destructor closes the models.
class World {
 public:
  explicit World(const Options& options);
  World(const World&) = delete;
  World& operator=(const World&) = delete;
  ~World();

  void make(const Step& step);
  /// Compares all models with their expected states.
  void check(bool isThorough);

 private:
  static constexpr std::size_t kMostModels = 3;
  static constexpr std::size_t kMostObjects = 40;
  static constexpr std::size_t kMostHeld = 8;

  // World.cpp
  void dispatch(Operation operation);
  void dispatchRest(Operation operation);
  void say(const std::string& what) const;
  Mirror& mirror() { return *mModels[mCurrent]; }
  std::shared_ptr<Mirror> addModel(K7Q::Model model);
  void arm();
  /// Whether the armed allocation has failed.
  bool disarm();
  bool attempt(Expect expected, const std::function<void()>& call);
  void newModel();
  void closeModel();
  void forgetModel(std::size_t index);

  // Choose.cpp
  std::size_t below(std::size_t count) { return mIn->below(count); }
  /// A random existing object; -1 if there is none.
  int anyObject();
  int anyObject(const Class& cls);
  const Class& anyClass();
  /// A slot of the object for which `fits` is true; kNone if there is none.
  unsigned anySlot(int id, const std::function<bool(const Slot&)>& fits);
  /// A list property, or an optional single-valued property. With `isFilled`, one that has a value.
  unsigned anyList(int id, bool isFilled);
  unsigned anyOptional(int id, bool isFilled);
  std::optional<Item> anyItem(const Slot& slot);
  Item plainItem(const Slot& slot);
  bool makesCircle(int id, unsigned slot, const Item& item);
  std::string told(int id) const;
  std::string told(int id, unsigned slot) const;
  const Property& declaration(const Slot& slot);

  // ByName.cpp
  bool isByName() { return mOptions.usesHost && mIn->oneIn(3); }
  ruvo::RVOInterfacePtr hostOf(const K7Q::ObjectHandle& handle, bool isImmutable = false) const;
  static K7Q::NSInterface::ObjectIntf* nativeOf(ruvo::RVOInterface* host);
  /// The result refers to memory that is kept until the next step.
  ruvo::HostValue hostValue(const Item& item, const PropertyRow& row);
  void callHostList(int id, const Slot& slot, const char* method, std::vector<ruvo::HostValue> arguments);
  static const Property* exposed(const Slot& slot);

  // Edits.cpp
  void create();
  void grow();
  void createAs(const Class& cls);
  ObjectPointer construct(const Class& cls, unsigned constructor,
                          const std::vector<std::optional<Item>>& given, bool byName);
  void set();
  void setItem(int id, unsigned slot, const Item& item);
  void unset();
  void destroy();

  // Lists.cpp
  void add();
  void addItem(int id, unsigned slot, const Item& item);
  void replace();
  void erase();
  void assign();

  // Histories.cpp
  void begin();
  void commit();
  void rollBack();
  void limit();
  void undo(bool isRedo);
  void listen();
  void unlisten();
  /// `id` is set when the listener is added.
  api::Listener anyListener(const std::shared_ptr<std::uint64_t>& id);

  // Saving.cpp
  void save();
  void load(bool isBroken);
  void loadBroken(std::string text);
  std::string savedText(Mirror& mirror);
  void noteFileIds(Mirror& mirror, const std::string& text);
  void breakSave();

  // Copies.cpp
  void clone();
  void cloneModel();
  void adoptWhole(const Mirror& original, K7Q::Model model, bool keepsIds);

  // Held.cpp
  void hold();
  void useHeld();
  void drop();
  void holdPlace();
  void usePlace();
  void moveTo(HeldPlace& place, std::unique_ptr<K7Q::Generic::IteratorIntf> iterator, std::size_t index);
  void useIterator(HeldPlace& place, Expect freshness);
  void changeAt(HeldPlace& place, Expect freshness);

  // Looks.cpp
  void search();
  void validate();
  void compare();

  // Wrong.cpp
  void wrong();
  void wrongValue();
  void wrongIndex();
  void wrongView();
  void wrongMoment();
  void setNameOf(int id);

  // Typed.cpp
  void typed();
  void undertake();

  Options mOptions;
  std::vector<std::shared_ptr<Mirror>> mModels;
  std::size_t mCurrent = 0;
  int mNumbers = 0;
  std::vector<HeldObject> mHeld;
  std::vector<HeldPlace> mPlaces;
  std::vector<ruvo::RVOInterfacePtr> mHosts;
  std::deque<std::u16string> mTexts;
  Operands* mIn = nullptr;
  /// Which allocation of the next attempt fails (0 for none), and whether it is utMalloc() or operator new.
  unsigned mFailing = 0;
  bool mFailsHost = false;
  unsigned mSteps = 0;
};

/// The engine's objects from this one down, in the order of State::tree().
std::vector<ObjectPointer> treeOf(ObjectPointer root);

/// Uses every class once, because a failed allocation at the first use of a class is not expected by
/// programs.
void warmUp();
/// Runs a program. Raises Fault, and any unexpected exception of the engine.
void run(const Program& program, const Options& options);

}  // namespace world
