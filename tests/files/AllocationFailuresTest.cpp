// Each allocation of a save or a load fails in turn. Nothing may be left behind, and the next attempt must
// succeed.

#include <string>

#include "tarvelon/platform/model/api/Search.h"
#include "tests/files/Support.h"
#include "tests/support/FailingNew.h"

namespace {

std::string makeText() {
  std::string text;
  for (int count = 0; count < 30; ++count) {
    const std::string id = "foreign" + std::to_string(count);
    text += "  <common:Package xmi:id=\"" + id + "\" Name=\"P" + std::to_string(count) +
            "\" ElementImport=\"later a\"><PackagedElement xsi:type=\"variant:SystemConst\" Name=\"w\"/>"
            "<adminData language=\"EN\"/></common:Package>\n";
  }
  return fileOf(
      text +
      "<variant:SystemConst xmi:id=\"later\"/><variant:SystemConst xmi:id=\"a\"/>"
      "<variant:SystemConstValue><ValueVariationPoint>1</ValueVariationPoint></variant:SystemConstValue>");
}

/// ARXML with an interface, a component that uses it, foreign content and an open reference.
std::string makeArxml() {
  return R"(<AUTOSAR xmlns="http://autosar.org/schema/r4.0" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
         xsi:schemaLocation="http://autosar.org/schema/r4.0 AUTOSAR_00051.xsd">
  <AR-PACKAGES>
    <AR-PACKAGE>
      <SHORT-NAME>P</SHORT-NAME>
      <ELEMENTS>
        <SENDER-RECEIVER-INTERFACE>
          <SHORT-NAME>I</SHORT-NAME>
          <DATA-ELEMENTS>
            <VARIABLE-DATA-PROTOTYPE>
              <SHORT-NAME>D</SHORT-NAME>
              <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE">/Open/T</TYPE-TREF>
            </VARIABLE-DATA-PROTOTYPE>
          </DATA-ELEMENTS>
        </SENDER-RECEIVER-INTERFACE>
        <CAN-FRAME><SHORT-NAME>F</SHORT-NAME></CAN-FRAME>
        <APPLICATION-SW-COMPONENT-TYPE>
          <SHORT-NAME>C</SHORT-NAME>
          <PORTS>
            <R-PORT-PROTOTYPE>
              <SHORT-NAME>In</SHORT-NAME>
              <REQUIRED-COM-SPECS>
                <NONQUEUED-RECEIVER-COM-SPEC>
                  <DATA-ELEMENT-REF DEST="VARIABLE-DATA-PROTOTYPE">/P/I/D</DATA-ELEMENT-REF>
                  <ALIVE-TIMEOUT>0.5</ALIVE-TIMEOUT>
                </NONQUEUED-RECEIVER-COM-SPEC>
              </REQUIRED-COM-SPECS>
              <REQUIRED-INTERFACE-TREF DEST="SENDER-RECEIVER-INTERFACE">/P/I</REQUIRED-INTERFACE-TREF>
            </R-PORT-PROTOTYPE>
          </PORTS>
        </APPLICATION-SW-COMPONENT-TYPE>
      </ELEMENTS>
    </AR-PACKAGE>
  </AR-PACKAGES>
</AUTOSAR>)";
}

/// Renames the package: its interface and all references through it change in the file.
void changeArxml(const K7Q::Model& model) {
  const K7Q::ClassObject package = Tarvelon::model::find(model, u"/P");
  Access<Tarvelon::metamodel::foundation::NamedElement>(package, "Name").set(K7Q::String(u"Renamed"));
}

const auto kNothing = [] {};

TEST(AllocationFailures, OfALoadLeaveNothing) {
  const std::string text = makeText();
  const std::string saved = files::saveText(files::loadText(text).model);
  files::Loaded loaded;
  std::size_t before = 0;
  const int failures =
      failing::eachAllocation([&] { before = failing::live(); }, [&] { loaded = files::loadText(text); },
                              [&](std::size_t n) { EXPECT_EQ(failing::live(), before) << n; });
  EXPECT_GT(failures, 50);
  EXPECT_EQ(files::saveText(loaded.model), saved);
}

TEST(AllocationFailures, OfALoadWithProblemsLeaveNothing) {
  const std::string text =
      fileOf("<common:Package nme=\"a\"/><common:Pakage/><common:ReferenceBase Package=\"a\"/>");
  files::loadText(text, {nullptr, true});  // creates the data of each class's first use
  std::size_t before = 0;
  const int failures =
      failing::eachAllocation([&] { before = failing::live(); },
                              [&] {
                                files::loadText(text, {nullptr, true});
                              },
                              [&](std::size_t n) { EXPECT_EQ(failing::live(), before) << n; });
  EXPECT_GT(failures, 20);
}

TEST(AllocationFailures, OfALoadOfArxmlLeaveNothing) {
  const std::string text = makeArxml();
  EXPECT_EQ(files::saveArxmlText(files::loadText(text).model), text);
  files::Loaded loaded;
  std::size_t before = 0;
  const int failures =
      failing::eachAllocation([&] { before = failing::live(); }, [&] { loaded = files::loadText(text); },
                              [&](std::size_t n) { EXPECT_EQ(failing::live(), before) << n; });
  EXPECT_GT(failures, 20);
  EXPECT_EQ(files::saveArxmlText(loaded.model), text);
}

TEST(AllocationFailures, OfASaveOfChangedArxmlLeaveTheModelAsItWas) {
  files::Loaded loaded = files::loadText(makeArxml());
  changeArxml(loaded.model);
  const std::string saved = files::saveArxmlText(loaded.model);
  EXPECT_NE(saved.find("/Renamed/I/D"), std::string::npos) << saved;
  std::string again;
  const int failures = failing::eachAllocation(
      kNothing, [&] { again = files::saveArxmlText(loaded.model); }, [](std::size_t) {});
  EXPECT_GT(failures, 50);
  EXPECT_EQ(again, saved);
}

TEST(AllocationFailures, OfASaveLeaveNothing) {
  const std::string text = makeText();
  const std::string saved = files::saveText(files::loadText(text).model);
  files::Loaded loaded = files::loadText(text);
  std::string again;
  const int failures = failing::eachAllocation(
      kNothing,
      [&] {
        again = files::saveText(loaded.model, {[](double) {}, true});
      },
      [](std::size_t) {});
  EXPECT_GT(failures, 5);
  EXPECT_EQ(again, saved);
}

}  // namespace
