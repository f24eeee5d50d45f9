#include "bench/Memory.h"

#include <cstdio>
#include <malloc.h>
#include <string>

#include "tarvelon/arplatform/Tables.h"
#include "tarvelon/foundation/Table.h"

namespace bench {

void reportMemory() {
  using Tarvelon::metamodel::arplatform::common::SymbolProps;
  constexpr int kObjects = 1000000;
  const std::u16string text = u"twenty-four UTF-16 units";
  const auto model = K7Q::Model::create();
  SymbolProps::create(model, text, text);
  const auto before = mallinfo2().uordblks + mallinfo2().hblkhd;
  for (int i = 0; i < kObjects; ++i) SymbolProps::create(model, text, text);
  const auto after = mallinfo2().uordblks + mallinfo2().hblkhd;
  const auto textBytes = 2 * sizeof(char16_t) * text.size();
  const double each = static_cast<double>(after - before) / kObjects;
  std::printf("an object with two texts of %zu units: %.1f bytes, %.1f besides the text\n", text.size(), each,
              each - static_cast<double>(textBytes));
}

}  // namespace bench
