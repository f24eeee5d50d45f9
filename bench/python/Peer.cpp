// The comparison for the Python host: the same data as plain C++ structs, bound with pybind11.
#include <memory>
#include <string>
#include <vector>

#include <pybind11/pybind11.h>
#include <pybind11/stl_bind.h>

namespace py = pybind11;

namespace {

struct Peer {
  std::u16string symbol;
  std::u16string name;
  int number = 0;
};

struct Peers {
  std::vector<Peer> all;
};

enum class Kind { First, Second, Third, Fourth };
using Kinds = std::vector<Kind>;

}  // namespace

PYBIND11_MAKE_OPAQUE(Kinds);

PYBIND11_MODULE(_tarvelon_bench, module) {
  py::class_<Peer>(module, "Peer")
      .def(py::init<>())
      .def_readwrite("symbol", &Peer::symbol)
      .def_readwrite("name", &Peer::name)
      .def_readwrite("number", &Peer::number)
      .def("half", [](const Peer& peer) { return peer.number / 2; });
  py::class_<Peers>(module, "Peers")
      .def(py::init<>())
      .def("add",
           [](Peers& peers, const std::u16string& name) {
             peers.all.push_back({u"", name, 0});
           })
      .def(
          "__iter__", [](Peers& peers) { return py::make_iterator(peers.all.begin(), peers.all.end()); },
          py::keep_alive<0, 1>());
  py::enum_<Kind>(module, "Kind")
      .value("First", Kind::First)
      .value("Second", Kind::Second)
      .value("Third", Kind::Third)
      .value("Fourth", Kind::Fourth);
  py::bind_vector<Kinds>(module, "Kinds");
}
