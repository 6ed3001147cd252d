#include "listing/unique_channels.h"

#include "shared/text.h"

namespace welvane {

void UniqueChannels::add(std::string_view mnem, std::string_view unit, double footage) {
    const auto [place, isNew] = places_.try_emplace(upper(mnem).append("\n").append(upper(unit)), channels_.size());
    if (isNew) channels_.push_back({std::string(mnem), std::string(unit), 0, 0});
    UniqueChannel& channel = channels_[place->second];
    ++channel.files;
    channel.footage += footage;
}

}  // namespace welvane
