// Problems in a file are reported with their places. Nothing is loaded, unless loading is lenient.

#include <string>

#include "tests/files/Support.h"

namespace {

/// The problems of a file with these objects, which begin in line 3. Also checks that the correct ones load
/// leniently.
std::string problemsOfObjects(const std::string& objects) {
  const std::string text = fileOf(objects);
  std::string problems = refusalOfText(text);
  const auto loaded = files::loadText(text, {nullptr, true});
  EXPECT_EQ(problemsOf(loaded.problems), problems);
  EXPECT_NO_THROW(files::loadText(files::saveText(loaded.model))) << "what is kept must be right";
  return problems;
}

TEST(BrokenFiles, NameAnUnknownPropertyAndTheNearest) {
  EXPECT_EQ(problemsOfObjects("<behavior:Runnable\n  Name=\"Step\"\n  symbl=\"x\"/>"),
            "5:3 behavior:Runnable has no property 'symbl'; did you mean 'symbol'?\n");
  EXPECT_EQ(problemsOfObjects("<common:Package xsi:Name=\"a\" tarvelon:format=\"1\" xmi:version=\"2.0\"/>"),
            "3:17 common:Package has no property 'Name' of namespace "
            "'http://www.w3.org/2001/XMLSchema-instance'; did you mean 'Name'?\n"
            "3:30 common:Package has no property 'format' of namespace 'urn:tarvelon:file'\n"
            "3:50 common:Package has no property 'version' of namespace 'http://www.omg.org/XMI'\n");
}

TEST(BrokenFiles, NameAnUnknownClassAndTheNearest) {
  EXPECT_EQ(problemsOfObjects("<behavior:Runable/>"),
            "3:1 package 'behavior' has no class 'Runable'; did you mean 'Runnable'?; the element is left "
            "out with its contents\n");
  EXPECT_EQ(problemsOfObjects("<common:Package>\n <PackagedElement xsi:type=\"variant:SystemCnst\"/>\n"
                              " <PackagedElement xsi:type=\"what:SystemConst\"/></common:Package>"),
            "4:19 package 'variant' has no class 'SystemCnst'; did you mean 'SystemConst'?; the element is "
            "left out with its contents\n"
            "5:19 expected a class as 'package:Class', got the type 'what:SystemConst', whose prefix is not "
            "declared; the element is left out with its contents\n");
  EXPECT_EQ(problemsOfObjects("<Package/>"),
            "3:1 expected an object of the metamodel, got the element 'Package'; the element is left out "
            "with its contents\n");
}

TEST(BrokenFiles, NameAnUnknownElement) {
  EXPECT_EQ(
      problemsOfObjects("<common:Package>\n  <PackagdElement><deeper/></PackagdElement></common:Package>"),
      "4:3 common:Package has no property 'PackagdElement'; did you mean 'PackagedElement'?; the element is "
      "left out with its contents\n");
}

TEST(BrokenFiles, NameAValueOfTheWrongKind) {
  EXPECT_EQ(problemsOfObjects("<common:ApplicationError errorCode=\"7x\"/>"),
            "3:26 ApplicationError.errorCode: expected int32 scalar, got '7x'; write a whole number from "
            "-2147483648 to 2147483647\n");
  EXPECT_EQ(problemsOfObjects("<common:ApplicationError errorCode=\"2147483648\"/>"),
            "3:26 ApplicationError.errorCode: expected int32 scalar, got '2147483648', which is out of "
            "range; write a whole number from -2147483648 to 2147483647\n");
  EXPECT_EQ(problemsOfObjects("<common:ApplicationError errorCode=\"+-5\"/>").substr(0, 73),
            "3:26 ApplicationError.errorCode: expected int32 scalar, got '+-5'; write ");
  EXPECT_EQ(
      problemsOfObjects("<behavior:Runnable canBeInvokedConcurrently=\"yes\"/>"),
      "3:20 Runnable.canBeInvokedConcurrently: expected logical scalar, got 'yes'; write true or false\n");
  EXPECT_EQ(problemsOfObjects("<foundation:NumericalValueSpecification Value=\"inf\"/>"),
            "3:41 NumericalValueSpecification.Value: expected double scalar, got 'inf'; write a number\n");
  EXPECT_EQ(problemsOfObjects("<common:AUTOSAR ArxmlFilePackaging=\"Modulr\"/>"),
            "3:17 AUTOSAR.ArxmlFilePackaging: expected "
            "Tarvelon.metamodel.arplatform.common.ArxmlFilePackagingKind, got "
            "'Modulr'; write one of 'Modular', 'SingleFile'\n");
}

TEST(BrokenFiles, NameASecondValueWhereThereIsOne) {
  EXPECT_EQ(problemsOfObjects("<common:Package Name=\"A\">\n  <Name>B</Name></common:Package>"),
            "4:10 Package.Name: expected at most one value, got a second one; remove all but one\n");
  EXPECT_EQ(problemsOfObjects("<common:Package>\n <adminData/>\n <adminData/></common:Package>"),
            "5:2 Package.adminData: expected at most one object, got a second one; the element is left out "
            "with its contents\n");
  EXPECT_EQ(problemsOfObjects("<common:Package xmi:id=\"a\"/>\n<common:ReferenceBase Package=\"a a\"/>\n"
                              "<common:ReferenceBase Package=\"\"/>"),
            "4:23 ReferenceBase.Package: expected the id of one object, got 'a a'\n"
            "5:23 ReferenceBase.Package: expected the id of one object, got ''\n");
}

TEST(BrokenFiles, NameAnIdThatStandsTwice) {
  EXPECT_EQ(problemsOfObjects("<common:Package xmi:id=\"a\"/>\n<common:Package\n   xmi:id=\"a\"/>"),
            "5:4 the id 'a' is used by an earlier object; give this object another id\n");
}

TEST(BrokenFiles, NameAnIdThatIsNone) {
  EXPECT_EQ(problemsOfObjects("<common:Package xmi:id=\"a b\"/>\n<common:Package xmi:id=\"\"/>"),
            "3:17 expected an id without blanks, got 'a b'\n"
            "4:17 expected an id without blanks, got ''\n");
}

TEST(BrokenFiles, NameAReferenceToNothing) {
  EXPECT_EQ(problemsOfObjects("<common:ReferenceBase\n Package=\"nobody\"/>"),
            "3:1 ReferenceBase.Package: no object has the id 'nobody'\n");
  EXPECT_EQ(problemsOfObjects("<common:ReferenceBase Package=\"out\"/>\n<common:Pakage xmi:id=\"out\"/>"),
            "3:1 ReferenceBase.Package: the target was left out of the model, the object with the id 'out'\n"
            "4:1 package 'common' has no class 'Pakage'; did you mean 'Package'?; the element is left out "
            "with its contents\n");
  EXPECT_EQ(problemsOfObjects("<common:Package xmi:id=\"a\">\n <ElementImport href=\"other.xmi#b\"/>\n"
                              " <ElementImport/></common:Package>"),
            "4:2 Package.ElementImport: expected the id of an object, got the reference 'other.xmi#b' to "
            "another file; write the id as the attribute's value\n"
            "5:2 Package.ElementImport: expected the id of an object, got an element; write the id as the "
            "attribute's value\n");
}

TEST(BrokenFiles, NameAReferenceToTheWrongClass) {
  const std::string wrong =
      "ReferenceBase.Package: expected common:Package, got common:SdgCaption with the id 'a'\n";
  EXPECT_EQ(problemsOfObjects("<common:SdgCaption xmi:id=\"a\"/>\n<common:ReferenceBase Package=\"a\"/>"),
            "4:23 " + wrong);
  EXPECT_EQ(problemsOfObjects("<common:ReferenceBase Package=\"a\"/>\n<common:SdgCaption xmi:id=\"a\"/>"),
            "3:1 " + wrong);
}

TEST(BrokenFiles, NameAnObjectThatStandsTwiceInAList) {
  EXPECT_EQ(problemsOfObjects("<behavior:TimingEvent xmi:id=\"a\"/>\n<behavior:Runnable Events=\"a a\"/>"),
            "4:20 Runnable.Events: the list contains the id twice: 'a'\n");
}

TEST(BrokenFiles, NameAnObjectThatStandsTwiceInAListThatItsWayBackFillsFirst) {
  std::string events;
  for (const char* id : {"a", "b", "c"})
    events += std::string("<behavior:TimingEvent xmi:id=\"") + id + "\" StartOnEvent=\"s\"/>";
  for (const auto& [ids, twice] : {std::pair("a a b", 'a'), {"a c a b", 'a'}, {"c b c a", 'c'}}) {
    EXPECT_EQ(
        problemsOfObjects("<behavior:Runnable xmi:id=\"s\" Events=\"" + std::string(ids) + "\"/>\n" + events),
        std::string("3:1 Runnable.Events: the list contains the id twice: '") + twice + "'\n");
  }
}

TEST(BrokenFiles, NameTwoThatContradictEachOther) {
  const std::string two = "<behavior:Runnable xmi:id=\"r\"/><behavior:Runnable xmi:id=\"s\" Events=\"e\"/>\n";
  const std::string event = "<behavior:TimingEvent xmi:id=\"e\" StartOnEvent=\"r\"/>\n";
  EXPECT_EQ(problemsOfObjects(two + event),
            "3:32 Runnable.Events: the opposite property already refers to another object, in the object "
            "with the id 'e'\n");
  EXPECT_EQ(problemsOfObjects(event + two),
            "3:1 TimingEvent.StartOnEvent: expected at most one object, got a second one with the id 'r'\n");
}

TEST(BrokenFiles, NameAnObjectOfTheWrongOrAnAbstractClass) {
  EXPECT_EQ(problemsOfObjects("<common:Package>\n <adminData xsi:type=\"common:Sdg\"/></common:Package>"),
            "4:2 Package.adminData: expected common:AdminData, got common:Sdg; the element is left out with "
            "its contents\n");
  EXPECT_EQ(problemsOfObjects("<common:Identifiable/>"),
            "3:1 common:Identifiable is abstract: write a concrete subclass as xsi:type; the element is left "
            "out with its contents\n");
}

TEST(BrokenFiles, NameASecondOwner) {
  EXPECT_EQ(problemsOfObjects("<common:Package xmi:id=\"a\" PackagedElement=\"a\"/>"),
            "3:28 Package.PackagedElement: expected contained objects as elements, got the text 'a'; nest "
            "the elements of the objects here\n");
  EXPECT_EQ(
      problemsOfObjects("<common:Package xmi:id=\"a\">\n <PackagedElement href=\"#a\"/></common:Package>"),
      "4:2 Package.PackagedElement: expected a contained object, got the reference '#a'; nest the element of "
      "the object here\n");
}

TEST(BrokenFiles, NameTextWhereNoneBelongs) {
  EXPECT_EQ(problemsOfObjects("<common:Package>\n  stray</common:Package>"),
            "4:1 expected an element, got the text 'stray'; remove it\n");
  EXPECT_EQ(problemsOfObjects("<common:Package>\n  <Name>A<b/></Name></common:Package>"),
            "4:10 Package.Name: expected a value, got the element 'b'; remove it\n");
}

TEST(BrokenFiles, NameWhatStandsInAnElementThatMustBeEmpty) {
  EXPECT_EQ(problemsOfObjects("<common:Package>\n <Name xsi:nil=\"true\">A<b/></Name></common:Package>"),
            "4:23 Package.Name: expected an empty element, got the text 'A'\n"
            "4:24 Package.Name: expected an empty element, got the element 'b'\n");
  EXPECT_EQ(problemsOfObjects("<common:Package xmi:id=\"a\">\n <adminData xsi:nil=\"1\" language=\"EN\"/>\n"
                              " <ElementImport href=\"#a\">B</ElementImport></common:Package>"),
            "4:25 expected no attribute 'language' here; remove it\n"
            "5:27 Package.ElementImport: expected an empty element, got the text 'B'\n");
}

TEST(BrokenFiles, NameAReferenceWhereAnObjectOrAValueBelongs) {
  EXPECT_EQ(problemsOfObjects("<common:Package xmi:idref=\"a\"/>\n<common:Package><Name href=\"#a\">A</Name>"
                              "<category xmi:idref=\"a\"/></common:Package>"),
            "3:17 common:Package has no property 'idref' of namespace 'http://www.omg.org/XMI'\n"
            "4:23 expected no attribute 'href' here; remove it\n"
            "4:51 expected no attribute 'idref' here; remove it\n");
}

TEST(BrokenFiles, NameATypeThatIsNotThatOfTheElement) {
  EXPECT_EQ(
      problemsOfObjects("<common:Package xsi:type=\"variant:SystemConst\"/>\n<common:Package "
                        "xsi:type=\"common:Pakage\"/>"),
      "3:1 expected common:Package, got variant:SystemConst; the element is left out with its contents\n"
      "4:17 package 'common' has no class 'Pakage'; did you mean 'Package'?; the element is left out with "
      "its contents\n");
  const auto loaded = files::loadText(fileOf("<common:Identifiable xsi:type=\"common:Package\"/>"));
  EXPECT_NE(files::saveText(loaded.model).find("<common:Package xmi:id="), std::string::npos);
}

TEST(BrokenFiles, ShowWholeCharactersOfALongText) {
  std::string text = "a";
  for (int count = 0; count < 40; ++count) text += "\xC3\xA4";
  EXPECT_EQ(problemsOfObjects("<common:ApplicationError errorCode=\"" + text + "\"/>"),
            "3:26 ApplicationError.errorCode: expected int32 scalar, got '" + text.substr(0, 59) +
                "...'; write a whole number from -2147483648 to 2147483647\n");
}

TEST(BrokenFiles, NameAMissingOrStrangeVersion) {
  const std::string text =
      "<xmi:XMI xmlns:xmi=\"http://www.omg.org/XMI\"><common:Package "
      "xmlns:common=\"urn:tarvelon:metamodel:arplatform.common\"/></xmi:XMI>";
  EXPECT_EQ(refusalOfText(text),
            "1:1 the root element has no xmi:version; write xmi:version=\"2.0\"\n"
            "1:1 the root element has no tarvelon:format: expected the number of the file's format, from 0 "
            "to 1; if another program has removed it, write xmlns:tarvelon=\"urn:tarvelon:file\" "
            "tarvelon:format=\"1\"\n");
  EXPECT_EQ(problemsOf(files::loadText(text, {nullptr, true}).problems), refusalOfText(text));
  EXPECT_NE(refusalOfText(fileOf("", "new")).find("expected the number of the file's format, got 'new'"),
            std::string::npos);
  EXPECT_NE(refusalOfText(fileOf("", "-1")).find("got '-1'"), std::string::npos);
}

TEST(BrokenFiles, OfANewerFormatAreNotLoadedAtAll) {
  for (const char* format : {"2", "99999999999999999999"}) {
    const std::string problem = std::string("the file has format ") + format +
                                ", but this version reads formats up to 1; load it with a newer version\n";
    EXPECT_NE(refusalOfText(fileOf("", format), true).find(problem), std::string::npos);
  }
}

TEST(BrokenFiles, WithADocumentTypeAreNotLoadedAtAll) {
  const std::string laughs =
      "<!DOCTYPE lolz [<!ENTITY lol \"lol\"><!ENTITY lol2 \"&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;\">]>\n"
      "<lolz>&lol2;</lolz>";
  EXPECT_EQ(refusalOfText(laughs, true),
            "1:16 a document type declaration is not supported; remove the '<!DOCTYPE ...>'\n");
  EXPECT_NE(refusalOfText("<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><a/>", true).find("a document type"),
            std::string::npos);
}

TEST(BrokenFiles, NestedTooDeepAreNotLoadedAtAll) {
  std::string deep;
  for (int depth = 0; depth < 200000; ++depth) deep += "<PackagedElement>";
  EXPECT_NE(refusalOfText(fileOf("<common:Package>" + deep), true)
                .find("elements are nested more than 1000 levels deep"),
            std::string::npos);
}

TEST(BrokenFiles, MayBeNestedAsDeepAsAnythingThatIsSaved) {
  const auto nested = [](int depth) {
    std::string begin;
    std::string end;
    for (int level = 1; level < depth; ++level) {
      begin += "<PackagedElement xsi:type=\"common:Package\">";
      end += "</PackagedElement>";
    }
    return fileOf("<common:Package>" + begin + "<Name>Deepest</Name>" + end + "</common:Package>");
  };
  const auto loaded = files::loadText(nested(files::kMaxDepth));
  EXPECT_NE(files::saveText(loaded.model).find("Name=\"Deepest\""), std::string::npos);
  EXPECT_NE(refusalOfText(nested(files::kMaxDepth + 1), true).find("nested more than 1000 levels deep"),
            std::string::npos);
}

TEST(BrokenFiles, ThatAreNoXmlAreNotLoadedAtAll) {
  EXPECT_EQ(refusalOfText("", true), "1:1 the file is not well-formed XML: no element found\n");
  EXPECT_EQ(refusalOfText("PK\x03\x04", true),
            "1:3 the file is not well-formed XML: not well-formed (invalid token)\n");
}

TEST(BrokenFiles, ThatBreakOffKeepWhatCameBefore) {
  const std::string text = fileOf("<common:Package Name=\"A\"/>\n<common:Package Name=\"B\">");
  const std::string cut = text.substr(0, text.find("\"B\""));
  EXPECT_EQ(refusalOfText(cut), "4:1 the file is not well-formed XML: unclosed token\n");
  const std::string kept = objectsOf(files::saveText(files::loadText(cut, {nullptr, true}).model));
  EXPECT_NE(kept.find("Name=\"A\""), std::string::npos);
}

TEST(BrokenFiles, OfManyProblemsShowTwentyAndTheirCount) {
  std::string objects;
  for (int count = 0; count < 1234; ++count) objects += "<common:Package nme=\"A\"/>\n";
  try {
    files::loadText(fileOf(objects), {}, "brakes.xmi");
    FAIL();
  } catch (const files::WrongFile& refusal) {
    const std::string text = refusal.what();
    EXPECT_TRUE(text.starts_with(
        "cannot load 'brakes.xmi': 1234 problems, so nothing was loaded\n  line 3, column 17: "
        "common:Package has no property 'nme'"));
    EXPECT_TRUE(text.ends_with("\n  and 1214 more"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 21);
    EXPECT_EQ(refusal.problems().kept.size(), 1000U);
    EXPECT_EQ(refusal.problems().count, 1234U);
  }
}

TEST(OtherFiles, OfFormatZeroAreBroughtToThePresent) {
  const auto loaded = files::loadText(fileOf("<common:Package ExternalTool=\"Editor\"/>", "0"));
  EXPECT_NE(files::saveText(loaded.model).find("ExternalToolInfo=\"Editor\""), std::string::npos);
  EXPECT_EQ(refusalOfText(fileOf("<common:Package ExternalTool=\"Editor\"/>")),
            "3:17 common:Package has no property 'ExternalTool'\n");
}

TEST(OtherFiles, MayBeOneObjectWithOtherPrefixesAndElementsForValues) {
  const std::string text =
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
      "<c:Package xmi:version=\"2.1\" xmlns:xmi=\"http://schema.omg.org/spec/XMI/2.1\" "
      "xmlns:f=\"urn:tarvelon:file\" "
      "f:format=\"1\" xmlns:c=\"urn:tarvelon:metamodel:arplatform.common\" xmi:id=\"p\">"
      "<Name>Br\xE4ke</Name><PackagedElement xmlns:v=\"urn:tarvelon:metamodel:arplatform.variant\" "
      "xmi:type=\"v:SystemConst\" xmi:id=\"w\"/><ElementImport xmi:idref=\"w\"/></c:Package>";
  const std::string saved = objectsOf(files::saveText(files::loadText(text).model));
  EXPECT_NE(saved.find("Name=\"Br\xC3\xA4ke\""), std::string::npos) << saved;
  EXPECT_NE(saved.find("ElementImport=\"\n          w\n      \""), std::string::npos) << saved;
}

TEST(BrokenFiles, WithAnObjectOfTheRootClassOfArxmlAreNoArxml) {
  // A file that save() writes may have an object of the class AUTOSAR as its root element.
  const auto model = K7Q::Model::create();
  common::AUTOSAR::create(model);
  std::string alone = objectsOf(files::saveText(model));
  alone.replace(
      alone.find(" xmi:id"), 1,
      " xmlns:common=\"urn:tarvelon:metamodel:arplatform.common\" xmlns:xmi=\"http://www.omg.org/XMI\""
      " xmlns:tarvelon=\"urn:tarvelon:file\" xmi:version=\"2.0\" tarvelon:format=\"1\" ");
  EXPECT_EQ(files::roots(files::loadText(alone).model).size(), 1U);
}

}  // namespace
