// Protocol buffers, accessed through their reflection.
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "peers/peer.pb.h"

namespace {

using tarvelon::bench::PeerMessage;

const std::string kText = "twenty-four UTF-16 units";
const std::string kOther = "another two dozen units.";

const google::protobuf::FieldDescriptor* field(const char* name) {
  return PeerMessage::descriptor()->FindFieldByName(name);
}

void readString(benchmark::State& state) {
  PeerMessage message;
  message.set_symbol(kText);
  const auto* symbol = field("symbol");
  for (auto _ : state) {
    const std::string copy = message.GetReflection()->GetString(message, symbol);
    benchmark::DoNotOptimize(copy.data());
  }
}
void writeString(benchmark::State& state) {
  PeerMessage message;
  const auto* symbol = field("symbol");
  bool flip = false;
  for (auto _ : state) message.GetReflection()->SetString(&message, symbol, (flip = !flip) ? kText : kOther);
}
void readScalar(benchmark::State& state) {
  PeerMessage message;
  const auto* code = field("code");
  for (auto _ : state) benchmark::DoNotOptimize(message.GetReflection()->GetInt32(message, code));
}
void writeScalar(benchmark::State& state) {
  PeerMessage message;
  const auto* code = field("code");
  int value = 0;
  for (auto _ : state) message.GetReflection()->SetInt32(&message, code, ++value);
}
void construct(benchmark::State& state) {
  const auto* symbol = field("symbol");
  const auto* name = field("name");
  for (auto _ : state) {
    auto message = std::make_unique<PeerMessage>();
    message->GetReflection()->SetString(message.get(), symbol, kText);
    message->GetReflection()->SetString(message.get(), name, kText);
    benchmark::DoNotOptimize(message.get());
  }
}

BENCHMARK(readString)->Name("read a string of 24 units/protobuf");
BENCHMARK(writeString)->Name("write a string of 24 units/protobuf");
BENCHMARK(readScalar)->Name("read an int/protobuf");
BENCHMARK(writeScalar)->Name("write an int/protobuf");
BENCHMARK(construct)->Name("make an object with two strings/protobuf");

}  // namespace
