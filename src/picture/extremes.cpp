#include "picture/extremes.h"

#include <cmath>

namespace welvane {

Extremes::Extremes(std::span<const double> samples, std::size_t withBlocksFrom) : samples_(samples) {
    if (samples.size() < withBlocksFrom) return;
    blocks_.reserve(samples.size() / blockSize);
    for (std::size_t begin = 0; begin + blockSize <= samples.size(); begin += blockSize) {
        Found found;
        addSamples(begin, begin + blockSize, found);
        const auto inside = [&](std::size_t index) { return static_cast<std::uint8_t>(index - begin); };
        blocks_.push_back(found.any ? Block{true, inside(found.first), inside(found.last), inside(found.least),
                                            inside(found.greatest)}
                                    : Block{});
    }
}

Extremes::Found Extremes::over(std::size_t begin, std::size_t end) const {
    Found found;
    std::size_t block = (begin + blockSize - 1) / blockSize;
    if (blocks_.empty() || (block + 1) * blockSize > end) {
        addSamples(begin, end, found);
        return found;
    }
    addSamples(begin, block * blockSize, found);
    for (; (block + 1) * blockSize <= end && block < blocks_.size(); ++block) addBlock(block, found);
    addSamples(block * blockSize, end, found);
    return found;
}

void Extremes::addSamples(std::size_t begin, std::size_t end, Found& found) const {
    for (std::size_t index = begin; index < end; ++index)
        if (!std::isnan(samples_[index])) add(index, index, index, index, found);
}

void Extremes::addBlock(std::size_t number, Found& found) const {
    const Block& block = blocks_[number];
    const std::size_t begin = number * blockSize;
    if (block.any) add(begin + block.first, begin + block.last, begin + block.least, begin + block.greatest, found);
}

void Extremes::add(std::size_t first, std::size_t last, std::size_t least, std::size_t greatest, Found& found) const {
    if (!found.any) {
        found = {true, first, last, least, greatest};
        return;
    }
    found.last = last;
    if (samples_[least] < samples_[found.least]) found.least = least;
    if (samples_[greatest] > samples_[found.greatest]) found.greatest = greatest;
}

}  // namespace welvane
