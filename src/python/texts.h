#pragma once

#include <pybind11/pybind11.h>
#include <string>
#include <string_view>

namespace welvane {

/// A text or a path as Python has it: bytes that are no UTF-8 come through as they do in Python's own paths.
inline pybind11::str pythonText(std::string_view text) {
    PyObject* const made = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
    if (made == nullptr) throw pybind11::error_already_set();
    return pybind11::reinterpret_steal<pybind11::str>(made);
}

}  // namespace welvane
