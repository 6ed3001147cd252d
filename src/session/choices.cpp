#include "session/choices.h"

namespace welvane {

bool isFeet(std::string_view depthUnit) {
    const auto unit = decode<DepthUnit>(depthUnit);
    return unit == DepthUnit::F || unit == DepthUnit::Ft;
}

std::optional<LasVersion> versionOf(double vers) {
    if (vers == 1.2) return LasVersion::V1_2;
    if (vers == 2.0) return LasVersion::V2_0;
    return std::nullopt;
}

}  // namespace welvane
