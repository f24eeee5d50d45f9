#include "tarvelon/factory/FactoryMethods.h"

#include <compare>
#include <mutex>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/ModelCache.h"

namespace Tarvelon::metamodel::arplatform::mi {

namespace {

/// Turns deviant assertions off for the current scope.
class AssertionsOff {
 public:
  AssertionsOff() noexcept : mWereOn(K7Q::DeviantAssertions::enableAssertions(false)) {}
  AssertionsOff(const AssertionsOff&) = delete;
  AssertionsOff& operator=(const AssertionsOff&) = delete;
  ~AssertionsOff() { K7Q::DeviantAssertions::enableAssertions(mWereOn); }

 private:
  bool mWereOn;
};

// The source position in the error for a null model.
constexpr const char* kModelHeader = "boundary/k7q/Object.h";
constexpr int kModelLine = 84;

std::strong_ordering compare(const ImmutableFactory& left, const ImmutableFactory& right) {
  const auto objects = std::compare_three_way()(left.getInterface(), right.getInterface());
  return objects != 0 ? objects : left.getDeviant().word <=> right.getDeviant().word;
}

}  // namespace

K7Q::Model createNewModel() {
  const std::u16string name = K7Q::ModelCache::UNTITLED;
  const K7Q::Model model = K7Q::NSInterface::FactoryIntf::createNewModel(name);
  const AssertionsOff whileItIsSetUp;
  // The lock prevents two threads from getting the same free URI.
  static std::mutex oneAtATime;
  const std::lock_guard lock(oneAtATime);
  auto& cache = K7Q::ModelCache::instance();
  const std::u16string uri = cache.getNextAvailableModelUri(name);
  if (model.isNull()) {
    K7Q::LocalAsserter(kModelHeader, kModelLine) = K7Q::Asserter::MakeAlways(K7Q::kNullReference);
  }
  model.getModelInterface()->setUri(model.getDeviant(), uri);
  cache.bindModel(uri, model);
  return model;
}

binding::Literal<Factory> createNewFactory(const K7Q::Model& model) {
  return {Factory::createNewFactory(model)};
}

K7Q::Object createFromString(const Factory& self, const K7Q::String& cls) {
  return self.getFactory()->createFromString(self.getDeviant(), cls);
}

K7Q::Object createNamedFromString(const Factory& self, const K7Q::String& cls, const K7Q::String& name) {
  return self.getFactory()->createFromString(self.getDeviant(), cls, name);
}

binding::Literal<Factory> castToFactory(const Factory& other) { return {other}; }
K7Q::Object toK7QObject(const Factory& self) { return self; }
K7Q::FactoryObject toK7QFactoryObject(const Factory& self) { return self; }

bool eq(const ImmutableFactory& left, const ImmutableFactory& right) { return compare(left, right) == 0; }
bool ne(const ImmutableFactory& left, const ImmutableFactory& right) { return compare(left, right) != 0; }
bool gt(const ImmutableFactory& left, const ImmutableFactory& right) { return compare(left, right) > 0; }
bool ge(const ImmutableFactory& left, const ImmutableFactory& right) { return compare(left, right) >= 0; }
bool lt(const ImmutableFactory& left, const ImmutableFactory& right) { return compare(left, right) < 0; }
bool le(const ImmutableFactory& left, const ImmutableFactory& right) { return compare(left, right) <= 0; }

binding::Literal<ImmutableFactory> castToImmutableFactory(const ImmutableFactory& other) { return {other}; }
K7Q::ImmutableObject toK7QImmutableObject(const ImmutableFactory& self) { return self; }
K7Q::ImmutableFactoryObject toK7QImmutableFactoryObject(const ImmutableFactory& self) { return self; }

}  // namespace Tarvelon::metamodel::arplatform::mi
