#include "tarvelon/binding/MethodRows.h"

namespace binding {

namespace {

InternedName resolve(const char* word, const RowNames& names) {
  if (word == kSelf) return names.self;
  if (word == kIterator) return names.iterator;
  if (word == kElement) return names.element;
  return named(word);
}

void addRow(MethodTable& table, const MethodRow& row, const RowNames& names) {
  std::array<InternedName, MethodRow::kMaxArguments> arguments;
  std::size_t count = 0;
  for (const char* argument : row.arguments) {
    if (!argument) break;
    arguments[count++] = resolve(argument, names);
  }
  const MethodSpec spec{row.name, row.attributes, row.parameterNames, resolve(row.result, names),
                        row.self ? resolve(row.self, names) : InternedName()};
  table.add(spec, {arguments.data(), count}, row.invoker, row.native());
}

}  // namespace

void addRows(ruvo::RVOClass& cls, std::span<const MethodRow> rows, const RowNames& names) {
  MethodTable table(cls);
  for (const MethodRow& row : rows) addRow(table, row, names);
}

}  // namespace binding
