#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tarvelon/platform/files/Files.h"
#include "tests/native/Support.h"

// Helpers for the tests of files.

namespace files = Tarvelon::files;
namespace instance = Tarvelon::metamodel::arplatform::instance;

/// The text of a file with these objects.
inline std::string fileOf(std::string_view objects, std::string_view format = "1") {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<xmi:XMI xmi:version=\"2.0\" xmlns:xmi=\"http://www.omg.org/XMI\""
         " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
         " xmlns:foundation=\"urn:tarvelon:metamodel:foundation\""
         " xmlns:common=\"urn:tarvelon:metamodel:arplatform.common\""
         " xmlns:variant=\"urn:tarvelon:metamodel:arplatform.variant\""
         " xmlns:behavior=\"urn:tarvelon:metamodel:arplatform.behavior\""
         " xmlns:tarvelon=\"urn:tarvelon:file\" tarvelon:format=\"" +
         std::string(format) + "\">\n" + std::string(objects) + "\n</xmi:XMI>\n";
}

/// The part of a saved text inside the root element.
inline std::string objectsOf(const std::string& text) {
  const auto begin = text.find("tarvelon:format=");
  const auto line = text.find('\n', begin);
  const auto end = text.find("</xmi:XMI>");
  return begin == std::string::npos || end == std::string::npos ? text
                                                                : text.substr(line + 1, end - line - 1);
}

/// The problems of a text, one on each line: "2:5 what it is".
inline std::string problemsOf(const files::Problems& problems) {
  std::string text;
  for (const auto& each : problems.kept)
    text += std::to_string(each.line) + ":" + std::to_string(each.column) + " " + each.text + "\n";
  return text;
}

/// The problems for which a text is refused. The text must be refused.
inline std::string refusalOfText(std::string_view text, bool isLenient = false) {
  try {
    files::loadText(text, {nullptr, isLenient});
  } catch (const files::WrongFile& refusal) {
    return problemsOf(refusal.problems());
  }
  ADD_FAILURE() << "it was loaded";
  return {};
}
