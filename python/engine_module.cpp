// galeris._engine: the thin Python binding of one open network. Tables leave as numpy columns
// for the package to frame; the solve and the spread let other Python threads run meanwhile.
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include "core/network_store.h"
#include "python/network_session.h"
#include "simulate/contaminants.h"

namespace py = pybind11;
using galeris::scripting::NetworkSession;

namespace {

template <class T>
py::array_t<T> Column(const std::vector<T>& v) {
  return py::array_t<T>(static_cast<py::ssize_t>(v.size()), v.data());
}

py::dict SolveDict(const galeris::scripting::SolveReport& r) {
  py::dict d;
  d["status"] = r.status;
  d["sweeps"] = r.sweeps;
  d["meshes"] = r.meshes;
  d["converged"] = r.converged;
  d["continuity"] = r.checked ? py::object(py::float_(r.continuity)) : py::none();
  d["loop"] = r.checked ? py::object(py::float_(r.loop)) : py::none();
  d["errors"] = r.errors;
  d["messages"] = r.messages;
  return d;
}

py::dict AirwayDict(const galeris::scripting::AirwayColumns& c) {
  py::dict d;
  d["no"] = Column(c.no);
  d["name"] = c.name;
  d["entry"] = c.entry;
  d["exit"] = c.exit;
  d["x1"] = Column(c.x1);
  d["y1"] = Column(c.y1);
  d["z1"] = Column(c.z1);
  d["x2"] = Column(c.x2);
  d["y2"] = Column(c.y2);
  d["z2"] = Column(c.z2);
  d["entry_key"] = Column(c.entryKey);
  d["exit_key"] = Column(c.exitKey);
  d["resistance"] = Column(c.resistance);
  d["quantity"] = Column(c.quantity);
  d["pressure"] = Column(c.pressure);
  d["entry_pressure"] = Column(c.fromPressure);
  d["exit_pressure"] = Column(c.toPressure);
  d["fan"] = Column(c.fan);
  d["fans"] = Column(c.fans);
  d["fixed_quantity"] = Column(c.fixedQuantity);
  d["fixed_resistance"] = Column(c.fixedResistance);
  d["fixed_direction"] = Column(c.fixedDirection);
  d["blocked"] = Column(c.blocked);
  return d;
}

}  // namespace

PYBIND11_MODULE(_engine, m) {
  m.doc() = "The Galeris engine: one open network per Session.";
  static py::exception<galeris::scripting::FileRefused> fileError(m, "FileError");
  py::register_exception_translator([](std::exception_ptr p) {
    try {
      if (p) std::rethrow_exception(p);
    } catch (const galeris::scripting::FileRefused& e) {
      fileError(e.what());
    } catch (const galeris::scripting::EditRefused& e) {
      PyErr_SetString(PyExc_ValueError, e.what());
    }
  });
  m.attr("SURFACE_KEY") = galeris::SurfaceKey;
  m.attr("NEVER_REACHED") = galeris::kNeverReached;

  py::class_<NetworkSession>(m, "Session")
      .def_static("open", &NetworkSession::Open, py::arg("path"), py::arg("home"),
                  py::call_guard<py::gil_scoped_release>())
      .def("copy", &NetworkSession::Copy, py::call_guard<py::gil_scoped_release>())
      .def("copy_to", &NetworkSession::CopyTo, py::call_guard<py::gil_scoped_release>())
      .def("solve",
           [](NetworkSession& s, bool newton, bool yes) {
             galeris::scripting::SolveReport r;
             {
               py::gil_scoped_release release;
               r = s.Solve(newton, yes);
             }
             return SolveDict(r);
           },
           py::arg("newton"), py::arg("yes"))
      .def("spread",
           [](NetworkSession& s, const std::vector<std::int32_t>& nos,
              const std::vector<float>& values, bool fixed, bool yes) {
             galeris::scripting::SpreadReport r;
             std::vector<std::int32_t> no;
             std::vector<std::int16_t> concentration;
             std::vector<float> seconds;
             {
               py::gil_scoped_release release;
               r = s.Spread(nos, values, fixed, yes);
               s.SpreadColumns(no, concentration, seconds);
             }
             py::dict d;
             d["end"] = r.end;
             d["sources"] = r.sources;
             d["messages"] = r.messages;
             d["no"] = Column(no);
             d["concentration"] = Column(concentration);
             d["seconds"] = Column(seconds);
             return d;
           },
           py::arg("nos"), py::arg("values"), py::arg("fixed"), py::arg("yes"))
      .def("airways", [](const NetworkSession& s) { return AirwayDict(s.Airways()); })
      .def("flows",
           [](const NetworkSession& s) {
             std::vector<std::int32_t> no;
             std::vector<float> quantity;
             std::vector<std::int64_t> entry;
             s.Flows(no, quantity, entry);
             return py::make_tuple(Column(no), Column(quantity), Column(entry));
           })
      .def("set_resistance", &NetworkSession::SetResistance)
      .def("scale_resistances", &NetworkSession::ScaleResistances)
      .def("set_fan", &NetworkSession::SetFan)
      .def("set_fixed_quantity", &NetworkSession::SetFixedQuantity)
      .def("clear_fixed_quantity", &NetworkSession::ClearFixedQuantity)
      .def("block", &NetworkSession::Block)
      .def("save", &NetworkSession::Save)
      .def("__len__", &NetworkSession::Count);
}
