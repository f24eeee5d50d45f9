#include "platform/k7q/MethodRows.h"

namespace K7Q::mi {

namespace {

ruvo::InternedName resolve(const char* word, const RowNames& names) {
  if (word == kSelf) return names.self;
  if (word == kIterator) return names.iterator;
  if (word == kElement) return names.element;
  return binding::named(word);
}

void addRow(binding::MethodTable& table, const MethodRow& row, const RowNames& names) {
  std::array<ruvo::InternedName, MethodRow::kMaxArguments> arguments;
  std::size_t count = 0;
  for (const char* argument : row.arguments) {
    if (!argument) break;
    arguments[count++] = resolve(argument, names);
  }
  const binding::MethodSpec spec{row.name, row.attributes, row.parameterNames, resolve(row.result, names),
                                 row.self ? resolve(row.self, names) : ruvo::InternedName()};
  row.add(table, spec, {arguments.data(), count});
}

}  // namespace

void addRows(ruvo::RVOClass& cls, std::span<const MethodRow> rows, const RowNames& names) {
  binding::MethodTable table(cls);
  for (const MethodRow& row : rows) addRow(table, row, names);
}

}  // namespace K7Q::mi
