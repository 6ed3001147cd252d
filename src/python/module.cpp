#include "python/functions.h"

namespace welvane {

namespace py = pybind11;

namespace {

template <class Value>
Value choiceOf(const py::dict& how, const char* name, Value otherwise) {
    return how.contains(name) ? how[name].cast<Value>() : otherwise;
}

}  // namespace

CallChoices callChoicesOf(const py::dict& how) {
    return {.dataFolder = choiceOf<std::string>(how, "data", ""),
            .strict = choiceOf(how, "strict", false),
            .force = choiceOf(how, "force", false)};
}

ReadingChoices readingChoicesOf(const py::dict& how) {
    return {.loose = choiceOf(how, "loose", false),
            .decimalComma = choiceOf(how, "decimal_comma", false),
            .indexUnit = choiceOf<std::string>(how, "index_unit", "")};
}

}  // namespace welvane

PYBIND11_MODULE(_welvane, module) {
    module.doc() = "The jobs of Welvane; the package around this module is what to use.";
    module.attr("version") = WELVANE_VERSION;
    welvane::translateRefusals();
    welvane::defineWells(module);
    welvane::defineReports(module);
    welvane::defineVerdicts(module);
}
