// vxlocfmt._native: the embedding API for Python, vectorised. Every function takes a whole
// column: the texts or values are gathered under the interpreter's lock, the formats and
// informats run with it released on the calling thread's warm formatter or reader, and the
// results come back as NumPy arrays. The Python package (vxlocfmt/__init__.py) adds scalars,
// date conversions, the pandas accessor and Dask.
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cmath>
#include <string>
#include <vector>

#include "read_texts.h"
#include "embed/catalog.h"
#include "huge_pages.h"
#include "library_path.h"
#include "locale_data.h"
#include "slices.h"
#include "embed/value_text.h"
#include "warm_cache.h"

namespace py = pybind11;

namespace {

vxpy::Request request(std::string spec, std::string locale, std::string encoding = {}) {
    return {std::move(spec), std::move(locale), std::move(encoding)};
}

// NumPy's fixed-width text ("<U20") or bytes ("S20") column of `count` rows.
py::array text_column(std::size_t count, std::size_t width, bool bytes) {
    const std::string code = (bytes ? "S" : "<U") + std::to_string(std::max<std::size_t>(width, 1));
    return py::array(py::dtype(code), std::vector<py::ssize_t>{static_cast<py::ssize_t>(count)});
}

// The instance builds its monetary conventions on its first fixed-currency call (NLMNI*, NLMNL*,
// formats or informats), without a lock, in that call's locale, and keeps them (the host's rule:
// the first locale wins). That first call is made here, by a fixed-currency format in the
// request's locale, with the interpreter's lock held, so no two threads can make it at once.
bool currency_conventions_built = false;  // guarded by the interpreter's lock

void build_currency_conventions_once(std::string_view name, const std::string& locale) {
    if (name.starts_with("@")) name.remove_prefix(1);
    if (currency_conventions_built || !(name.starts_with("NLMNI") || name.starts_with("NLMNL"))) return;
    vxpy::warm_formatter({"NLMNIUSD", locale, ""}).format(0.0);
    currency_conventions_built = true;
}

py::array format_values(py::array_t<double, py::array::c_style | py::array::forcecast> values, std::string spec,
                        std::string locale, std::string encoding, unsigned threads) {
    const vxpy::Request wanted = request(spec, locale, encoding);
    vxhost::Formatter& formatter = vxpy::warm_formatter(wanted);
    build_currency_conventions_once(formatter.name(), locale);
    const bool bytes = !encoding.empty();
    const auto count = static_cast<std::size_t>(values.size());
    const auto width = static_cast<std::size_t>(std::max(formatter.width(), 1));
    py::array column = text_column(count, width, bytes);
    const double* in = values.data();
    void* out = column.mutable_data();
    vxpy::advise_huge_pages(out, static_cast<std::size_t>(column.nbytes()));
    {
        py::gil_scoped_release released;
        vxpy::in_slices(count, threads, [&](std::size_t begin, std::size_t end, std::size_t slice) {
            // Each thread its own formatter: the calling thread's is `formatter`.
            vxhost::Formatter& mine = slice == 0 ? formatter : vxpy::warm_formatter(wanted);
            if (bytes)
                mine.format_byte_rows(in + begin, end - begin, static_cast<char*>(out) + begin * width, width);
            else
                mine.format_rows(in + begin, end - begin, static_cast<char32_t*>(out) + begin * width, width);
        });
    }
    return column;
}

// None and NaN here; pandas.NA, pandas.NaT and NumPy's NaN scalars by the package's test.
bool is_missing(PyObject* item, const py::handle& missing_test) {
    if (item == Py_None) return true;
    if (PyFloat_Check(item)) return std::isnan(PyFloat_AS_DOUBLE(item));
    return missing_test(py::handle(item)).cast<bool>();
}

// The texts of a sequence as UTF-8, copied so that the column may change once the lock is gone.
vxpy::TextColumn gather_texts(const py::handle& texts, const py::handle& missing_test) {
    py::object items = py::reinterpret_steal<py::object>(PySequence_Fast(texts.ptr(), "read takes a sequence of texts"));
    if (!items) throw py::error_already_set();
    const Py_ssize_t count = PySequence_Fast_GET_SIZE(items.ptr());
    PyObject** item = PySequence_Fast_ITEMS(items.ptr());
    vxpy::TextColumn column;
    column.ends.reserve(static_cast<std::size_t>(count));
    for (Py_ssize_t i = 0; i < count; ++i) {
        if (PyUnicode_Check(item[i])) {
            Py_ssize_t length = 0;
            const char* text = PyUnicode_AsUTF8AndSize(item[i], &length);
            if (!text) throw py::error_already_set();
            column.add(text, static_cast<std::size_t>(length));
        } else if (PyBytes_Check(item[i])) {
            column.add(PyBytes_AS_STRING(item[i]), static_cast<std::size_t>(PyBytes_GET_SIZE(item[i])));
        } else if (is_missing(item[i], missing_test)) {
            column.add_missing();
        } else {
            throw py::type_error("read takes texts; item " + std::to_string(i) + " is " +
                                 std::string(Py_TYPE(item[i])->tp_name) + ": " + std::string(py::repr(item[i])));
        }
    }
    return column;
}

// (values, position of the first failure or -1, its status)
py::tuple read_texts(const py::handle& texts, std::string spec, std::string locale, bool stop_at_failure,
                     const py::handle& missing_test, unsigned threads) {
    const vxpy::Request wanted = request(spec, locale);
    vxhost::Reader& reader = vxpy::warm_reader(wanted);
    build_currency_conventions_once(reader.name(), locale);
    const vxpy::TextColumn column = gather_texts(texts, missing_test);
    py::array_t<double> values(static_cast<py::ssize_t>(column.ends.size()));
    double* out = values.mutable_data();
    std::vector<vxpy::ReadFailure> failures(vxpy::thread_count(threads));
    {
        py::gil_scoped_release released;
        vxpy::in_slices(column.ends.size(), threads, [&](std::size_t begin, std::size_t end, std::size_t slice) {
            vxhost::Reader& mine = slice == 0 ? reader : vxpy::warm_reader(wanted);
            failures[slice] = vxpy::read_texts(mine, column, begin, end, out, stop_at_failure);
        });
    }
    // The first failure of the column: slices are in order.
    vxpy::ReadFailure failure;
    for (const vxpy::ReadFailure& found : failures)
        if (found.position >= 0) { failure = found; break; }
    return py::make_tuple(values, failure.position, failure.status);
}

// The reader's own name for the informat ("ANYDATE", "@NLNUM") and what its result means.
py::tuple informat_of(std::string spec, std::string locale) {
    vxhost::Reader& reader = vxpy::warm_reader(request(spec, locale));
    return py::make_tuple(reader.name(), vxhost::value_kind_name(reader.kind()));
}

py::tuple format_of(std::string spec, std::string locale, std::string encoding) {
    vxhost::Formatter& formatter = vxpy::warm_formatter(request(spec, locale, encoding));
    return py::make_tuple(formatter.name(), vxhost::value_kind_name(formatter.kind()), formatter.width(),
                          formatter.decimals());
}

}  // namespace

PYBIND11_MODULE(_native, m) {
    m.doc() = "vxlocfmt's formats and informats over the host runtime (see the vxlocfmt package)";
    py::register_exception<vxhost::RequestError>(m, "RequestError", PyExc_ValueError);
    m.def("format_values", &format_values, py::arg("values"), py::arg("spec"), py::arg("locale"),
          py::arg("encoding"), py::arg("threads") = 1);
    m.def("read_texts", &read_texts, py::arg("texts"), py::arg("spec"), py::arg("locale"),
          py::arg("stop_at_failure"), py::arg("missing_test"), py::arg("threads") = 1);
    m.def("format_of", &format_of, py::arg("spec"), py::arg("locale"), py::arg("encoding"));
    m.def("informat_of", &informat_of, py::arg("spec"), py::arg("locale"));
    m.def("resolve_locale", &vxpy::resolve_locale, py::arg("name"));
    m.def("formats", [] { return vxhost::format_names(vxpy::shared_library()); });
    m.def("informats", [] { return vxhost::informat_names(vxpy::shared_library()); });
    m.def("locales", [] { return vxhost::locale_names(); });
    m.def("missing", [](const std::string& code) {
        const std::optional<double> value = vxhost::parse_value(code);
        if (!value || !std::isnan(*value))
            throw vxhost::RequestError("'" + code + "' is not a missing-value code (., ._, .A to .Z)");
        return *value;
    }, py::arg("code") = ".");
    m.def("library_candidates", &vxpy::library_candidates);
    m.def("open", [] { vxpy::shared_library(); }, "Loads libvxlocfmt.so now (raises if it cannot).");
}
