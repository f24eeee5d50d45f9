#include "bench/Arxml.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <expat.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

#include "bench/BigModel.h"
#include "tarvelon/platform/files/Files.h"

#ifdef TARVELON_PUGIXML
#include <pugixml.hpp>
#endif

namespace bench {

namespace {

namespace files = Tarvelon::files;

constexpr const char* kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<AUTOSAR xmlns=\"http://autosar.org/schema/r4.0\" "
    "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
    "xsi:schemaLocation=\"http://autosar.org/schema/r4.0 AUTOSAR_00051.xsd\">\n  <AR-PACKAGES>\n";
constexpr const char* kTail = "  </AR-PACKAGES>\n</AUTOSAR>\n";

/// Writes elements, each on a line of its own or around others.
class Generator {
 public:
  explicit Generator(unsigned seed) : mRandom(seed) {}

  /// A package with an interface, a component that uses it, and, in one of four, a frame that has no class.
  void package(std::size_t number) {
    const std::string path = "/P" + std::to_string(number);
    open("AR-PACKAGE");
    leaf("SHORT-NAME", "P" + std::to_string(number));
    open("ELEMENTS");
    interface();
    if (mRandom() % 4 == 0) frame();
    component(path);
    close();
    close();
  }
  std::string text() const { return kHead + mText + kTail; }
  std::size_t elements() const noexcept { return mElements + 2; }

 private:
  void indent() { mText.append(4 + 2 * mOpen.size(), ' '); }
  void open(const char* name) {
    indent();
    mText += "<" + std::string(name) + ">\n";
    mOpen.emplace_back(name);
    ++mElements;
  }
  void close() {
    const std::string name = mOpen.back();
    mOpen.pop_back();
    indent();
    mText += "</" + name + ">\n";
  }
  void leaf(const char* name, const std::string& value, const char* dest = nullptr) {
    indent();
    mText += "<" + std::string(name);
    if (dest) mText += " DEST=\"" + std::string(dest) + "\"";
    mText += ">" + value + "</" + name + ">\n";
    ++mElements;
  }
  void interface() {
    open("SENDER-RECEIVER-INTERFACE");
    leaf("SHORT-NAME", "Speed");
    leaf("IS-SERVICE", "false");
    open("DATA-ELEMENTS");
    for (const char* name : {"Front", "Rear"}) {
      open("VARIABLE-DATA-PROTOTYPE");
      leaf("SHORT-NAME", name);
      open("INIT-VALUE");
      open("NUMERICAL-VALUE-SPECIFICATION");
      leaf("VALUE", std::to_string(mRandom() % 1000));
      close();
      close();
      close();
    }
    close();
    close();
  }
  void frame() {
    open("CAN-FRAME");
    leaf("SHORT-NAME", "Frame");
    leaf("FRAME-LENGTH", "8");
    close();
  }
  void component(const std::string& path) {
    open("APPLICATION-SW-COMPONENT-TYPE");
    leaf("SHORT-NAME", "Control");
    open("PORTS");
    for (const char* name : {"In", "Other"}) {
      open("R-PORT-PROTOTYPE");
      leaf("SHORT-NAME", name);
      open("REQUIRED-COM-SPECS");
      open("NONQUEUED-RECEIVER-COM-SPEC");
      leaf("DATA-ELEMENT-REF", path + "/Speed/Front", "VARIABLE-DATA-PROTOTYPE");
      leaf("ALIVE-TIMEOUT", "0.5");
      close();
      close();
      leaf("REQUIRED-INTERFACE-TREF", path + "/Speed", "SENDER-RECEIVER-INTERFACE");
      close();
    }
    close();
    behavior(path + "/Control");
    close();
  }
  void behavior(const std::string& component) {
    open("INTERNAL-BEHAVIORS");
    open("SWC-INTERNAL-BEHAVIOR");
    leaf("SHORT-NAME", "Behavior");
    open("EVENTS");
    open("TIMING-EVENT");
    leaf("SHORT-NAME", "Every10ms");
    leaf("START-ON-EVENT-REF", component + "/Behavior/Step", "RUNNABLE-ENTITY");
    leaf("PERIOD", "1.0E-2");
    close();
    close();
    open("RUNNABLES");
    open("RUNNABLE-ENTITY");
    leaf("SHORT-NAME", "Step");
    open("DATA-READ-ACCESSS");
    open("VARIABLE-ACCESS");
    leaf("SHORT-NAME", "Read");
    open("ACCESSED-VARIABLE");
    open("AUTOSAR-VARIABLE-IREF");
    leaf("PORT-PROTOTYPE-REF", component + "/In", "R-PORT-PROTOTYPE");
    leaf("TARGET-DATA-PROTOTYPE-REF", component.substr(0, component.rfind('/')) + "/Speed/Front",
         "VARIABLE-DATA-PROTOTYPE");
    close();
    close();
    close();
    close();
    leaf("SYMBOL", "step");
    close();
    close();
    close();
    close();
  }

  std::mt19937 mRandom;
  std::string mText;
  std::vector<std::string> mOpen;
  std::size_t mElements = 0;
};

/// The processor time of this process in seconds.
double processorTime() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

template <class Work>
double processorTimeOf(Work work) {
  const double before = processorTime();
  work();
  return processorTime() - before;
}

void print(const char* what, double seconds, std::size_t elements) {
  std::printf("  %-34s %8.0f ns an element\n", what, 1e9 * seconds / static_cast<double>(elements));
}

void peers(const std::string& text, std::size_t elements) {
  print("expat without handlers", processorTimeOf([&] {
          XML_Parser parser = XML_ParserCreate(nullptr);
          XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1);
          XML_ParserFree(parser);
        }),
        elements);
#ifdef TARVELON_PUGIXML
  print("pugixml, a tree", processorTimeOf([&] {
          pugi::xml_document document;
          document.load_buffer(text.data(), text.size());
        }),
        elements);
#endif
}

void ofOneFile(const std::filesystem::path& path, std::size_t packages) {
  Generator generator(1);
  for (std::size_t number = 0; number < packages; ++number) generator.package(number);
  const std::size_t elements = generator.elements();
  {
    const std::string text = generator.text();
    std::printf("a file of %.1f MB, %zu elements\n", static_cast<double>(text.size()) / 1e6, elements);
    std::ofstream(path, std::ios::binary) << text;
    peers(text, elements);
  }
  const double before = bytesInUse();
  K7Q::Model model;
  print("loading", processorTimeOf([&] { model = files::load(path).model; }), elements);
  std::printf("  %-34s %8.0f bytes an element\n", "memory that the model holds",
              (bytesInUse() - before) / static_cast<double>(elements));
  files::SaveOptions options;
  options.isDurable = false;
  const std::filesystem::path target = path.string() + ".saved.arxml";
  print("saving, nothing changed", processorTimeOf([&] { files::save(model, target, options); }), elements);
  std::filesystem::remove(target);
}

void ofManyFiles(const std::filesystem::path& folder) {
  constexpr std::size_t kFiles = 1000;
  constexpr std::size_t kPackages = 20;
  std::filesystem::create_directory(folder);
  Generator whole(1);
  std::size_t elements = 0;
  for (std::size_t file = 0; file < kFiles; ++file) {
    Generator generator(static_cast<unsigned>(file));
    for (std::size_t number = 0; number < kPackages; ++number) {
      generator.package(file * kPackages + number);
      whole.package(file * kPackages + number);
    }
    elements += generator.elements();
    std::ofstream(folder / (std::to_string(file) + ".arxml"), std::ios::binary) << generator.text();
  }
  std::printf("%zu files, %zu elements\n", kFiles, elements);
  const std::filesystem::path one = folder.string() + ".arxml";
  std::ofstream(one, std::ios::binary) << whole.text();
  print("loading them as one file", processorTimeOf([&] { files::load(one); }), elements);
  print("loading the folder", processorTimeOf([&] { files::load(folder); }), elements);
  std::filesystem::remove(one);
  std::filesystem::remove_all(folder);
}

}  // namespace

void reportArxml() {
  const auto path = std::filesystem::temp_directory_path() / ("tarvelon-bench-" + std::to_string(::getpid()));
  const std::filesystem::path file = path.string() + ".arxml";
  for (const std::size_t packages : {300UL, 3000UL, 30000UL}) inProcess([&] { ofOneFile(file, packages); });
  std::filesystem::remove(file);
  inProcess([&] { ofManyFiles(path); });
}

}  // namespace bench
