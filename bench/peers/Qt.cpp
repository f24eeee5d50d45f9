// Qt 6: QMetaProperty and QMetaMethod. Reading a QString only shares its text, so the text is copied, as in a
// host array.
#include <memory>
#include <string>

#include <QMetaMethod>
#include <QMetaProperty>
#include <QVariant>
#include <benchmark/benchmark.h>

#include "bench/peers/QtObject.h"

namespace {

const QString kText = QStringLiteral("twenty-four UTF-16 units");
const QString kOther = QStringLiteral("another two dozen units.");

QMetaProperty propertyOf(const char* name) {
  const QMetaObject& meta = QtObject::staticMetaObject;
  return meta.property(meta.indexOfProperty(name));
}

void readString(benchmark::State& state) {
  QtObject object;
  object.setSymbol(kText);
  const auto property = propertyOf("symbol");
  for (auto _ : state) {
    const auto copy = property.read(&object).toString().toStdU16String();
    benchmark::DoNotOptimize(copy.data());
  }
}
void writeString(benchmark::State& state) {
  QtObject object;
  const auto property = propertyOf("symbol");
  const std::u16string texts[] = {kText.toStdU16String(), kOther.toStdU16String()};
  std::size_t flip = 0;
  for (auto _ : state) property.write(&object, QString::fromStdU16String(texts[flip ^= 1]));
}
void readScalar(benchmark::State& state) {
  QtObject object;
  const auto property = propertyOf("code");
  for (auto _ : state) benchmark::DoNotOptimize(property.read(&object).toInt());
}
void writeScalar(benchmark::State& state) {
  QtObject object;
  const auto property = propertyOf("code");
  int value = 0;
  for (auto _ : state) property.write(&object, ++value);
}
void call(benchmark::State& state) {
  QtObject object;
  const auto method =
      QtObject::staticMetaObject.method(QtObject::staticMetaObject.indexOfMethod("isValid()"));
  for (auto _ : state) {
    bool result = false;
    method.invoke(&object, Qt::DirectConnection, Q_RETURN_ARG(bool, result));
    benchmark::DoNotOptimize(result);
  }
}
void construct(benchmark::State& state) {
  const auto symbol = propertyOf("symbol");
  const auto name = propertyOf("name");
  const std::u16string text = kText.toStdU16String();
  for (auto _ : state) {
    auto object = std::make_unique<QtObject>();
    symbol.write(object.get(), QString::fromStdU16String(text));
    name.write(object.get(), QString::fromStdU16String(text));
    benchmark::DoNotOptimize(object.get());
  }
}

BENCHMARK(readString)->Name("read a string of 24 units/Qt 6");
BENCHMARK(writeString)->Name("write a string of 24 units/Qt 6");
BENCHMARK(readScalar)->Name("read an int/Qt 6");
BENCHMARK(writeScalar)->Name("write an int/Qt 6");
BENCHMARK(call)->Name("call without arguments/Qt 6");
BENCHMARK(construct)->Name("make an object with two strings/Qt 6");

}  // namespace
