// GObject properties, accessed by name with g_object_get.
#include <benchmark/benchmark.h>
#include <glib-object.h>

namespace {

constexpr const char* kText = "twenty-four UTF-16 units";
constexpr const char* kOther = "another two dozen units.";

struct PeerObject {
  GObject parent;
  char* symbol;
  char* name;
  int code;
};
struct PeerObjectClass {
  GObjectClass parent;
};

enum PeerProperty : guint { kSymbol = 1, kName, kCode };

GObjectClass* gParentClass = nullptr;

void setProperty(GObject* object, guint id, const GValue* value, GParamSpec* /*spec*/) {
  auto* self = reinterpret_cast<PeerObject*>(object);
  if (id == kCode) {
    self->code = g_value_get_int(value);
    return;
  }
  char*& text = id == kSymbol ? self->symbol : self->name;
  g_free(text);
  text = g_value_dup_string(value);
}
void getProperty(GObject* object, guint id, GValue* value, GParamSpec* /*spec*/) {
  const auto* self = reinterpret_cast<PeerObject*>(object);
  if (id == kCode) {
    g_value_set_int(value, self->code);
  } else {
    g_value_set_string(value, id == kSymbol ? self->symbol : self->name);
  }
}
void finalize(GObject* object) {
  auto* self = reinterpret_cast<PeerObject*>(object);
  g_free(self->symbol);
  g_free(self->name);
  gParentClass->finalize(object);
}
void initClass(gpointer cls, gpointer /*data*/) {
  gParentClass = static_cast<GObjectClass*>(g_type_class_peek_parent(cls));
  auto* object = static_cast<GObjectClass*>(cls);
  object->set_property = &setProperty;
  object->get_property = &getProperty;
  object->finalize = &finalize;
  const auto flags = static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS);
  g_object_class_install_property(object, kSymbol, g_param_spec_string("symbol", "", "", nullptr, flags));
  g_object_class_install_property(object, kName, g_param_spec_string("name", "", "", nullptr, flags));
  g_object_class_install_property(object, kCode,
                                  g_param_spec_int("code", "", "", G_MININT, G_MAXINT, 0, flags));
}

GType peerType() {
  static const GType type =
      g_type_register_static_simple(G_TYPE_OBJECT, "PeerObject", sizeof(PeerObjectClass), &initClass,
                                    sizeof(PeerObject), nullptr, GTypeFlags{});
  return type;
}

void readString(benchmark::State& state) {
  auto* object = g_object_new(peerType(), "symbol", kText, nullptr);
  for (auto _ : state) {
    char* text = nullptr;
    g_object_get(object, "symbol", &text, nullptr);
    benchmark::DoNotOptimize(text);
    g_free(text);
  }
  g_object_unref(object);
}
void writeString(benchmark::State& state) {
  auto* object = g_object_new(peerType(), nullptr);
  bool flip = false;
  for (auto _ : state) g_object_set(object, "symbol", (flip = !flip) ? kText : kOther, nullptr);
  g_object_unref(object);
}
void readScalar(benchmark::State& state) {
  auto* object = g_object_new(peerType(), nullptr);
  for (auto _ : state) {
    int code = 0;
    g_object_get(object, "code", &code, nullptr);
    benchmark::DoNotOptimize(code);
  }
  g_object_unref(object);
}
void writeScalar(benchmark::State& state) {
  auto* object = g_object_new(peerType(), nullptr);
  int value = 0;
  for (auto _ : state) g_object_set(object, "code", ++value, nullptr);
  g_object_unref(object);
}
void construct(benchmark::State& state) {
  for (auto _ : state) {
    auto* object = g_object_new(peerType(), "symbol", kText, "name", kText, nullptr);
    benchmark::DoNotOptimize(object);
    g_object_unref(object);
  }
}

BENCHMARK(readString)->Name("read a string of 24 units/GObject");
BENCHMARK(writeString)->Name("write a string of 24 units/GObject");
BENCHMARK(readScalar)->Name("read an int/GObject");
BENCHMARK(writeScalar)->Name("write an int/GObject");
BENCHMARK(construct)->Name("make an object with two strings/GObject");

}  // namespace
