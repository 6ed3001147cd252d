#pragma once

#include <pybind11/pybind11.h>
#include <string>

#include "jobs/true_input.h"
#include "python/call.h"

/// What the package calls. Every function takes the choices of a call as a dictionary: data (folder of the reference
/// files), strict, force, and where figures are read loose, decimal_comma and index_unit.
namespace welvane {

CallChoices callChoicesOf(const pybind11::dict& how);
ReadingChoices readingChoicesOf(const pybind11::dict& how);

/// read and write: columns as numpy arrays.
void defineWells(pybind11::module_& module);
/// run, batch and plot: what makes files.
void defineReports(pybind11::module_& module);
/// stats, check and conform: what judges them.
void defineVerdicts(pybind11::module_& module);

}  // namespace welvane
