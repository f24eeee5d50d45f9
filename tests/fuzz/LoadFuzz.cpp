// Any bytes as a file: the loader must refuse them or load them, and a loaded model can be saved and loaded
// again. The fuzzer gets the words of the metamodel, because it could hardly guess them.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/platform/files/Files.h"

namespace {

namespace files = Tarvelon::files;

void requirePlaces(const files::Problems& problems) {
  for (const files::Problem& problem : problems.kept) {
    if (problem.line == 0 || problem.column == 0 || problem.text.empty()) std::abort();
  }
}

/// What was loaded from ARXML and not changed is saved with the same bytes.
void requireSameBytes(const K7Q::Model& model, const std::uint8_t* data, std::size_t size) {
  const std::string saved = files::saveArxmlText(model);
  if (saved != std::string_view(reinterpret_cast<const char*>(data), size)) std::abort();
}

/// The value in quotes of an attribute in the line; empty if the line does not have it.
std::string_view attributeOf(std::string_view line, std::string_view name) {
  const auto begin = line.find(name);
  if (begin == std::string_view::npos) return {};
  const std::string_view value = line.substr(begin + name.size());
  return value.substr(0, value.find('"'));
}

/// Pieces of files, found in the lines of the Ecore file: namespaces, types, properties as attributes and as
/// elements, objects with one property, literals.
std::vector<std::string> makeWords() {
  std::vector<std::string> words = {"<SHORT-NAME>A</SHORT-NAME>",
                                    "<AR-PACKAGE>",
                                    "</AR-PACKAGE>",
                                    "<ELEMENTS>",
                                    "<ELEMENTS/>",
                                    "<AR-PACKAGES/>",
                                    "<PORTS/>",
                                    "<R-PORT-PROTOTYPE/>",
                                    "<VALUE>0x1F</VALUE>",
                                    "<CAN-FRAME/>",
                                    "<!-- -->",
                                    "<![CDATA[a]]>",
                                    " DEST=\"UNIT\"",
                                    " BASE=\"B\"",
                                    "&lt;",
                                    " xmi:id=\"e\"",
                                    " xmi:idref=\"e\"",
                                    " href=\"#e\"",
                                    " xsi:nil=\"true\"",
                                    " xmi:type=\"a:B\"",
                                    "=\"e r\"",
                                    "=\"true\"",
                                    "=\"-1e-9\""};
  std::istringstream ecore(files::ecoreText());
  std::string prefix;
  std::string type;
  for (std::string line; std::getline(ecore, line);) {
    const std::string name(attributeOf(line, " name=\""));
    if (line.find("<eSubpackages") != std::string::npos) {
      prefix = name;
      words.push_back(" xmlns:" + name + "=\"" + std::string(attributeOf(line, " nsURI=\"")) + "\"");
    } else if (line.find("<eClassifiers") != std::string::npos) {
      type = prefix + ":" + name;
      words.push_back(" xsi:type=\"" + type + "\"");
    } else if (line.find("<eStructuralFeatures") != std::string::npos) {
      words.push_back(" " + name + "=\"");
      words.push_back("<" + name + "/>");
      words.push_back("<" + type + " " + name + "=\"e\"/>");
    } else if (line.find("<eLiterals") != std::string::npos) {
      words.push_back("\"" + name + "\"");
    }
  }
  return words;
}

/// Where to insert a word: an element behind an element, an attribute in front of another, anything else
/// anywhere.
std::size_t placeFor(std::string_view word, std::string_view text, std::size_t start) {
  const char before = word.front() == '<' ? '>' : ' ';
  const auto found = text.find(before, start);
  if (found == std::string_view::npos || word.front() == '=' || word.front() == '"') return start;
  return word.front() == '<' ? found + 1 : found;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

/// Inserts a word in one of four mutations.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room,
                                               unsigned seed) {
  static const std::vector<std::string> words = makeWords();
  std::minstd_rand random(seed);
  if (random() % 4 != 0) return LLVMFuzzerMutate(data, size, room);
  const std::string& word = words[random() % words.size()];
  if (size + word.size() > room) return LLVMFuzzerMutate(data, size, room);
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::size_t place = placeFor(word, text, random() % (size + 1));
  std::memmove(data + place + word.size(), data + place, size - place);
  std::ranges::copy(word, data + place);
  return size + word.size();
}

// Exceptions that leave this function are findings: a file that we have saved ourselves was refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  files::Loaded loaded;
  try {
    loaded = files::loadText({reinterpret_cast<const char*>(data), size}, {nullptr, true});
  } catch (const files::WrongFile& refusal) {
    requirePlaces(refusal.problems());
    if (refusal.problems().count == 0) std::abort();
    return 0;
  }
  requirePlaces(loaded.problems);
  if (!files::filesOf(loaded.model).empty()) requireSameBytes(loaded.model, data, size);
  const std::string saved = files::saveText(loaded.model);
  if (files::saveText(files::loadText(saved).model) != saved) std::abort();
  return 0;
}
