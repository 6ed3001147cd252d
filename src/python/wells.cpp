#include <cstring>
#include <memory>
#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <span>
#include <utility>
#include <vector>

#include "jobs/well.h"
#include "jobs/write_channels.h"
#include "python/functions.h"
#include "python/texts.h"

namespace welvane {

namespace py = pybind11;

namespace {

using Numbers = py::array_t<double, py::array::c_style | py::array::forcecast>;
using FieldTexts = std::tuple<std::string, std::string, std::string, std::string>;
using SectionTexts = std::tuple<std::string, std::string, std::vector<FieldTexts>, std::vector<std::string>>;

/// The values as an array that owns them; nothing is copied.
py::array_t<double> asArray(std::vector<double>&& values) {
    auto kept = std::make_unique<std::vector<double>>(std::move(values));
    const double* const data = kept->data();
    const auto size = static_cast<py::ssize_t>(kept->size());
    const py::capsule owner(kept.release(), [](void* memory) { delete static_cast<std::vector<double>*>(memory); });
    return py::array_t<double>({size}, {static_cast<py::ssize_t>(sizeof(double))}, data, owner);
}

py::tuple asTuple(const HeaderField& field) {
    return py::make_tuple(pythonText(field.mnem), pythonText(field.unit), pythonText(field.value),
                          pythonText(field.desc));
}

py::list asList(const std::vector<WellSection>& sections) {
    py::list list;
    for (const WellSection& section : sections) {
        py::list lines, text;
        for (const HeaderField& field : section.lines) lines.append(asTuple(field));
        for (const std::string& line : section.text) text.append(pythonText(line));
        list.append(py::make_tuple(pythonText(section.title), std::string(section.letter == 0 ? 0 : 1, section.letter),
                                   lines, text));
    }
    return list;
}

py::dict read(const std::string& path, const py::dict& how) {
    Call call(callChoicesOf(how));
    const ReadingChoices reading = readingChoicesOf(how);
    WellData well = call.work([&] { return readWell(call.bench(), path, reading); });
    py::list channels;
    for (WellChannel& channel : well.channels)
        channels.append(py::make_tuple(asTuple(channel.field), asArray(std::move(channel.values))));
    py::dict made;
    made["channels"] = channels;
    made["sections"] = asList(well.sections);
    made["index_unit"] = pythonText(well.indexUnit);
    made["version"] = pythonText(well.version);
    made["null"] = well.nullValue;
    made["wrapped"] = well.wrapped;
    made["notes"] = notesOf(well.notes);
    return made;
}

HeaderField asField(const FieldTexts& texts) {
    return {std::get<0>(texts), std::get<1>(texts), std::get<2>(texts), std::get<3>(texts)};
}

WellSection asSection(const SectionTexts& texts) {
    WellSection section{.title = std::get<0>(texts)};
    if (const std::string& letter = std::get<1>(texts); !letter.empty()) section.letter = letter.front();
    for (const FieldTexts& field : std::get<2>(texts)) section.lines.push_back(asField(field));
    section.text = std::get<3>(texts);
    return section;
}

py::dict write(const std::string& path, const std::vector<std::pair<FieldTexts, Numbers>>& channels,
               const std::vector<SectionTexts>& sections, const std::vector<FieldTexts>& well, double null,
               const py::dict& how) {
    WriteRequest request{.output = path, .null = null};
    for (const auto& [field, values] : channels)
        request.channels.push_back({asField(field), std::span(values.data(), static_cast<std::size_t>(values.size()))});
    for (const SectionTexts& section : sections) request.sections.push_back(asSection(section));
    for (const FieldTexts& field : well) request.well.push_back(asField(field));
    Call call(callChoicesOf(how));
    const WriteReport report = call.work([&] { return writeChannels(call.bench(), request); });
    py::list names;
    for (const std::string& name : report.names) names.append(pythonText(name));
    py::dict made;
    made["records"] = report.records;
    made["names"] = names;
    made["start"] = report.first;
    made["stop"] = report.last;
    made["step"] = report.step;
    made["notes"] = notesOf(report.notes);
    return made;
}

}  // namespace

void defineWells(py::module_& module) {
    module.def("read", &read);
    module.def("write", &write);
}

}  // namespace welvane
