// The ids of objects in files.

#include <set>
#include <string>

#include "tarvelon/platform/model/api/History.h"
#include "tests/files/Support.h"

namespace {

std::string idOf(const std::string& text, const std::string& name) {
  const auto named = text.find("Name=\"" + name + "\"");
  const auto begin = text.rfind("xmi:id=\"", named) + 8;
  return text.substr(begin, text.find('"', begin) - begin);
}

TEST(Ids, AreKeptThroughRenameAndMove) {
  const auto model = K7Q::Model::create();
  const auto first = common::Package::create(model, u"First");
  const auto second = common::Package::create(model, u"Second");
  const auto moved = variant::SystemConst::create(model, u"Wheels");
  first.get<"PackagedElement">().add(moved);
  const std::string id = idOf(files::saveText(model), "Wheels");

  moved.set<"Name">(u"Axles");
  second.get<"PackagedElement">().add(moved);
  EXPECT_EQ(idOf(files::saveText(model), "Axles"), id);
}

TEST(Ids, AreNotInheritedByTheNextObjectOfTheSameNumber) {
  const auto model = K7Q::Model::create();
  const auto first = common::Package::create(model, u"First");
  const std::string id = idOf(files::saveText(model), "First");
  first.destroy();
  common::Package::create(model, u"Next");
  EXPECT_NE(idOf(files::saveText(model), "Next"), id);
}

TEST(Ids, DifferWhereNamesAreEqualAndWhereThereAreNone) {
  const auto model = K7Q::Model::create();
  for (int count = 0; count < 3; ++count) {
    common::Package::create(model, u"Same");
    common::Package::create(model);
    foundation::NumericalValueSpecification::create(model);
  }
  const std::string text = files::saveText(model);
  std::set<std::string> ids;
  for (auto place = text.find("xmi:id=\""); place != std::string::npos;
       place = text.find("xmi:id=\"", place + 1))
    ids.insert(text.substr(place + 8, 12));
  EXPECT_EQ(ids.size(), 9U);
}

TEST(Ids, StayApartWhenAnObjectTakesTheNameOfAnother) {
  const auto model = K7Q::Model::create();
  const auto renamed = common::Package::create(model, u"Brakes");
  const std::string id = idOf(files::saveText(model), "Brakes");
  renamed.set<"Name">(u"Wheels");
  common::Package::create(model, u"Brakes");
  const std::string text = files::saveText(model);
  EXPECT_EQ(idOf(text, "Wheels"), id);
  EXPECT_NE(idOf(text, "Brakes"), id);
  EXPECT_EQ(files::saveText(files::loadText(text).model), text);
}

// The destroyed object keeps its id, because undo may restore it with that id.
TEST(Ids, StayApartFromThoseThatAnUndoBringsBack) {
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model, u"Brakes");
  Tarvelon::model::setHistoryLimit(model, 100);
  const auto first = variant::SystemConst::create(model, u"Wheels");
  package.get<"PackagedElement">().add(first);
  const std::string id = idOf(files::saveText(model), "Wheels");
  first.destroy();
  const auto second = variant::SystemConst::create(model, u"Wheels");
  package.get<"PackagedElement">().add(second);
  EXPECT_NE(idOf(files::saveText(model), "Wheels"), id);
  second.set<"Name">(u"Axles");
  for (int batch = 0; batch < 4; ++batch) Tarvelon::model::undo(model);
  common::Package::create(model, u"Behind");
  const std::string text = files::saveText(model);
  EXPECT_EQ(idOf(text, "Wheels"), id);
  EXPECT_EQ(files::saveText(files::loadText(text).model), text);
}

TEST(Ids, OfHeldObjectsAreTaken) {
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model, u"Brakes");
  const auto elements = Access<foundation::Package>(package, "PackagedElement").sequence();
  for (int count = 0; count < 2; ++count) {
    // The new object is inserted at the front, so that it gets its id first, from the same name and list.
    elements.get().generic_insert({}, 0, refOf(variant::SystemConst::create(model, u"Wheels")));
    const std::string text = files::saveText(model);
    EXPECT_EQ(files::saveText(files::loadText(text).model), text);
  }
}

TEST(Ids, OfOtherProgramsAreKept) {
  const std::string objects =
      "  <common:Package xmi:id=\"a.b-\xC3\xA4\"\n"
      "      Name=\"Brakes\"\n"
      "  >\n"
      "    <PackagedElement xsi:type=\"variant:SystemConst\" xmi:id=\"_yDyFkLb4EeymtpnKJTH3xg\"\n"
      "        Name=\"Wheels\"\n"
      "    />\n"
      "  </common:Package>\n";
  EXPECT_EQ(objectsOf(files::saveText(files::loadText(fileOf(objects)).model)), objects);
}

TEST(Ids, OfEveryFormAreKept) {
  for (const char* id : {"_AAAAAAAAAAB", "_H__________", "_", "_AAAAAAAAAAA", "AAAAAAAAAAAB", "_AAAAAAAAAA",
                         "_AAAAAAAAAABB", "_IAAAAAAAAAA", "_AAAA.AAAAAB"}) {
    const std::string objects =
        "  <common:Package xmi:id=\"" + std::string(id) + "\"\n      Name=\"Brakes\"\n  />\n";
    EXPECT_EQ(objectsOf(files::saveText(files::loadText(fileOf(objects)).model)), objects);
  }
}

TEST(Ids, AreGivenToObjectsThatCameWithoutOne) {
  const auto loaded = files::loadText(fileOf("<common:Package Name=\"Brakes\"/>"));
  EXPECT_EQ(idOf(files::saveText(loaded.model), "Brakes").size(), 12U);
}

}  // namespace
