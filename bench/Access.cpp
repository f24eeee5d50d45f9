// The cost of a read, a write, a call and a construction through the records, compared with a plain struct.
#include <array>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "tests/support/Host.h"

namespace {

const std::u16string kText = u"twenty-four UTF-16 units";
const std::u16string kOther = u"another two dozen units.";

/// A hand-written model, for comparison.
struct Plain {
  std::u16string symbol = kText;
  std::u16string name = kText;
  int code = 7;
};

struct Fixture {
  Fixture() {
    host::openModule();
    model = host::newModel();
    props = host::make("common.SymbolProps", {host::object(model), host::text(kText), host::text(kText)});
    error = host::make("common.ApplicationError", {host::object(model), host::integer(7), host::text(kText)});
    symbol = ruvo::classOf(*props).findProperty("Symbol")->property;
    code = ruvo::classOf(*error).findProperty("errorCode")->property;
  }
  host::RVOInterfacePtr model;
  host::RVOInterfacePtr props;
  host::RVOInterfacePtr error;
  ruvo::RVOPropInfo* symbol;
  ruvo::RVOPropInfo* code;
};

Fixture& fixture() {
  static Fixture instance;
  return instance;
}

void readStringPlain(benchmark::State& state) {
  const Plain plain;
  for (auto _ : state) {
    const std::u16string copy = plain.symbol;
    benchmark::DoNotOptimize(copy.data());
  }
}
void readStringRecord(benchmark::State& state) {
  auto& f = fixture();
  for (auto _ : state) {
    const auto value = f.symbol->getValue(f.props);
    benchmark::DoNotOptimize(value);
    f.symbol->releaseValue(f.props, value);
  }
}
void writeStringPlain(benchmark::State& state) {
  Plain plain;
  bool flip = false;
  for (auto _ : state) {
    std::u16string copy = (flip = !flip) ? kText : kOther;
    plain.symbol = std::move(copy);
    benchmark::DoNotOptimize(plain.symbol.data());
  }
}
void writeStringRecord(benchmark::State& state) {
  auto& f = fixture();
  const std::array<hx::hxArray*, 2> values{hx::hxCreateString_UTF16(std::u16string_view(kText)),
                                           hx::hxCreateString_UTF16(std::u16string_view(kOther))};
  std::size_t flip = 0;
  for (auto _ : state) f.symbol->setValue(f.props, ruvo::RVOValue(values[flip ^= 1]));
  for (auto* array : values) hx::hxDestroyArray(array);
}

void readScalarPlain(benchmark::State& state) {
  Plain plain;
  for (auto _ : state) {
    benchmark::DoNotOptimize(plain);
    benchmark::DoNotOptimize(plain.code);
  }
}
void readScalarRecord(benchmark::State& state) {
  auto& f = fixture();
  for (auto _ : state) benchmark::DoNotOptimize(f.code->getValue(f.error));
}
void writeScalarPlain(benchmark::State& state) {
  Plain plain;
  for (auto _ : state) {
    ++plain.code;
    benchmark::DoNotOptimize(plain);
  }
}
void writeScalarRecord(benchmark::State& state) {
  auto& f = fixture();
  int value = 0;
  for (auto _ : state) f.code->setValue(f.error, ruvo::RVOValue::ofInt32(++value));
}

struct Virtual {
  virtual ~Virtual() = default;
  virtual bool isValid() const { return true; }
};
void callPlain(benchmark::State& state) {
  const std::unique_ptr<Virtual> object = std::make_unique<Virtual>();
  for (auto _ : state) {
    auto* self = object.get();
    benchmark::DoNotOptimize(self);
    benchmark::DoNotOptimize(self->isValid());
  }
}
void callByName(benchmark::State& state) {
  auto& f = fixture();
  auto& cls = ruvo::classOf(*f.props);
  const auto* overloads = cls.findMethods("isvalid");
  for (auto _ : state) benchmark::DoNotOptimize(ruvo::callOverloads(cls, *overloads, f.props, {}).slot());
}
void callRecord(benchmark::State& state) {
  auto& f = fixture();
  const auto* record = ruvo::classOf(*f.props).findMethods("isvalid")->candidates.front();
  hx::hxArray* self = ruvo::boxInterface(f.props, f.props->getClass()->getFullName());
  const ruvo::RVOValue slot(self);
  for (auto _ : state) {
    ruvo::RVOValue result;
    std::uint32_t count = 0;
    record->invoke(nullptr, count, &result, 1, &slot);
    benchmark::DoNotOptimize(result);
  }
  hx::hxDestroyArray(self);
}

void constructPlain(benchmark::State& state) {
  for (auto _ : state) {
    auto object = std::make_unique<Plain>();
    benchmark::DoNotOptimize(object.get());
  }
}
/// Creates an object with two strings, its host object and its binding. Destroys it again, so that the model
/// does not grow.
void constructHost(benchmark::State& state) {
  auto& f = fixture();
  auto& cls = host::cls("common.SymbolProps");
  const std::array<host::HostValue, 3> arguments{host::object(f.model), host::text(kText), host::text(kText)};
  const auto* destroy = cls.findMethods("destroy");
  for (auto _ : state) {
    const auto object = ruvo::construct(cls, arguments);
    ruvo::callOverloads(cls, *destroy, object, {});
  }
}

/// Creates the same objects but does not destroy them. The model is closed after every thousand objects; the
/// time includes that.
void constructInModels(benchmark::State& state) {
  fixture();
  constexpr int kObjects = 1000;
  auto& cls = host::cls("common.SymbolProps");
  host::RVOInterfacePtr model;
  std::array<host::HostValue, 3> arguments{host::HostValue(), host::text(kText), host::text(kText)};
  int left = 0;
  for (auto _ : state) {
    if (left == 0) {
      if (model) host::call(model, "close");
      model = host::newModel();
      arguments[0] = host::object(model);
      left = kObjects;
    }
    --left;
    benchmark::DoNotOptimize(ruvo::construct(cls, arguments));
  }
  host::call(model, "close");
}

BENCHMARK(readStringPlain)->Name("read a string of 24 units/plain struct");
BENCHMARK(readStringRecord)->Name("read a string of 24 units/record");
BENCHMARK(writeStringPlain)->Name("write a string of 24 units/plain struct");
BENCHMARK(writeStringRecord)->Name("write a string of 24 units/record");
BENCHMARK(readScalarPlain)->Name("read an int/plain struct");
BENCHMARK(readScalarRecord)->Name("read an int/record");
BENCHMARK(writeScalarPlain)->Name("write an int/plain struct");
BENCHMARK(writeScalarRecord)->Name("write an int/record");
BENCHMARK(callPlain)->Name("call without arguments/plain struct");
BENCHMARK(callRecord)->Name("call without arguments/record");
BENCHMARK(callByName)->Name("call without arguments/overload set");
BENCHMARK(constructPlain)->Name("make an object with two strings/plain struct");
BENCHMARK(constructInModels)->Name("make an object with two strings/host object");
BENCHMARK(constructHost)->Name("make an object with two strings/host object, destroyed by a call");

}  // namespace
