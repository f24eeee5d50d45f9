#include <algorithm>
#include <set>
#include <utility>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/boundary/k7q/Sequence.h"

namespace {

struct FirstTagged {};
struct SecondTagged {};
struct OtherDomain {};

std::size_t tagOf(const std::type_info& interface, const std::type_info& domain) {
  return K7Q::CooperativeVisitor::internal::GetTag(interface, domain);
}

}  // namespace

TEST(GetTag, GivesTheSameNumberForTheSameNames) {
  const auto tag = tagOf(typeid(FirstTagged), typeid(K7Q::VisitationDomain));
  EXPECT_EQ(tag, tagOf(typeid(FirstTagged), typeid(K7Q::VisitationDomain)));
  EXPECT_EQ(tag, tagOf(typeid(FirstTagged), typeid(K7Q::RootVisitationDomain)));
  EXPECT_EQ(tag, K7Q::tagsOf<FirstTagged>().interface);
}

TEST(GetTag, TellsInterfacesAndDomainsApart) {
  const std::set<std::size_t> tags{tagOf(typeid(FirstTagged), typeid(K7Q::VisitationDomain)),
                                   tagOf(typeid(SecondTagged), typeid(K7Q::VisitationDomain)),
                                   tagOf(typeid(FirstTagged), typeid(OtherDomain))};
  EXPECT_EQ(tags.size(), 3U);
}

template <class... Interfaces>
void expectFixed(K7Q::CooperativeVisitor::internal::FixedTags<Interfaces...> /*list*/) {
  static_assert((noexcept(K7Q::tagsOf<Interfaces>()) && ...));
  std::set<std::size_t> tags;
  for (const auto& [fixed, found] :
       {std::pair(K7Q::tagsOf<Interfaces>().interface,
                  tagOf(typeid(Interfaces), typeid(K7Q::VisitationDomain)))...}) {
    EXPECT_EQ(fixed, found);
    tags.insert(fixed);
  }
  EXPECT_EQ(tags.size(), sizeof...(Interfaces));
}

TEST(GetTag, GivesTheConstantsOfTheKernelsInterfaces) {
  expectFixed(K7Q::CooperativeVisitor::internal::KernelTags());
  EXPECT_EQ(K7Q::tagsOf<FirstTagged>().domain,
            tagOf(typeid(K7Q::VisitationDomain), typeid(K7Q::VisitationDomain)));
}

TEST(GetTag, GivesAnotherNumberInAnotherDomain) {
  EXPECT_GE(tagOf(typeid(K7Q::NSInterface::ObjectIntf), typeid(OtherDomain)),
            K7Q::CooperativeVisitor::internal::KernelTags::kCount);
}

TEST(GetTag, CountsWithoutGaps) {
  struct New {};
  struct Newer {};
  const auto tag = tagOf(typeid(New), typeid(OtherDomain));
  EXPECT_EQ(tagOf(typeid(Newer), typeid(OtherDomain)), tag + 1);
}
