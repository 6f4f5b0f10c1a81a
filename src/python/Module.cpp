// The module qxcontrols._core: what the Python package qxcontrols is made of. Structured values
// cross as JSON text, in the form of qxconf's results.
#include "python/Keyboard.h"

#include "host/ErrorText.h"
#include "host/Schemas.h"

#include <pybind11/functional.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

namespace py = pybind11;
using namespace pybind11::literals;

namespace qx::python {

namespace {

template <typename Value>
py::object OrNone(const Value& value) {
    return value.empty() ? py::object(py::none()) : py::cast(value);
}

py::list FaultsOf(const host::Error& error) {
    py::list faults;
    for (const host::Fault& fault : error.faults)
        faults.append(py::make_tuple(fault.place, json::CodeOf(fault.kind), json::ToText(fault)));
    return faults;
}

// Raises qxcontrols.Error with the facts of the error.
void Raise(const host::Error& error) {
    const py::object type = py::module_::import("qxcontrols").attr("Error");
    const py::object raised = type(
        host::TextOf(error), "code"_a = host::CodeOf(error.Kind()),
        "holds"_a = error.holds ? py::cast(host::CodeOf(*error.holds)) : py::none(),
        "file"_a = OrNone(error.place.file), "place"_a = OrNone(error.place.pointer),
        "section"_a = OrNone(error.place.section), "address"_a = error.place.address,
        "function"_a = OrNone(error.call ? error.call->function : ""), "status"_a = error.Status(),
        "backup"_a = OrNone(error.backup), "faults"_a = FaultsOf(error));
    PyErr_SetObject(type.ptr(), raised.ptr());
}

void Translate(std::exception_ptr thrown) {
    try {
        if (thrown)
            std::rethrow_exception(thrown);
    } catch (const host::Error& error) {
        Raise(error);
    }
}

} // namespace

PYBIND11_MODULE(_core, module) {
    py::register_exception_translator(Translate);
    module.def("schema", [] { return host::Schema("document").dump(); });
    module.def("check", &Check, "text"_a, "name"_a, "variables"_a, "layouts"_a, "layout"_a);
    // Transfers take long: other threads go on meanwhile. The callbacks get the lock themselves.
    const py::call_guard<py::gil_scoped_release> unlocked;
    py::class_<PlannedWrite>(module, "PlannedWrite")
        .def_property_readonly("changes", &PlannedWrite::Changes)
        .def_property_readonly("bytes", &PlannedWrite::Bytes);
    py::class_<Keyboard>(module, "Keyboard")
        .def(py::init([](std::filesystem::path driver, std::filesystem::path file,
                         std::string model, std::filesystem::path layouts, std::string layout,
                         std::filesystem::path records) {
                 return std::make_unique<Keyboard>(
                     Keyboard::Choice{{std::move(driver), std::move(file), std::move(model)},
                                      std::move(layouts),
                                      std::move(layout),
                                      std::move(records)});
             }),
             "driver"_a, "file"_a, "model"_a, "layouts"_a, "layout"_a, "records"_a)
        .def("open", &Keyboard::Open, unlocked)
        .def("close", &Keyboard::Close, unlocked)
        .def("identify", &Keyboard::Identify, unlocked)
        .def("read", &Keyboard::Read, unlocked)
        .def("plan", &Keyboard::Plan, "text"_a, "name"_a, "variables"_a, "skip_absent"_a, "full"_a,
             "repair"_a, unlocked)
        .def("plan_restore", &Keyboard::PlanRestore, "backup"_a, "other_keyboard"_a, unlocked)
        .def("write", &Keyboard::Write, "plan"_a, "verify"_a, "progress"_a, unlocked)
        .def("interrupted", &Keyboard::Interrupted, unlocked)
        .def("recover", &Keyboard::Recover, "id"_a, "finish"_a, "progress"_a, unlocked);
    py::class_<Keyboard::Reading>(module, "Reading")
        .def_readonly("document", &Keyboard::Reading::document)
        .def_readonly("damaged", &Keyboard::Reading::damaged);
}

} // namespace qx::python
