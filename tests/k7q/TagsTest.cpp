#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Reference.h"

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

TEST(GetTag, CountsWithoutGaps) {
  struct New {};
  struct Newer {};
  const auto tag = tagOf(typeid(New), typeid(OtherDomain));
  EXPECT_EQ(tagOf(typeid(Newer), typeid(OtherDomain)), tag + 1);
}
