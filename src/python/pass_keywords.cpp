#include "python/pass_keywords.h"

#include <pybind11/stl.h>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "jobs/pass_texts.h"

namespace welvane {

namespace py = pybind11;

namespace {

using Place = std::variant<std::string*, bool*, std::vector<std::string>*>;
struct Keyword {
    std::string_view name;
    Place place;
};

std::vector<Keyword> keywordsOf(PassTexts& texts) {
    PassRequest& request = texts.request;
    return {{"from_", &texts.from},
            {"to", &texts.to},
            {"step", &request.step},
            {"unit", &texts.unit},
            {"offset", &texts.offset},
            {"direction", &texts.direction},
            {"fill", &texts.fill},
            {"tvd", &request.tvd},
            {"tvd_unit", &texts.tvdUnit},
            {"splice", &request.splice},
            {"select", &texts.select},
            {"filter", &request.filter},
            {"curve", &request.curves},
            {"link", &texts.links},
            {"apply_depths", &texts.applyDepths},
            {"shift", &texts.shifts},
            {"clip", &texts.clips},
            {"wrap", &texts.wrap},
            {"vers", &texts.vers},
            {"null", &texts.null},
            {"format", &texts.format},
            {"header", &request.header},
            {"sections", &texts.sections},
            {"merge_parameters", &texts.mergeParameters},
            {"rename_duplicates", &texts.renameDuplicates},
            {"ascii", &texts.ascii},
            {"separator", &texts.separator},
            {"csv", &request.csv},
            {"fill_empty", &request.fillEmpty},
            {"keep_details", &request.keepDetails},
            {"smooth", &request.smooth},
            {"column_width", &texts.columnWidth},
            {"loose", &request.loose},
            {"index_unit", &request.indexUnit},
            {"decimal_comma", &request.decimalComma},
            {"rules", &texts.rules}};
}

void put(const Place& place, const py::handle& value) {
    if (auto* const flag = std::get_if<bool*>(&place))
        **flag = value.cast<bool>();
    else if (auto* const text = std::get_if<std::string*>(&place))
        **text = value.cast<std::string>();
    else
        *std::get<std::vector<std::string>*>(place) = value.cast<std::vector<std::string>>();
}

}  // namespace

PassRequest passRequestOf(const py::dict& keywords) {
    PassTexts texts;
    const std::vector<Keyword> known = keywordsOf(texts);
    for (const auto& [key, value] : keywords) {
        const auto name = key.cast<std::string>();
        bool found = false;
        for (const Keyword& keyword : known) {
            if (keyword.name != name) continue;
            try {
                put(keyword.place, value);
            } catch (const py::cast_error&) {
                throw py::type_error(name + ": not of a type that it can be");
            }
            found = true;
        }
        if (!found) throw py::type_error("there is no keyword '" + name + "'");
    }
    return passRequest(texts);
}

}  // namespace welvane
