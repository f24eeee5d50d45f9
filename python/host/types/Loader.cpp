#include "python/host/types/Loader.h"

#include <array>
#include <cstring>
#include <dlfcn.h>
#include <elf.h>
#include <fstream>
#include <string>

#include "python/host/interpreter/Errors.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace pyhost {

namespace {

constexpr const char* kFile = "mm_arplatform_mi.so";
constexpr const char* kEntry = "ZtInitialize_mm_arplatform_mi";
constexpr const char* kCure = "; build it with './tarvelon build', or install Tarvelon again";

/// The path of the object system's library. The library of the metamodel is in the same folder, in the build
/// tree and in an installation.
std::string objectSystemFile() {
  Dl_info info{};
  const auto* place = reinterpret_cast<const void*>(&ruvo::nearestName);
  return dladdr(place, &info) == 0 || !info.dli_fname ? std::string() : info.dli_fname;
}

std::string folderOf(const std::string& file) { return file.substr(0, file.rfind('/') + 1); }

using Header = std::array<unsigned char, 20>;

/// Reads the beginning of an ELF file: its identification and, at offset 18, the machine type.
bool readHeader(const std::string& path, Header& header) {
  std::ifstream file(path, std::ios::binary);
  return static_cast<bool>(
      file.read(reinterpret_cast<char*>(header.data()), static_cast<std::streamsize>(header.size())));
}

unsigned machineOf(const Header& header) { return header[18] + 256U * header[19]; }
unsigned bitsOf(const Header& header) { return header[EI_CLASS] == ELFCLASS64 ? 64 : 32; }

std::string shown(const Header& header) {
  return std::to_string(bitsOf(header)) + "-bit ELF file for machine " + std::to_string(machineOf(header));
}

/// Raises K7Q.LoadError if the file is not a library, or is for another machine type than a loaded library.
void requireSameMachine(const std::string& path, const std::string& loaded) {
  Header found{};
  Header expected{};
  if (!readHeader(loaded, expected)) return;
  if (!readHeader(path, found) || std::memcmp(found.data(), ELFMAG, SELFMAG) != 0) {
    raise(errors().loadError,
          path + ": expected a " + shown(expected) + ", got a file that is not a library" + kCure);
  }
  if (machineOf(found) == machineOf(expected) && bitsOf(found) == bitsOf(expected)) return;
  raise(errors().loadError,
        path + ": expected a " + shown(expected) + ", got a " + shown(found) + kCure + ", on this machine");
}

}  // namespace

void loadMetamodel() {
  static bool isLoaded = false;
  if (isLoaded) return;
  const std::string objectSystem = objectSystemFile();
  const std::string path = folderOf(objectSystem) + kFile;
  if (!std::ifstream(path)) {
    raise(errors().loadError,
          path +
              ": the library of the metamodel is missing; expected it beside the libraries of "
              "the platform" +
              kCure);
  }
  requireSameMachine(path, objectSystem);
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) raise(errors().loadError, path + ": cannot be loaded: " + dlerror() + kCure);
  auto* initialise = reinterpret_cast<void (*)()>(dlsym(library, kEntry));
  if (!initialise) {
    raise(errors().loadError,
          path + ": expected the entry point " + kEntry + ", but the library does not have it" + kCure);
  }
  initialise();
  isLoaded = true;
}

}  // namespace pyhost
